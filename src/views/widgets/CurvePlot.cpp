#include "views/widgets/CurvePlot.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace velmor {

namespace {

constexpr double keyStep = 0.01;
constexpr double largeKeyStep = 0.1;

} // namespace

void CCurvePlot::Move(CRealPoint to) {
    PlaceHandle(m_isSecond, to);
    update();
}

void CCurvePlot::mousePressEvent(QMouseEvent* event) {
    if (!HasHandles() || event->button() != Qt::LeftButton)
        return;
    const auto away = [&](bool second) {
        return (ShownAt(HandlePlace(second)) - event->position()).manhattanLength();
    };
    m_isSecond = away(true) < away(false);
    Move(PointAt(event->position()));
}

void CCurvePlot::mouseMoveEvent(QMouseEvent* event) {
    if (HasHandles() && event->buttons().testFlag(Qt::LeftButton))
        Move(PointAt(event->position()));
}

void CCurvePlot::keyPressEvent(QKeyEvent* event) {
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? largeKeyStep : keyStep;
    const CRealPoint at = HandlePlace(m_isSecond);
    switch (event->key()) {
    case Qt::Key_Left:
        return Move({at.x - step, at.y});
    case Qt::Key_Right:
        return Move({at.x + step, at.y});
    case Qt::Key_Down:
        return Move({at.x, at.y - step});
    case Qt::Key_Up:
        return Move({at.x, at.y + step});
    case Qt::Key_Home:
    case Qt::Key_End:
        m_isSecond = event->key() == Qt::Key_End;
        return update();
    default:
        QWidget::keyPressEvent(event);
    }
}

void CCurvePlot::DrawPaper(QPainter& painter) const {
    painter.setPen(QPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid), 1));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

void CCurvePlot::DrawLevers(QPainter& painter) const {
    painter.setPen(QPen(palette().color(QPalette::Text), 1));
    painter.drawLine(ShownAt({0, 0}), ShownAt(HandlePlace(false)));
    painter.drawLine(ShownAt({1, 1}), ShownAt(HandlePlace(true)));
}

} // namespace velmor
