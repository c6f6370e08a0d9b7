#include "scene/paper/DrawingSteps.h"

#include "platform/process/Memory.h"
#include "scene/AssetOperations.h"
#include "scene/CommandState.h"
#include "scene/NamingRules.h"
#include "scene/NewCelSize.h"
#include "scene/SceneEdit.h"
#include "scene/SceneLifecycle.h"
#include "scene/Settings.h"
#include "scene/XSheetCursor.h"
#include "scene/paper/NewDrawing.h"
#include "scene/paper/Onion.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr const char* folderOfNameless = "Drawings";

} // namespace

std::optional<CNeighbour> CDrawingSteps::Neighbour(DrawingDirection direction) const {
    const CNeighbours neighbours = NeighboursOfEdited(m_context.model, m_onion.Settings().order, 1);
    const std::vector<CNeighbour>& there =
        direction == DrawingDirection::Next ? neighbours.after : neighbours.before;
    return there.empty() ? std::nullopt : std::optional(there.front());
}

void CDrawingSteps::Step(DrawingDirection direction) {
    const CSceneModel& model = m_context.model;
    if (!HasEditedImage(model) && CanEditCellData(model))
        m_assets.EditDrawing(model.CursorCell());
    else if (const std::optional<CNeighbour> neighbour = Neighbour(direction))
        Open(*neighbour);
}

void CDrawingSteps::Open(const CNeighbour& neighbour) {
    const CSceneModel& model = m_context.model;
    m_assets.OpenDrawing(neighbour.drawing);
    if (neighbour.frame < 0 || EditedDrawing(model) != neighbour.drawing)
        return;
    const int level = model.cursorLevel;
    const CSheetCell cell{level, HoldAround(model.Scene().xsheet, {level, neighbour.frame}).firstFrame};
    if (cell != model.CursorCell())
        m_cursor.GoTo(cell);
}

int CDrawingSteps::Hold() const {
    return std::clamp(Get(m_context.profile, setting::newDrawingHold), 1, mostHold);
}

void CDrawingSteps::SetHold(int frames) {
    Set(m_context.profile, setting::newDrawingHold, std::clamp(frames, 1, mostHold));
}

bool CDrawingSteps::ChooseFolder() {
    const CSceneModel& model = m_context.model;
    if (model.HasFolder())
        return true;
    const std::string& level = model.Scene().xsheet.LevelName(model.cursorLevel);
    const std::string folder = CheckFolderName(level) ? level : folderOfNameless;
    if (!CreateFolder(model.Paths().CelFolder(folder))) {
        m_context.Show("The folder could not be created. Disk full or write protected?");
        return false;
    }
    m_lifecycle.SetFolderName(folder);
    return model.folderName == folder;
}

std::string CDrawingSteps::NewName(const CDrawing& after) const {
    const CSceneModel& model = m_context.model;
    std::optional<std::string> name;
    if (after.folder == model.folderName)
        name = NameAfter(after.name, ListCelTitles(model.Paths(), model.folderName));
    return name ? *name : m_lifecycle.FindNextCelName();
}

CSize CDrawingSteps::NewSize(const CDrawing& after, const CXSheetCell* before) const {
    const CSceneModel& model = m_context.model;
    if (HasEditedImage(model) && EditedDrawing(model) == after)
        return {model.celImg.Width(), model.celImg.Height()};
    if (before != nullptr && before->Size() != CSize{})
        return before->Size();
    return model.Scene().geometry.Frame();
}

void CDrawingSteps::NewDrawing() {
    NewDrawing(EditedDrawing(m_context.model), nullptr);
}

void CDrawingSteps::NewDrawingAtCursor() {
    const CSceneModel& model = m_context.model;
    const CXSheet& sheet = model.Scene().xsheet;
    const CSheetCell cursor = model.CursorCell();
    if (!model.sceneOpen || !sheet.HasLevel(cursor.level) || !sheet.HasFrame(cursor.frame) ||
        sheet.Cell(cursor.level, cursor.frame).IsUsed())
        return;
    int above = cursor.frame;
    while (above >= 0 && !sheet.Cell(cursor.level, above).IsUsed())
        --above;
    if (above < 0 || sheet.Cell(cursor.level, above).IsPicture())
        return NewDrawing();
    const CXSheetCell like = sheet.Cell(cursor.level, above);
    const CDrawing after{like.FolderName(), like.CelName()};
    if (model.folderName != after.folder)
        m_lifecycle.SetFolderName(after.folder);
    if (model.folderName == after.folder) // otherwise the image under edit could not be left
        NewDrawing(after, &like);
}

void CDrawingSteps::NewDrawing(const CDrawing& after, const CXSheetCell* like) {
    CSceneModel& model = m_context.model;
    const CXSheet& sheet = model.Scene().xsheet;
    const CSheetCell cursor = model.CursorCell();
    if (!model.sceneOpen || !sheet.HasLevel(cursor.level) || !sheet.HasFrame(cursor.frame))
        return;
    const std::optional<CNewExposure> exposure = ExposureAfter(sheet, cursor, after, Hold());
    if (!m_context.Require(exposure.has_value(), "The xsheet is full: there is no frame left for a new drawing.") ||
        !ChooseFolder())
        return;
    CXSheetCell cell;
    if (like != nullptr)
        cell = *like;
    else if (exposure->frame > 0)
        cell = sheet.Cell(cursor.level, exposure->frame - 1);
    const CSize size = NewSize(after, cell.IsUsed() ? &cell : nullptr);
    const std::string name = NewName(after);
    if (!m_context.Report(CheckNewCelSize(size, AvailableMemory())))
        return;
    CSceneEdit edit(m_context, "New Drawing " + model.folderName + " " + name,
                    newFolderHint | structureAndPictureHint);
    if (!m_assets.MakeCel(edit, name, size))
        return;
    // It lies where the one before it was moved to, if that is of its kind.
    if (cell.IsUsed() && cell.FolderName() == model.folderName && cell.Size() == size)
        static_cast<void>(cell.ChangeName(name));
    else
        static_cast<void>(m_context.Report(
            cell.Set(model.Paths().SceneFolder(), model.folderName, name, model.Scene().geometry.Frame())));
    Expose(edit.XSheet(), *exposure, cell);
    edit.End();
    m_cursor.GoTo({exposure->level, exposure->frame});
}

} // namespace velmor
