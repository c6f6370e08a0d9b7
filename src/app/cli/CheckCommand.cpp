#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "image/CelImg.h"
#include "image/Palette.h"
#include "sound/SoundFile.h"
#include "xsheet/SheetNotesPlace.h"
#include "xsheet/XSheetFile.h"

#include <iostream>
#include <set>

namespace velmor {

namespace {

/// Reads every file of a scene and prints a line for each that is damaged or missing.
class CSceneCheck {
public:
    CSceneCheck(const std::string& database, const std::string& scene) : m_paths(WithSeparator(database), scene) {}

    /// Whether all is well.
    bool Run() {
        CheckXSheet();
        for (const std::string& folder : ListCelFolders(m_paths)) {
            CheckPalette(folder);
            CheckImages(m_paths.CelFolder(folder), ".bit");
        }
        CheckImages(m_paths.PicturesFolder(), ".rgba");
        for (const std::string& sound : ListSounds(m_paths))
            CheckSound(sound);
        return m_damaged.empty();
    }

    std::size_t DamagedCount() const { return m_damaged.size(); }

private:
    void Print(const Path& path, const CStatus& status) {
        if (!status && m_damaged.insert(path).second)
            std::cout << Utf8Of(path) << ": " << status.Message() << '\n';
    }

    void CheckXSheet() {
        CScene data;
        CStatus notes;
        const CStatus status = LoadXSheet(m_paths.XSheetFile(), data, &notes);
        Print(m_paths.XSheetFile(), status);
        Print(SheetNotesFile(m_paths.XSheetFile()), notes);
        if (!status)
            return;
        for (int level = 0; level < data.xsheet.LevelCount(); ++level)
            for (int frame = 0; frame < data.xsheet.FrameCount(); ++frame)
                if (const CXSheetCell& cel = data.xsheet.Cell(level, frame); cel.IsUsed())
                    CheckReference(AssetFilePath(m_paths.SceneFolder(), cel.FolderName(), cel.CelName()));
        for (const CSoundPlacement& sound : data.sounds.All())
            CheckReference(m_paths.SoundFile(sound.name));
    }

    void CheckReference(const Path& path) {
        if (!FileExists(path))
            Print(path, CStatus::Failure("is on the xsheet but missing"));
    }

    void CheckPalette(const std::string& folder) {
        const Path path = m_paths.PaletteFile(folder);
        CPalette palette;
        if (FileExists(path)) // a folder without one gets it when it is opened
            Print(path, LoadPalette(path, palette));
    }

    void CheckImages(const Path& folder, std::string_view extension) {
        for (const std::string& name : ListFiles(folder, extension)) {
            CCelImg image;
            Print(folder / PathOf(name), image.Load(folder / PathOf(name)));
        }
    }

    void CheckSound(const std::string& sound) {
        std::vector<std::uint8_t> samples;
        Print(m_paths.SoundFile(sound), LoadSoundFile(m_paths.SoundFile(sound), sound, samples));
    }

    CScenePaths m_paths;
    std::set<Path> m_damaged;
};

void Report(const std::string& scene, std::size_t damaged) {
    std::cout << scene << ": ";
    if (damaged == 0)
        std::cout << "whole\n";
    else
        std::cout << damaged << (damaged == 1 ? " file" : " files") << " damaged or missing\n";
}

} // namespace

bool RunCheck(const CCheckArguments& arguments) {
    CConsolePrompter prompter;
    if (!RequireDatabase(arguments.database, prompter))
        return false;
    const bool isAll = arguments.scenes.empty() || arguments.scenes == std::vector<std::string>{"all"};
    bool sound = true;
    for (const std::string& scene : isAll ? ListScenes(arguments.database) : arguments.scenes) {
        if (!FolderExists(CScenePaths(WithSeparator(arguments.database), scene).SceneFolder())) {
            prompter.ShowMessage("Problem openning the scene");
            return false;
        }
        CSceneCheck check(arguments.database, scene);
        sound = check.Run() && sound;
        if (arguments.report)
            Report(scene, check.DamagedCount());
    }
    return sound;
}

} // namespace velmor
