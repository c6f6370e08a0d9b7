#pragma once

#include "views/cel/CelHand.h"

#include <vector>

namespace velmor {

class CCelPainting;

/// The hand of straight lines, curves, rectangles and ellipses. They are dragged out, seen as an outline, and drawn
/// with the pen when the button is let go. A curve then waits for a click on where it bends to; its ends can be
/// clicked on as well.
class CShapeHand final : public ICelHand {
public:
    /// `painting` outlives the object.
    explicit CShapeHand(CCelPainting& painting) : m_painting(painting) {}

    [[nodiscard]] bool Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) override;
    CPaintResult Move(std::span<const CHandPoint> way, const CViewMapping& mapping) override;
    CPaintResult Release(const CHandPoint& at, const CViewMapping& mapping) override;
    void Cancel() override { m_stage = Stage::Nothing; }
    bool IsWaiting() const override { return m_stage == Stage::HasBegin || m_stage == Stage::HasEnds; }
    void Hover(const CHandPoint& at, const CViewMapping& mapping) override { Follow(at, mapping); }
    bool IsQuick() const override { return true; }
    void Outline(CCelOverlay& overlay, const CViewMapping& mapping) const override;

private:
    /// What is known of the shape; what is not, follows the pointer.
    enum class Stage {
        Nothing,
        Dragging, ///< from its beginning
        HasBegin, ///< of a curve, by a click
        HasEnds   ///< of a curve
    };

    void Follow(const CHandPoint& at, const CViewMapping& mapping);
    std::vector<CRealPoint> Points() const;
    CPaintResult Draw();

    CCelPainting& m_painting;
    CelTool m_tool = CelTool::Line;
    Stage m_stage = Stage::Nothing;
    CRealPoint m_pressed; ///< in the client area
    CRealPoint m_from;    ///< these are image points
    CRealPoint m_to;
    CRealPoint m_bend;
    bool m_isEven = false;
    bool m_fromCentre = false;
};

} // namespace velmor
