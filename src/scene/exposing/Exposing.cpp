#include "scene/exposing/Exposing.h"

#include "scene/ScenePaths.h"
#include "scene/Settings.h"
#include "scene/XSheetCursor.h"
#include "scene/exposing/SheetTiming.h"
#include "scene/paper/DrawingSteps.h"
#include "xsheet/exposing/DrawingNames.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

using Typed = CTypedExposure::Kind;

bool IsCursorInSheet(const CSceneModel& model) {
    return model.sceneOpen && model.Scene().xsheet.HasLevel(model.cursorLevel) &&
           model.Scene().xsheet.HasFrame(model.cursorFrame);
}

std::size_t Chosen(int choice, std::size_t count) {
    const int within = choice % static_cast<int>(count);
    return static_cast<std::size_t>(within < 0 ? within + static_cast<int>(count) : within);
}

} // namespace

int CExposing::Step() const {
    return std::clamp(Get(m_context.profile, setting::newDrawingHold), 1, CDrawingSteps::mostHold);
}

std::string CExposing::ChoicesText() const {
    constexpr std::array<const char*, CDrawingSteps::mostHold> steps = {"On ones", "On twos", "On threes"};
    return std::string(steps[static_cast<std::size_t>(Step() - 1)]) +
           (m_timing.WhatFollows() == Following::Push ? ", pushing" : ", eating");
}

std::string CExposing::Folder() const {
    const CSceneModel& model = m_context.model;
    if (!IsCursorInSheet(model))
        return {};
    const CXSheet& xsheet = model.Scene().xsheet;
    for (int frame = model.cursorFrame; frame >= 0; --frame)
        if (const CXSheetCell& cell = xsheet.Cell(model.cursorLevel, frame); cell.IsUsed())
            return cell.FolderName();
    for (int frame = model.cursorFrame; frame < xsheet.FrameCount(); ++frame)
        if (const CXSheetCell& cell = xsheet.Cell(model.cursorLevel, frame); cell.IsUsed())
            return cell.FolderName();
    return model.folderName;
}

std::vector<std::string> CExposing::DrawingsFor(const std::string& number) const {
    const std::string folder = Folder();
    if (folder.empty())
        return {};
    if (folder != picturesFolder)
        return DrawingsNamed(ListCelTitles(m_context.model.Paths(), folder), number);
    std::vector<std::string> pictures;
    for (const CListedAsset& picture : ListAssets(m_context.model.Paths(), SourceMode::Pictures, {}))
        pictures.push_back(picture.title);
    return DrawingsNamed(pictures, number);
}

std::optional<CSheetEdit> CExposing::EditFor(const CTypedExposure& typed, int choice) const {
    const CSceneModel& model = m_context.model;
    if (!IsCursorInSheet(model))
        return std::nullopt;
    CSheetEdit edit;
    edit.cells = {model.cursorLevel, model.cursorLevel, model.cursorFrame, model.cursorFrame};
    edit.count = typed.frames > 0 ? typed.frames : Step();
    edit.following = m_timing.WhatFollows();
    switch (typed.kind) {
    case Typed::Drawing:
        return ExposeEdit(std::move(edit), typed.number, choice);
    case Typed::Empty:
        edit.kind = SheetEditKind::Clear;
        return edit;
    case Typed::Hold:
        edit.kind = SheetEditKind::HoldAbove;
        return model.cursorFrame > 0 ? std::optional(edit) : std::nullopt;
    case Typed::Lengthen:
    case Typed::SetLength:
        return LengthEdit(std::move(edit), typed);
    default:
        return std::nullopt;
    }
}

std::optional<CSheetEdit> CExposing::ExposeEdit(CSheetEdit edit, const std::string& number, int choice) const {
    const std::vector<std::string> drawings = DrawingsFor(number);
    if (drawings.empty())
        return std::nullopt;
    const CSceneModel& model = m_context.model;
    edit.kind = SheetEditKind::Expose;
    // A cell whose size cannot be read shows its drawing all the same, as the file may be mended.
    static_cast<void>(edit.cell.Set(model.Paths().SceneFolder(), Folder(),
                                    drawings[Chosen(choice, drawings.size())], model.Scene().geometry.Frame()));
    return edit;
}

std::optional<CSheetEdit> CExposing::LengthEdit(CSheetEdit edit, const CTypedExposure& typed) const {
    const CXSheet& xsheet = m_context.model.Scene().xsheet;
    if (!xsheet.Cell(edit.cells.firstLevel, edit.cells.firstFrame).IsUsed())
        return std::nullopt;
    const CFrameSpan exposure = ExposureAt(xsheet, edit.cells.firstLevel, edit.cells.firstFrame);
    edit.kind = SheetEditKind::SetExposure;
    edit.cells.firstFrame = edit.cells.lastFrame = exposure.first;
    edit.count = typed.kind == Typed::SetLength ? typed.frames : exposure.Length() + std::max(1, typed.frames);
    return edit;
}

bool CExposing::Enter(const CTypedExposure& typed, int choice) {
    const std::optional<CSheetEdit> edit = EditFor(typed, choice);
    if (!edit) {
        m_timing.HideOutcome();
        return false;
    }
    m_timing.Do(*edit);
    const CSceneModel& model = m_context.model;
    const int next = std::min(edit->cells.firstFrame + edit->count, model.Scene().xsheet.FrameCount() - 1);
    m_cursor.GoTo({model.cursorLevel, next});
    return true;
}

} // namespace velmor
