#pragma once

#include "views/ViewMapping.h"

#include <QLine>
#include <QLineF>
#include <QPointF>
#include <QPolygonF>
#include <QRect>
#include <QRectF>
#include <QRegion>

#include <optional>
#include <vector>

class QPainter;

namespace velmor {

/// What is drawn over the image and is not part of it, in client coordinates. Null members are not drawn.
struct CCelOverlay {
    QRect band;                      ///< the drag rectangle
    QLine gradient;                  ///< from where a gradient begins to where it ends
    QRectF brush;                    ///< outline of the round brush
    std::vector<QPolygonF> outlines; ///< any other lines, closed where the last point is the first
    std::vector<QLineF> gaps;        ///< between the ends of lines
    std::optional<QPointF> leak;     ///< where a fill would have run out

    bool operator==(const CCelOverlay&) const = default;
};

/// Where a round brush stamps when the pointer is at a client point: around its pixels as they are displayed.
QRectF BrushOutline(const CViewMapping& mapping, CPoint pointer, int brush);

/// What must be repainted when the overlay appears or goes away.
QRegion RegionOf(const CCelOverlay& overlay);
/// Draws in black and white, to be seen on every image.
void Draw(QPainter& painter, const CCelOverlay& overlay);

} // namespace velmor
