#include "views/ZoomableView.h"

#include "views/Icons.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QScrollBar>
#include <QStatusTipEvent>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace velmor {

namespace {

constexpr CZoomLevel largestFit{64};
constexpr double leastFactor = 1.0 / 16;
constexpr double mostFactor = 64;
constexpr double wheelOfDoubling = 480;   ///< four notches, in eighths of a degree
constexpr double pixelsOfDoubling = 120;  ///< of a drag that zooms
constexpr double drawnToQuarter = 3;      ///< degrees beside a quarter turn that count as it
constexpr std::uint64_t longestTap = 250; ///< ms
constexpr int pagesInImage = 10;
constexpr int pageOfNothing = 10;

void SetScrollSize(QScrollBar& bar, int most, int displayed) {
    bar.setRange(0, most);
    bar.setSingleStep(1);
    bar.setPageStep(displayed > 0 ? std::max(displayed / pagesInImage, 1) : pageOfNothing);
}

} // namespace

CZoomableView::CZoomableView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true); // a button let go unseen shows in the next motion
}

void CZoomableView::ZoomIn() {
    ZoomAboutCentre(m_zoom.In());
}

void CZoomableView::ZoomOut() {
    ZoomAboutCentre(m_zoom.Out());
}

void CZoomableView::ZoomOneToOne() {
    ZoomAboutCentre(CZoomLevel());
}

void CZoomableView::FitToWindow() {
    Fit(largestFit);
}

void CZoomableView::Fit(CZoomLevel most) {
    if (!HasImage())
        return;
    const QSize room = maximumViewportSize();
    ZoomAboutCentre(FittingZoom(TurnedSize(), {room.width(), room.height()}, most));
    m_fit = most;
}

CSize CZoomableView::TurnedSize() const {
    return CViewMapping{ImageSize(), {}, CZoomLevel(), {}, m_turn}.Displayed();
}

void CZoomableView::Refit() {
    const QSize room = maximumViewportSize();
    if (m_fit && HasImage() && FittingZoom(TurnedSize(), {room.width(), room.height()}, *m_fit) != m_zoom)
        Fit(*m_fit);
}

void CZoomableView::ZoomAboutCentre(CZoomLevel zoom) {
    const CViewMapping before = Mapping();
    ShowZoomed(SetZoom(zoom).ScrollKeepingCentre(before));
}

void CZoomableView::ZoomAbout(CPoint anchor, CZoomLevel zoom) {
    const CViewMapping before = Mapping();
    ShowZoomed(SetZoom(zoom).ScrollKeeping(anchor, before));
}

CViewMapping CZoomableView::SetZoom(CZoomLevel zoom) {
    TellBeforeChange();
    m_fit.reset();
    m_zoom = zoom;
    return UpdateScrollSizes();
}

void CZoomableView::ShowZoomed(CPoint scroll) {
    ScrollTo(scroll);
    AfterZoom();
    RefreshOverlay();
    viewport()->update();
    TellState();
}

CViewMapping CZoomableView::Mapping() const {
    return {ImageSize(),
            {viewport()->width(), viewport()->height()},
            m_zoom,
            {horizontalScrollBar()->value(), verticalScrollBar()->value()},
            m_turn};
}

CViewMapping CZoomableView::UpdateScrollSizes() {
    CViewMapping mapping = Mapping();
    const QSize room = maximumViewportSize();
    mapping.client =
        ClientBesideBars(mapping.Displayed(), {room.width(), room.height()},
                         {verticalScrollBar()->sizeHint().width(), horizontalScrollBar()->sizeHint().height()});
    const CPoint most = mapping.MostScroll();
    SetScrollSize(*horizontalScrollBar(), most.x, mapping.Displayed().width);
    SetScrollSize(*verticalScrollBar(), most.y, mapping.Displayed().height);
    return mapping;
}

void CZoomableView::ScrollTo(CPoint position) {
    horizontalScrollBar()->setValue(position.x);
    verticalScrollBar()->setValue(position.y);
}

