#include "views/cel/CelOverlay.h"

#include "image/paint/Tools.h"

#include <QPainter>
#include <QPen>

#include <algorithm>

namespace velmor {

namespace {

constexpr int reach = 3; ///< how far a line's drawing goes beside it, with room for fractional screen scales
constexpr double endDot = 3;
constexpr double leastOutline = 4; ///< a brush much zoomed out must still be found

QPen Hairline(const QColor& color, Qt::PenStyle style) {
    QPen pen(color, 1, style);
    pen.setCosmetic(true);
    return pen;
}

// A line that is white where it is not black, whatever is drawn with it.
template<class Shape>
void DrawTwice(QPainter& painter, Shape shape) {
    painter.setPen(Hairline(Qt::white, Qt::SolidLine));
    shape();
    painter.setPen(Hairline(Qt::black, Qt::DashLine));
    shape();
}

void DrawOutline(QPainter& painter, const QRectF& outline) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawEllipse(outline.adjusted(-1, -1, 1, 1));
    painter.setPen(QPen(Qt::white, 1));
    painter.drawEllipse(outline);
}

} // namespace

QRectF BrushOutline(const CViewMapping& mapping, CPoint pointer, int brush) {
    const int radius = BrushRadius(brush);
    const CPoint centre = mapping.ViewToBuffer(pointer);
    const CPoint origin = mapping.Origin();
    const double factor = mapping.zoom.Factor();
    const double size = std::max((2 * radius + 1) * factor, leastOutline);
    QRectF outline(0, 0, size, size);
    outline.moveCenter(
        {origin.x + (centre.x + 0.5) * factor, origin.y + (mapping.image.height - centre.y - 0.5) * factor});
    return outline;
}

QRegion RegionOf(const CCelOverlay& overlay) {
    QRegion region;
    if (!overlay.band.isNull())
        region += QRegion(overlay.band.adjusted(-reach, -reach, reach, reach)) -
                  overlay.band.adjusted(reach, reach, -reach, -reach);
    if (!overlay.gradient.isNull())
        region += QRect(overlay.gradient.p1(), overlay.gradient.p2())
                      .normalized()
                      .adjusted(-2 * reach, -2 * reach, 2 * reach, 2 * reach);
    if (!overlay.brush.isNull())
        region += overlay.brush.toAlignedRect().adjusted(-reach, -reach, reach, reach);
    return region;
}

void Draw(QPainter& painter, const CCelOverlay& overlay) {
    painter.save();
    if (!overlay.band.isNull())
        DrawTwice(painter, [&] { painter.drawRect(overlay.band.adjusted(0, 0, -1, -1)); });
    if (!overlay.gradient.isNull()) {
        painter.setRenderHint(QPainter::Antialiasing);
        DrawTwice(painter, [&] { painter.drawLine(overlay.gradient); });
        painter.setPen(QPen(Qt::black, 1));
        painter.setBrush(Qt::white);
        for (const QPoint& end : {overlay.gradient.p1(), overlay.gradient.p2()})
            painter.drawEllipse(QPointF(end), endDot, endDot);
    }
    if (!overlay.brush.isNull())
        DrawOutline(painter, overlay.brush);
    painter.restore();
}

} // namespace velmor
