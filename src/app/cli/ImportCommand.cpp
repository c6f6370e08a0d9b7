#include "app/cli/ChangedScene.h"
#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "scene/NamingRules.h"

namespace velmor {

namespace {

// A folder that does not exist yet is made, as long as its name may be a cel folder's.
bool EnterFolder(CChangedScene& scene, const std::string& name) {
    const Path folder = scene.context.model.Paths().CelFolder(name);
    if (!scene.context.Report(CheckFolderName(name)))
        return false;
    if (!scene.context.Require(CreateFolder(folder),
                               "The folder could not be created. Disk full or write protected?"))
        return false;
    scene.lifecycle.SetFolderName(name);
    return true;
}

bool ImportCels(CChangedScene& scene, const CImportArguments& arguments) {
    if (!EnterFolder(scene, arguments.folder))
        return false;
    if (arguments.threshold)
        scene.context.model.importThreshold = *arguments.threshold;
    for (const std::string& file : arguments.files)
        if (!scene.imports.ImportCel(PathOf(file),
                                     arguments.name.empty() ? scene.lifecycle.FindNextCelName() : arguments.name))
            return false;
    return true;
}

bool Import(CChangedScene& scene, const CImportArguments& arguments) {
    switch (arguments.kind) {
    case ImportKind::Sound:
        return scene.sounds.ImportSound(PathOf(arguments.files.front()), arguments.name, arguments.convert);
    case ImportKind::Picture:
        return scene.imports.ImportPicture(PathOf(arguments.files.front()), arguments.name);
    case ImportKind::Cel:
        break;
    }
    return ImportCels(scene, arguments);
}

} // namespace

bool RunImport(const CImportArguments& arguments) {
    CConsolePrompter prompter;
    const auto read = ReadSceneToChange(arguments.scene.database, arguments.scene.scene, prompter);
    if (!read)
        return false;
    CChangedScene scene(*read);
    return scene.Change([&] { return Import(scene, arguments); });
}

} // namespace velmor
