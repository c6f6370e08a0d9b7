#include "app/cli/ChangedScene.h"
#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "scene/DialogueOperations.h"
#include "scene/SheetExchange.h"
#include "xsheet/DialogueText.h"

#include <iostream>

namespace velmor {

namespace {

constexpr std::uint64_t mostChartBytes = 1 << 16;

std::optional<int> LevelNamed(const CXSheet& xsheet, const std::string& name) {
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        if (xsheet.LevelName(level) == name)
            return level;
    return std::nullopt;
}

// The choices that the arguments make; nothing, after the message, when they make none.
std::optional<CMouthChoices> ChoicesOf(const CDialogueArguments& arguments, const CSceneContext& context) {
    const std::optional<CFileBytes> chart = ReadWholeFile(PathOf(arguments.file), mostChartBytes);
    const std::optional<int> level = LevelNamed(context.model.Scene().xsheet, arguments.level);
    if (!chart)
        context.Show("Could not read " + arguments.file);
    else if (!level)
        context.Show("There is no level called \"" + arguments.level + "\"");
    if (!chart || !level)
        return std::nullopt;
    return CMouthChoices{*level, arguments.folder, {chart->Span().begin(), chart->Span().end()}, arguments.hold};
}

bool TellMouths(const CDialogueOperations& dialogue, const CMouthChoices& choices, const CSceneContext& context) {
    CSheetImport planned;
    if (!context.Report(dialogue.PlanMouths(choices, planned)))
        return false;
    for (const std::string& change : planned.changes)
        std::cout << change << '\n';
    for (const std::string& loss : planned.losses)
        context.Show(loss);
    if (planned.changes.empty())
        std::cout << "Nothing changes\n";
    return true;
}

} // namespace

bool RunDialogueImport(const CDialogueArguments& arguments) {
    CConsolePrompter prompter;
    const auto read = ReadSceneToChange(arguments.scene.database, arguments.scene.scene, prompter);
    if (!read)
        return false;
    CChangedScene scene(*read);
    const CSheetExchange exchange(read->context);
    CDialogueOperations dialogue(read->context, exchange);
    return scene.Change([&] { return dialogue.Import(PathOf(arguments.file)); });
}

bool RunDialogueExport(const CDialogueArguments& arguments) {
    CConsolePrompter prompter;
    const auto read = ReadScene(arguments.scene.database, arguments.scene.scene, prompter);
    if (!read)
        return false;
    const std::string text = WriteDialogueText(read->model.Scene().dialogue);
    if (WriteFileAtomically(PathOf(arguments.file),
                            {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}))
        return true;
    prompter.ShowMessage("Could not write " + arguments.file);
    return false;
}

bool RunMouths(const CDialogueArguments& arguments) {
    CConsolePrompter prompter;
    const auto reader = arguments.dryRun ? ReadScene : ReadSceneToChange;
    const auto read = reader(arguments.scene.database, arguments.scene.scene, prompter);
    if (!read)
        return false;
    CChangedScene scene(*read);
    const CSheetExchange exchange(read->context);
    CDialogueOperations dialogue(read->context, exchange);
    const std::optional<CMouthChoices> choices = ChoicesOf(arguments, read->context);
    if (!choices || !TellMouths(dialogue, *choices, read->context))
        return false;
    if (arguments.dryRun)
        return true;
    return scene.Change([&] {
        static_cast<void>(dialogue.FillMouths(*choices)); // what fails has been told
        return true;
    });
}

} // namespace velmor
