#pragma once

#include "image/RealPoint.h"

#include <QWidget>

class QPainter;

namespace velmor {

/// A curve with two handles, to be dragged or moved with the arrow keys; Home and End choose the handle.
class CCurvePlot : public QWidget {
protected:
    void mousePressEvent(QMouseEvent* event) final;
    void mouseMoveEvent(QMouseEvent* event) final;
    void keyPressEvent(QKeyEvent* event) final;

    // Places of the curve, and where they are shown.
    virtual QPointF ShownAt(CRealPoint point) const = 0;
    virtual CRealPoint PointAt(QPointF shown) const = 0;

    virtual bool HasHandles() const { return true; }
    virtual CRealPoint HandlePlace(bool second) const = 0;
    /// What the handle is given may be out of reach.
    virtual void PlaceHandle(bool second, CRealPoint to) = 0;
    /// The one that is worked with.
    bool IsSecondChosen() const { return m_isSecond; }

    /// The paper that the curve is on.
    void DrawPaper(QPainter& painter) const;
    /// The lines from the ends of the curve to its handles.
    void DrawLevers(QPainter& painter) const;

private:
    void Move(CRealPoint to);

    bool m_isSecond = false;
};

} // namespace velmor
