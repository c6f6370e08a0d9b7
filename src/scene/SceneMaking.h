#pragma once

#include "scene/ScenePaths.h"

namespace velmor {

struct CScene;

inline constexpr const char* sceneNotMade = "The scene could not be created. Disk full or write protected?";

/// Puts a new scene, with its xsheet, into the database folder, which is made where there is none. A scene appears
/// whole or not at all; false also when something of its name is there.
[[nodiscard]] bool MakeScene(const CScenePaths& paths, const CScene& scene);

/// Gives a scene that was made under `from`, in the same file system, its place. False when something is there.
[[nodiscard]] bool PlaceScene(const Path& from, const CScenePaths& paths);

} // namespace velmor
