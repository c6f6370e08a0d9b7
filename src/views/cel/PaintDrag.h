#pragma once

#include "scene/CelPainting.h"
#include "scene/StrokePainter.h"
#include "views/cel/CelHand.h"

#include <optional>

namespace velmor {

/// The hand of the tools that paint on the image under edit. A stroke is made of the tool's stamps from position to
/// position, unless the pen settings want it to be more. Pressed with Shift, a tool that paints along its way makes
/// a straight line from where the last one ended, or from the press where there was none; with Ctrl one from the
/// press whose direction goes in steps of 15 degrees, and with both one of such a direction from the last end.
class CPaintDrag final : public ICelHand {
public:
    /// Both outlive the object.
    CPaintDrag(CCelPainting& painting, const CPenSettings& settings)
        : m_painting(painting), m_settings(settings), m_stroke(painting) {}

    /// Another image has been opened: no stroke has ended in it yet.
    void ForgetLastStroke() { m_lastEnd.reset(); }

    [[nodiscard]] bool Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) override;
    CPaintResult Move(std::span<const CHandPoint> way, const CViewMapping& mapping) override;
    CPaintResult Release(const CHandPoint& at, const CViewMapping& mapping) override;
    void Cancel() override { m_painting.Cancel(); }
    bool IsQuick() const override { return m_painting.Form() == ToolForm::Stroke; }
    void Outline(CCelOverlay& overlay, const CViewMapping& mapping) const override;

private:
    /// How the drag paints.
    enum class Way { Stamps, Stroke, Straight };

    Way WayOf(CelTool tool, const CHandPoint& at) const;
    void FollowStraight(const CHandPoint& at, const CViewMapping& mapping);
    CPaintResult MoveStamps(std::span<const CHandPoint> way, const CViewMapping& mapping);
    CPaintResult MoveStroke(std::span<const CHandPoint> way, const CViewMapping& mapping);
    void OutlineBand(CCelOverlay& overlay, const CViewMapping& mapping) const;

    CCelPainting& m_painting;
    const CPenSettings& m_settings;
    CStrokePainter m_stroke;
    Way m_way = Way::Stamps;
    double m_hardest = 0; ///< the highest pressure of the drag
    CRealPoint m_press;   ///< image points, which stay where they are when the image is scrolled
    CRealPoint m_last;    ///< up to where the drag has been worked off
    std::optional<CRealPoint> m_lastEnd;
};

} // namespace velmor
