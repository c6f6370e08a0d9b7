#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/NamingRules.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetOperations.h"

#include <algorithm>
#include <cstdint>
#include <utility>

// The edits of the xsheet: levels, frames, cells, dropped assets, and undo.

namespace velmor {

namespace {

// More than an xsheet holds: whoever wants it filled up need not count.
constexpr int mostFramesAtOnce = 5000;

std::vector<std::string> LevelNames(const CXSheet& xsheet) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(xsheet.LevelCount()));
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        names.push_back(xsheet.LevelName(level));
    return names;
}

// The selected cells; nothing while there are none. The bounds are set one by one, so that start and end may stand
// the wrong way round.
std::optional<CXSheetSelection> SelectedCells(const CSceneModel& model) {
    const CXSheetSelection& selection = model.selection;
    const bool isRange = selection.firstLevel <= selection.lastLevel && selection.firstFrame <= selection.lastFrame;
    if (!model.sceneOpen || !isRange || !model.xsheet.HasLevel(selection.firstLevel) ||
        !model.xsheet.HasLevel(selection.lastLevel) || !model.xsheet.HasFrame(selection.firstFrame) ||
        !model.xsheet.HasFrame(selection.lastFrame))
        return std::nullopt;
    return selection;
}

} // namespace

std::optional<int> CXSheetOperations::AskLevel(const char* prompt) const {
    const std::optional<int> level = m_context.prompter.AskLevel({prompt, LevelNames(m_context.model.xsheet)});
    return level && m_context.model.xsheet.HasLevel(*level) ? level : std::nullopt;
}

std::optional<std::string> CXSheetOperations::AskLevelName(const std::string& initial) const {
    return m_context.prompter.AskName({NameKind::Level, initial, [this](const std::string& name) {
                                           return m_context.Report(CheckFreeText(name));
                                       }});
}

std::optional<int> CXSheetOperations::AskFrameCount(const char* prompt) const {
    return m_context.prompter.AskFrameCount({prompt, 1, [this](int count) {
                                                 return m_context.Require(
                                                     count >= 1 && count <= mostFramesAtOnce,
                                                     "The number of frames must be a whole number from 1 to 5000");
                                             }});
}

void CXSheetOperations::AddLevel() {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<std::string> name = AskLevelName("");
    if (!name || !m_context.Require(model.xsheet.LevelCount() < CXSheet::mostLevels,
                                    "Sorry, Maximum level number is reached, can not add another level."))
        return;
    m_context.TakeSnapshot();
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    model.moveSelection.InsertLevel(model.xsheet.LevelCount());
    static_cast<void>(model.xsheet.AddLevel(*name)); // there is room, above
    m_context.Update(structureHint);
}

void CXSheetOperations::DeleteLevel() {
    CSceneModel& model = m_context.model;
    if (!CanDeleteLevel(m_context.model))
        return;
    const std::optional<int> level = AskLevel("Delete which level?");
    if (!level || !m_context.prompter.Confirm("Are you sure you want to delete level\n \" " +
                                                  model.xsheet.LevelName(*level) + " \" ?",
                                              Consequence::Undoable))
        return;
    m_context.TakeSnapshot();
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    model.moveSelection.DeleteLevel(*level, model.xsheet.LevelCount());
    model.xsheet.DeleteLevel(*level);
    model.ClampToXSheet();
    m_context.Update(structureAndPictureHint);
}

void CXSheetOperations::RenameLevel() {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<int> level = AskLevel("Rename which level?");
    if (!level)
        return;
    // Before the name is asked: cancelling that dialog leaves the snapshot.
    m_context.TakeSnapshot();
    std::optional<std::string> name = AskLevelName(model.xsheet.LevelName(*level));
    if (!name)
        return;
    model.xsheet.SetLevelName(*level, std::move(*name));
    m_context.Update(structureHint);
}

void CXSheetOperations::SwapLevels() {
    CSceneModel& model = m_context.model;
    if (!CanSwapLevels(m_context.model))
        return;
    const std::optional<std::pair<int, int>> levels = m_context.prompter.AskLevelsToSwap(LevelNames(model.xsheet));
    if (!levels || !model.xsheet.HasLevel(levels->first) || !model.xsheet.HasLevel(levels->second))
        return;
    m_context.TakeSnapshot();
    model.moveSelection.SwapLevels(levels->first, levels->second);
    model.xsheet.SwapLevels(levels->first, levels->second);
    m_context.Update(cellsAndPictureHint);
}

void CXSheetOperations::AddFrames() {
    if (!m_context.model.sceneOpen)
        return;
    if (const std::optional<int> count = AskFrameCount("Add how many frames to the end ?"))
        SetFrameCount(m_context.model.xsheet.FrameCount() + *count, structureHint);
}

void CXSheetOperations::DeleteFrames() {
    if (!m_context.model.sceneOpen)
        return;
    // Sounds placed beyond the new end stay: they are heard again when the frames come back.
    if (const std::optional<int> count = AskFrameCount("Delete how many frames from the end ?"))
        SetFrameCount(m_context.model.xsheet.FrameCount() - *count, structureAndPictureHint);
}

void CXSheetOperations::SetFrameCount(int frames, UpdateHint hint) {
    CSceneModel& model = m_context.model;
    m_context.TakeSnapshot();
    model.xsheet.SetFrameCount(std::clamp(frames, 1, CXSheet::mostFrames));
    // When adding, too: a file may hold one frame more than editing allows.
    model.ClampToXSheet();
    m_sounds.PrepareSoundBuffer();
    m_context.Update(hint);
}