void CZoomableView::scrollContentsBy(int, int) {
    RefreshOverlay();
    viewport()->update();
}

void CZoomableView::resizeEvent(QResizeEvent*) {
    Refit();
    UpdateScrollSizes();
}

void CZoomableView::TellBeforeChange() {
    const bool byDrag = m_drag && (m_drag->kind == DragKind::Turn || m_drag->kind == DragKind::Zoom);
    if (!byDrag)
        BeforeChange();
}

void CZoomableView::SetTurn(const CViewTurn& turn) {
    TellBeforeChange();
    const CViewMapping before = Mapping();
    m_turn = turn;
    ShowZoomed(UpdateScrollSizes().ScrollKeepingCentre(before));
}

void CZoomableView::ZoomTo(double factor, CPoint anchor) {
    const CZoomLevel zoom = CZoomLevel::OfFactor(
        std::clamp(factor, std::min(leastFactor, m_zoom.Factor()), std::max(mostFactor, m_zoom.Factor())));
    if (zoom != m_zoom)
        ZoomAbout(anchor, zoom);
}

bool CZoomableView::NativeGesture(const QNativeGestureEvent& gesture) {
    if (!CanTurn() || !HasImage() || m_drag)
        return false;
    if (gesture.gestureType() == Qt::ZoomNativeGesture)
        ZoomTo(m_zoom.Factor() * (1 + gesture.value()), PointOf(gesture));
    else if (gesture.gestureType() == Qt::RotateNativeGesture)
        SetTurn(m_turn.TurnedBy(gesture.value()));
    else
        return false;
    return true;
}

