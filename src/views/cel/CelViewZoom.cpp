// How large the cel editor shows its image.

#include "views/cel/CelView.h"

namespace velmor {

namespace {

constexpr CZoomLevel largestFit{64};

} // namespace

void CCelView::ZoomIn() {
    ZoomAboutCentre(m_zoom.In());
}

void CCelView::ZoomOut() {
    ZoomAboutCentre(m_zoom.Out());
}

void CCelView::ZoomOneToOne() {
    ZoomAboutCentre(CZoomLevel());
}

void CCelView::FitToWindow() {
    Fit(largestFit);
}

void CCelView::Fit(CZoomLevel most) {
    if (!HasImage())
        return;
    const QSize room = maximumViewportSize();
    ZoomAboutCentre(FittingZoom(m_display.Size(), {room.width(), room.height()}, most));
    m_fit = most;
}

CCelViewMapping CCelView::SetZoom(CZoomLevel zoom) {
    CancelDrag();
    m_fit.reset();
    m_zoom = zoom;
    return UpdateScrollSizes();
}

void CCelView::ZoomAboutCentre(CZoomLevel zoom) {
    const CCelViewMapping before = Mapping();
    const CCelViewMapping now = SetZoom(zoom);
    const CSize total = now.Displayed();
    ScrollTo({ScrollAfterZoom(before.scroll.x, now.client.width, total.width, before.zoom, zoom),
              ScrollAfterZoom(before.scroll.y, now.client.height, total.height, before.zoom, zoom)});
    ShowZoomed();
}

void CCelView::ZoomAbout(CPoint anchor, CZoomLevel zoom) {
    const CCelViewMapping before = Mapping();
    ScrollTo(SetZoom(zoom).ScrollKeeping(anchor, before));
    ShowZoomed();
}

void CCelView::ShowZoomed() {
    RefreshOverlay();
    viewport()->update();
    TellState();
}

} // namespace velmor
