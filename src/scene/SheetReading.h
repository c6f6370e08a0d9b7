#pragma once

#include "scene/SceneContext.h"
#include "scene/ScenePaths.h"

namespace velmor {

/// What becomes of notes that cannot be read.
enum class DamagedNotes {
    Stay,
    SetAside ///< under another name, since saving would take their place
};

/// Reads the xsheet of a scene with the notes beside it, and shows what is wrong. True also when the notes alone
/// could not be read: the scene then has none.
[[nodiscard]] bool ReadSheet(const CSceneContext& context, const CScenePaths& paths, DamagedNotes damaged,
                             CScene& scene);

} // namespace velmor
