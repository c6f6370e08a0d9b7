#include "views/ColorSign.h"

#include <QColor>
#include <QPainter>
#include <QPolygon>

#include <algorithm>

namespace velmor {

namespace {

constexpr int least = 4; ///< pixels of a square of the checkerboard
constexpr int squares = 6;

void FillChecked(QPainter& painter, const QRect& area) {
    const int square = std::max(least, area.height() / squares);
    painter.fillRect(area, Qt::white);
    for (int y = 0; y < area.height(); y += square)
        for (int x = y / square % 2 * square; x < area.width(); x += 2 * square)
            painter.fillRect(area & QRect(area.x() + x, area.y() + y, square, square), Qt::lightGray);
}

} // namespace

void PaintColor(QPainter& painter, const QRect& area, const QColor& color) {
    painter.fillRect(area, color.rgb());
    if (color.alpha() == 255)
        return;
    painter.save();
    const QPoint end = area.bottomRight() + QPoint(1, 1);
    painter.setClipRegion(QPolygon({QPoint(end.x(), area.top()), end, QPoint(area.left(), end.y())}),
                          Qt::IntersectClip);
    FillChecked(painter, area);
    painter.fillRect(area, color);
    painter.restore();
}

} // namespace velmor
