#include "views/cel/CelOverlay.h"

#include "image/paint/Tools.h"

#include <QPainter>
#include <QPen>

#include <algorithm>

namespace velmor {

namespace {

constexpr int reach = 3; ///< how far a line's drawing goes beside it, with room for fractional screen scales
constexpr double endDot = 3;
constexpr double leakRadius = 11;
constexpr QColor gapColor{226, 32, 140};
constexpr QColor leakColor{224, 36, 36};
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

// A line of one colour that is seen on every image.
template<class Shape>
void DrawMark(QPainter& painter, const QColor& color, Shape shape) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 5, Qt::SolidLine, Qt::RoundCap));
    shape();
    painter.setPen(QPen(color, 2.5, Qt::SolidLine, Qt::RoundCap));
    shape();
}

void DrawLeak(QPainter& painter, QPointF at) {
    constexpr double inner = 4;
    DrawMark(painter, leakColor, [&] {
        painter.drawEllipse(at, leakRadius, leakRadius);
        for (const QPointF& corner : {QPointF(inner, inner), QPointF(inner, -inner)})
            painter.drawLine(at - corner, at + corner);
    });
}

void DrawOutline(QPainter& painter, const QRectF& outline) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawEllipse(outline.adjusted(-1, -1, 1, 1));
    painter.setPen(QPen(Qt::white, 1));
    painter.drawEllipse(outline);
}

// Around each side alone: a long outline surrounds much that need not be repainted.
QRegion AroundOutline(const QPolygonF& outline) {
    constexpr int mostSides = 64; // a region of more is slower than painting what it leaves out
    if (outline.size() > mostSides)
        return outline.boundingRect().toAlignedRect().adjusted(-reach, -reach, reach, reach);
    QRegion region;
    for (qsizetype i = 1; i < outline.size(); ++i)
        region +=
            QRectF(outline[i - 1], outline[i]).normalized().toAlignedRect().adjusted(-reach, -reach, reach, reach);
    return region;
}

} // namespace

QRectF BrushOutline(const CViewMapping& mapping, CPoint pointer, int brush) {
    const int radius = BrushRadius(brush);
    const CPoint pixel = mapping.ViewToBuffer(pointer);
    const CRealPoint centre = mapping.ToClient(CRealPoint{pixel.x + 0.5, pixel.y + 0.5});
    const double size = std::max((2 * radius + 1) * mapping.zoom.Factor(), leastOutline);
    QRectF outline(0, 0, size, size);
    outline.moveCenter({centre.x, centre.y});
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
    for (const QPolygonF& outline : overlay.outlines)
        region += AroundOutline(outline);
    for (const QLineF& gap : overlay.gaps)
        region += QRectF(gap.p1(), gap.p2()).normalized().toAlignedRect().adjusted(-reach, -reach, reach, reach);
    if (overlay.leak) {
        const double side = 2 * (leakRadius + reach);
        region += QRectF(overlay.leak->x() - side / 2, overlay.leak->y() - side / 2, side, side).toAlignedRect();
    }
    return region;
}

void Draw(QPainter& painter, const CCelOverlay& overlay) {
    painter.save();
    for (const QLineF& gap : overlay.gaps)
        DrawMark(painter, gapColor, [&] { painter.drawLine(gap); });
    if (!overlay.gaps.empty())
        painter.setRenderHint(QPainter::Antialiasing, false);
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
    for (const QPolygonF& outline : overlay.outlines) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        DrawTwice(painter, [&] { painter.drawPolyline(outline); });
    }
    if (!overlay.brush.isNull())
        DrawOutline(painter, overlay.brush);
    if (overlay.leak)
        DrawLeak(painter, *overlay.leak);
    painter.restore();
}

} // namespace velmor
