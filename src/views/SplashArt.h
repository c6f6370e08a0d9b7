#pragma once

#include <QPixmap>
#include <QPolygon>

namespace velmor {

/// The start-up picture, 576 x 265 logical pixels, sharp on a screen of that scale.
QPixmap SplashPicture(double scale);
/// The outline that the picture is cut along, in logical pixels of the picture.
QPolygon SplashOutline();

} // namespace velmor
