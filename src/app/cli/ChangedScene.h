#pragma once

#include "app/cli/SceneReader.h"
#include "scene/ImportOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/SoundOperations.h"

#include <functional>

namespace velmor {

/// A scene that has been read to bring something in, with the operations for it.
class CChangedScene {
public:
    explicit CChangedScene(CReadScene& scene)
        : context(scene.context),
          palettes(scene.context),
          sounds(scene.context),
          saving(scene.context),
          lifecycle(scene.context, palettes, sounds, saving),
          imports(scene.context, lifecycle) {}

    /// Runs a change, and writes the xsheet if the scene has become another, whether the change succeeds or not:
    /// what was replaced may have a new size. False, after the message, when either fails.
    [[nodiscard]] bool Change(const std::function<bool()>& change);

    CSceneContext context;
    CPaletteOperations palettes;
    CSoundOperations sounds;
    CSceneSaving saving;
    CSceneLifecycle lifecycle;
    CImportOperations imports;
};

} // namespace velmor
