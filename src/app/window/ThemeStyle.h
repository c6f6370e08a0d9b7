#pragma once

#include <QProxyStyle>

namespace velmor {

/// Fusion without the desktop's pictures on the buttons of dialogs, which no two desktops have alike. Fusion draws
/// outlines darker than the ground, which a dark ground swallows: there this style draws lighter ones over them,
/// and marks what is checked with the highlight.
class CThemeStyle final : public QProxyStyle {
public:
    CThemeStyle() : QProxyStyle("Fusion") {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

} // namespace velmor
