#pragma once

#include <QRect>
#include <QSize>

namespace velmor {

/// Where things go in the movie player, in logical pixels: one pixel of the movie is one of these, or two by two.
struct CPlayerGeometry {
    QSize movie;
    bool doubled = false;

    static constexpr QSize leastWindow{300, 200};

    /// The movie with a margin of a pixel around it, as large as it is shown.
    QSize FrameArea() const;
    /// The picture in a drawing area of that size: centred, but never beyond the area's upper left corner.
    QRect Picture(QSize drawingArea) const;
    /// The size that a window of size `window` takes so that its drawing area holds the frame area.
    QSize Window(QSize window, QSize drawingArea) const;
};

/// Whether a window of that size may go to double size.
bool CanDouble(QSize window, QSize screen);
/// The upper left corner of a window in the middle of the screen, and never beyond the screen's.
QPoint CentredOn(const QRect& screen, QSize window);

} // namespace velmor
