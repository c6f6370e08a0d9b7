#include "app/cli/ChosenCels.h"
#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "scene/RecolorOperations.h"

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
    const std::optional<std::vector<std::string>> cels = ChosenCels(arguments, context);
    if (!cels)
        return std::nullopt;
    std::vector<Path> files;
    for (const std::string& cel : *cels)
        files.push_back(context.model.Paths().CelFile(arguments.folder, cel));
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
