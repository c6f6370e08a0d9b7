#pragma once

#include "views/cel/FillHand.h"
#include "views/cel/PaintDrag.h"
#include "views/cel/PegHand.h"
#include "views/cel/SelectHand.h"
#include "views/cel/ShapeHand.h"

#include <functional>
#include <string>

namespace velmor {

class CProfile;
class CVelmorltDoc;

/// The hands of the cel editor, the tool that is chosen, and which hand is at work with it.
class CCelHands {
public:
    /// The tool is the one that was chosen last, and is remembered. `tell` gets what a hand has to say as it drags.
    /// Document, profile and settings outlive the object.
    CCelHands(CVelmorltDoc& doc, CProfile& profile, const CPenSettings& pens,
              std::function<void(const std::string&)> tell);
    CCelHands(const CCelHands&) = delete;
    CCelHands& operator=(const CCelHands&) = delete;

    CelTool Tool() const { return m_tool; }
    /// What has begun is to be given up first. Pinned drawings are not shifted any more.
    void SetTool(CelTool tool);
    /// Whether pinned drawings are shifted, whatever the tool.
    bool ShiftsPins() const { return m_shiftsPins; }
    void ToggleShiftingPins();

    /// The one that is down, otherwise the one that would come down with the chosen tool.
    ICelHand& Now() const { return *m_hand; }
    /// It comes down with a tool, which may be another one than is chosen.
    void TakeUp(CelTool tool) { m_hand = &HandOf(tool); }
    void PutDown() { m_hand = &HandOf(m_tool); }
    void Cancel();

    CSelectHand& Selecting() { return m_select; }
    bool IsSelecting() const { return m_hand == &m_select; }
    /// Whether the chosen tool holds what is selected.
    bool HoldsSelection() const { return CSelectHand::Holds(m_tool); }
    /// Another image has been opened.
    void ForgetLastStroke() { m_paint.ForgetLastStroke(); }

private:
    ICelHand& HandOf(CelTool tool);

    CProfile& m_profile;
    CPaintDrag m_paint;
    CShapeHand m_shape;
    CPegHand m_pegs;
    CFillHand m_fill;
    CSelectHand m_select;
    bool m_shiftsPins = false;
    CelTool m_tool;
    ICelHand* m_hand; ///< one of the members
};

} // namespace velmor
