#include "app/cli/ChangedScene.h"
#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "scene/SequenceImport.h"

namespace velmor {

namespace {

std::optional<int> FindLevel(const CXSheet& xsheet, const std::string& name) {
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        if (xsheet.LevelName(level) == name)
            return level;
    return std::nullopt;
}

CSequence SequenceOf(const CSequenceArguments& arguments, const CSceneModel& model) {
    CSequence sequence;
    for (const std::string& file : arguments.files)
        sequence.files.push_back(PathOf(file));
    sequence.kind = arguments.pictures.empty() ? SourceMode::Cels : SourceMode::Pictures;
    sequence.folder = arguments.folder;
    sequence.pictures = arguments.pictures;
    sequence.lines = {arguments.threshold.value_or(model.importThreshold), arguments.specks};
    sequence.isExposed = !arguments.level.empty();
    sequence.level = FindLevel(model.Scene().xsheet, arguments.level);
    sequence.levelName = arguments.level;
    sequence.frame = arguments.at - 1;
    sequence.hold = arguments.hold;
    sequence.holdsGaps = arguments.holdsGaps;
    return sequence;
}

} // namespace

bool RunSequenceImport(const CSequenceArguments& arguments) {
    CConsolePrompter prompter;
    const auto read = ReadSceneToChange(arguments.scene.database, arguments.scene.scene, prompter);
    if (!read)
        return false;
    CChangedScene scene(*read);
    CSequenceImport sequences(scene.context, scene.lifecycle, scene.imports);
    return scene.Change([&] { return sequences.Import(SequenceOf(arguments, read->model)); });
}

} // namespace velmor
