#include "views/cel/PegHand.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Paper.h"

#include <cmath>
#include <optional>

namespace velmor {

namespace {

constexpr double reach = 6; // pixels of the screen between the pointer and a line that it takes hold of

} // namespace

bool CPegHand::Press(CelTool, const CHandPoint& at, const CViewMapping& mapping) {
    m_press = mapping.ToImage(at.at);
    const std::optional<std::size_t> pin = m_doc.Paper().PinAt(m_press, reach / mapping.zoom.Factor());
    if (!pin)
        return false;
    m_pin = *pin;
    m_turns = at.modifiers.testFlag(Qt::ShiftModifier);
    m_before = m_doc.LightTable().Pins()[m_pin].pegs;
    return true;
}

void CPegHand::MoveTo(CRealPoint point) {
    CPegPlace pegs = m_before;
    if (m_turns) {
        const CCelImg& image = m_doc.Model().celImg;
        const int halfWidth = image.Width() / 2;
        const int halfHeight = image.Height() / 2;
        const CRealPoint middle{halfWidth + m_before.x, halfHeight + m_before.y};
        const auto angleOf = [&](CRealPoint at) { return std::atan2(at.y - middle.y, at.x - middle.x); };
        pegs.angle -= angleOf(point) - angleOf(m_press); // that of a cell runs with the clock
    } else {
        pegs.x += point.x - m_press.x;
        pegs.y += point.y - m_press.y;
    }
    m_doc.LightTable().Place(m_pin, pegs);
}

CPaintResult CPegHand::Move(std::span<const CHandPoint> way, const CViewMapping& mapping) {
    if (!way.empty())
        MoveTo(mapping.ToImage(way.back().at));
    return {};
}

CPaintResult CPegHand::Release(const CHandPoint& at, const CViewMapping& mapping) {
    MoveTo(mapping.ToImage(at.at));
    return {};
}

void CPegHand::Cancel() {
    m_doc.LightTable().Place(m_pin, m_before);
}

} // namespace velmor
