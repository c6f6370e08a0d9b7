#pragma once

#include "scene/CelPainting.h"
#include "views/cel/CelHand.h"

namespace velmor {

/// The hand of the tools that paint on the image under edit.
class CPaintDrag final : public ICelHand {
public:
    /// `painting` outlives the object.
    explicit CPaintDrag(CCelPainting& painting) : m_painting(painting) {}

    [[nodiscard]] bool Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) override;
    CPaintResult Move(std::span<const CHandPoint> way, const CViewMapping& mapping) override;
    CPaintResult Release(const CHandPoint& at, const CViewMapping& mapping) override;
    void Cancel() override { m_painting.Cancel(); }
    bool IsQuick() const override { return m_painting.Form() == ToolForm::Stroke; }
    void Outline(CCelOverlay& overlay, const CViewMapping& mapping) const override;

private:
    CCelPainting& m_painting;
    CRealPoint m_press; ///< image points, which stay where they are when the image is scrolled
    CRealPoint m_last;  ///< up to where the drag has been worked off
};

} // namespace velmor
