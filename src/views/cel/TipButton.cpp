#include "views/cel/TipButton.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr int corner = 4;
constexpr int iconSide = 20;

} // namespace

CTipButton::CTipButton(int side, Drawing drawing, const QString& name, QWidget* parent)
    : QRadioButton(parent), m_size(side, side), m_drawing(std::move(drawing)) {
    setToolTip(name);
    setAccessibleName(name);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

CTipButton::CTipButton(const QString& text, const QIcon& icon, const QString& name, QWidget* parent)
    : CTipButton(0, nullptr, name, parent) {
    setText(text);
    setIcon(icon);
    setAccessibleName(text);
    setAccessibleDescription(name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_size = {std::max(fontMetrics().horizontalAdvance(text), iconSide) + 2 * corner,
              iconSide + fontMetrics().height() + 3 * corner};
}

QSize CTipButton::sizeHint() const {
    return m_size;
}

void CTipButton::DrawFrame(QPainter& painter) const {
    if (isChecked())
        painter.setBrush(isEnabled() ? palette().highlight() : palette().mid());
    else if (underMouse())
        painter.setBrush(palette().midlight());
    painter.setPen(hasFocus()                 ? QPen(palette().windowText(), 1)
                   : m_drawing || isChecked() ? QPen(Qt::NoPen)
                                              : QPen(palette().mid(), 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
}

void CTipButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawFrame(painter);
    const QColor color = palette().color(isChecked() ? QPalette::HighlightedText : QPalette::WindowText);
    if (!m_drawing) {
        icon().paint(&painter, QRect((width() - iconSide) / 2, corner, iconSide, iconSide), Qt::AlignCenter,
                     isEnabled() ? QIcon::Normal : QIcon::Disabled);
        painter.setPen(color);
        painter.drawText(rect().adjusted(0, 0, 0, -corner), Qt::AlignHCenter | Qt::AlignBottom, text());
        return;
    }
    painter.translate(rect().center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    m_drawing(painter);
}

} // namespace velmor
