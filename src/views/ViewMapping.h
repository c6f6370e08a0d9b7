#pragma once

#include "image/Geometry.h"
#include "image/RealPoint.h"
#include "views/ViewTurn.h"
#include "views/ZoomLevel.h"

#include <optional>

namespace velmor {

/// Where an image stands in the client area of a view that zooms, turns and scrolls it. Client coordinates have y
/// pointing down; an image smaller than the client area stands in its middle. What is scrolled of a turned image is
/// the upright rectangle around it.
struct CViewMapping {
    CSize image;
    CSize client;
    CZoomLevel zoom;
    CPoint scroll;
    CViewTurn turn = {};

    /// Size on the screen of the whole image before it is turned.
    CSize Upright() const { return {zoom.Scaled(image.width), zoom.Scaled(image.height)}; }
    /// Size of what the image takes on the screen.
    CSize Displayed() const;
    /// Top left corner of it in client coordinates.
    CPoint Origin() const;
    /// Largest scroll positions.
    CPoint MostScroll() const;
    /// The point of the image that is shown at a point of the client area, and the other way round.
    CRealPoint ToImage(CRealPoint point) const;
    CRealPoint ToClient(CRealPoint point) const;
    /// The image point that the tools work at for a client point. Its row is one above that of the pixel shown
    /// there: the top row on the screen gives the image's height.
    CPoint ViewToBuffer(CPoint point) const;
    /// The pixel shown at a client point; nothing beside the image.
    std::optional<CPoint> PixelShownAt(CPoint point) const;
    /// A client rectangle that holds all that is shown of some image pixels.
    CRect ToClient(const CRect& pixels) const;
    /// The scroll position that brings an image point to a client point, as far as the image can be scrolled.
    CPoint ScrollShowing(CRealPoint point, CRealPoint at) const;
    /// The scroll position at which the image point that stood at `anchor` in `before` stands there again, as far
    /// as the image can be scrolled.
    CPoint ScrollKeeping(CPoint anchor, const CViewMapping& before) const;
    /// The one at which what stood in the centre does.
    CPoint ScrollKeepingCentre(const CViewMapping& before) const;
};

/// What is left of `room` for the client area of an image displayed so large, once the scroll bars that it needs
/// stand there. `bars` holds the width of the vertical and the height of the horizontal one.
CSize ClientBesideBars(CSize displayed, CSize room, CSize bars);

} // namespace velmor
