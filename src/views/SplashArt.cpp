#include "views/SplashArt.h"

#include "views/Icons.h"

namespace velmor {

QPixmap SplashPicture(double scale) {
    return DrawnPixmap(QStringLiteral(":/art/splash.svg"), {576, 265}, scale);
}

// The vertices of the dark board that the artwork lies on.
QPolygon SplashOutline() {
    return QList<QPoint>{{276, 8},   {407, 14},  {459, 23},  {463, 18},  {478, 20},  {487, 13},  {501, 11},
                         {515, 17},  {527, 33},  {546, 38},  {550, 50},  {540, 113}, {549, 110}, {557, 111},
                         {563, 115}, {564, 120}, {547, 146}, {542, 147}, {535, 144}, {531, 173}, {557, 176},
                         {566, 182}, {569, 189}, {573, 233}, {570, 247}, {562, 253}, {554, 255}, {442, 261},
                         {123, 260}, {29, 263},  {21, 260},  {13, 248},  {6, 199},   {6, 191},   {10, 183},
                         {17, 178},  {28, 177},  {8, 52},    {13, 40},   {20, 37},   {140, 18},  {147, 15}};
}

} // namespace velmor
