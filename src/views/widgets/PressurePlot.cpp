#include "views/widgets/PressurePlot.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygonF>
#include <algorithm>

namespace velmor {

namespace {

constexpr int margin = 12;
constexpr double handleRadius = 5;
constexpr double markRadius = 3.5;
constexpr int curvePoints = 64;
constexpr double keyStep = 0.01;
constexpr double largeKeyStep = 0.1;

} // namespace

CPressurePlot::CPressurePlot(const CPressureCurve& curve) : m_curve(curve) {
    setMinimumSize(sizeHint());
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Pressure curve");
    setToolTip(
        "From left to right how hard the pen is pressed, upwards what that counts for: drag the two handles, "
        "or move them with the arrow keys (Home and End choose the handle)");
}

void CPressurePlot::SetCurve(const CPressureCurve& curve) {
    m_curve = curve;
    update();
}

void CPressurePlot::ShowPressure(double pressure) {
    m_pressure = pressure;
    update();
}

QPointF CPressurePlot::ShownAt(CRealPoint point) const {
    const QRectF area = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    return {area.left() + point.x * area.width(), area.bottom() - point.y * area.height()};
}

CRealPoint CPressurePlot::PointAt(QPointF shown) const {
    const QRectF area = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    return {(shown.x() - area.left()) / area.width(), (area.bottom() - shown.y()) / area.height()};
}

void CPressurePlot::MoveHandle(CRealPoint to) {
    Handle() = {std::clamp(to.x, 0.0, 1.0), std::clamp(to.y, 0.0, 1.0)};
    update();
    if (changed)
        changed();
}

void CPressurePlot::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const auto away = [&](CRealPoint handle) { return (ShownAt(handle) - event->position()).manhattanLength(); };
    m_isSecond = away(m_curve.second) < away(m_curve.first);
    MoveHandle(PointAt(event->position()));
}

void CPressurePlot::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton))
        MoveHandle(PointAt(event->position()));
}

void CPressurePlot::keyPressEvent(QKeyEvent* event) {
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

void CPressurePlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawGround(painter);
    DrawCurve(painter);
    DrawHandles(painter);
    if (m_pressure < 0)
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().text());
    painter.drawEllipse(ShownAt({m_pressure, m_curve.Of(m_pressure)}), markRadius, markRadius);
}

void CPressurePlot::DrawGround(QPainter& painter) const {
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), 1));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    for (const double share : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        painter.drawLine(ShownAt({share, 0}), ShownAt({share, 1}));
        painter.drawLine(ShownAt({0, share}), ShownAt({1, share}));
    }
}

void CPressurePlot::DrawCurve(QPainter& painter) const {
    QPolygonF line;
    for (int i = 0; i <= curvePoints; ++i) {
        const double pressure = static_cast<double>(i) / curvePoints;
        line << ShownAt({pressure, m_curve.Of(pressure)});
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
}

void CPressurePlot::DrawHandles(QPainter& painter) const {
    painter.setPen(QPen(palette().color(QPalette::Text), 1));
    painter.drawLine(ShownAt({0, 0}), ShownAt(m_curve.first));
    painter.drawLine(ShownAt({1, 1}), ShownAt(m_curve.second));
    for (const bool isSecond : {false, true}) {
        painter.setBrush(isSecond == m_isSecond ? palette().highlight() : palette().base());
        painter.drawEllipse(ShownAt(isSecond ? m_curve.second : m_curve.first), handleRadius, handleRadius);
    }
}

} // namespace velmor
