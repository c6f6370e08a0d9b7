#pragma once

#include "image/select/PieceTransform.h"
#include "image/select/SelectionMask.h"
#include "views/cel/CelHand.h"
#include "views/cel/SelectionMarks.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QKeyEvent;

namespace velmor {

class CCelSelection;

/// The hand of the tools that select. A drag selects: Shift adds, Alt takes away, as Ctrl does where the desktop
/// keeps Alt to itself. Begun on what is selected it moves it (Shift: straight on), on a handle of its frame it
/// scales it (Shift: with its proportions), outside a corner it turns it (Shift: by steps). A double click puts it
/// down.
class CSelectHand final : public ICelHand {
public:
    /// `tell` is told size and angle as they are dragged. The selection outlives the object.
    CSelectHand(CCelSelection& selection, std::function<void(const std::string&)> tell)
        : m_selection(selection), m_marks(selection), m_tell(std::move(tell)) {}

    static bool Holds(CelTool tool) {
        return tool == CelTool::SelectRect || tool == CelTool::Lasso || tool == CelTool::SelectColor;
    }
    CSelectionMarks& Marks() { return m_marks; }

    [[nodiscard]] bool Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) override;
    CPaintResult Move(std::span<const CHandPoint> way, const CViewMapping& mapping) override;
    CPaintResult Release(const CHandPoint& at, const CViewMapping& mapping) override;
    void Cancel() override;
    bool IsQuick() const override { return true; }
    void Outline(CCelOverlay& overlay, const CViewMapping& mapping) const override;

    /// A key while something is selected: arrows move it by a pixel (Shift: ten) as it is seen, Return puts it
    /// down, Escape selects nothing. Nothing for other keys.
    std::optional<CPaintResult> Key(const QKeyEvent& key, const CViewMapping& mapping);

private:
    CPaintResult Drag(const CHandPoint& to, const CViewMapping& mapping);
    CPiecePlacement MovedTo(CRealPoint to, bool isStraight) const;
    CPiecePlacement ScaledTo(CRealPoint to, bool keepsProportions) const;
    CPiecePlacement TurnedTo(CRealPoint to, bool bySteps) const;
    void SelectShape();
    void Tell() const;
    CRect Dragged() const;

    CCelSelection& m_selection;
    CSelectionMarks m_marks;
    std::function<void(const std::string&)> m_tell;

    CelTool m_tool = CelTool::SelectRect;
    SelectMode m_mode = SelectMode::Replace;
    CSelectGrip m_grip;
    CPiecePlacement m_start;       ///< how it was placed at the press
    CRect m_frame;                 ///< and the frame that this is about
    std::vector<CRealPoint> m_way; ///< since the press, in image points; empty while nothing is dragged
    std::optional<CPoint> m_pixel; ///< shown where it came down
    bool m_hasMoved = false;
    CRealPoint m_lastPress{-100, -100}; ///< in the client area
    std::uint64_t m_lastTime = 0;
};

} // namespace velmor
