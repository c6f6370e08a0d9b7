#pragma once

#include "app/cli/Commands.h"
#include "scene/SceneContext.h"

#include <optional>
#include <string>
#include <vector>

namespace velmor {

/// The names of the cels that are meant; nothing, after the message, when there is no such folder or cel.
std::optional<std::vector<std::string>> ChosenCels(const CCelsArguments& arguments, const CSceneContext& context);

} // namespace velmor
