#include "views/ViewMapping.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmor {

namespace {

// Rounds down, so that nothing beside the image on the left becomes column 0.
int PixelsIn(CZoomLevel zoom, int distance) {
    const int pixels = zoom.Unscaled(distance);
    return zoom.Scaled(pixels) > distance ? pixels - 1 : pixels;
}

// Displayed length up to an image coordinate that is not negative; `up` rounds up.
int ToDisplay(CZoomLevel zoom, int coordinate, bool up) {
    if (!zoom.IsLevel()) {
        const double length = coordinate * zoom.Factor();
        return static_cast<int>(up ? std::ceil(length) : std::floor(length));
    }
    const int whole = zoom.Scaled(coordinate);
    return up && zoom.Unscaled(whole) < coordinate ? whole + 1 : whole;
}

CPoint PixelAt(CRealPoint point) {
    return {static_cast<int>(std::floor(point.x)), static_cast<int>(std::floor(point.y))};
}

CRealPoint CentreOf(CPoint pixel) {
    return {pixel.x + 0.5, pixel.y + 0.5};
}

CRect AroundTurned(const CViewMapping& mapping, const CRect& pixels) {
    const auto corner = [&](int x, int y) {
        return mapping.ToClient(CRealPoint{static_cast<double>(x), static_cast<double>(y)});
    };
    const std::array corners{corner(pixels.x, pixels.y), corner(pixels.endX, pixels.y),
                             corner(pixels.x, pixels.endY), corner(pixels.endX, pixels.endY)};
    CRealPoint least = corners[0];
    CRealPoint most = corners[0];
    for (const CRealPoint& point : corners) {
        least = {std::min(least.x, point.x), std::min(least.y, point.y)};
        most = {std::max(most.x, point.x), std::max(most.y, point.y)};
    }
    // One more on each side: a turned pixel shows in those beside it.
    return {static_cast<int>(std::floor(least.x)) - 1, static_cast<int>(std::floor(least.y)) - 1,
            static_cast<int>(std::ceil(most.x)) + 1, static_cast<int>(std::ceil(most.y)) + 1};
}

} // namespace

CSize CViewMapping::Displayed() const {
    const CSize upright = Upright();
    if (turn.IsUpright())
        return upright;
    const CRealPoint a = turn.Apply({upright.width / 2.0, upright.height / 2.0});
    const CRealPoint b = turn.Apply({upright.width / 2.0, -upright.height / 2.0});
    const auto length = [](double one, double other) {
        return static_cast<int>(std::ceil(2 * std::max(std::abs(one), std::abs(other)) - 1e-6));
    };
    return {length(a.x, b.x), length(a.y, b.y)};
}

CPoint CViewMapping::Origin() const {
    const CSize displayed = Displayed();
    return {std::max(client.width - displayed.width, 0) / 2 - scroll.x,
            std::max(client.height - displayed.height, 0) / 2 - scroll.y};
}

CPoint CViewMapping::MostScroll() const {
    const CSize displayed = Displayed();
    return {std::max(displayed.width - client.width, 0), std::max(displayed.height - client.height, 0)};
}

CRealPoint CViewMapping::ToImage(CRealPoint point) const {
    const CPoint origin = Origin();
    const CSize displayed = Displayed();
    const CSize upright = Upright();
    const double factor = zoom.Factor();
    const CRealPoint fromCentre =
        turn.Undo({point.x - origin.x - displayed.width / 2.0, point.y - origin.y - displayed.height / 2.0});
    return {(fromCentre.x + upright.width / 2.0) / factor,
            image.height - (fromCentre.y + upright.height / 2.0) / factor};
}

CRealPoint CViewMapping::ToClient(CRealPoint point) const {
    const CPoint origin = Origin();
    const CSize displayed = Displayed();
    const CSize upright = Upright();
    const double factor = zoom.Factor();
    const CRealPoint fromCentre = turn.Apply(
        {point.x * factor - upright.width / 2.0, (image.height - point.y) * factor - upright.height / 2.0});
    return {fromCentre.x + origin.x + displayed.width / 2.0, fromCentre.y + origin.y + displayed.height / 2.0};
}

CPoint CViewMapping::ViewToBuffer(CPoint point) const {
    if (!turn.IsUpright()) {
        const CPoint pixel = PixelAt(ToImage(CentreOf(point)));
        return {pixel.x, pixel.y + 1};
    }
    const CPoint origin = Origin();
    return {PixelsIn(zoom, point.x - origin.x), image.height - PixelsIn(zoom, point.y - origin.y)};
}

std::optional<CPoint> CViewMapping::PixelShownAt(CPoint point) const {
    if (!turn.IsUpright()) {
        const CPoint pixel = PixelAt(ToImage(CentreOf(point)));
        const bool isInside = pixel.x >= 0 && pixel.y >= 0 && pixel.x < image.width && pixel.y < image.height;
        return isInside ? std::optional(pixel) : std::nullopt;
    }
    const CPoint origin = Origin();
    const CSize displayed = Displayed();
    const int x = point.x - origin.x;
    const int y = point.y - origin.y;
    if (x < 0 || y < 0 || x >= displayed.width || y >= displayed.height)
        return std::nullopt;
    return CPoint{zoom.Unscaled(x), image.height - 1 - zoom.Unscaled(y)};
}

CRect CViewMapping::ToClient(const CRect& pixels) const {
    if (!turn.IsUpright())
        return AroundTurned(*this, pixels);
    const CPoint origin = Origin();
    return {
        origin.x + ToDisplay(zoom, pixels.x, false), origin.y + ToDisplay(zoom, image.height - pixels.endY, false),
        origin.x + ToDisplay(zoom, pixels.endX, true), origin.y + ToDisplay(zoom, image.height - pixels.y, true)};
}

CPoint CViewMapping::ScrollShowing(CRealPoint point, CRealPoint at) const {
    CViewMapping unscrolled = *this;
    unscrolled.scroll = {};
    const CRealPoint shown = unscrolled.ToClient(point);
    const CPoint most = MostScroll();
    return {static_cast<int>(std::lround(std::clamp<double>(shown.x - at.x, 0, most.x))),
            static_cast<int>(std::lround(std::clamp<double>(shown.y - at.y, 0, most.y)))};
}

CPoint CViewMapping::ScrollKeeping(CPoint anchor, const CViewMapping& before) const {
    if (!turn.IsUpright() || !before.turn.IsUpright()) {
        const CRealPoint at = CentreOf(anchor);
        return ScrollShowing(before.ToImage(at), at);
    }
    const CPoint origin = before.Origin();
    const CPoint most = MostScroll();
    const double growth = zoom.Factor() / before.zoom.Factor();
    const auto scrollOf = [growth](int at, int start, int limit) {
        return static_cast<int>(std::clamp((at - start) * growth - at, 0.0, static_cast<double>(limit)));
    };
    return {scrollOf(anchor.x, origin.x, most.x), scrollOf(anchor.y, origin.y, most.y)};
}

CPoint CViewMapping::ScrollKeepingCentre(const CViewMapping& before) const {
    if (!turn.IsUpright() || !before.turn.IsUpright())
        return ScrollShowing(before.ToImage({before.client.width / 2.0, before.client.height / 2.0}),
                             {client.width / 2.0, client.height / 2.0});
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
