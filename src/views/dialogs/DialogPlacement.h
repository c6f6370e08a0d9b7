#pragma once

#include <QPoint>
#include <QRect>

namespace velmor {

// Where to put a window on the screen, in the screen's coordinates.

/// What a window may cover of the screen at that point; of the first screen when there is none.
QRect ScreenAreaAt(QPoint point);

/// The top left corner nearest to `wanted` with which a window of that size lies within `screen`. What is larger
/// than the screen starts at its top left.
QPoint KeptOnScreen(QPoint wanted, QSize size, const QRect& screen);

/// The top left corner for a window that should not cover `view`: centred below it, above it, right or left of it,
/// wherever there is room first. When there is none anywhere it hides least of the view: a wide window at its foot,
/// a tall one at its right side.
QPoint PlacedBeside(const QRect& view, QSize size, const QRect& screen);

} // namespace velmor
