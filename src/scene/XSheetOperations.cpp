#include "scene/XSheetOperations.h"
#include "scene/AssetReferences.h"

#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/NamingRules.h"
#include "scene/SceneEdit.h"
#include "scene/XSheetCursor.h"
#include "xsheet/LevelOrder.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace velmor {

namespace {

// More than an xsheet holds: whoever wants it filled up need not count.
constexpr int mostFramesAtOnce = 5000;

int WithinEditing(int frames) {
    return std::clamp(frames, 1, CXSheet::mostFrames);
}

std::vector<std::string> LevelNames(const CXSheet& xsheet) {
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(xsheet.LevelCount()));
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        names.push_back(xsheet.LevelName(level));
    return names;
}

} // namespace

std::optional<int> CXSheetOperations::AskLevel(const char* prompt) const {
    const std::optional<int> level =
        m_context.prompter.Ask(CLevelRequest{prompt, LevelNames(m_context.model.Scene().xsheet)});
    return level && m_context.model.Scene().xsheet.HasLevel(*level) ? level : std::nullopt;
}

std::optional<std::string> CXSheetOperations::AskLevelName(const std::string& initial) const {
    return m_context.prompter.Ask(CNameRequest{NameKind::Level, initial, [this](const std::string& name) {
                                                   return m_context.Report(CheckFreeText(name));
                                               }});
}

std::optional<int> CXSheetOperations::AskFrameCount(const char* prompt) const {
    return m_context.prompter.Ask(CFrameCountRequest{
        prompt, 1, [this](int count) {
            return m_context.Require(count >= 1 && count <= mostFramesAtOnce,
                                     "The number of frames must be a whole number from 1 to 5000");
        }});
}

void CXSheetOperations::AddLevel() {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<std::string> name = AskLevelName("");
    if (!name || !m_context.Require(model.Scene().xsheet.LevelCount() < CXSheet::mostLevels,
                                    "Sorry, Maximum level number is reached, can not add another level."))
        return;
    CSceneEdit edit(m_context, "Add Level", structureHint);
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    model.moveSelection.InsertLevel(model.Scene().xsheet.LevelCount());
    static_cast<void>(edit.XSheet().AddLevel(*name)); // there is room, above
}

void CXSheetOperations::DeleteLevel() {
    CSceneModel& model = m_context.model;
    if (!CanDeleteLevel(model))
        return;
    const std::optional<int> level = AskLevel("Delete which level?");
    if (!level || !m_context.prompter.Confirm("Are you sure you want to delete level\n \" " +
                                                  model.Scene().xsheet.LevelName(*level) + " \" ?",
                                              Consequence::Undoable))
        return;
    CSceneEdit edit(m_context, "Delete Level", structureAndPictureHint);
    const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    model.moveSelection.DeleteLevel(*level, model.Scene().xsheet.LevelCount());
    edit.XSheet().DeleteLevel(*level);
}

void CXSheetOperations::RenameLevel() {
    if (!m_context.model.sceneOpen)
        return;
    const std::optional<int> level = AskLevel("Rename which level?");
    if (!level)
        return;
    // Before the name is asked: cancelling that dialog leaves the step.
    CSceneEdit edit(m_context, "Rename Level", structureHint);
    if (std::optional<std::string> name = AskLevelName(m_context.model.Scene().xsheet.LevelName(*level)))
        edit.XSheet().SetLevelName(*level, std::move(*name));
    else
        edit.CallOff();
}

void CXSheetOperations::SwapLevels() {
    CSceneModel& model = m_context.model;
    if (!CanSwapLevels(model))
        return;
    const CXSheet& xsheet = model.Scene().xsheet;
    const std::optional<std::pair<int, int>> levels =
        m_context.prompter.Ask(CSwapLevelsRequest{LevelNames(xsheet)});
    if (!levels || !xsheet.HasLevel(levels->first) || !xsheet.HasLevel(levels->second))
        return;
    CSceneEdit edit(m_context, "Swap Levels", cellsAndPictureHint);
    model.moveSelection.SwapLevels(levels->first, levels->second);
    edit.XSheet().SwapLevels(levels->first, levels->second);
}

void CXSheetOperations::MoveLevels(int first, int last, int before) {
    CSceneModel& model = m_context.model;
    const CXSheet& xsheet = model.Scene().xsheet;
    const bool isRange = first <= last && xsheet.HasLevel(first) && xsheet.HasLevel(last);
    const bool staysThere = before >= first && before <= last + 1;
    if (!model.sceneOpen || !isRange || staysThere || before < 0 || before > xsheet.LevelCount())
        return;
    const std::vector<int> order = MovedLevels(xsheet.LevelCount(), first, last, before);
    const auto placeOf = [&](int level) {
        return static_cast<int>(std::ranges::find(order, level) - order.begin());
    };
    CSceneEdit edit(m_context, first == last ? "Move Level" : "Move Levels", structureAndPictureHint);
    model.moveSelection.Arrange(order);
    edit.XSheet().Arrange(order);
    model.cursorLevel = placeOf(model.cursorLevel);
    if (model.selection.firstLevel >= first && model.selection.lastLevel <= last) {
        const int by = placeOf(first) - first;
        model.selection.firstLevel += by;
        model.selection.lastLevel += by;
    } else {
        model.selection.firstLevel = model.selection.lastLevel = model.cursorLevel;
    }
}

void CXSheetOperations::MoveLevelsLeft() {
    if (const std::optional<CXSheetSelection> selected = SelectedCells(m_context.model))
        MoveLevels(selected->firstLevel, selected->lastLevel, selected->firstLevel - 1);
}

