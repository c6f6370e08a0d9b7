#include "views/widgets/InbetweenPlot.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

namespace velmor {

namespace {

constexpr int margin = 16;
constexpr double keyRadius = 5;
constexpr double frameRadius = 2.5;
constexpr double leastSpacing = 7; // between the dots of frames; of closer ones some are left out
constexpr CInbetweenKeys smooth{0, 96};
constexpr double handleRadius = 5;

} // namespace

std::vector<double> InbetweenShape(const CInbetweenPace& pace, CInbetweenKeys keys) {
    std::vector<double> values(static_cast<std::size_t>(keys.last - keys.first + 1), 0.0);
    if (pace.type == InbetweenType::Constant)
        return values;
    const CBetweenValues between(pace, keys, 0, 1);
    for (std::size_t i = 1; i + 1 < values.size(); ++i)
        values[i] = between.At(keys.first + static_cast<int>(i));
    values.back() = 1; // the keys themselves are not written
    return values;
}

CInbetweenPlot::CInbetweenPlot(CInbetweenKeys keys) : m_keys(keys) {
    setObjectName("plot");
    setMinimumSize(sizeHint());
    setAccessibleName("The chosen curve");
}

void CInbetweenPlot::SetPace(const CInbetweenPace& pace) {
    m_pace = pace;
    setFocusPolicy(HasHandles() ? Qt::StrongFocus : Qt::NoFocus);
    setCursor(HasHandles() ? Qt::CrossCursor : Qt::ArrowCursor);
    setToolTip(HasHandles()
                   ? "How the values run from the first key to the last, frame by frame: drag the two handles, "
                     "or move them with the arrow keys (Home and End choose the handle)"
                   : "How the values run from the first key to the last, frame by frame");
    update();
}

// A drawn curve has room for what swings back or over.
QPointF CInbetweenPlot::ShownAt(CRealPoint point) const {
    const QRectF area = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    const double beyond = HasHandles() ? CPaceCurve::mostBeyond : 0;
    return {area.left() + point.x * area.width(),
            area.bottom() - (point.y + beyond) / (1 + 2 * beyond) * area.height()};
}

CRealPoint CInbetweenPlot::PointAt(QPointF shown) const {
    const QPointF zero = ShownAt({0, 0});
    const QPointF one = ShownAt({1, 1});
    return {(shown.x() - zero.x()) / (one.x() - zero.x()), (shown.y() - zero.y()) / (one.y() - zero.y())};
}

void CInbetweenPlot::PlaceHandle(bool second, CRealPoint to) {
    (second ? m_pace.curve.second : m_pace.curve.first) = to;
    m_pace.curve = m_pace.curve.Kept();
}

void CInbetweenPlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawGround(painter);
    DrawCurve(painter);
    DrawFrames(painter);
    DrawKeys(painter);
    if (HasHandles())
        DrawHandles(painter);
}

void CInbetweenPlot::DrawGround(QPainter& painter) const {
    DrawPaper(painter);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    for (const double value : {0.0, 1.0})
        painter.drawLine(ShownAt({0, value}), ShownAt({1, value}));
}

void CInbetweenPlot::DrawCurve(QPainter& painter) const {
    const std::vector<double> values = InbetweenShape({m_pace.type, m_pace.curve}, smooth);
    QPolygonF line;
    for (int i = 0; i <= smooth.last; ++i)
        line << ShownAt({static_cast<double>(i) / smooth.last, values[static_cast<std::size_t>(i)]});
    QColor color = palette().color(QPalette::Highlight);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
}

void CInbetweenPlot::DrawFrames(QPainter& painter) const {
    const std::vector<double> values = InbetweenShape(m_pace, m_keys);
    const int steps = m_keys.last - m_keys.first;
    const double spacing = (width() - 2.0 * margin) / steps;
    const int every = std::max(1, static_cast<int>(leastSpacing / spacing + 0.999));
    painter.setPen(QPen(palette().color(QPalette::Base), 1));
    painter.setBrush(palette().text());
    for (int i = every; i < steps; i += every)
        painter.drawEllipse(ShownAt({static_cast<double>(i) / steps, values[static_cast<std::size_t>(i)]}),
                            frameRadius, frameRadius);
}

// A constant overwrites the last key, which is then drawn hollow.
void CInbetweenPlot::DrawKeys(QPainter& painter) const {
    const bool overwritten = m_pace.type == InbetweenType::Constant;
    painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
    painter.setBrush(palette().highlight());
    painter.drawEllipse(ShownAt({0, 0}), keyRadius, keyRadius);
    if (overwritten) {
        painter.drawEllipse(ShownAt({1, 0}), frameRadius, frameRadius);
        painter.setBrush(palette().base());
    }
    painter.drawEllipse(ShownAt({1, 1}), keyRadius, keyRadius);
}

void CInbetweenPlot::DrawHandles(QPainter& painter) const {
    DrawLevers(painter);
    for (const bool isSecond : {false, true}) {
        painter.setBrush(isSecond == IsSecondChosen() ? palette().highlight() : palette().base());
        const QPointF at = ShownAt(HandlePlace(isSecond));
        painter.drawRect(QRectF(at.x() - handleRadius, at.y() - handleRadius, 2 * handleRadius, 2 * handleRadius));
    }
}

} // namespace velmor
