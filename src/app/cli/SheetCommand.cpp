#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "scene/SheetExchange.h"
#include "xsheet/XSheetFile.h"

#include <iostream>

namespace velmor {

namespace {

ExchangeFormat FormatOf(const CSheetArguments& arguments) {
    if (arguments.format.empty())
        return ExchangeFormatOf(PathOf(arguments.file), ExchangeFormat::Xdts);
    return arguments.format == "csv" ? ExchangeFormat::Csv : ExchangeFormat::Xdts;
}

bool Export(const CSheetArguments& arguments, const CSceneContext& context) {
    const CSheetExchange exchange(context);
    for (const std::string& loss : exchange.Losses())
        context.Show(loss);
    return exchange.Write(PathOf(arguments.file), FormatOf(arguments));
}

bool Import(const CSheetArguments& arguments, const CSceneContext& context) {
    const CSheetExchange exchange(context);
    CExchangeSheet sheet;
    CSheetImport import;
    if (!exchange.Read(PathOf(arguments.file), FormatOf(arguments), sheet) ||
        !context.Report(exchange.Plan(sheet, arguments.folder, import)))
        return false;
    for (const std::string& change : import.changes)
        std::cout << change << '\n';
    for (const std::string& loss : import.losses)
        context.Show(loss);
    if (import.changes.empty())
        std::cout << "Nothing changes\n";
    if (arguments.dryRun || import.changes.empty())
        return true;
    CScene changed = context.model.Scene();
    PutImport(std::move(import), changed);
    return context.Report(SaveXSheet(context.model.Paths().XSheetFile(), changed));
}

} // namespace

bool RunSheet(const CSheetArguments& arguments) {
    CConsolePrompter prompter;
    const auto read = arguments.isImport && !arguments.dryRun ? ReadSceneToChange : ReadScene;
    const auto scene = read(arguments.scene.database, arguments.scene.scene, prompter);
    if (!scene)
        return false;
    return arguments.isImport ? Import(arguments, scene->context) : Export(arguments, scene->context);
}

} // namespace velmor
