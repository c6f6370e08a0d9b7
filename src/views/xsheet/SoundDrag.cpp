#include "views/xsheet/SoundDrag.h"

#include "views/xsheet/XSheetSounds.h"

#include <algorithm>

namespace velmor {

bool CSoundDrag::Begin(const CXSheetSounds& sounds, const CXSheetGeometry& geometry, QPoint point, bool trims) {
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
    m_held = m_placed = *held;
    m_gripFrame = *frame;
    m_heldFrames = m_frames = sounds.FramesOf(*held);
    m_samplesPerFrame = sounds.SamplesOfFrame();
    const bool isStart = 2 * (*frame - held->frame) + 1 <= m_frames;
    m_grip = !trims ? SoundGrip::Whole : isStart ? SoundGrip::Start : SoundGrip::End;
    return true;
}

void CSoundDrag::Move(const CXSheetGeometry& geometry, QPoint point) {
    const int frames = geometry.YToFrame(point.y()) - m_gripFrame;
    m_placed = m_held;
    m_frames = m_heldFrames;
    if (m_grip == SoundGrip::Start)
        MoveStart(frames);
    else if (m_grip == SoundGrip::End)
        MoveEnd(frames);
    else
        MoveWhole(frames, geometry.frameCount);
}

void CSoundDrag::MoveWhole(int frames, int frameCount) {
    m_placed.frame = std::clamp(m_held.frame + frames, 0, std::max(0, frameCount - 1));
}

void CSoundDrag::MoveStart(int frames) {
    const int earliest = std::max(-m_held.frame, -(m_held.trimIn / m_samplesPerFrame));
    frames = std::clamp(frames, earliest, std::max(earliest, m_heldFrames - 1));
    m_placed.frame += frames;
    m_placed.trimIn += frames * m_samplesPerFrame;
    m_frames -= frames;
}

// A part of a frame that was left out comes back with the frame.
void CSoundDrag::MoveEnd(int frames) {
    const int latest = (m_held.trimOut + m_samplesPerFrame - 1) / m_samplesPerFrame;
    frames = std::clamp(frames, 1 - m_heldFrames, latest);
    m_placed.trimOut = std::max(0, m_held.trimOut - frames * m_samplesPerFrame);
    m_frames += frames;
}

} // namespace velmor
