#pragma once

#include "image/stroke/PressureCurve.h"

#include <QWidget>
#include <functional>

class QPainter;

namespace velmor {

/// A pressure curve with its two handles, to be dragged or moved with the arrow keys; Home and End choose the
/// handle.
class CPressurePlot final : public QWidget {
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
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointF ShownAt(CRealPoint point) const;
    CRealPoint PointAt(QPointF shown) const;
    CRealPoint& Handle() { return m_isSecond ? m_curve.second : m_curve.first; }
    void MoveHandle(CRealPoint to);
    void DrawGround(QPainter& painter) const;
    void DrawCurve(QPainter& painter) const;
    void DrawHandles(QPainter& painter) const;

    CPressureCurve m_curve;
    bool m_isSecond = false; ///< which handle is worked with
    double m_pressure = -1;
};

} // namespace velmor
