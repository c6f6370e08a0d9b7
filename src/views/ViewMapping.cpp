#include "views/ViewMapping.h"

#include <algorithm>

namespace velmor {

namespace {

// Rounds down, so that nothing beside the image on the left becomes column 0.
int ToImage(CZoomLevel zoom, int distance) {
    const int pixels = zoom.Unscaled(distance);
    return zoom.Scaled(pixels) > distance ? pixels - 1 : pixels;
}

// Displayed length up to an image coordinate that is not negative; `up` rounds up.
int ToDisplay(CZoomLevel zoom, int coordinate, bool up) {
    const int whole = zoom.Scaled(coordinate);
    return up && zoom.Unscaled(whole) < coordinate ? whole + 1 : whole;
}

} // namespace

CPoint CViewMapping::Origin() const {
    const CSize displayed = Displayed();
    return {std::max(client.width - displayed.width, 0) / 2 - scroll.x,
            std::max(client.height - displayed.height, 0) / 2 - scroll.y};
}

CPoint CViewMapping::MostScroll() const {
    const CSize displayed = Displayed();
    return {std::max(displayed.width - client.width, 0), std::max(displayed.height - client.height, 0)};
}

CPoint CViewMapping::ViewToBuffer(CPoint point) const {
    const CPoint origin = Origin();
    return {ToImage(zoom, point.x - origin.x), image.height - ToImage(zoom, point.y - origin.y)};
}

std::optional<CPoint> CViewMapping::PixelShownAt(CPoint point) const {
    const CPoint origin = Origin();
    const CSize displayed = Displayed();
    const int x = point.x - origin.x;
    const int y = point.y - origin.y;
    if (x < 0 || y < 0 || x >= displayed.width || y >= displayed.height)
        return std::nullopt;
    return CPoint{zoom.Unscaled(x), image.height - 1 - zoom.Unscaled(y)};
}

CRect CViewMapping::ToClient(const CRect& pixels) const {
    const CPoint origin = Origin();
    return {
        origin.x + ToDisplay(zoom, pixels.x, false), origin.y + ToDisplay(zoom, image.height - pixels.endY, false),
        origin.x + ToDisplay(zoom, pixels.endX, true), origin.y + ToDisplay(zoom, image.height - pixels.y, true)};
}

CPoint CViewMapping::ScrollKeeping(CPoint anchor, const CViewMapping& before) const {
    const CPoint origin = before.Origin();
    const CPoint most = MostScroll();
    const double growth = zoom.Factor() / before.zoom.Factor();
    const auto scrollOf = [growth](int at, int start, int limit) {
        return static_cast<int>(std::clamp((at - start) * growth - at, 0.0, static_cast<double>(limit)));
    };
    return {scrollOf(anchor.x, origin.x, most.x), scrollOf(anchor.y, origin.y, most.y)};
}

CPoint CViewMapping::ScrollKeepingCentre(const CViewMapping& before) const {
    const CSize displayed = Displayed();
    return {ScrollAfterZoom(before.scroll.x, client.width, displayed.width, before.zoom, zoom),
            ScrollAfterZoom(before.scroll.y, client.height, displayed.height, before.zoom, zoom)};
}

CSize ClientBesideBars(CSize displayed, CSize room, CSize bars) {
    CSize client = room;
    // The second time for a bar that is needed only because the other one is there.
    for (int i = 0; i < 2; ++i) {
        if (displayed.width > client.width)
            client.height = room.height - bars.height;
        if (displayed.height > client.height)
            client.width = room.width - bars.width;
    }
    return client;
}

} // namespace velmor
