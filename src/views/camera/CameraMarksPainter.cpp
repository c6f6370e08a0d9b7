#include "views/camera/CameraMarksPainter.h"

#include "views/camera/CameraMarks.h"

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr QColor rimColor(40, 40, 40);
constexpr double rimWidth = 1; // on either side
constexpr double outlineWidth = 1;

// Neighbouring levels get hues far apart.
QColor ColorOfLevel(int level) {
    constexpr double goldenSection = 0.61803398875;
    const double hue = 0.09 + level * goldenSection;
    return QColor::fromHslF(static_cast<float>(hue - std::floor(hue)), 0.95F, 0.64F);
}

// A path as it is drawn: points that would fall on each other are drawn once.
struct CDrawnPath {
    QPolygonF line;
    QPolygonF ticks;
    QPolygonF drawings;
    QPolygonF keys;
};

void AddPoint(CDrawnPath& drawn, QPointF point, PathMark mark) {
    constexpr double leastDistance = 1.5;
    const bool isFar = drawn.line.isEmpty() || (point - drawn.line.last()).manhattanLength() >= leastDistance;
    if (mark == PathMark::Key)
        drawn.keys.append(point);
    else if (mark == PathMark::Drawing)
        drawn.drawings.append(point);
    else if (isFar)
        drawn.ticks.append(point);
    if (isFar || mark != PathMark::Tick)
        drawn.line.append(point);
}

CDrawnPath DrawnPathOf(const CPathRun& run, const CPictureMapping& mapping) {
    CDrawnPath drawn;
    for (const CPathPoint& point : run.points)
        AddPoint(drawn, mapping.ToView(point.at), point.mark);
    return drawn;
}

// Line by line, with caps that close the joints: stroking a polyline as a whole is very much slower.
void PaintLines(QPainter& painter, const QList<QLineF>& lines, const QColor& color, double width) {
    painter.setPen(QPen(rimColor, width + 2 * rimWidth, Qt::SolidLine, Qt::SquareCap));
    painter.drawLines(lines);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap));
    painter.drawLines(lines);
}

void AppendLines(QList<QLineF>& lines, const QPolygonF& points) {
    for (qsizetype i = 1; i < points.size(); ++i)
        lines.append({points[i - 1], points[i]});
}

