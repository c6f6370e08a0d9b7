#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "scene/ImportOperations.h"
#include "scene/NamingRules.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/SoundOperations.h"

#include <algorithm>
#include <cctype>

namespace velmor {

namespace {

/// A file of a sequence and the number that its name ends in.
struct CNumberedFile {
    Path file;
    int number = 0;
};

// By number; nothing when a name has none, or two have the same.
std::optional<std::vector<CNumberedFile>> Numbered(const std::vector<std::string>& names) {
    std::vector<CNumberedFile> files;
    for (const std::string& name : names) {
        const Path file = PathOf(name);
        const std::string stem = Utf8Of(file.stem());
        const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
        const auto digits = std::find_if_not(stem.rbegin(), stem.rend(), isDigit).base();
        std::string number(digits, stem.end());
        number.erase(0, number.find_first_not_of('0'));
        const std::optional<int> value = number.empty() ? std::nullopt : ParseNumber(number);
        if (!value)
            return std::nullopt;
        files.push_back({file, *value});
    }
    std::ranges::sort(files, {}, &CNumberedFile::number);
    const auto twice = std::ranges::adjacent_find(files, {}, &CNumberedFile::number);
    return twice == files.end() ? std::optional(files) : std::nullopt;
}

/// Imports a sequence under the numbers of its files, and exposes it.
class CSequenceImport {
public:
    CSequenceImport(CReadScene& scene, const CSequenceArguments& arguments)
        : m_scene(scene),
          m_arguments(arguments),
          m_palettes(scene.context),
          m_sounds(scene.context),
          m_saving(scene.context),
          m_lifecycle(scene.context, m_palettes, m_sounds, m_saving),
          m_imports(scene.context, m_lifecycle) {}

    bool Run() {
        const auto files = Numbered(m_arguments.files);
        if (!files) {
            m_scene.context.Show("Each file of a sequence has to end in a number of its own, from 1 up");
            return false;
        }
        const CXSheet before = m_scene.model.Scene().xsheet;
        const bool done = Check(*files) && Import(*files) && (m_arguments.level.empty() || Expose(*files));
        return (m_scene.model.Scene().xsheet == before || m_saving.SaveXSheet()) && done;
    }

private:
    bool ArePictures() const { return !m_arguments.pictures.empty(); }
    std::string Folder() const { return ArePictures() ? std::string(picturesFolder) : m_arguments.folder; }
    std::string NameOf(const CNumberedFile& file) const {
        return m_arguments.pictures + std::to_string(file.number);
    }

    std::optional<int> ExistingLevel() const {
        const CXSheet& xsheet = m_scene.model.Scene().xsheet;
        for (int level = 0; level < xsheet.LevelCount(); ++level)
            if (xsheet.LevelName(level) == m_arguments.level)
                return level;
        return std::nullopt;
    }

    int EndOf(const std::vector<CNumberedFile>& files) const {
        return m_arguments.at - 1 + static_cast<int>(files.size()) * m_arguments.hold;
    }

    // Before anything is imported that could not be exposed.
    bool Check(const std::vector<CNumberedFile>& files) {
        const CSceneContext& context = m_scene.context;
        if (ArePictures()
                ? !context.Require(static_cast<bool>(CheckPictureName(m_arguments.pictures)), brokenPictureName)
                : !context.Report(CheckFolderName(m_arguments.folder)))
            return false;
        if (m_arguments.level.empty())
            return true;
        const CXSheet& xsheet = m_scene.model.Scene().xsheet;
        return context.Report(CheckFreeText(m_arguments.level)) &&
               context.Require(files.size() <= CXSheet::mostFrames && m_arguments.hold <= CXSheet::mostFrames &&
                                   m_arguments.at <= CXSheet::mostFrames && EndOf(files) <= CXSheet::mostFrames,
                               "The sequence is longer than an xsheet can be") &&
               context.Require(ExistingLevel() || xsheet.LevelCount() < CXSheet::mostLevels,
                               "There is no room for another level");
    }

    bool Import(const std::vector<CNumberedFile>& files) {
        if (m_arguments.threshold)
            m_scene.model.importThreshold = *m_arguments.threshold;
        if (!ArePictures()) {
            if (!m_scene.context.Require(CreateFolder(m_scene.model.Paths().CelFolder(m_arguments.folder)),
                                         "The folder could not be created. Disk full or write protected?"))
                return false;
            m_lifecycle.SetFolderName(m_arguments.folder);
        }
        return std::ranges::all_of(files, [this](const CNumberedFile& file) {
            return ArePictures() ? m_imports.ImportPicture(file.file, NameOf(file))
                                 : m_imports.ImportCel(file.file, NameOf(file));
        });
    }

    bool Expose(const std::vector<CNumberedFile>& files) {
        const std::optional<int> existing = ExistingLevel();
        CSceneEdit edit(m_scene.context, "Import", UpdateHint::Cells);
        CXSheet& xsheet = edit.XSheet();
        if (!existing && !xsheet.AddLevel(m_arguments.level))
            return false;
        xsheet.SetFrameCount(std::max(xsheet.FrameCount(), EndOf(files)));
        int frame = m_arguments.at - 1;
        for (const CNumberedFile& file : files) {
            CXSheetCell cell;
            if (!m_scene.context.Report(cell.Set(m_scene.model.Paths().SceneFolder(), Folder(), NameOf(file),
                                                 m_scene.model.Scene().geometry.Frame())))
                return false;
            for (int held = 0; held < m_arguments.hold; ++held)
                xsheet.MutableCell(existing.value_or(0), frame++) = cell;
        }
        return true;
    }

    CReadScene& m_scene;
    const CSequenceArguments& m_arguments;
    CPaletteOperations m_palettes;
    CSoundOperations m_sounds;
    CSceneSaving m_saving;
    CSceneLifecycle m_lifecycle;
    CImportOperations m_imports;
};

} // namespace

bool RunSequenceImport(const CSequenceArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadSceneToChange(arguments.scene.database, arguments.scene.scene, prompter);
    return scene && CSequenceImport(*scene, arguments).Run();
}

} // namespace velmor
