#include "views/dialogs/DialogPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace velmor {

namespace {

constexpr int gap = 8;

} // namespace

QRect ScreenAreaAt(QPoint point) {
    const QScreen* screen = QGuiApplication::screenAt(point);
    return (screen != nullptr ? screen : QGuiApplication::primaryScreen())->availableGeometry();
}

QPoint KeptOnScreen(QPoint wanted, QSize size, const QRect& screen) {
    const auto keep = [](int at, int extent, int least, int room) {
        return std::max(least, std::min(at, least + room - extent));
    };
    return {keep(wanted.x(), size.width(), screen.x(), screen.width()),
            keep(wanted.y(), size.height(), screen.y(), screen.height())};
}

QPoint PlacedBeside(const QRect& view, QSize size, const QRect& screen) {
    const int centredX = view.center().x() - size.width() / 2;
    const int centredY = view.center().y() - size.height() / 2;
    const int below = view.y() + view.height() + gap;
    const int right = view.x() + view.width() + gap;
    for (const QPoint wanted : {QPoint(centredX, below), QPoint(centredX, view.y() - gap - size.height()),
                                QPoint(right, centredY), QPoint(view.x() - gap - size.width(), centredY)}) {
        const QPoint kept = KeptOnScreen(wanted, size, screen);
        if (!QRect(kept, size).intersects(view))
            return kept;
    }
    if (size.height() > size.width())
        return KeptOnScreen({view.right() - size.width(), view.top()}, size, screen);
    return KeptOnScreen({centredX, below - 2 * gap - size.height()}, size, screen);
}

} // namespace velmor
