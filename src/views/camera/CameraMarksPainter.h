#pragma once

#include "image/Geometry.h"
#include "image/RealPoint.h"

#include <QPointF>

class QPainter;

namespace velmor {

struct CCameraMarks;

/// Where the zoomed picture stands in the view.
struct CPictureMapping {
    QPointF origin; ///< upper left corner of the picture
    double factor = 1;
    int frameHeight = 0;

    /// From frame coordinates, whose y points up.
    QPointF ToView(CPoint point) const {
        return ToView(CRealPoint{static_cast<double>(point.x), static_cast<double>(point.y)});
    }
    QPointF ToView(CRealPoint point) const {
        return {origin.x() + point.x * factor, origin.y() + (static_cast<double>(frameHeight) - point.y) * factor};
    }
};

/// Motion paths, each level in a colour of its own, and the outlines of what the mouse would move. Everything has a
/// dark rim, to be seen on any picture, and keeps its thickness at every zoom.
void PaintCameraMarks(QPainter& painter, const CCameraMarks& marks, const CPictureMapping& mapping);

} // namespace velmor
