#include "views/camera/GuidesPainter.h"

#include "scene/CameraAids.h"
#include "views/camera/CameraMarksPainter.h"
#include "xsheet/CameraMap.h"
#include "xsheet/FieldChart.h"

#include <QFontMetricsF>
#include <QLineF>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <vector>

namespace velmor {

namespace {

constexpr double wideRatio = 16.0 / 9;
constexpr double tallRatio = 4.0 / 3;

/// One painting of guides.
class CGuides {
public:
    CGuides(QPainter& painter, const CCameraAidChoices& choices, const CGuidedFrame& frame,
            const CPictureMapping& mapping, const CGuideInk& ink)
        : m_painter(painter),
          m_choices(choices),
          m_frame(frame),
          m_mapping(mapping),
          m_ink(ink),
          m_stage(choices.fieldsOnStage ? frame.camera : CCameraFrame{}, frame.size) {
        QFont font = painter.font();
        font.setPixelSize(std::max(1, static_cast<int>(ink.textHeight)));
        painter.setFont(font);
    }

    void PaintChart();
    void PaintFrames();

private:
    QPointF OnStage(CRealPoint point) const { return m_mapping.ToView(m_stage.ToView(point)); }
    QRectF Shown(const CRealRect& rect) const {
        return {m_mapping.ToView(CRealPoint{rect.left, rect.top}),
                m_mapping.ToView(CRealPoint{rect.right, rect.bottom})};
    }
    void PaintLines(const QList<QLineF>& lines, const QColor& color, double width);
    void PaintRect(const CRealRect& rect, const QColor& color, Qt::PenStyle style);
    void PaintText(QPointF middle, const QString& text, const QColor& color);
    void PaintNumbers();
    void PaintSafeAreas(const CRealRect& frame);

    QPainter& m_painter;
    const CCameraAidChoices& m_choices;
    const CGuidedFrame& m_frame;
    const CPictureMapping& m_mapping;
    const CGuideInk& m_ink;
    CCameraMap m_stage;
};

void CGuides::PaintLines(const QList<QLineF>& lines, const QColor& color, double width) {
    if (m_ink.rim.alpha() > 0) {
        m_painter.setPen(QPen(m_ink.rim, width + 2, Qt::SolidLine, Qt::FlatCap));
        m_painter.drawLines(lines);
    }
    m_painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap));
    m_painter.drawLines(lines);
}

// Every line is the edge of a field; those of every fourth, and the two through the middle, are stronger.
void CGuides::PaintChart() {
    const int fields = m_choices.fields;
    QList<QLineF> plain;
    QList<QLineF> strong;
    const CRealRect whole = WholeFrame(m_frame.size);
    for (int field = -fields; field <= fields; ++field) {
        const CRealRect edge = FieldOf(m_frame.size, field, fields); // mirrored where it is negative
        QList<QLineF>& lines = field % 4 == 0 ? strong : plain;
        lines.append({OnStage({edge.right, whole.bottom}), OnStage({edge.right, whole.top})});
        lines.append({OnStage({whole.left, edge.top}), OnStage({whole.right, edge.top})});
    }
    QColor faint = m_ink.chart;
    faint.setAlphaF(0.55F);
    m_painter.setPen(QPen(faint, m_ink.width));
    m_painter.drawLines(plain);
    PaintLines(strong, m_ink.chart, m_ink.width);
    PaintNumbers();
}

void CGuides::PaintNumbers() {
    const int fields = m_choices.fields;
    const CRealPoint centre = WholeFrame(m_frame.size).Centre();
    const int step = fields > 12 ? 4 : 2;
    for (int field = step; field < fields; field += step) {
        const CRealRect edge = FieldOf(m_frame.size, field, fields);
        const QString number = QString::number(field);
        for (const CRealPoint& at : {CRealPoint{edge.right, centre.y}, CRealPoint{edge.left, centre.y},
                                     CRealPoint{centre.x, edge.top}, CRealPoint{centre.x, edge.bottom}})
            PaintText(OnStage(at), number, m_ink.chart);
    }
    const double middle = (fields - step / 2.0) / fields / 2;
    const double across = m_frame.size.width * middle;
    const double up = m_frame.size.height * middle;
    PaintText(OnStage({centre.x, centre.y + up}), "N", m_ink.chart);
    PaintText(OnStage({centre.x, centre.y - up}), "S", m_ink.chart);
    PaintText(OnStage({centre.x + across, centre.y}), "E", m_ink.chart);
    PaintText(OnStage({centre.x - across, centre.y}), "W", m_ink.chart);
}

