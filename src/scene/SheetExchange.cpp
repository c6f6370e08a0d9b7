#include "scene/SheetExchange.h"

#include "scene/DialogRequests.h"
#include "scene/SceneEdit.h"
#include "scene/Settings.h"
#include "sound/SoundFile.h"
#include "xsheet/exchange/SheetCsv.h"
#include "xsheet/exchange/SheetExport.h"
#include "xsheet/exchange/Xdts.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr const char* noScene = "Internal Error: Scene not open for exchanging its xsheet";

struct CFormatNames {
    const char* extension;
    const char* filter;
};

const CFormatNames& NamesOf(ExchangeFormat format) {
    static constexpr CFormatNames xdts{".xdts", "Exchange Digital Time Sheets (*.xdts)|*.xdts||"};
    static constexpr CFormatNames csv{".csv", "Tables for Spreadsheets (*.csv)|*.csv||"};
    return format == ExchangeFormat::Csv ? csv : xdts;
}

} // namespace

ExchangeFormat ExchangeFormatOf(const Path& file, ExchangeFormat otherwise) {
    std::string extension = Utf8Of(file.extension());
    std::ranges::transform(extension, extension.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    for (const ExchangeFormat format : {ExchangeFormat::Xdts, ExchangeFormat::Csv})
        if (extension == NamesOf(format).extension)
            return format;
    return otherwise;
}

void PutImport(CSheetImport import, CScene& scene) {
    scene.xsheet = std::move(import.xsheet);
    scene.sounds.Set(std::move(import.sounds));
    scene.dialogue = std::move(import.dialogue);
}

void CSheetExchange::AskAndExport() {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, noScene))
        return;
    const auto remembered =
        Get(m_context.profile, setting::lastSheetFormat) == 1 ? ExchangeFormat::Csv : ExchangeFormat::Xdts;
    const CScene& scene = model.Scene();
    const std::optional<ExchangeFormat> format =
        m_context.prompter.Ask(CSheetExportRequest{remembered, scene.xsheet.LevelCount(), scene.xsheet.FrameCount(),
                                                   static_cast<int>(scene.sounds.All().size()), Losses()});
    if (!format)
        return;
    Set(m_context.profile, setting::lastSheetFormat, static_cast<int>(*format));
    if (const Path file = AskExportFile(*format); !file.empty())
        static_cast<void>(Write(file, ExchangeFormatOf(file, *format))); // it has said why not
}

Path CSheetExchange::AskExportFile(ExchangeFormat format) const {
    const CFormatNames& names = NamesOf(format);
    const CSaveFileRequest request{
        {"Export Xsheet", names.filter, names.extension, m_context.model.sceneName + names.extension, false}};
    while (const std::optional<Path> file = m_context.prompter.Ask(request))
        if (!FileExists(*file) || m_context.prompter.AskYesNo("File Exists, Do you want to overwrite it ?"))
            return *file;
    return {};
}

void CSheetExchange::AskAndImport() {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, noScene))
        return;
    const std::vector<Path> files = m_context.prompter.Ask(
        COpenFilesRequest{{"Import Xsheet",
                           "Exchange Digital Time Sheets (*.xdts)|*.xdts|Tables for Spreadsheets (*.csv)|*.csv|"
                           "All readable sheets (*.xdts;*.csv)|*.xdts;*.csv||",
                           "", "", false, 2}});
    CExchangeSheet sheet;
    CSheetImport import;
    if (files.empty() || !Read(files.front(), ExchangeFormatOf(files.front(), ExchangeFormat::Xdts), sheet) ||
        !m_context.Report(Plan(sheet, model.folderName, import)))
        return;
    CSheetImportRequest request{
        Utf8Of(files.front().filename()), ListCelFolders(model.Paths()), model.folderName, {}};
    request.preview = [this, &sheet](const std::string& folder) {
        CSheetImport preview;
        static_cast<void>(Plan(sheet, folder, preview)); // that it fits does not depend on the folder
        return preview;
    };
    const std::optional<std::string> folder = m_context.prompter.Ask(request);
    if (folder && Plan(sheet, *folder, import) && !import.changes.empty())
        Apply(std::move(import));
}

