#include "views/cel/CelNavigator.h"

#include "views/cel/CelDisplay.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr int mostLength = 180;
constexpr int margin = 8;
constexpr int leastRoom = 3; ///< the view is at least so many times as large

bool IsCut(const CViewMapping& view) {
    const CPoint most = view.MostScroll();
    return most.x > 0 || most.y > 0;
}

CSize SizeFor(const CViewMapping& view) {
    const CSize whole = CViewMapping{view.image, {}, CZoomLevel(), {}, view.turn}.Displayed();
    const int most = std::min({mostLength, view.client.width / leastRoom, view.client.height / leastRoom});
    const double factor = static_cast<double>(most) / std::max({whole.width, whole.height, 1});
    return {static_cast<int>(whole.width * factor), static_cast<int>(whole.height * factor)};
}

} // namespace

CCelNavigator::CCelNavigator(CCelDisplay& display, std::function<void(CRealPoint)> show, QWidget* parent)
    : QWidget(parent), m_display(display), m_show(std::move(show)) {
    setObjectName("celNavigator");
    setAccessibleName("Navigator");
    setToolTip("The whole image: press or drag to move the view");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::SizeAllCursor);
    hide();
}

void CCelNavigator::Follow(const CViewMapping& view, bool isWanted) {
    m_view = view;
    const CSize size = SizeFor(view);
    const bool isShown = isWanted && IsCut(view) && size.width > margin && size.height > margin;
    setVisible(isShown);
    if (!isShown)
        return;
    setGeometry(view.client.width - size.width - margin, margin, size.width, size.height);
    update();
}

CViewMapping CCelNavigator::Mapping() const {
    const CSize whole = CViewMapping{m_view.image, {}, CZoomLevel(), {}, m_view.turn}.Displayed();
    const double factor = std::min(static_cast<double>(width()) / std::max(whole.width, 1),
                                   static_cast<double>(height()) / std::max(whole.height, 1));
    return {m_view.image, {width(), height()}, CZoomLevel::OfFactor(factor), {}, m_view.turn};
}

void CCelNavigator::Repaint(const CRect& pixels) {
    if (!isVisible())
        return;
    const CRect part = Mapping().ToClient(pixels);
    update(QRect(part.x, part.y, part.endX - part.x, part.endY - part.y).adjusted(-1, -1, 1, 1));
}

void CCelNavigator::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (m_display.IsEmpty())
        return;
    const CViewMapping mapping = Mapping();
    m_display.Paint(painter, mapping, event->rect());
    const auto shown = [&](int x, int y) {
        const CRealPoint at = mapping.ToClient(m_view.ToImage({static_cast<double>(x), static_cast<double>(y)}));
        return QPointF(at.x, at.y);
    };
    const QPolygonF frame({shown(0, 0), shown(m_view.client.width, 0),
                           shown(m_view.client.width, m_view.client.height), shown(0, m_view.client.height)});
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 3));
    painter.drawPolygon(frame);
    painter.setPen(QPen(palette().highlight().color(), 1.5));
    painter.drawPolygon(frame);
    painter.setPen(Qt::black);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

void CCelNavigator::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        m_show(Mapping().ToImage({event->position().x(), event->position().y()}));
    event->accept();
}

void CCelNavigator::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton))
        m_show(Mapping().ToImage({event->position().x(), event->position().y()}));
    event->accept();
}

void CCelNavigator::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
}

} // namespace velmor
