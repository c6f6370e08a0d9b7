#pragma once

#include "image/RealPoint.h"
#include "image/paint/PaintResult.h"
#include "scene/PaintTools.h"
#include "views/ViewMapping.h"

#include <QtCore/qnamespace.h>

#include <cmath>
#include <cstdint>
#include <span>

namespace velmor {

struct CCelOverlay;

/// Where the mouse or the pen is, and how it is held.
struct CHandPoint {
    CRealPoint at;       ///< in the client area
    double pressure = 1; ///< 0 to 1; 1 for a mouse
    double tiltX = 0;    ///< degrees from upright, to the right
    double tiltY = 0;    ///< and towards the user
    bool isPen = false;
    bool hasPressure = false; ///< it is a pen that feels it
    bool isEraserEnd = false;
    Qt::KeyboardModifiers modifiers;
    std::uint64_t time = 0; ///< of the event, in milliseconds

    /// The client pixel that it is in.
    CPoint Pixel() const { return {static_cast<int>(std::floor(at.x)), static_cast<int>(std::floor(at.y))}; }
};

/// What the left button, or the tip of the pen, does with one family of tools. Each call gets the mapping as it is
/// then: between two of them the image may have been scrolled, zoomed and turned. Whatever a call changes of the
/// image under edit it returns; the view shows it, and the message of a failure.
class ICelHand {
public:
    virtual ~ICelHand() = default;

    /// It comes down. False when nothing is begun by it.
    [[nodiscard]] virtual bool Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) = 0;
    /// It has moved along all of these, the last one being where it is now.
    virtual CPaintResult Move(std::span<const CHandPoint> way, const CViewMapping& mapping) = 0;
    virtual CPaintResult Release(const CHandPoint& at, const CViewMapping& mapping) = 0;
    /// It is given up; what has been painted stays.
    virtual void Cancel() = 0;
    /// Whether something has been begun that waits for the next press, after which Cancel() drops that as well.
    virtual bool IsWaiting() const { return false; }
    /// It has moved over the view without being down, while something waits.
    virtual void Hover(const CHandPoint&, const CViewMapping&) {}
    /// Whether the release is soon done, so that nobody waits for it.
    virtual bool IsQuick() const = 0;
    /// Puts what has been dragged out into an overlay.
    virtual void Outline(CCelOverlay& overlay, const CViewMapping& mapping) const = 0;
};

} // namespace velmor
