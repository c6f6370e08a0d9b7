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

} // namespace

std::vector<double> InbetweenShape(InbetweenType type, CInbetweenKeys keys) {
    std::vector<double> values(static_cast<std::size_t>(keys.last - keys.first + 1), 0.0);
    if (type == InbetweenType::Constant)
        return values;
    const CKeyCurve curve(type, keys, 0, 1);
    for (std::size_t i = 1; i + 1 < values.size(); ++i)
        values[i] = curve.At(keys.first + static_cast<int>(i));
    values.back() = 1; // the keys themselves are not written
    return values;
}

CInbetweenPlot::CInbetweenPlot(CInbetweenKeys keys) : m_keys(keys) {
    setMinimumSize(sizeHint());
    setAccessibleName("The chosen curve");
    setToolTip("How the values run from the first key to the last, frame by frame");
}

void CInbetweenPlot::SetType(InbetweenType type) {
    m_type = type;
    update();
}

QPointF CInbetweenPlot::PointAt(double part, double value) const {
    const QRectF area = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    return {area.left() + part * area.width(), area.bottom() - value * area.height()};
}

void CInbetweenPlot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DotLine));
    for (const double value : {0.0, 1.0})
        painter.drawLine(PointAt(0, value), PointAt(1, value));
    DrawCurve(painter);
    DrawFrames(painter);
    DrawKeys(painter);
}

void CInbetweenPlot::DrawCurve(QPainter& painter) const {
    const std::vector<double> values = InbetweenShape(m_type, smooth);
    QPolygonF line;
    for (int i = 0; i <= smooth.last; ++i)
        line << PointAt(static_cast<double>(i) / smooth.last, values[static_cast<std::size_t>(i)]);
    QColor color = palette().color(QPalette::Highlight);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
}

void CInbetweenPlot::DrawFrames(QPainter& painter) const {
    const std::vector<double> values = InbetweenShape(m_type, m_keys);
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
    const bool overwritten = m_type == InbetweenType::Constant;
    painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
    painter.setBrush(palette().highlight());
    painter.drawEllipse(PointAt(0, 0), keyRadius, keyRadius);
    if (overwritten) {
        painter.drawEllipse(PointAt(1, 0), frameRadius, frameRadius);
        painter.setBrush(palette().base());
    }
    painter.drawEllipse(PointAt(1, 1), keyRadius, keyRadius);
}

} // namespace velmor
