#include "scene/SequenceImport.h"

#include "scene/ImportOperations.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"

#include <algorithm>

namespace velmor {

namespace {

/// Lines that a message shows of what has failed.
constexpr std::size_t mostFailuresShown = 10;

std::string FailureText(const Path& file, const std::string& reason) {
    return Utf8Of(file.filename()) + ": " + (reason.empty() ? "Not a Targa, bitmap, PNG or TIFF file" : reason);
}

} // namespace

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
                xsheet.MutableCell(sequence.level.value_or(0), held).Expose(cell);
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
