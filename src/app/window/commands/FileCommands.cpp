#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/SheetExchange.h"

namespace velmor::commands {

namespace {

constexpr CCommand rows[] = {
    {CommandId::FileNewScene, "New Scene", "new-scene", "Ctrl+N", "Creates a new scene in the database",
     "New Scene", Always, nullptr, Do<&CVelmorltDoc::Scenes, &CSceneLifecycle::NewScene>},
    {CommandId::FileOpenScene, "&Open Scene", "open-scene", "Ctrl+O",
     "Opens an existing scene from default database", "Open Scene", Always, nullptr,
     Do<&CVelmorltDoc::Scenes, &CSceneLifecycle::AskAndOpenScene>},
    {CommandId::FileSceneManager, "Scene &Manager", "scene-manager", "", "Shows the scene manager", "Scene Manager",
     Always, nullptr, Do<&CVelmorltDoc::Scenes, &CSceneLifecycle::ManageScenes>},
    {CommandId::FileSceneSettings, "Scene Se&ttings", "scene-settings", "",
     "Changed the global parameters of the current scene", "Scene Settings", HasScene, nullptr,
     Do<&CVelmorltDoc::Scenes, &CSceneLifecycle::EditSceneSettings>},
    {CommandId::FileSaveAll, "Save All", "save-all", "Ctrl+S", "Saves all unsaved in memory data to the database",
     "Save All", HasScene, nullptr, Do<&CVelmorltDoc::Saving, &CSceneSaving::SaveAll>},
    {CommandId::FileSettings, "&Settings", "settings", "", "General Settings", "", Always, nullptr,
     Do<&CVelmorltDoc::Scenes, &CSceneLifecycle::ChooseDatabase>},
    {CommandId::FilePrint, "&Print XSheet\tCtrl+P", "print", "Ctrl+P", "Print the active document", "Print",
     HasScene, nullptr, Frame<&CMainFrame::PrintXSheet>},
    {CommandId::FilePrintPreview, "Print Pre&view", "print-preview", "", "Display full pages", "Print Preview",
     HasScene, nullptr, Frame<&CMainFrame::PreviewPrint>},
    {CommandId::FilePrintSetup, "P&rint Setup...", "print-setup", "", "Change the printer and printing options",
     "Print Setup", Always, nullptr, Frame<&CMainFrame::SetUpPrinter>},
    {CommandId::FilePrintDialogue, "Print &Dialogue", "", "",
     "Prints what is spoken beside the sounds of the xsheet", "Print Dialogue", Always,
     [](const Target& target) { return target.frame.PrintsDialogue(); }, Frame<&CMainFrame::TogglePrintDialogue>},
    {CommandId::FileExit, "E&xit", "exit", "", "Quit the application; prompts to save documents", "Exit", Always,
     nullptr, Frame<&CMainFrame::Exit>},
    {CommandId::FileImportXsheet, "&Import Xsheet...", "import-xsheet", "",
     "Brings in the xsheet of another program and shows first what changes", "Import Xsheet", HasScene, nullptr,
     Do<&CVelmorltDoc::Exchange, &CSheetExchange::AskAndImport>, sheet},
    {CommandId::FileExportXsheet, "&Export Xsheet...", "export-xsheet", "",
     "Writes the xsheet to a file for other programs", "Export Xsheet", HasScene, nullptr,
     Do<&CVelmorltDoc::Exchange, &CSheetExchange::AskAndExport>},
};

} // namespace

std::span<const CCommand> FileCommands() {
    return rows;
}

} // namespace velmor::commands