// A dot is drawn once and copied to its places.
void PaintDots(QPainter& painter, const QPolygonF& dots, const QColor& color, double diameter) {
    const double side = std::ceil(diameter + 2 * rimWidth) + 1;
    const double ratio = painter.device()->devicePixelRatioF();
    QImage dot(QSizeF(side * ratio, side * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    dot.setDevicePixelRatio(ratio);
    dot.fill(Qt::transparent);
    QPainter dotPainter(&dot);
    dotPainter.setRenderHint(QPainter::Antialiasing);
    dotPainter.setPen(QPen(rimColor, rimWidth));
    dotPainter.setBrush(color);
    const double radius = (diameter + rimWidth) / 2;
    dotPainter.drawEllipse(QPointF(side / 2, side / 2), radius, radius);
    dotPainter.end();
    for (const QPointF& place : dots)
        painter.drawImage(place - QPointF(side / 2, side / 2), dot);
}

void PaintKeys(QPainter& painter, const QPolygonF& keys, const QColor& color) {
    constexpr double reach = 4.5;
    painter.setPen(QPen(rimColor, rimWidth));
    painter.setBrush(color);
    for (const QPointF& key : keys)
        painter.drawPolygon(QPolygonF({key + QPointF(0, -reach), key + QPointF(reach, 0), key + QPointF(0, reach),
                                       key + QPointF(-reach, 0)}));
    painter.setBrush(Qt::NoBrush);
}

void PaintRun(QPainter& painter, const CPathRun& run, const QColor& color, const CPictureMapping& mapping,
              bool hasGrips) {
    constexpr double lineWidth = 1.8;
    const double tickDiameter = hasGrips ? 6 : 4;
    constexpr double drawingDiameter = 5.5;
    const CDrawnPath drawn = DrawnPathOf(run, mapping);
    QList<QLineF> lines;
    AppendLines(lines, drawn.line);
    PaintLines(painter, lines, color, lineWidth);
    PaintDots(painter, drawn.ticks, hasGrips ? QColor(Qt::white) : color, tickDiameter);
    PaintDots(painter, drawn.drawings, color, drawingDiameter);
    PaintKeys(painter, drawn.keys, color);
}

// Two rings, so that the current frame is found among keys at once.
void PaintCurrent(QPainter& painter, QPointF point, const QColor& color) {
    painter.setPen(QPen(rimColor, rimWidth));
    painter.setBrush(Qt::white);
    painter.drawEllipse(point, 6, 6);
    painter.setBrush(color);
    painter.drawEllipse(point, 3.5, 3.5);
    painter.setBrush(Qt::NoBrush);
}

// To the middle of a pixel, where a thin level line is sharp.
QPointF Sharp(QPointF point) {
    return {std::floor(point.x()) + 0.5, std::floor(point.y()) + 0.5};
}

QList<QLineF> Cross(QPointF centre, double reach) {
    return {{centre - QPointF(reach, 0), centre + QPointF(reach, 0)},
            {centre - QPointF(0, reach), centre + QPointF(0, reach)}};
}

void PaintOutline(QPainter& painter, const CCelOutline& outline, const CPictureMapping& mapping) {
    constexpr double handle = 6;
    QPolygonF corners;
    for (const CPoint& corner : outline.corners)
        corners.append(Sharp(mapping.ToView(corner)));
    QList<QLineF> lines = Cross(Sharp(mapping.ToView(outline.centre)), 6);
    AppendLines(lines, corners);
    lines.append({corners.last(), corners.first()});
    PaintLines(painter, lines, Qt::white, outlineWidth);
    painter.setPen(QPen(rimColor, rimWidth));
    painter.setBrush(Qt::white);
    for (const QPointF& corner : corners)
        painter.drawRect(QRectF(corner.x() - handle / 2, corner.y() - handle / 2, handle, handle));
    painter.setBrush(Qt::NoBrush);
}

// The camera is what frames the picture: corners inside its edges, as in a viewfinder.
void PaintCamera(QPainter& painter, CSize frame, const CPictureMapping& mapping) {
    const QRectF picture(mapping.origin, QSizeF(frame.width * mapping.factor, frame.height * mapping.factor));
    const double shorter = std::min(picture.width(), picture.height());
    const double inset = std::min(8.0, shorter / 16);
    const double reach = std::min(28.0, shorter / 6);
    const QRectF finder = picture.adjusted(inset, inset, -inset, -inset);
    QList<QLineF> lines = Cross(Sharp(picture.center()), reach / 3);
    const auto corner = [&](QPointF edge, double dx, double dy) {
        const QPointF at = Sharp(edge);
        lines.append({at, at + QPointF(dx, 0)});
        lines.append({at, at + QPointF(0, dy)});
    };
    corner(finder.topLeft(), reach, reach);
    corner(finder.topRight(), -reach, reach);
    corner(finder.bottomRight(), -reach, -reach);
    corner(finder.bottomLeft(), reach, -reach);
    PaintLines(painter, lines, QColor(255, 214, 90), outlineWidth);
}

} // namespace

void PaintCameraMarks(QPainter& painter, const CCameraMarks& marks, const CPictureMapping& mapping) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const CLevelPath& level : marks.paths)
        for (const CPathRun& run : level.path)
            PaintRun(painter, run, ColorOfLevel(level.level), mapping, marks.hasGrips);
    for (const CCelOutline& outline : marks.outlines)
        PaintOutline(painter, outline, mapping);
    if (marks.cameraSelected)
        PaintCamera(painter, marks.frame, mapping);
    for (const CLevelPath& level : marks.paths)
        if (level.current)
            PaintCurrent(painter, mapping.ToView(*level.current), ColorOfLevel(level.level));
    painter.restore();
}

} // namespace velmor
