#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "scene/RecolorOperations.h"

#include <algorithm>
#include <charconv>
#include <iostream>

namespace velmor {

namespace {

// Six hexadecimal digits, as the grammar has made sure.
CColor ColorOf(const std::string& digits) {
    std::uint32_t value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value >> 16), 255};
}

// The files of the cels that are meant; nothing, after the message, when there is no such folder or cel.
std::optional<std::vector<Path>> FilesOf(const CCelsArguments& arguments, const CSceneContext& context) {
    const CScenePaths paths = context.model.Paths();
    const std::vector<std::string> folders = ListCelFolders(paths);
    if (std::ranges::find(folders, arguments.folder) == folders.end()) {
        context.Show("There is no cel folder " + arguments.folder);
        return std::nullopt;
    }
    const std::vector<std::string> all = ListCelTitles(paths, arguments.folder);
    std::vector<Path> files;
    for (const std::string& cel : arguments.cels.empty() ? all : arguments.cels) {
        if (std::ranges::find(all, cel) == all.end()) {
            context.Show("There is no cel " + cel + " in " + arguments.folder);
            return std::nullopt;
        }
        files.push_back(paths.CelFile(arguments.folder, cel));
    }
    return files;
}

} // namespace

bool RunRecolor(const CRecolorArguments& arguments) {
    CConsolePrompter prompter;
    const auto read = ReadSceneToChange(arguments.cels.scene.database, arguments.cels.scene.scene, prompter);
    if (!read)
        return false;
    const std::optional<std::vector<Path>> files = FilesOf(arguments.cels, read->context);
    if (!files)
        return false;
    const SelectWhat what = arguments.lines   ? SelectWhat::Line
                            : arguments.paint ? SelectWhat::Paint
                                              : SelectWhat::Both;
    const std::optional<std::int64_t> pixels =
        CRecolorOperations(read->context)
            .Replace(*files, {ColorOf(arguments.from), ColorOf(arguments.to), arguments.tolerance, what, true});
    if (pixels)
        std::cout << *pixels << (*pixels == 1 ? " pixel" : " pixels") << " recolored\n";
    return pixels.has_value();
}

} // namespace velmor