void CXSheetOperations::MoveLevelsRight() {
    if (const std::optional<CXSheetSelection> selected = SelectedCells(m_context.model))
        MoveLevels(selected->firstLevel, selected->lastLevel, selected->lastLevel + 2);
}

void CXSheetOperations::AddFrames() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<int> count = AskFrameCount("Add how many frames to the end ?");
    if (!count)
        return;
    CSceneEdit edit(m_context, "Add Frames", structureHint);
    edit.XSheet().SetFrameCount(WithinEditing(model.Scene().xsheet.FrameCount() + *count));
}

void CXSheetOperations::DeleteFrames() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<int> count = AskFrameCount("Delete how many frames from the end ?");
    if (!count)
        return;
    // Sounds placed beyond the new end stay: they are heard again when the frames come back.
    CSceneEdit edit(m_context, "Delete Frames", structureAndPictureHint);
    edit.XSheet().SetFrameCount(WithinEditing(model.Scene().xsheet.FrameCount() - *count));
}

void CXSheetOperations::Copy() {
    if (const std::optional<CXSheetSelection> selection = SelectedCells(m_context.model))
        m_context.model.clipboard = m_context.model.Scene().xsheet.Copy(*selection);
}

void CXSheetOperations::Cut() {
    const std::optional<CXSheetSelection> selection = SelectedCells(m_context.model);
    if (!selection)
        return;
    CSceneEdit edit(m_context, "Cut", cellsAndPictureHint);
    m_context.model.clipboard = edit.XSheet().Copy(*selection);
    edit.XSheet().ClearCells(*selection);
}

void CXSheetOperations::Paste() {
    const CSceneModel& model = m_context.model;
    if (!CanPaste(model) || !model.Scene().xsheet.HasLevel(model.cursorLevel) ||
        !model.Scene().xsheet.HasFrame(model.cursorFrame))
        return;
    CSceneEdit edit(m_context, "Paste", cellsAndPictureHint);
    edit.XSheet().Paste(WithPresentSizes(model.clipboard, model.Paths().SceneFolder()), model.cursorLevel,
                        model.cursorFrame);
}

void CXSheetOperations::Reverse() {
    EditRange("Reverse Cels", &CXSheet::Reverse);
}

void CXSheetOperations::Condense() {
    EditRange("Condense Cels", &CXSheet::Condense);
}

void CXSheetOperations::Expand() {
    EditRange("Expand Cels", &CXSheet::Expand);
}

void CXSheetOperations::EditRange(const char* name, void (CXSheet::*change)(const CXSheetSelection&)) {
    const std::optional<CXSheetSelection> selection = SelectedCells(m_context.model);
    if (!selection || !CanEditRange(m_context.model))
        return;
    CSceneEdit edit(m_context, name, UpdateHint::Cells);
    (edit.XSheet().*change)(*selection);
}

void CXSheetOperations::AskAndDropCels(CSheetCell cell, CPoint screenPoint) {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !model.Scene().xsheet.HasLevel(cell.level) ||
        !model.Scene().xsheet.HasFrame(cell.frame))
        return;
    m_cursor.GoTo(cell);
    CDropType choices(m_context.profile);
    if (m_context.prompter.Ask(CDropTypeRequest{screenPoint, choices}))
        DropCels(cell.level, cell.frame, choices.Step(), choices.Insert());
}

void CXSheetOperations::DropCels(int level, int frame, int step, bool insert) {
    const CSceneModel& model = m_context.model;
    // Chosen sounds are no cells: DropSound places them.
    const bool celsChosen = model.sourceMode != SourceMode::Sounds && !model.sourceSelection.empty();
    if (!m_context.Require(model.sceneOpen, "Internal Error : DropCels called with no scene open") ||
        !m_context.Require(model.sourceMode != SourceMode::Cels || !model.folderName.empty(),
                           "Internal Error : DropCels called with no folder open") ||
        !m_context.Require(celsChosen, "Internal Error : DropCels called with cels selected") ||
        !m_context.Require(model.Scene().xsheet.HasLevel(level), "Internal Error : Invalid level no in DropCels") ||
        !m_context.Require(model.Scene().xsheet.HasFrame(frame), "Internal Error : Invalid frame no in DropCels"))
        return;
    const int held = std::clamp(step, 0, model.Scene().xsheet.FrameCount());
    CSceneEdit edit(m_context, "Drop Cels", UpdateHint::Cells);
    edit.ThenAnnounce(pictureHint);
    if (insert) {
        const std::int64_t moved = static_cast<std::int64_t>(held) * std::ssize(model.sourceSelection);
        const std::int64_t room = model.Scene().xsheet.FrameCount() - frame;
        edit.XSheet().InsertFrames(level, frame, static_cast<int>(std::min(moved, room)));
    }
    FillWithSelectedAssets(edit.XSheet(), level, frame, held);
}

void CXSheetOperations::FillWithSelectedAssets(CXSheet& xsheet, int level, int frame, int held) const {
    const CSceneModel& model = m_context.model;
    const std::string folder =
        model.sourceMode == SourceMode::Pictures ? std::string(picturesFolder) : model.folderName;
    for (const std::string& asset : model.sourceSelection) {
        const int end = std::min(frame + held, xsheet.FrameCount());
        if (frame == end)
            break;
        // Set once for all its frames: the size is read from disk. A cell whose size cannot be read shows its asset
        // all the same, as the file may be mended.
        CXSheetCell cell;
        static_cast<void>(
            m_context.Report(cell.Set(model.Paths().SceneFolder(), folder, asset, model.Scene().geometry.Frame())));
        for (; frame < end; ++frame)
            xsheet.MutableCell(level, frame).Expose(cell);
    }
}

} // namespace velmor
