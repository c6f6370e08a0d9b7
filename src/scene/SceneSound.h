#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"
#include "sound/SoundMix.h"

#include <optional>

namespace velmor {

struct CSceneModel;

/// Prepares the sound track of the open scene from its placed sounds. When one of them cannot be loaded there is no
/// track, and the status says why; its file goes to `resisting`, if that is given.
CStatus PrepareSoundTrack(CSceneModel& model, Path* resisting = nullptr);

/// Mixes the placed sounds of a scene in full quality, from their originals where they have one. Nothing when none
/// has, or none can be decoded here: then the track is all there is.
CStatus MixSceneSound(const CSceneModel& model, std::optional<CMixedSound>& mixed);

} // namespace velmor
