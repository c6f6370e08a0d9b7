#include "scene/SequenceOperations.h"

#include "scene/DialogRequests.h"
#include "scene/SequenceImport.h"
#include "scene/Settings.h"

#include <algorithm>
#include <cctype>

namespace velmor {

namespace {

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

} // namespace

void CSequenceOperations::AskAndImport() {
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
        static_cast<void>(m_import.Import(*sequence)); // it has said what went wrong
    }
}

CSequence CSequenceOperations::Propose(std::vector<Path> files) const {
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
std::string CSequenceOperations::ProposeFolder(const std::string& stem, const CSequence& sequence) const {
    const CSceneModel& model = m_context.model;
    for (const std::string& folder : ListCelFolders(model.Paths()))
        if (IsSameIgnoringCase(folder, stem))
            return folder;
    CSequence here = sequence;
    here.folder = model.folderName;
    return model.folderName.empty() || (!stem.empty() && CountReplaced(here) > 0) ? stem : model.folderName;
}

std::size_t CSequenceOperations::CountReplaced(const CSequence& sequence) const {
    const auto images = ImagesOf(sequence).value_or(std::vector<CSequenceImage>());
    return static_cast<std::size_t>(
        std::ranges::count_if(images, [&](const CSequenceImage& image) { return Exists(sequence, image.name); }));
}

bool CSequenceOperations::Exists(const CSequence& sequence, const std::string& name) const {
    return FileExists(m_context.model.Paths().AssetFile(sequence.kind, sequence.folder, name));
}

bool CSequenceOperations::Accept(const CSequence& sequence) const {
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

void CSequenceOperations::Remember(const CSequence& sequence) {
    Set(m_context.profile, setting::lastSequenceHold, sequence.hold);
    if (sequence.kind != SourceMode::Cels)
        return;
    m_context.model.importThreshold = sequence.lines.threshold;
    Set(m_context.profile, setting::importThreshold, sequence.lines.threshold);
    Set(m_context.profile, setting::importSpecks, sequence.lines.specks);
}

} // namespace velmor
