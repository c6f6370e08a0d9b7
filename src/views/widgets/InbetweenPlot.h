#pragma once

#include "xsheet/Inbetween.h"

#include <QWidget>
#include <vector>

class QPainter;

namespace velmor {

/// What inbetweening writes between a first key of 0 and a last key of 1: the value at each frame from the first
/// key to the last.
std::vector<double> InbetweenShape(const CInbetweenPace& pace, CInbetweenKeys keys);

/// Draws the curve of an inbetween type with its two keys and a dot for each frame between them. A drawn curve has
/// two handles, to be dragged or moved with the arrow keys; Home and End choose the handle.
class CInbetweenPlot final : public QWidget {
public:
    explicit CInbetweenPlot(CInbetweenKeys keys);

    void SetPace(const CInbetweenPace& pace);
    const CPaceCurve& Curve() const { return m_pace.curve; }

    QSize sizeHint() const override { return {230, 150}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool IsDrawn() const { return m_pace.type == InbetweenType::Drawn; }
    QPointF PointAt(double part, double value) const;
    CRealPoint PlaceAt(QPointF shown) const;
    CRealPoint& Handle() { return m_isSecond ? m_pace.curve.second : m_pace.curve.first; }
    void MoveHandle(CRealPoint to);
    void DrawGround(QPainter& painter) const;
    void DrawCurve(QPainter& painter) const;
    void DrawFrames(QPainter& painter) const;
    void DrawKeys(QPainter& painter) const;
    void DrawHandles(QPainter& painter) const;

    CInbetweenKeys m_keys;
    CInbetweenPace m_pace = InbetweenType::Linear;
    bool m_isSecond = false; ///< which handle is worked with
};

} // namespace velmor