void CGuides::PaintText(QPointF middle, const QString& text, const QColor& color) {
    const QRectF box = QFontMetricsF(m_painter.font()).boundingRect(text);
    const QPointF at = middle - box.center();
    if (m_ink.rim.alpha() > 0) {
        QPainterPath path;
        path.addText(at, m_painter.font(), text);
        m_painter.strokePath(path, QPen(QColor(0, 0, 0, 210), 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    m_painter.setPen(color);
    m_painter.drawText(at, text);
}

void CGuides::PaintRect(const CRealRect& rect, const QColor& color, Qt::PenStyle style) {
    const QRectF shown = Shown(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    m_painter.setBrush(Qt::NoBrush);
    if (m_ink.rim.alpha() > 0) {
        m_painter.setPen(QPen(m_ink.rim, m_ink.width + 2));
        m_painter.drawRect(shown);
    }
    m_painter.setPen(QPen(color, m_ink.width, style));
    m_painter.drawRect(shown);
}

void CGuides::PaintSafeAreas(const CRealRect& frame) {
    // One name at the top and one at the bottom: in a small picture they would lie on each other.
    const auto paint = [&](int percent, const char* name, bool isAbove) {
        const CRealRect area = SafeArea(frame, percent);
        PaintRect(area, m_ink.safe, Qt::SolidLine);
        const QRectF shown = Shown(area);
        const double right = QFontMetricsF(m_painter.font()).horizontalAdvance(name) / 2 + 4;
        PaintText(isAbove ? shown.topLeft() + QPointF(right, m_ink.textHeight)
                          : shown.bottomLeft() + QPointF(right, -m_ink.textHeight),
                  name, m_ink.safe);
    };
    if (m_choices.actionSafe)
        paint(m_choices.actionPercent, "Action", true);
    if (m_choices.titleSafe)
        paint(m_choices.titlePercent, "Title", false);
}

void CGuides::PaintFrames() {
    std::vector<CRealRect> frames;
    if (m_choices.wideFrame)
        frames.push_back(FrameOfRatio(m_frame.size, wideRatio));
    if (m_choices.tallFrame)
        frames.push_back(FrameOfRatio(m_frame.size, tallRatio));
    QPainterPath beside;
    if (!frames.empty())
        beside.addRect(Shown(WholeFrame(m_frame.size)));
    for (const CRealRect& frame : frames) {
        QPainterPath seen;
        seen.addRect(Shown(frame));
        beside = beside.subtracted(seen);
    }
    m_painter.fillPath(beside, m_ink.beside);
    for (const CRealRect& frame : frames)
        PaintRect(frame, m_ink.frames, Qt::SolidLine);
    if (frames.empty())
        frames.push_back(WholeFrame(m_frame.size));
    for (const CRealRect& frame : frames)
        PaintSafeAreas(frame);
}

} // namespace

CGuideInk PaperInk(double dotsPerPoint) {
    CGuideInk ink;
    ink.chart = QColor(60, 60, 60);
    ink.frames = Qt::black;
    ink.safe = Qt::black;
    ink.rim = Qt::transparent;
    ink.beside = QColor(0, 0, 0, 30);
    ink.width = 0.5 * dotsPerPoint;
    ink.textHeight = 8 * dotsPerPoint;
    return ink;
}

void PaintGuides(QPainter& painter, const CCameraAidChoices& choices, const CGuidedFrame& frame,
                 const CPictureMapping& mapping, const CGuideInk& ink) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(QRectF(mapping.origin, QSizeF(frame.size.width, frame.size.height) * mapping.factor),
                        Qt::IntersectClip);
    CGuides guides(painter, choices, frame, mapping, ink);
    guides.PaintFrames(); // whose shade is not to lie over the numbers
    if (choices.fields > 0)
        guides.PaintChart();
    painter.restore();
}

} // namespace velmor
