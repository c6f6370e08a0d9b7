#include "views/widgets/InbetweenPlot.h"

#include <QKeyEvent>
#include <QMouseEvent>
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
constexpr double keyStep = 0.01;
constexpr double largeKeyStep = 0.1;

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
    setFocusPolicy(IsDrawn() ? Qt::StrongFocus : Qt::NoFocus);
    setCursor(IsDrawn() ? Qt::CrossCursor : Qt::ArrowCursor);
    setToolTip(IsDrawn()
                   ? "How the values run from the first key to the last, frame by frame: drag the two handles, "
                     "or move them with the arrow keys (Home and End choose the handle)"
                   : "How the values run from the first key to the last, frame by frame");
    update();
}

// A drawn curve has room for what swings back or over.
QPointF CInbetweenPlot::PointAt(double part, double value) const {
    const QRectF area = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    const double beyond = IsDrawn() ? CPaceCurve::mostBeyond : 0;
    return {area.left() + part * area.width(), area.bottom() - (value + beyond) / (1 + 2 * beyond) * area.height()};
}

CRealPoint CInbetweenPlot::PlaceAt(QPointF shown) const {
    const QPointF zero = PointAt(0, 0);
    const QPointF one = PointAt(1, 1);
    return {(shown.x() - zero.x()) / (one.x() - zero.x()), (shown.y() - zero.y()) / (one.y() - zero.y())};
}

void CInbetweenPlot::MoveHandle(CRealPoint to) {
    Handle() = to;
    m_pace.curve = m_pace.curve.Kept();
    update();
}

void CInbetweenPlot::mousePressEvent(QMouseEvent* event) {
    if (!IsDrawn() || event->button() != Qt::LeftButton)
        return;
    const auto away = [&](CRealPoint handle) {
        return (PointAt(handle.x, handle.y) - event->position()).manhattanLength();
    };
    m_isSecond = away(m_pace.curve.second) < away(m_pace.curve.first);
    MoveHandle(PlaceAt(event->position()));
}

void CInbetweenPlot::mouseMoveEvent(QMouseEvent* event) {
    if (IsDrawn() && event->buttons().testFlag(Qt::LeftButton))
        MoveHandle(PlaceAt(event->position()));
}

void CInbetweenPlot::keyPressEvent(QKeyEvent* event) {
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? largeKeyStep : keyStep;
    const CRealPoint at = Handle();
    switch (event->key()) {
    case Qt::Key_Left:
        return MoveHandle({at.x - step, at.y});
    case Qt::Key_Right:
        return MoveHandle({at.x + step, at.y});
    case Qt::Key_Down:
        return MoveHandle({at.x, at.y - step});
    case Qt::Key_Up:
        return MoveHandle({at.x, at.y + step});
    case Qt::Key_Home:
    case Qt::Key_End:
        m_isSecond = event->key() == Qt::Key_End;
        return update();
    default:
        QWidget::keyPressEvent(event);
    }
}

void CInbetweenPlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawGround(painter);
    DrawCurve(painter);
    DrawFrames(painter);
    DrawKeys(painter);
    if (IsDrawn())
        DrawHandles(painter);
}

void CInbetweenPlot::DrawGround(QPainter& painter) const {
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), 1));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    for (const double value : {0.0, 1.0})
        painter.drawLine(PointAt(0, value), PointAt(1, value));
}

void CInbetweenPlot::DrawCurve(QPainter& painter) const {
    const std::vector<double> values = InbetweenShape({m_pace.type, m_pace.curve}, smooth);
    QPolygonF line;
    for (int i = 0; i <= smooth.last; ++i)
        line << PointAt(static_cast<double>(i) / smooth.last, values[static_cast<std::size_t>(i)]);
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
        painter.drawEllipse(PointAt(static_cast<double>(i) / steps, values[static_cast<std::size_t>(i)]),
                            frameRadius, frameRadius);
}

// A constant overwrites the last key, which is then drawn hollow.
void CInbetweenPlot::DrawKeys(QPainter& painter) const {
    const bool overwritten = m_pace.type == InbetweenType::Constant;
    painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
    painter.setBrush(palette().highlight());
    painter.drawEllipse(PointAt(0, 0), keyRadius, keyRadius);
    if (overwritten) {
        painter.drawEllipse(PointAt(1, 0), frameRadius, frameRadius);
        painter.setBrush(palette().base());
    }
    painter.drawEllipse(PointAt(1, 1), keyRadius, keyRadius);
}

void CInbetweenPlot::DrawHandles(QPainter& painter) const {
    const auto shown = [this](CRealPoint handle) { return PointAt(handle.x, handle.y); };
    painter.setPen(QPen(palette().color(QPalette::Text), 1));
    painter.drawLine(PointAt(0, 0), shown(m_pace.curve.first));
    painter.drawLine(PointAt(1, 1), shown(m_pace.curve.second));
    for (const bool isSecond : {false, true}) {
        painter.setBrush(isSecond == m_isSecond ? palette().highlight() : palette().base());
        const QPointF at = shown(isSecond ? m_pace.curve.second : m_pace.curve.first);
        painter.drawRect(QRectF(at.x() - handleRadius, at.y() - handleRadius, 2 * handleRadius, 2 * handleRadius));
    }
}

} // namespace velmor
