#include "views/cel/ColorPair.h"

#include <QPainter>
#include <QPolygon>

namespace velmor {

namespace {

constexpr int side = 22;
constexpr int shift = 12; ///< of the background's swatch against the foreground's
constexpr int check = 4;

QColor OpaqueOf(CColor color) {
    return {color.red, color.green, color.blue};
}

QString TextOf(const char* name, CColor color) {
    return QString("%1: red %2, green %3, blue %4, opacity %5")
        .arg(name)
        .arg(color.red)
        .arg(color.green)
        .arg(color.blue)
        .arg(color.alpha);
}

// The opaque colour, and in the lower right half the colour as it covers a checkerboard.
void DrawSwatch(QPainter& painter, QPoint corner, CColor color) {
    const QRect frame(corner, QSize(side, side));
    const QRect inside = frame.adjusted(2, 2, -2, -2);
    painter.fillRect(frame, Qt::black);
    painter.fillRect(frame.adjusted(1, 1, -1, -1), Qt::white);
    painter.fillRect(inside, OpaqueOf(color));
    if (color.alpha == 255)
        return;
    painter.save();
    const QPoint end = inside.bottomRight() + QPoint(1, 1);
    painter.setClipRegion(QPolygon({QPoint(end.x(), inside.top()), end, QPoint(inside.left(), end.y())}));
    for (int y = inside.top(); y <= inside.bottom(); y += check)
        for (int x = inside.left(); x <= inside.right(); x += check)
            painter.fillRect(QRect(x, y, check, check) & inside,
                             (x - inside.left() + y - inside.top()) / check % 2 == 0 ? Qt::white : Qt::lightGray);
    QColor cover = OpaqueOf(color);
    cover.setAlpha(color.alpha);
    painter.fillRect(inside, cover);
    painter.restore();
}

} // namespace

CColorPair::CColorPair(QWidget* parent) : QWidget(parent) {
    setObjectName("colorPair");
    setAccessibleName("Foreground and background color");
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void CColorPair::SetColors(CColor foreground, CColor background) {
    m_foreground = foreground;
    m_background = background;
    setToolTip(TextOf("Foreground", foreground) + '\n' + TextOf("Background", background));
    setAccessibleDescription(toolTip());
    update();
}

QSize CColorPair::sizeHint() const {
    return {side + shift, side + shift};
}

void CColorPair::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawSwatch(painter, {shift, shift}, m_background);
    DrawSwatch(painter, {0, 0}, m_foreground);
}

} // namespace velmor
