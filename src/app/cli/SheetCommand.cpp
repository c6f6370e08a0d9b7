#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "scene/NamingRules.h"
#include "sound/SoundFile.h"
#include "xsheet/XSheetFile.h"
#include "xsheet/exchange/SheetCsv.h"
#include "xsheet/exchange/SheetExport.h"
#include "xsheet/exchange/SheetImport.h"
#include "xsheet/exchange/Xdts.h"

#include <algorithm>
#include <iostream>

namespace velmor {

namespace {

bool IsTable(const CSheetArguments& arguments) {
    return arguments.format.empty() ? PathOf(arguments.file).extension() == ".csv" : arguments.format == "csv";
}

/// Takes a scene's xsheet out to a file, or one in.
class CSheetExchange {
public:
    CSheetExchange(const CSheetArguments& arguments, CReadScene& scene)
        : m_arguments(arguments), m_context(scene.context), m_model(scene.model), m_scene(scene.model.Scene()) {}

    bool Export() {
        for (const std::string& loss : LossesOfExport(m_scene.xsheet, m_scene.camera, m_scene.geometry.Frame()))
            m_context.Show(loss);
        const CExchangeSheet sheet = ExportSheet(m_model.sceneName, m_scene.xsheet, m_scene.sounds.All(),
                                                 [this](const std::string& name) { return FramesOfSound(name); });
        const std::string text = IsTable(m_arguments) ? WriteSheetCsv(sheet) : WriteXdts(sheet);
        if (WriteFileAtomically(PathOf(m_arguments.file),
                                {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}))
            return true;
        m_context.Show("Could not write " + m_arguments.file);
        return false;
    }

    bool Import() {
        CExchangeSheet sheet;
        CSheetImport import;
        if (!Read(sheet) ||
            !m_context.Report(ImportSheet(sheet, m_scene.xsheet, m_scene.sounds.All(), Assets(), import)))
            return false;
        for (const std::string& change : import.changes)
            std::cout << change << '\n';
        for (const std::string& loss : import.losses)
            m_context.Show(loss);
        if (import.changes.empty())
            std::cout << "Nothing changes\n";
        if (m_arguments.dryRun || import.changes.empty())
            return true;
        CScene changed = m_scene;
        changed.xsheet = std::move(import.xsheet);
        changed.sounds.Set(std::move(import.sounds));
        return m_context.Report(SaveXSheet(m_model.Paths().XSheetFile(), changed));
    }

private:
    [[nodiscard]] bool Read(CExchangeSheet& sheet) {
        const std::optional<CFileBytes> file = ReadWholeFile(PathOf(m_arguments.file), mostExchangeBytes);
        if (!file) {
            m_context.Show("Could not read " + m_arguments.file);
            return false;
        }
        return m_context.Report(IsTable(m_arguments) ? ReadSheetCsv(file->Span(), sheet)
                                                     : ReadXdts(file->Span(), sheet));
    }

    // A sound that cannot be read lasts a frame: the sheet goes out all the same.
    int FramesOfSound(const std::string& name) const {
        std::vector<std::uint8_t> samples;
        if (!LoadSoundFile(m_model.Paths().SoundFile(name), name, samples))
            return 1;
        const int perFrame = std::max(1, SamplesPerFrame(std::max(1, m_scene.geometry.frameRate)));
        const std::size_t frames =
            (samples.size() + static_cast<std::size_t>(perFrame) - 1) / static_cast<std::size_t>(perFrame);
        return static_cast<int>(std::min<std::size_t>(frames, mostExchangeFrames));
    }

    CSceneAssets Assets() const {
        const CScenePaths paths = m_model.Paths();
        CSceneAssets assets{paths.SceneFolder(), m_scene.geometry.Frame(), {}, {}, m_arguments.folder};
        const auto setOf = [](std::vector<std::string> names) {
            return std::set<std::string>(std::make_move_iterator(names.begin()),
                                         std::make_move_iterator(names.end()));
        };
        for (const std::string& folder : ListCelFolders(paths))
            assets.images[folder] = setOf(ListCelTitles(paths, folder));
        assets.images[std::string(picturesFolder)] = setOf(ListPictures(paths));
        assets.sounds = setOf(ListSounds(paths));
        return assets;
    }

    const CSheetArguments& m_arguments;
    CSceneContext m_context;
    const CSceneModel& m_model;
    const CScene& m_scene;
};

} // namespace

bool RunSheet(const CSheetArguments& arguments) {
    CConsolePrompter prompter;
    const auto read = arguments.isImport && !arguments.dryRun ? ReadSceneToChange : ReadScene;
    const auto scene = read(arguments.scene.database, arguments.scene.scene, prompter);
    if (!scene)
        return false;
    CSheetExchange exchange(arguments, *scene);
    return arguments.isImport ? exchange.Import() : exchange.Export();
}

} // namespace velmor
