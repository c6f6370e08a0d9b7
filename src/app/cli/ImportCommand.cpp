#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "scene/ImportOperations.h"
#include "scene/NamingRules.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/SoundOperations.h"

namespace velmor {

namespace {

/// Imports into a scene that is read for it. Its xsheet is written only when cells take the new size of an asset
/// that was replaced.
class CImport {
public:
    CImport(CReadScene& scene, const CImportArguments& arguments)
        : m_scene(scene),
          m_arguments(arguments),
          m_palettes(scene.context),
          m_sounds(scene.context),
          m_saving(scene.context),
          m_lifecycle(scene.context, m_palettes, m_sounds, m_saving),
          m_imports(scene.context, m_lifecycle) {}

    bool Run() {
        const CXSheet before = m_scene.model.Scene().xsheet;
        const bool imported = Import();
        return (m_scene.model.Scene().xsheet == before || m_saving.SaveXSheet()) && imported;
    }

private:
    bool Import() {
        switch (m_arguments.kind) {
        case ImportKind::Sound:
            return m_sounds.ImportSound(PathOf(m_arguments.files.front()), m_arguments.name);
        case ImportKind::Picture:
            return m_imports.ImportPicture(PathOf(m_arguments.files.front()), m_arguments.name);
        case ImportKind::Cel:
            break;
        }
        return ImportCels();
    }

    bool ImportCels() {
        if (!EnterFolder())
            return false;
        if (m_arguments.threshold)
            m_scene.model.importThreshold = *m_arguments.threshold;
        for (const std::string& file : m_arguments.files)
            if (!m_imports.ImportCel(PathOf(file),
                                     m_arguments.name.empty() ? m_lifecycle.FindNextCelName() : m_arguments.name))
                return false;
        return true;
    }

    // A folder that does not exist yet is made, as long as its name may be a cel folder's.
    bool EnterFolder() {
        const Path folder = m_scene.model.Paths().CelFolder(m_arguments.folder);
        if (!m_scene.context.Report(CheckFolderName(m_arguments.folder)))
            return false;
        if (!m_scene.context.Require(CreateFolder(folder),
                                     "The folder could not be created. Disk full or write protected?"))
            return false;
        m_lifecycle.SetFolderName(m_arguments.folder);
        return true;
    }

    CReadScene& m_scene;
    const CImportArguments& m_arguments;
    CPaletteOperations m_palettes;
    CSoundOperations m_sounds;
    CSceneSaving m_saving;
    CSceneLifecycle m_lifecycle;
    CImportOperations m_imports;
};

} // namespace

bool RunImport(const CImportArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadSceneToChange(arguments.scene.database, arguments.scene.scene, prompter);
    return scene && CImport(*scene, arguments).Run();
}

} // namespace velmor
