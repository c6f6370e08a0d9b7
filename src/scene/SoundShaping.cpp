#include "scene/DialogRequests.h"
#include "scene/SceneEdit.h"
#include "scene/SoundOperations.h"
#include "sound/SoundFile.h"
#include "sound/SoundTrack.h"

#include <cmath>

namespace velmor {

namespace {

constexpr double tenths = 10;

int InSamples(double frames, int framesPerSecond) {
    return static_cast<int>(std::lround(frames * SamplesPerFrame(framesPerSecond)));
}

double InFrames(std::size_t samples, int framesPerSecond) {
    return static_cast<double>(samples) / SamplesPerFrame(framesPerSecond);
}

} // namespace

bool CSoundOperations::ShapeSound(int from, const CSoundPlacement& placed) {
    const CSceneModel& model = m_context.model;
    const CSoundPlacement* before = model.sceneOpen ? model.Scene().sounds.At(from) : nullptr;
    if (before == nullptr || *before == placed || !placed.IsSane() || !model.Scene().xsheet.HasFrame(placed.frame))
        return false;
    if (placed.frame != from && !CanStartAt(placed.frame))
        return false;
    CSceneEdit edit(m_context, (before->level == placed.level ? "Trim Sound " : "Level of Sound ") + before->name,
                    UpdateHint::Cells);
    return edit.Sounds().Replace(from, placed);
}

std::size_t CSoundOperations::LengthOf(const std::string& name) const {
    std::vector<std::uint8_t> samples;
    static_cast<void>(LoadSoundFile(m_context.model.Paths().SoundFile(name), name, samples)); // none then
    return samples.size();
}

bool CSoundOperations::AcceptShape(const CSoundShape& shape, double frames) const {
    if (!std::isfinite(shape.trimIn) || !std::isfinite(shape.trimOut) || !std::isfinite(shape.level))
        return false; // the field says so
    const double tenthsOfLevel = shape.level * tenths;
    return m_context.Require(shape.trimIn >= 0 && shape.trimOut >= 0,
                             "As much as nothing can be left out of a sound, and not less") &&
           m_context.Require(shape.trimIn + shape.trimOut < frames, "Something of the sound has to be left") &&
           m_context.Require(tenthsOfLevel >= CSoundPlacement::leastLevel &&
                                 tenthsOfLevel <= CSoundPlacement::mostLevel,
                             "The level is from -60 to 12 decibels");
}

void CSoundOperations::AskSoundShape() {
    const CSceneModel& model = m_context.model;
    const std::optional<int> from = SoundAtCursor();
    if (!from)
        return;
    CSoundPlacement placed = *model.Scene().sounds.At(*from);
    const int rate = std::max(1, model.Scene().geometry.frameRate);
    const std::size_t samples = LengthOf(placed.name);
    CSoundShapeRequest request{placed.name, *from + 1, InFrames(samples, rate), {}, {}};
    request.initial = {InFrames(static_cast<std::size_t>(placed.trimIn), rate),
                       InFrames(static_cast<std::size_t>(placed.trimOut), rate), placed.level / tenths};
    request.accept = [&](const CSoundShape& shape) { return AcceptShape(shape, request.frames); };
    const std::optional<CSoundShape> shape = m_context.prompter.Ask(request);
    if (!shape)
        return;
    placed.trimIn = InSamples(shape->trimIn, rate);
    placed.trimOut = InSamples(shape->trimOut, rate);
    placed.level = static_cast<int>(std::lround(shape->level * tenths));
    ShapeSound(*from, placed);
}

} // namespace velmor
