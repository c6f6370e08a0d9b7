#include "views/cel/CelHands.h"

#include "scene/CelPainting.h"
#include "scene/CelSelection.h"
#include "scene/Settings.h"
#include "scene/VelmorltDoc.h"

#include <utility>

namespace velmor {

CCelHands::CCelHands(CVelmorltDoc& doc, CProfile& profile, const CPenSettings& pens,
                     std::function<void(const std::string&)> tell)
    : m_profile(profile),
      m_paint(doc.Painting(), pens),
      m_shape(doc.Painting()),
      m_pegs(doc),
      m_fill(doc.Model(), doc.Filling(), m_paint),
      m_select(doc.Selection(), std::move(tell)),
      m_tool(ToolOf(static_cast<CelTool>(Get(profile, setting::lastCelTool))).id),
      m_hand(&HandOf(m_tool)) {}

ICelHand& CCelHands::HandOf(CelTool tool) {
    if (m_shiftsPins)
        return m_pegs;
    switch (tool) {
    case CelTool::Line:
    case CelTool::Curve:
    case CelTool::Rectangle:
    case CelTool::Ellipse:
        return m_shape;
    case CelTool::Bucket:
    case CelTool::AreaFill:
        return m_fill;
    case CelTool::SelectRect:
    case CelTool::Lasso:
    case CelTool::SelectColor:
        return m_select;
    default:
        return m_paint;
    }
}

void CCelHands::SetTool(CelTool tool) {
    m_shiftsPins = false;
    if (std::exchange(m_tool, tool) != tool)
        Set(m_profile, setting::lastCelTool, static_cast<int>(tool));
    PutDown();
}

void CCelHands::ToggleShiftingPins() {
    m_shiftsPins = !m_shiftsPins;
    PutDown();
}

void CCelHands::Cancel() {
    m_hand->Cancel();
    PutDown();
}

} // namespace velmor
