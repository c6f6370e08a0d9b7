#include "app/cli/ChosenCels.h"

#include <algorithm>

namespace velmor {

std::optional<std::vector<std::string>> ChosenCels(const CCelsArguments& arguments, const CSceneContext& context) {
    const CScenePaths paths = context.model.Paths();
    const std::vector<std::string> folders = ListCelFolders(paths);
    if (std::ranges::find(folders, arguments.folder) == folders.end()) {
        context.Show("There is no cel folder " + arguments.folder);
        return std::nullopt;
    }
    const std::vector<std::string> all = ListCelTitles(paths, arguments.folder);
    for (const std::string& cel : arguments.cels)
        if (std::ranges::find(all, cel) == all.end()) {
            context.Show("There is no cel " + cel + " in " + arguments.folder);
            return std::nullopt;
        }
    return arguments.cels.empty() ? all : arguments.cels;
}

} // namespace velmor
