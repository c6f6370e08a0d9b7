#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"
#include "sound/SoundMix.h"

#include <optional>
#include <stop_token>

namespace velmor {

class CScenePaths;
struct CScene;
struct CSceneModel;

/// Prepares the sound track of the open scene from its placed sounds. When one of them cannot be loaded there is no
/// track, and the status says why; its file goes to `resisting`, if that is given.
CStatus PrepareSoundTrack(CSceneModel& model, Path* resisting = nullptr);

/// Whether any of the placed sounds has kept its original.
bool HasOriginals(const CScene& scene, const CScenePaths& paths);

/// Mixes the placed sounds of a scene in full quality, from their originals where they have one. Nothing when none
/// has, or none can be decoded here: then the track is all there is. Fails when it is told to stop.
CStatus MixSceneSound(const CScene& scene, const CScenePaths& paths, std::optional<CMixedSound>& mixed,
                      const std::stop_token& stop = {});

} // namespace velmor
