#pragma once

#include "app/cli/Commands.h"
#include "render/FinalRender.h"
#include "scene/SceneModel.h"

#include <string>
#include <vector>

namespace velmor {

/// The levels of a list as 0-based indices; all without one.
std::vector<int> ChosenLevels(const std::optional<std::vector<CNumberRange>>& levels, const CXSheet& xsheet);

/// What is to be rendered of one scene: a render's settings, or one's for each level. Frames and levels are cut to
/// those that there are. With `ownFolder` the output goes to a folder of the scene's name.
std::vector<CRenderSettings> PlanRender(const CRenderArguments& arguments, const CSceneModel& scene,
                                        bool ownFolder);

/// Why a render cannot be made as asked; empty when it can.
std::string RefusalOf(const CRenderSettings& settings, CSize scene);

CRenderJob JobOf(const CRenderArguments& arguments, const CRenderSettings& settings, const CSceneModel& scene);

/// The files that a render needs and that are not there: images, the frames to be joined, sounds of a movie.
std::vector<Path> MissingInputs(const CRenderJob& job, const CSceneModel& scene);

} // namespace velmor
