#include "views/player/PlayerGeometry.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int margin = 1; // around the picture in the frame area

int Centred(int within, int size) {
    return std::max((within - size) / 2, 0);
}

} // namespace

QSize CPlayerGeometry::FrameArea() const {
    return (movie + QSize(2 * margin, 2 * margin)) * (doubled ? 2 : 1);
}

QRect CPlayerGeometry::Picture(QSize drawingArea) const {
    const QSize area = FrameArea();
    const int shownMargin = doubled ? 2 * margin : margin;
    return {Centred(drawingArea.width(), area.width()) + shownMargin,
            Centred(drawingArea.height(), area.height()) + shownMargin, movie.width() * (doubled ? 2 : 1),
            movie.height() * (doubled ? 2 : 1)};
}

QSize CPlayerGeometry::Window(QSize window, QSize drawingArea) const {
    return (window + FrameArea() - drawingArea).expandedTo(leastWindow);
}

bool CanDouble(QSize window, QSize screen) {
    return 2 * window.width() < screen.width() && 2 * window.height() < screen.height();
}

QPoint CentredOn(const QRect& screen, QSize window) {
    return screen.topLeft() +
           QPoint(Centred(screen.width(), window.width()), Centred(screen.height(), window.height()));
}

} // namespace velmor