bool CZoomableView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::NativeGesture && NativeGesture(*static_cast<QNativeGestureEvent*>(event)))
        return true;
    if (event->type() == QEvent::Enter && m_cursor && m_cursor->scale != devicePixelRatioF()) {
        RefreshCursor();
        ScreenChanged();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void CZoomableView::TogglePan() {
    BeforeChange();
    m_panMode = !m_panMode;
    Refresh();
}

void CZoomableView::HoldSpace(bool isHeld) {
    m_isSpaceHeld = isHeld;
    Refresh();
}

void CZoomableView::DropDrag() {
    m_drag.reset();
    Refresh();
}

void CZoomableView::Refresh() {
    RefreshCursor();
    RefreshOverlay();
}

void CZoomableView::RefreshCursor() {
    CViewCursor now = CursorNow();
    now.scale = devicePixelRatioF();
    if (now == m_cursor)
        return;
    viewport()->setCursor(now.name.empty() ? QCursor(Qt::ArrowCursor)
                                           : ToolCursor(now.name.c_str(), now.hotSpot.x, now.hotSpot.y, now.scale));
    m_cursor = std::move(now);
}

void CZoomableView::TellState() const {
    if (m_stateChanged)
        m_stateChanged();
}

void CZoomableView::TellStatus(const std::string& text) {
    QStatusTipEvent event(QString::fromStdString(text));
    QApplication::sendEvent(this, &event);
}

CPoint CZoomableView::PointOf(const QSinglePointEvent& event) {
    return {static_cast<int>(std::floor(event.position().x())), static_cast<int>(std::floor(event.position().y()))};
}

void CZoomableView::mousePressEvent(QMouseEvent* event) {
    const bool takesButton = event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton;
    if (m_drag || !takesButton || !HasImage())
        return;
    const CPoint point = PointOf(*event);
    const DragKind kind = KindOf(*event);
    if (kind == DragKind::Tool && !BeginTool(point))
        return;
    m_drag = CDrag{event->button(), kind, point, point, m_turn};
    m_spacePressed.reset();
    Refresh();
}

CZoomableView::DragKind CZoomableView::KindOf(const QMouseEvent& press) const {
    if (m_isSpaceHeld && CanTurn() && press.button() == Qt::LeftButton) {
        if (press.modifiers().testFlag(Qt::ShiftModifier))
            return DragKind::Turn;
        if (press.modifiers().testFlag(Qt::ControlModifier))
            return DragKind::Zoom;
    }
    const bool pans = press.button() == Qt::MiddleButton || m_panMode || m_isSpaceHeld;
    return pans ? DragKind::Pan : DragKind::Tool;
}

void CZoomableView::DragTo(CPoint point) {
    const CPoint last = std::exchange(m_drag->last, point);
    const CPoint scroll = Mapping().scroll;
    if (m_drag->kind == DragKind::Turn)
        TurnFrom(last, point);
    else if (m_drag->kind == DragKind::Zoom)
        ZoomTo(m_zoom.Factor() * std::exp2((point.x - last.x + last.y - point.y) / pixelsOfDoubling),
               m_drag->press);
    else
        ScrollTo({scroll.x + last.x - point.x, scroll.y + last.y - point.y});
}

void CZoomableView::TurnFrom(CPoint last, CPoint now) {
    const auto angleOf = [this](CPoint point) {
        return std::atan2(point.y + 0.5 - viewport()->height() / 2.0, point.x + 0.5 - viewport()->width() / 2.0);
    };
    m_drag->turn = m_drag->turn.TurnedBy((angleOf(now) - angleOf(last)) * 180 / std::numbers::pi);
    const double quarter = std::round(m_drag->turn.degrees / 90) * 90;
    const double beside = m_drag->turn.degrees - quarter;
    SetTurn(std::abs(beside) < drawnToQuarter ? m_drag->turn.TurnedBy(-beside) : m_drag->turn);
}

void CZoomableView::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void CZoomableView::mouseMoveEvent(QMouseEvent* event) {
    if (!m_drag)
        return;
    const CPoint point = PointOf(*event);
    if (!event->buttons().testFlag(m_drag->button)) {
        const bool isTool = IsToolDown();
        DropDrag();
        if (isTool)
            LoseTool();
    } else if (IsToolDown()) {
        MoveTool(point);
    } else {
        DragTo(point);
    }
}

void CZoomableView::mouseReleaseEvent(QMouseEvent* event) {
    if (!m_drag || event->button() != m_drag->button)
        return;
    const bool isTool = IsToolDown();
    DropDrag();
    if (isTool)
        EndTool(PointOf(*event));
}

void CZoomableView::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (!HasImage())
        return;
    if (event->modifiers().testFlag(Qt::ControlModifier) && CanTurn()) {
        ZoomTo(m_zoom.Factor() * std::exp2(event->angleDelta().y() / wheelOfDoubling), PointOf(*event));
        return;
    }
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (const CZoomLevel zoom = m_wheel.ZoomAfter(*event, m_zoom); zoom != m_zoom)
            ZoomAbout(PointOf(*event), zoom);
        return;
    }
    const CPoint turn = m_wheel.PixelsOf(*event);
    const CPoint scroll = Mapping().scroll;
    ScrollTo({scroll.x - turn.x, scroll.y - turn.y});
}

void CZoomableView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    if (!event->isAutoRepeat() && !m_drag && event->modifiers() == Qt::NoModifier)
        m_spacePressed = event->timestamp();
    HoldSpace(true);
}

void CZoomableView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Space) {
        QAbstractScrollArea::keyReleaseEvent(event);
        return;
    }
    if (event->isAutoRepeat())
        return;
    HoldSpace(false);
    const std::optional<std::uint64_t> pressed = std::exchange(m_spacePressed, std::nullopt);
    if (pressed && event->timestamp() - *pressed < longestTap)
        TapSpace();
}

void CZoomableView::focusOutEvent(QFocusEvent* event) {
    m_spacePressed.reset();
    HoldSpace(false);
    QAbstractScrollArea::focusOutEvent(event);
}

void CZoomableView::SetContextMenu(QMenu* menu) {
    m_menu = menu;
}

void CZoomableView::ShowMenu(QPoint screenPoint) {
    if (m_menu && !m_drag)
        m_menu->popup(screenPoint);
}

void CZoomableView::contextMenuEvent(QContextMenuEvent* event) {
    ShowMenu(event->globalPos());
}

} // namespace velmor
