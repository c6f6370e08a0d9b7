#pragma once

#include "views/widgets/CurvePlot.h"
#include "xsheet/Inbetween.h"

#include <vector>

namespace velmor {

/// What inbetweening writes between a first key of 0 and a last key of 1: the value at each frame from the first
/// key to the last.
std::vector<double> InbetweenShape(const CInbetweenPace& pace, CInbetweenKeys keys);

/// Draws the curve of an inbetween type with its two keys and a dot for each frame between them. Only a
/// drawn curve has handles.
class CInbetweenPlot final : public CCurvePlot {
public:
    explicit CInbetweenPlot(CInbetweenKeys keys);

    void SetPace(const CInbetweenPace& pace);
    const CPaceCurve& Curve() const { return m_pace.curve; }

    QSize sizeHint() const override { return {230, 150}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    QPointF ShownAt(CRealPoint point) const override;
    CRealPoint PointAt(QPointF shown) const override;
    bool HasHandles() const override { return m_pace.type == InbetweenType::Drawn; }
    CRealPoint HandlePlace(bool second) const override { return second ? m_pace.curve.second : m_pace.curve.first; }
    void PlaceHandle(bool second, CRealPoint to) override;

private:
    void DrawGround(QPainter& painter) const;
    void DrawCurve(QPainter& painter) const;
    void DrawFrames(QPainter& painter) const;
    void DrawKeys(QPainter& painter) const;
    void DrawHandles(QPainter& painter) const;

    CInbetweenKeys m_keys;
    CInbetweenPace m_pace = InbetweenType::Linear;
};

} // namespace velmor
