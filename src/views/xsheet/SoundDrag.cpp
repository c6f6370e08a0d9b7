#include "views/xsheet/SoundDrag.h"

#include "views/xsheet/XSheetSounds.h"

#include <algorithm>

namespace velmor {

bool CSoundDrag::Begin(const CXSheetSounds& sounds, const CXSheetGeometry& geometry, QPoint point) {
    const std::optional<int> frame = geometry.SoundFrameAt(point);
    if (!frame)
        return false;
    const auto& placements = sounds.Placements();
    auto held = std::ranges::find(placements, *frame, &CSoundPlacement::frame);
    if (held == placements.end() && sounds.HeardAt(*frame) >= 0)
        held = placements.begin() + sounds.HeardAt(*frame);
    if (held == placements.end())
        return false;
    m_isActive = true;
    m_from = m_to = held->frame;
    m_grip = *frame - held->frame;
    m_frames = sounds.FramesOf(*held);
    m_name = held->name;
    return true;
}

void CSoundDrag::Move(const CXSheetGeometry& geometry, QPoint point) {
    m_to = std::clamp(geometry.YToFrame(point.y()) - m_grip, 0, std::max(0, geometry.frameCount - 1));
}

} // namespace velmor
