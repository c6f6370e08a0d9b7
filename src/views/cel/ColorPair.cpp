#include "views/cel/ColorPair.h"

#include "views/ColorSign.h"

#include <QPainter>

namespace velmor {

namespace {

constexpr int side = 22;
constexpr int shift = 12; ///< of the background's swatch against the foreground's

QString TextOf(const char* name, CColor color) {
    return QString("%1: red %2, green %3, blue %4, opacity %5")
        .arg(name)
        .arg(color.red)
        .arg(color.green)
        .arg(color.blue)
        .arg(color.alpha);
}

void DrawSwatch(QPainter& painter, QPoint corner, CColor color) {
    const QRect frame(corner, QSize(side, side));
    painter.fillRect(frame, Qt::black);
    painter.fillRect(frame.adjusted(1, 1, -1, -1), Qt::white);
    PaintColor(painter, frame.adjusted(2, 2, -2, -2), QColor(color.red, color.green, color.blue, color.alpha));
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
