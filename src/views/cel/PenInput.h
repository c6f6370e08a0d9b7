#pragma once

#include "views/cel/CelHand.h"

#include <functional>
#include <optional>

class QMouseEvent;
class QTabletEvent;

namespace velmor {

/// The pen of a tablet over a view. Its tip and its buttons do what the buttons of a mouse do, so that its events
/// are worked off as those of a mouse, with what only a pen knows added to the points.
class CPenInput {
public:
    /// Hands a pen's event to `handle` as that of a mouse. A pen that only hovers is left to the window system,
    /// which makes a mouse's motion of it, with cursor and all; false then.
    bool Handle(QTabletEvent& event, const std::function<void(QMouseEvent&)>& handle);
    /// Whether a mouse's event only says again what the pen has said.
    bool IsEcho(const QMouseEvent& event) const;
    /// Adds what is known of the pen while one of its events is worked off.
    void AddTo(CHandPoint& point) const;
    /// Whether the eraser end was over the view last.
    bool IsEraserNear() const { return m_isEraserNear; }

private:
    std::optional<CHandPoint> m_pen; ///< of the event that is worked off
    bool m_isDown = false;           ///< tip or button
    bool m_isEraserNear = false;
    std::uint64_t m_time = 0; ///< of the last event
};

} // namespace velmor