void CSheetExchange::Apply(CSheetImport import) {
    CSceneEdit edit(m_context, "Import Xsheet", structureAndPictureHint);
    const int levels = m_context.model.Scene().xsheet.LevelCount();
    for (int added = 0; added < import.newLevels; ++added)
        m_context.model.moveSelection.InsertLevel(levels + added);
    PutImport(std::move(import), edit.Scene());
}

std::vector<std::string> CSheetExchange::Losses() const {
    const CScene& scene = m_context.model.Scene();
    std::vector<std::string> losses = LossesOfExport(scene.xsheet, scene.camera, scene.geometry.Frame());
    if (!scene.dialogue.IsEmpty() && scene.sounds.Count() > 0)
        losses.emplace_back("A table (.csv) has the dialogue in the place of the sounds");
    if (!std::ranges::all_of(scene.sounds.All(), &CSoundPlacement::IsPlain))
        losses.emplace_back("Trims and levels of sounds are not in the file");
    return losses;
}

bool CSheetExchange::Write(const Path& file, ExchangeFormat format) const {
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    const CSceneModel& model = m_context.model;
    CExchangeSheet sheet = ExportSheet(model.sceneName, model.Scene().xsheet, model.Scene().sounds.All(),
                                       [this](const std::string& name) { return FramesOfSound(name); });
    AddDialogue(model.Scene().dialogue, sheet);
    const std::string text = format == ExchangeFormat::Csv ? WriteSheetCsv(sheet) : WriteXdts(sheet);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    if (WriteFileAtomically(file, {bytes, text.size()}))
        return true;
    m_context.Show("Could not write " + Utf8Of(file));
    return false;
}

bool CSheetExchange::Read(const Path& file, ExchangeFormat format, CExchangeSheet& sheet) const {
    const std::optional<CFileBytes> bytes = ReadWholeFile(file, mostExchangeBytes);
    if (!bytes) {
        m_context.Show("Could not read " + Utf8Of(file));
        return false;
    }
    return m_context.Report(format == ExchangeFormat::Csv ? ReadSheetCsv(bytes->Span(), sheet)
                                                          : ReadXdts(bytes->Span(), sheet));
}

CStatus CSheetExchange::Plan(const CExchangeSheet& sheet, const std::string& folder, CSheetImport& import) const {
    const CScene& scene = m_context.model.Scene();
    return ImportSheet(sheet, scene.xsheet, scene.sounds.All(), scene.dialogue, Assets(folder), import);
}

// A sound that cannot be read lasts a frame: the sheet goes out all the same.
int CSheetExchange::FramesOfSound(const std::string& name) const {
    const CSceneModel& model = m_context.model;
    std::vector<std::uint8_t> samples;
    if (!LoadSoundFile(model.Paths().SoundFile(name), name, samples))
        return 1;
    const int perFrame = std::max(1, SamplesPerFrame(std::max(1, model.Scene().geometry.frameRate)));
    const std::size_t frames =
        (samples.size() + static_cast<std::size_t>(perFrame) - 1) / static_cast<std::size_t>(perFrame);
    return static_cast<int>(std::min<std::size_t>(frames, mostExchangeFrames));
}

CSceneAssets CSheetExchange::Assets(const std::string& folder) const {
    const CScenePaths paths = m_context.model.Paths();
    CSceneAssets assets{paths.SceneFolder(), m_context.model.Scene().geometry.Frame(), {}, {}, folder};
    const auto setOf = [](std::vector<std::string> names) {
        return std::set<std::string>(std::make_move_iterator(names.begin()), std::make_move_iterator(names.end()));
    };
    for (const std::string& known : ListCelFolders(paths))
        assets.images[known] = setOf(ListCelTitles(paths, known));
    assets.images[std::string(picturesFolder)] = setOf(ListPictures(paths));
    assets.sounds = setOf(ListSounds(paths));
    return assets;
}

} // namespace velmor
