#include "app/window/ThemeStyle.h"

#include "views/Brightness.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyleOption>
#include <algorithm>

namespace velmor {

namespace {

constexpr double corner = 2; ///< radius of Fusion's outlines

QColor OutlineOf(const QStyleOption& option) {
    if ((option.state & QStyle::State_Enabled) == 0)
        return {82, 83, 87};
    return option.state & QStyle::State_HasFocus ? option.palette.color(QPalette::Highlight)
                                                 : QColor(112, 113, 117);
}

void DrawOutline(QPainter& painter, const QRect& rect, const QColor& color, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(color);
    painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void DrawRadio(QPainter& painter, const QStyleOption& option) {
    const bool isOn = (option.state & QStyle::State_On) != 0;
    const bool isEnabled = (option.state & QStyle::State_Enabled) != 0;
    const QPalette& palette = option.palette;
    const double size = qMin(option.rect.width(), option.rect.height()) - 1;
    QRectF circle(0, 0, size, size);
    circle.moveCenter(QRectF(option.rect).center());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(isOn && isEnabled && (option.state & QStyle::State_HasFocus) != 0
                       ? palette.color(QPalette::HighlightedText)
                       : OutlineOf(option));
    const QColor filled = isEnabled ? palette.color(QPalette::Highlight) : palette.color(QPalette::Mid);
    const QColor empty = palette.color(option.state & QStyle::State_Sunken ? QPalette::Button : QPalette::Base);
    painter.setBrush(isOn ? filled : empty);
    painter.drawEllipse(circle);
    if (isOn) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.color(isEnabled ? QPalette::HighlightedText : QPalette::WindowText));
        painter.drawEllipse(circle.center(), size * 0.2, size * 0.2);
    }
    painter.restore();
}

// Below the title, where Fusion has its frame.
QRect GroupFrame(const QStyle& style, const QStyleOption& option, const QWidget* widget) {
    constexpr int aboveFrame = 3;
    const auto* group = qobject_cast<const QGroupBox*>(widget);
    const bool hasTitle = group == nullptr || group->isCheckable() || !group->title().isEmpty();
    const int indicator = style.pixelMetric(QStyle::PM_IndicatorHeight, &option, widget);
    const int title = hasTitle ? std::max(indicator, option.fontMetrics.height()) : 0;
    return option.rect.adjusted(0, title + aboveFrame, 0, 0);
}

bool HasFrame(QStyle::ComplexControl control, const QStyleOptionComplex& option) {
    if (control == QStyle::CC_ComboBox)
        return qstyleoption_cast<const QStyleOptionComboBox*>(&option)->frame;
    return control == QStyle::CC_SpinBox && qstyleoption_cast<const QStyleOptionSpinBox*>(&option)->frame;
}

bool IsFlat(const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return button != nullptr && (button->features & QStyleOptionButton::Flat) != 0;
}

// Fusion's own outline of these is the highlight.
bool IsMarked(const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return button != nullptr && (button->features & QStyleOptionButton::DefaultButton) != 0;
}

} // namespace

int CThemeStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* data) const {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

void CThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    const bool isDark = IsDark(option->palette);
    if (isDark && element == PE_IndicatorRadioButton)
        return DrawRadio(*painter, *option);
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (!isDark)
        return;
    switch (element) {
    case PE_IndicatorCheckBox:
        return DrawOutline(*painter, option->rect, OutlineOf(*option), 0);
    case PE_Frame:
        return DrawOutline(*painter, option->rect, OutlineOf(*option), 0);
    case PE_FrameLineEdit:
        return DrawOutline(*painter, option->rect, OutlineOf(*option), corner);
    case PE_FrameGroupBox:
        return DrawOutline(*painter, GroupFrame(*this, *option, widget), OutlineOf(*option), corner);
    case PE_PanelButtonCommand:
        if (!IsFlat(*option))
            DrawOutline(*painter, option->rect,
                        IsMarked(*option) ? option->palette.color(QPalette::Highlight) : OutlineOf(*option),
                        corner);
        return;
    default:
        return;
    }
}

void CThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                     const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (IsDark(option->palette) && HasFrame(control, *option))
        DrawOutline(*painter, option->rect, OutlineOf(*option), corner);
}

} // namespace velmor
