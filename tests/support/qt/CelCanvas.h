#pragma once

#include "SyntheticPen.h"
#include "image/RealPoint.h"
#include "views/ViewMapping.h"
#include "views/cel/CelView.h"

#include <QScrollBar>
#include <QTest>
#include <vector>

namespace velmor::testing {

/// What a hand does on the cel editor's canvas. Points are image coordinates, y up.
class CCelCanvas {
public:
    /// `image` is the size of what is edited.
    CCelCanvas(CCelView& view, CSize image) : m_view(view), m_image(image) {}

    QPointF Shown(CRealPoint point) const {
        const QWidget& canvas = *m_view.viewport();
        const CViewMapping mapping{m_image,
                                   {canvas.width(), canvas.height()},
                                   m_view.Zoom(),
                                   {m_view.horizontalScrollBar()->value(), m_view.verticalScrollBar()->value()},
                                   m_view.Turn()};
        const CRealPoint client = mapping.ToClient(point);
        return {client.x, client.y};
    }

    /// With the pen of a tablet; of the points between the ends every `step`th is felt.
    void Stroke(const std::vector<CRealPoint>& way, std::size_t step = 1) const {
        CSyntheticPen pen(*m_view.viewport());
        pen.Press(Shown(way.front()), 0.6);
        for (std::size_t i = step; i < way.size(); i += step)
            pen.Move(Shown(way[i]), 0.6);
        pen.Release(Shown(way.back()));
    }

    void Click(CRealPoint at) const {
        QTest::mouseClick(m_view.viewport(), Qt::LeftButton, {}, Shown(at).toPoint());
    }

private:
    CCelView& m_view;
    CSize m_image;
};

} // namespace velmor::testing
