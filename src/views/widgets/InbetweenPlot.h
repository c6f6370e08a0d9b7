#pragma once

#include "xsheet/Inbetween.h"

#include <QWidget>
#include <vector>

class QPainter;

namespace velmor {

/// What inbetweening writes between a first key of 0 and a last key of 1: the value at each frame from the first
/// key to the last.
std::vector<double> InbetweenShape(InbetweenType type, CInbetweenKeys keys);

/// Draws the curve of an inbetween type with its two keys and a dot for each frame between them.
class CInbetweenPlot final : public QWidget {
public:
    explicit CInbetweenPlot(CInbetweenKeys keys);

    void SetType(InbetweenType type);

    QSize sizeHint() const override { return {230, 150}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPointF PointAt(double part, double value) const;
    void DrawCurve(QPainter& painter) const;
    void DrawFrames(QPainter& painter) const;
    void DrawKeys(QPainter& painter) const;

    CInbetweenKeys m_keys;
    InbetweenType m_type = InbetweenType::Linear;
};

} // namespace velmor
