#include "views/widgets/PressurePlot.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>

namespace velmor {

namespace {

constexpr int margin = 12;
constexpr double handleRadius = 5;
constexpr double markRadius = 3.5;
constexpr int curvePoints = 64;

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

void CPressurePlot::PlaceHandle(bool second, CRealPoint to) {
    CRealPoint& handle = second ? m_curve.second : m_curve.first;
    handle = {std::clamp(to.x, 0.0, 1.0), std::clamp(to.y, 0.0, 1.0)};
    if (changed)
        changed();
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
    DrawPaper(painter);
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
    DrawLevers(painter);
    for (const bool isSecond : {false, true}) {
        painter.setBrush(isSecond == IsSecondChosen() ? palette().highlight() : palette().base());
        painter.drawEllipse(ShownAt(HandlePlace(isSecond)), handleRadius, handleRadius);
    }
}

} // namespace velmor
