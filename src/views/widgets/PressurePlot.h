#pragma once

#include "image/stroke/PressureCurve.h"
#include "views/widgets/CurvePlot.h"

#include <functional>

namespace velmor {

/// A pressure curve with its two handles.
class CPressurePlot final : public CCurvePlot {
public:
    explicit CPressurePlot(const CPressureCurve& curve);

    const CPressureCurve& Curve() const { return m_curve; }
    void SetCurve(const CPressureCurve& curve);
    /// Shows what a pressure counts for; nothing below 0.
    void ShowPressure(double pressure);

    std::function<void()> changed; ///< called when the user has changed the curve

    QSize sizeHint() const override { return {200, 200}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    QPointF ShownAt(CRealPoint point) const override;
    CRealPoint PointAt(QPointF shown) const override;
    CRealPoint HandlePlace(bool second) const override { return second ? m_curve.second : m_curve.first; }
    void PlaceHandle(bool second, CRealPoint to) override;

private:
    void DrawGround(QPainter& painter) const;
    void DrawCurve(QPainter& painter) const;
    void DrawHandles(QPainter& painter) const;

    CPressureCurve m_curve;
    double m_pressure = -1;
};

} // namespace velmor
