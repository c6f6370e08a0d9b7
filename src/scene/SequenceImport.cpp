#include "scene/SequenceImport.h"

#include "scene/DialogRequests.h"
#include "scene/ImportOperations.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "scene/Settings.h"

#include <algorithm>
#include <cctype>

namespace velmor {

namespace {

/// Lines that a message shows of what has failed.
constexpr std::size_t mostFailuresShown = 10;

bool IsSameIgnoringCase(const std::string& a, const std::string& b) {
    return std::ranges::equal(a, b,
                              [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

std::vector<std::string> LevelNames(const CXSheet& xsheet) {
    std::vector<std::string> names;
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        names.push_back(xsheet.LevelName(level));
    return names;
}

std::string FailureText(const Path& file, const std::string& reason) {
    return Utf8Of(file.filename()) + ": " + (reason.empty() ? "Not a Targa, bitmap, PNG or TIFF file" : reason);
}

} // namespace

void CSequenceImport::AskAndImport() {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error: Scene not open for importing a sequence"))
        return;
    std::vector<Path> files = m_context.prompter.Ask(
        COpenFilesRequest{{"Select the Files of a Sequence",
                           "Targa Files (*.tga)|*.tga|Windows Bitmap Files (*.bmp)|*.bmp|PNG Files (*.png)|*.png|"
                           "TIFF Files (*.tif;*.tiff)|*.tif;*.tiff|"
                           "All readable images (*.tga;*.bmp;*.png;*.tif;*.tiff)|*.tga;*.bmp;*.png;*.tif;*.tiff||",
                           "", "", true, 4}});
    if (files.empty())
        return;
    CSequenceRequest request{
        Propose(std::move(files)), ListCelFolders(model.Paths()), LevelNames(model.Scene().xsheet), {}, {}, {}, {}};
    request.read = [](const CSequence& sequence, const Path& file) {
        return ReadImportedImage(file, sequence.kind, sequence.lines);
    };
    request.exists = [this](const CSequence& sequence, const std::string& name) { return Exists(sequence, name); };
    request.exposure = [&model](const CSequence& sequence) { return ExposureText(sequence, model.Scene().xsheet); };
    request.accept = [this](const CSequence& sequence) { return Accept(sequence); };
    if (const std::optional<CSequence> sequence = m_context.prompter.Ask(request)) {
        Remember(*sequence);
        static_cast<void>(Import(*sequence)); // it has said what went wrong
    }
}

CSequence CSequenceImport::Propose(std::vector<Path> files) const {
    const CSceneModel& model = m_context.model;
    const std::string stem = SequenceStem(files);
    CSequence sequence;
    sequence.files = std::move(files);
    sequence.kind = model.sourceMode == SourceMode::Pictures ? SourceMode::Pictures : SourceMode::Cels;
    sequence.folder = ProposeFolder(stem, sequence);
    sequence.pictures = stem.empty() ? "Picture" : stem;
    std::erase(sequence.pictures, ' ');
    sequence.lines = {model.importThreshold,
                      std::clamp(Get(m_context.profile, setting::importSpecks), 0, CLineRules::mostSpecks)};
    sequence.level = model.cursorLevel;
    sequence.frame = model.cursorFrame;
    sequence.hold = std::max(1, Get(m_context.profile, setting::lastSequenceHold));
    sequence.levelName = sequence.folder;
    if (!ImagesOf(sequence))
        sequence.firstNumber = NextCelNumber(model.Paths(), sequence.folder);
    return sequence;
}

// A folder that is called like the files, else the one that is open, unless cels would be replaced there.
std::string CSequenceImport::ProposeFolder(const std::string& stem, const CSequence& sequence) const {
    const CSceneModel& model = m_context.model;
    for (const std::string& folder : ListCelFolders(model.Paths()))
        if (IsSameIgnoringCase(folder, stem))
            return folder;
    CSequence here = sequence;
    here.folder = model.folderName;
    return model.folderName.empty() || (!stem.empty() && CountReplaced(here) > 0) ? stem : model.folderName;
}

std::size_t CSequenceImport::CountReplaced(const CSequence& sequence) const {
    const auto images = ImagesOf(sequence).value_or(std::vector<CSequenceImage>());
    return static_cast<std::size_t>(
        std::ranges::count_if(images, [&](const CSequenceImage& image) { return Exists(sequence, image.name); }));
}

bool CSequenceImport::Exists(const CSequence& sequence, const std::string& name) const {
    return FileExists(m_context.model.Paths().AssetFile(sequence.kind, sequence.folder, name));
}

bool CSequenceImport::Accept(const CSequence& sequence) const {
    if (!m_context.Report(CheckSequence(sequence, m_context.model.Scene().xsheet)))
        return false;
    const bool arePictures = sequence.kind == SourceMode::Pictures;
    const std::size_t there = CountReplaced(sequence);
    if (there == 0)
        return true;
    if (there == 1)
        return m_context.prompter.AskYesNo(std::string(arePictures ? "Picture" : "Cel") +
                                           " Exists, Do you want to overwrite it ?");
    return m_context.prompter.AskYesNo(std::to_string(there) + (arePictures ? " Pictures" : " Cels") +
                                       " Exist, Do you want to overwrite them ?");
}

void CSequenceImport::Remember(const CSequence& sequence) {
    Set(m_context.profile, setting::lastSequenceHold, sequence.hold);
    if (sequence.kind != SourceMode::Cels)
        return;
    m_context.model.importThreshold = sequence.lines.threshold;
    Set(m_context.profile, setting::importThreshold, sequence.lines.threshold);
    Set(m_context.profile, setting::importSpecks, sequence.lines.specks);
}

bool CSequenceImport::Import(const CSequence& sequence) {
    if (!m_context.Report(CheckSequence(sequence, m_context.model.Scene().xsheet)) || !Enter(sequence))
        return false;
    std::vector<bool> stored;
    std::vector<std::string> failures;
    CSceneEdit edit(m_context, "Import Sequence", UpdateHint::None);
    const bool isWhole = Store(edit, sequence, stored, failures);
    if (isWhole && sequence.isExposed)
        Expose(edit, sequence, stored);
    edit.End();
    m_lifecycle.SetSourceMode(sequence.kind);
    Tell(sequence.files.size(), failures);
    return isWhole && failures.empty();
}

bool CSequenceImport::Enter(const CSequence& sequence) {
    const CSceneModel& model = m_context.model;
    if (sequence.kind == SourceMode::Pictures)
        return true;
    if (!m_context.Require(CreateFolder(model.Paths().CelFolder(sequence.folder)),
                           "The folder could not be created. Disk full or write protected?"))
        return false;
    if (model.folderName != sequence.folder)
        m_lifecycle.SetFolderName(sequence.folder);
    return model.folderName == sequence.folder; // unless the user would rather stay
}

bool CSequenceImport::Store(CSceneEdit& edit, const CSequence& sequence, std::vector<bool>& stored,
                            std::vector<std::string>& failures) {
    const std::unique_ptr<IProgress> progress = m_context.prompter.BeginProgress("Import Sequence");
    const std::vector<CSequenceImage> images = *ImagesOf(sequence);
    std::vector<Path> files;
    for (const CSequenceImage& image : images)
        files.push_back(m_context.model.Paths().AssetFile(sequence.kind, sequence.folder, image.name));
    edit.KeepFiles(files);
    for (const CSequenceImage& image : images) {
        progress->Report(static_cast<int>(stored.size() * 100 / images.size()), Utf8Of(image.file.filename()));
        if (progress->TakeStopRequest())
            return false;
        const CStatus status = m_imports.Import(edit, image.file, sequence.kind, image.name, sequence.lines);
        stored.push_back(static_cast<bool>(status));
        if (!status)
            failures.push_back(FailureText(image.file, status.Message()));
    }
    return true;
}

void CSequenceImport::Expose(CSceneEdit& edit, const CSequence& sequence, const std::vector<bool>& stored) {
    const std::vector<CSequenceImage> images = *ImagesOf(sequence);
    const std::vector<long long> exposures = ExposuresOf(sequence, images);
    CSceneModel& model = m_context.model;
    edit.AlsoAnnounce(structureAndPictureHint);
    CXSheet& xsheet = edit.XSheet();
    if (!sequence.level) {
        model.moveSelection.InsertLevel(xsheet.LevelCount());
        static_cast<void>(xsheet.AddLevel(sequence.levelName)); // there is room
    }
    int frame = sequence.frame;
    for (std::size_t i = 0; i < images.size(); ++i) {
        const int end = frame + static_cast<int>(exposures[i]);
        xsheet.SetFrameCount(std::max(xsheet.FrameCount(), end));
        CXSheetCell cell;
        if (stored[i] &&
            m_context.Report(cell.Set(model.Paths().SceneFolder(), ReferenceFolder(sequence.kind, sequence.folder),
                                      images[i].name, model.Scene().geometry.Frame())))
            for (int held = frame; held < end; ++held)
                xsheet.MutableCell(sequence.level.value_or(0), held) = cell;
        frame = end;
    }
}

void CSequenceImport::Tell(std::size_t count, const std::vector<std::string>& failures) const {
    if (failures.empty())
        return;
    std::string text = std::to_string(failures.size()) + " of " + std::to_string(count) +
                       (count == 1 ? " file could not be imported:" : " files could not be imported:");
    for (std::size_t i = 0; i < std::min(failures.size(), mostFailuresShown); ++i)
        text += "\n" + failures[i];
    if (failures.size() > mostFailuresShown)
        text += "\nand " + std::to_string(failures.size() - mostFailuresShown) + " more";
    m_context.Show(text);
}

} // namespace velmor
