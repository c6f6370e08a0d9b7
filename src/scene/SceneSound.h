#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"

namespace velmor {

struct CSceneModel;

/// Prepares the sound track of the open scene from its placed sounds. When one of them cannot be loaded there is no
/// track, and the status says why; its file goes to `resisting`, if that is given.
CStatus PrepareSoundTrack(CSceneModel& model, Path* resisting = nullptr);

} // namespace velmor
