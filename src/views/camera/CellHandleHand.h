#pragma once

#include "views/camera/CellHand.h"
#include "xsheet/CellHandles.h"

#include <functional>
#include <optional>

namespace velmor {

/// The handles of the cells that are selected for moving: a drag on a corner scales the cell (Shift: with its
/// proportions, Ctrl: about its middle), one from outside a corner turns it (Shift: by steps of 15 degrees, Ctrl:
/// about the opposite corner).
class CCellHandleHand final : public CCellHand {
public:
    /// `tell` is told size and angle as they are dragged. The document outlives the object.
    CCellHandleHand(CVelmorltDoc& doc, std::function<void(const std::string&)> tell)
        : CCellHand(doc), m_tell(std::move(tell)) {}

    std::string CursorAt(CRealPoint client, const CViewMapping& mapping) const override;
    void Move(const CCameraHandPoint& to, const CViewMapping& mapping) override;

private:
    struct CGrip {
        int level = 0;
        int corner = 0;
        CellHandle handle = CellHandle::Scale;
        bool isRising = false; ///< the cell's diagonal there, as it is seen
    };
    bool TakeHold(const CCameraHandPoint& at, const CViewMapping& mapping) override;
    void LetGo() override { m_drag.reset(); }
    std::optional<CGrip> GripAt(CRealPoint client, const CViewMapping& mapping) const;
    std::optional<CGrip> GripOf(int level, CRealPoint client, const CViewMapping& mapping) const;
    CRealPoint OnStage(CRealPoint client, const CViewMapping& mapping) const;
    void Tell(const CCellTransform& cell) const;

    std::function<void(const std::string&)> m_tell;
    std::optional<CCellHandleDrag> m_drag;
    int m_level = 0;
    int m_frame = 0;
};

} // namespace velmor