void CXSheetOperations::Copy() {
    if (const std::optional<CXSheetSelection> selection = SelectedCells(m_context.model))
        m_context.model.clipboard = m_context.model.xsheet.Copy(*selection);
}

void CXSheetOperations::Cut() {
    CSceneModel& model = m_context.model;
    const std::optional<CXSheetSelection> selection = SelectedCells(model);
    if (!selection)
        return;
    m_context.TakeSnapshot();
    model.clipboard = model.xsheet.Copy(*selection);
    model.xsheet.ClearCells(*selection);
    m_context.Update(cellsAndPictureHint);
}

void CXSheetOperations::Paste() {
    CSceneModel& model = m_context.model;
    if (!CanPaste(m_context.model) || !model.xsheet.HasLevel(model.cursorLevel) ||
        !model.xsheet.HasFrame(model.cursorFrame))
        return;
    model.xsheet.Paste(model.clipboard, model.cursorLevel, model.cursorFrame);
    m_context.Update(cellsAndPictureHint);
}

void CXSheetOperations::Reverse() {
    EditRange(&CXSheet::Reverse);
}

void CXSheetOperations::Condense() {
    EditRange(&CXSheet::Condense);
}

void CXSheetOperations::Expand() {
    EditRange(&CXSheet::Expand);
}

void CXSheetOperations::EditRange(void (CXSheet::*edit)(const CXSheetSelection&)) {
    const std::optional<CXSheetSelection> selection = SelectedCells(m_context.model);
    if (!selection || !CanEditRange(m_context.model))
        return;
    (m_context.model.xsheet.*edit)(*selection);
    m_context.Update(UpdateHint::Cells);
}

void CXSheetOperations::Undo() {
    CSceneModel& model = m_context.model;
    if (!CanUndo(m_context.model))
        return;
    CXSheetSnapshot snapshot = std::move(*model.undo);
    model.undo.reset();
    model.xsheet = std::move(snapshot.xsheet);
    model.camera.SetFirstFrames(snapshot.camera, model.xsheet.FrameCount());
    model.sounds = std::move(snapshot.sounds);
    model.geometry = snapshot.geometry;
    // The sheet may be smaller than the one that cursor and selection were set on (frames or levels had been
    // added); the views index it with both as soon as they hear of the change.
    model.ClampToXSheet();
    m_sounds.PrepareSoundBuffer();
    m_context.Update(everythingHint);
}

void CXSheetOperations::AskAndDropCels(int level, int frame, CPoint screenPoint) {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !model.xsheet.HasLevel(level) || !model.xsheet.HasFrame(frame))
        return;
    SetSelStartX(level);
    SetSelEndX(level);
    SetSelStartY(frame);
    SetSelEndY(frame);
    SetCursorX(level);
    SetCursorY(frame);
    CDropType choices(m_context.profile);
    if (m_context.prompter.AskDropType({screenPoint, choices}))
        DropCels(level, frame, choices.Step(), choices.Insert());
}

void CXSheetOperations::DropCels(int level, int frame, int step, bool insert) {
    CSceneModel& model = m_context.model;
    // Chosen sounds are no cells: DropSound places them.
    const bool celsChosen = model.sourceMode != SourceMode::Sounds && !model.sourceSelection.empty();
    if (!m_context.Require(model.sceneOpen, "Internal Error : DropCels called with no scene open") ||
        !m_context.Require(model.sourceMode != SourceMode::Cels || !model.folderName.empty(),
                           "Internal Error : DropCels called with no folder open") ||
        !m_context.Require(celsChosen, "Internal Error : DropCels called with cels selected") ||
        !RequireLevel(level, "Internal Error : Invalid level no in DropCels") ||
        !RequireFrame(frame, "Internal Error : Invalid frame no in DropCels"))
        return;
    const int held = std::clamp(step, 0, model.xsheet.FrameCount());
    if (held > 0)
        m_context.TakeSnapshot();
    if (insert) {
        const std::int64_t moved = static_cast<std::int64_t>(held) * std::ssize(model.sourceSelection);
        const std::int64_t room = model.xsheet.FrameCount() - frame;
        model.xsheet.InsertFrames(level, frame, static_cast<int>(std::min(moved, room)));
    }
    FillWithSelectedAssets(level, frame, held);
    m_context.Update(UpdateHint::Cells);
    m_context.Update(pictureHint);
}

void CXSheetOperations::FillWithSelectedAssets(int level, int frame, int held) {
    CSceneModel& model = m_context.model;
    const std::string folder =
        model.sourceMode == SourceMode::Pictures ? std::string(picturesFolder) : model.folderName;
    for (const std::string& asset : model.sourceSelection) {
        const int end = std::min(frame + held, model.xsheet.FrameCount());
        if (frame == end)
            break;
        // Set once for all its frames: the size is read from disk. A cell whose size cannot be read shows its asset
        // all the same, as the file may be mended.
        CXSheetCell cell;
        static_cast<void>(
            m_context.Report(cell.Set(model.Paths().SceneFolder(), folder, asset, model.geometry.Frame())));
        for (; frame < end; ++frame)
            model.xsheet.MutableCell(level, frame) = cell;
    }
}

} // namespace velmor
