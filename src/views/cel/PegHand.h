#pragma once

#include "scene/paper/PinnedDrawing.h"
#include "views/cel/CelHand.h"

#include <cstddef>

namespace velmor {

class CVelmorltDoc;

/// Shifts the pinned drawing under the pointer, and turns it about its middle with Shift: "shift and trace". The
/// drawings stay as they are, and so does the image under edit.
class CPegHand final : public ICelHand {
public:
    /// The document outlives the object.
    explicit CPegHand(CVelmorltDoc& doc) : m_doc(doc) {}

    [[nodiscard]] bool Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) override;
    CPaintResult Move(std::span<const CHandPoint> way, const CViewMapping& mapping) override;
    CPaintResult Release(const CHandPoint& at, const CViewMapping& mapping) override;
    /// The drawing goes back to where it was.
    void Cancel() override;
    bool IsQuick() const override { return true; }
    void Outline(CCelOverlay&, const CViewMapping&) const override {}

private:
    void MoveTo(CRealPoint point);

    CVelmorltDoc& m_doc;
    std::size_t m_pin = 0;
    bool m_turns = false;
    CRealPoint m_press; ///< of the image
    CPegPlace m_before;
};

} // namespace velmor
