#include "scene/exposing/SheetTiming.h"

#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/SceneEdit.h"
#include "scene/Settings.h"
#include "scene/XSheetCursor.h"

namespace velmor {

namespace {

const char* NameOf(SheetEditKind kind) {
    switch (kind) {
    case SheetEditKind::Expose:
        return "Expose Drawing";
    case SheetEditKind::Clear:
        return "Expose Nothing";
    case SheetEditKind::HoldAbove:
    case SheetEditKind::HoldOn:
        return "Hold";
    case SheetEditKind::Repeat:
        return "Repeat Cels";
    case SheetEditKind::OnFrames:
    case SheetEditKind::SetExposure:
        return "Set Exposure";
    case SheetEditKind::Swing:
        return "Swing";
    case SheetEditKind::Random:
        return "Random Order";
    case SheetEditKind::Shift:
        return "Shift Cels";
    case SheetEditKind::Roll:
        return "Roll Cels";
    case SheetEditKind::Stretch:
        return "Stretch Time";
    case SheetEditKind::InsertTime:
        return "Insert Time";
    default:
        return "Delete Time";
    }
}

bool ChangesTime(SheetEditKind kind) {
    return kind == SheetEditKind::InsertTime || kind == SheetEditKind::DeleteTime;
}

} // namespace

bool CSheetTiming::IsInSheet(const CXSheetSelection& cells) const {
    const CXSheet& xsheet = m_context.model.Scene().xsheet;
    return m_context.model.sceneOpen && cells.firstLevel <= cells.lastLevel &&
           cells.firstFrame <= cells.lastFrame && xsheet.HasLevel(cells.firstLevel) &&
           xsheet.HasLevel(cells.lastLevel) && xsheet.HasFrame(cells.firstFrame) &&
           xsheet.HasFrame(cells.lastFrame);
}

void CSheetTiming::ShowOutcome(const CSheetEdit& edit) {
    if (!IsInSheet(edit.cells))
        return HideOutcome();
    m_outcomeOf = m_context.model.Scene();
    m_outcome = m_outcomeOf;
    Apply(edit, *m_outcome);
    m_context.Update(UpdateHint::Cells);
}

void CSheetTiming::HideOutcome() {
    if (!m_outcome)
        return;
    m_outcome.reset();
    m_outcomeOf = {};
    m_context.Update(UpdateHint::Cells);
}

// Of a scene that has changed since, it says nothing.
const CScene* CSheetTiming::Outcome() const {
    return m_outcome && m_outcomeOf == m_context.model.Scene() ? &*m_outcome : nullptr;
}

Following CSheetTiming::WhatFollows() const {
    return Get(m_context.profile, setting::exposurePushes) != 0 ? Following::Push : Following::Eat;
}

void CSheetTiming::SetWhatFollows(Following following) {
    Set(m_context.profile, setting::exposurePushes, following == Following::Push ? 1 : 0);
}

void CSheetTiming::Do(const CSheetEdit& edit) {
    HideOutcome();
    if (!IsInSheet(edit.cells))
        return;
    const CXSheetSelection selected = SelectedAfter(edit, m_context.model.Scene().xsheet);
    CSceneEdit change(m_context, NameOf(edit.kind),
                      ChangesTime(edit.kind) ? structureAndPictureHint : cellsAndPictureHint);
    Apply(edit, change.Scene());
    if (!ChangesTime(edit.kind))
        m_context.model.selection = selected;
}

std::optional<CSheetEdit> CSheetTiming::EditOfSelection(SheetEditKind kind, int count) const {
    const std::optional<CXSheetSelection> selection = SelectedCells(m_context.model);
    if (!selection)
        return std::nullopt;
    return CSheetEdit{kind, *selection, count, WhatFollows(), m_seed};
}

void CSheetTiming::ExposeOn(int step) {
    if (const auto edit = EditOfSelection(SheetEditKind::OnFrames, step))
        Do(*edit);
}

void CSheetTiming::Swing() {
    if (const auto edit = EditOfSelection(SheetEditKind::Swing))
        Do(*edit);
}

void CSheetTiming::Random() {
    if (const auto edit = EditOfSelection(SheetEditKind::Random))
        Do(*edit);
    ++m_seed;
}

void CSheetTiming::AskAndShift() {
    if (const auto edit = EditOfSelection(SheetEditKind::Shift, 1))
        AskAndDo(*edit, {"Shift Cels", "Move the selected cels down by how many frames ?\n(up: below 0)", 1,
                         -CXSheet::mostFrames, CXSheet::mostFrames});
}

void CSheetTiming::AskAndRoll() {
    if (const auto edit = EditOfSelection(SheetEditKind::Roll, 1))
        AskAndDo(*edit, {"Roll Cels", "Roll the selected cels down by how many frames ?\n(up: below 0)", 1,
                         -CXSheet::mostFrames, CXSheet::mostFrames});
}

void CSheetTiming::AskAndStretch() {
    if (const auto edit = EditOfSelection(SheetEditKind::Stretch, 1))
        AskAndDo(*edit, {"Stretch Time", "How many frames are the selected cels to take ?",
                         edit->cells.lastFrame - edit->cells.firstFrame + 1, 1, CXSheet::mostFrames});
}

void CSheetTiming::AskAndInsertTime() {
    const CSceneModel& model = m_context.model;
    const CXSheetSelection cells{0, 0, model.cursorFrame, model.cursorFrame};
    AskAndDo({SheetEditKind::InsertTime, cells},
             {"Insert Time", "Insert how many frames at the cursor, on all levels,\nwith camera and sounds ?", 1, 1,
              CXSheet::mostFrames});
}

void CSheetTiming::AskAndDeleteTime() {
    const CSceneModel& model = m_context.model;
    const CXSheetSelection cells{0, 0, model.cursorFrame, model.cursorFrame};
    AskAndDo({SheetEditKind::DeleteTime, cells},
             {"Delete Time", "Delete how many frames from the cursor on, on all levels,\nwith camera and sounds ?",
              1, 1, CXSheet::mostFrames});
}

void CSheetTiming::AskAndDo(CSheetEdit edit, const CQuestion& question) {
    if (!IsInSheet(edit.cells))
        return;
    const auto isRight = [&question](int count) { return count >= question.least && count <= question.most; };
    CFrameCountRequest request;
    request.prompt = question.prompt;
    request.initial = question.initial;
    request.title = question.title;
    request.accept = [&](int count) {
        return m_context.Require(isRight(count),
                                 ("The number of frames must be a whole number from " +
                                  std::to_string(question.least) + " to " + std::to_string(question.most))
                                     .c_str());
    };
    request.show = [&](std::optional<int> count) {
        if (!count || !isRight(*count))
            return HideOutcome();
        edit.count = *count;
        ShowOutcome(edit);
    };
    const std::optional<int> count = m_context.prompter.Ask(request);
    HideOutcome();
    if (!count)
        return;
    edit.count = *count;
    Do(edit);
}

} // namespace velmor
