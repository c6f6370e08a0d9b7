#include "xsheet/exposing/SheetTime.h"

#include "xsheet/exposing/FrameOrder.h"

#include <algorithm>

namespace velmor {

namespace {

// The camera stands at every frame where it stood at another one.
void TakeFrames(CCameraTrack& camera, const FrameOrder& sources) {
    const CCameraTrack before = camera;
    for (std::size_t frame = 0; frame < sources.size(); ++frame) {
        const CCameraFrame& source = before.At(sources[frame]);
        if (const int at = static_cast<int>(frame); !source.IsIdenticalTo(before.At(at)))
            camera.MutableAt(at) = source;
    }
}

// Sounds from `frame` on move by `by` frames; those that start where nothing is left go.
void MoveSounds(CSoundPlacements& sounds, int frame, int by) {
    std::vector<CSoundPlacement> moved = sounds.All();
    std::erase_if(moved, [&](const CSoundPlacement& sound) {
        return sound.frame >= frame && (sound.frame + by < frame || sound.frame + by >= CXSheet::mostFramesInFile);
    });
    for (CSoundPlacement& sound : moved)
        if (sound.frame >= frame)
            sound.frame += by;
    if (moved != sounds.All())
        sounds.Set(std::move(moved));
}

bool IsHeldAcross(const CXSheet& xsheet, int level, int frame) {
    return frame > 0 && xsheet.Cell(level, frame).ShowsSameAs(xsheet.Cell(level, frame - 1));
}

FrameOrder Inserted(int frameCount, int frame, int count, int source) {
    FrameOrder order(static_cast<std::size_t>(frameCount));
    for (int at = 0; at < frameCount; ++at)
        order[static_cast<std::size_t>(at)] = at < frame ? at : at < frame + count ? source : at - count;
    return order;
}

FrameOrder TakenOut(int frameCount, int frame, int count) {
    FrameOrder order(static_cast<std::size_t>(frameCount));
    for (int at = 0; at < frameCount; ++at)
        order[static_cast<std::size_t>(at)] = at < frame ? at : std::min(at + count, frameCount - 1);
    return order;
}

} // namespace

void InsertTime(CScene& scene, int frame, int count) {
    CXSheet& xsheet = scene.xsheet;
    const int inserted = std::clamp(count, 0, CXSheet::mostFrames);
    std::vector<int> sources;
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        sources.push_back(IsHeldAcross(xsheet, level, frame) ? frame - 1 : noFrame);
    const int frameCount =
        std::max(xsheet.FrameCount(), std::min(xsheet.FrameCount() + inserted, CXSheet::mostFrames));
    xsheet.SetFrameCount(frameCount);
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        xsheet.TakeFrames(level, Inserted(frameCount, frame, inserted, sources[static_cast<std::size_t>(level)]));
    TakeFrames(scene.camera, Inserted(CCameraTrack::capacity, frame, inserted, std::max(frame - 1, 0)));
    MoveSounds(scene.sounds, frame, inserted);
    scene.frameNotes.InsertFrames(frame, inserted);
    scene.dialogue.InsertFrames(frame, inserted);
}

void DeleteTime(CScene& scene, int frame, int count) {
    CXSheet& xsheet = scene.xsheet;
    const int frameCount = xsheet.FrameCount();
    const int deleted = std::max(0, std::min({count, frameCount - frame, frameCount - 1}));
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        xsheet.TakeFrames(level, TakenOut(frameCount, frame, deleted));
    xsheet.SetFrameCount(frameCount - deleted);
    TakeFrames(scene.camera, TakenOut(CCameraTrack::capacity, frame, deleted));
    MoveSounds(scene.sounds, frame, -deleted);
    scene.frameNotes.DeleteFrames(frame, deleted);
    scene.dialogue.DeleteFrames(frame, deleted);
}

} // namespace velmor
