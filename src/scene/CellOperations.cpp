#include "scene/CellOperations.h"

#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/InbetweenDialog.h"
#include "xsheet/CellForms.h"
#include "xsheet/CellGeometry.h"
#include "xsheet/Inbetween.h"

namespace velmor {

namespace {

constexpr CInbetweenDialog levelDialog{5, setting::lastInbetweenSource, setting::lastInbetweenType};

// A used cell of the cursor frame; null when there is none on that level.
const CXSheetCell* UsedCell(const CSceneModel& model, int level) {
    if (!model.xsheet.HasLevel(level) || !model.xsheet.HasFrame(model.cursorFrame))
        return nullptr;
    const CXSheetCell& cell = model.xsheet.Cell(level, model.cursorFrame);
    return cell.IsUsed() ? &cell : nullptr;
}

CCellIdentity IdentityOf(const CSceneModel& model, int level, const CXSheetCell& cell) {
    return {cell.CelName(), cell.FolderName(), model.xsheet.LevelName(level), model.cursorFrame + 1};
}

} // namespace

std::optional<std::array<CPoint, 4>> CCellOperations::GetXSheetCelPoints(int level) const {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error : GetXSheetCelPoints called with no scene open") ||
        !m_context.Require(model.xsheet.HasLevel(level),
                           "Internal Error : levelno out of range in GetXSheetCelPoints"))
        return std::nullopt;
    const CXSheetCell* cell = UsedCell(model, level);
    if (cell == nullptr)
        return std::nullopt;
    return CellCorners(*cell, model.camera.At(model.cursorFrame), model.geometry.Frame());
}

std::optional<CPoint> CCellOperations::GetXSheetCellCentre(int level, int frame) const {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !model.xsheet.HasLevel(level) || !model.xsheet.HasFrame(frame) ||
        !model.xsheet.Cell(level, frame).IsUsed())
        return std::nullopt;
    return CellCentre(model.xsheet.Cell(level, frame), model.camera.At(frame), model.geometry.Frame());
}

void CCellOperations::EditCellData() {
    CSceneModel& model = m_context.model;
    if (!CanEditCellData(m_context.model))
        return;
    const CXSheetCell& cell = *UsedCell(model, model.cursorLevel);
    const std::optional<CCellDataForm> form = m_context.prompter.AskCellData(
        {IdentityOf(model, model.cursorLevel, cell), CellDataFormOf(cell),
         [this](const CCellDataForm& values) { return m_context.Report(CheckCellDataForm(values)); }});
    if (!form)
        return;
    m_context.TakeSnapshot();
    ApplyCellDataForm(*form, model.xsheet.MutableCell(model.cursorLevel, model.cursorFrame));
    m_context.Update(pictureHint);
}

void CCellOperations::OnXSheetDoTrans(int level) {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen ||
        !m_context.Require(model.xsheet.HasLevel(level), "Internal Error : lvlno out of range in OnXSheetDoTrans"))
        return;
    const CXSheetCell* cell = UsedCell(model, level);
    if (cell == nullptr)
        return;
    const std::optional<double> transparency = m_context.prompter.AskTransparency(
        {IdentityOf(model, level, *cell), TransparencyFormOf(*cell),
         [this](double value) { return m_context.Report(CheckTransparency(value)); }});
    if (!transparency)
        return;
    m_context.TakeSnapshot();
    static_cast<void>(m_context.Report(model.xsheet.MutableCell(level, model.cursorFrame).SetTrans(*transparency)));
    m_context.Update(pictureHint);
}

void CCellOperations::OnXSheetDoBlur(int level) {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen ||
        !m_context.Require(model.xsheet.HasLevel(level), "Internal Error : lvlno out of range in OnXSheetDoBlur"))
        return;
    const CXSheetCell* cell = UsedCell(model, level);
    if (cell == nullptr)
        return;
    const std::optional<CBlurForm> form = m_context.prompter.AskBlur(
        {IdentityOf(model, level, *cell), BlurFormOf(*cell),
         [this](const CBlurForm& values) { return m_context.Report(CheckBlurForm(values)); }});
    if (!form)
        return;
    m_context.TakeSnapshot();
    ApplyBlurForm(*form, model.xsheet.MutableCell(level, model.cursorFrame));
    m_context.Update(pictureHint);
}

void CCellOperations::Inbetween() {
    CSceneModel& model = m_context.model;
    const int level = model.cursorLevel;
    if (!CanInbetween(m_context.model) || !model.xsheet.HasLevel(level))
        return;
    // Before anything is asked: a refusal or Cancel leaves the snapshot.
    m_context.TakeSnapshot();
    const std::optional<CInbetweenKeys> keys =
        FindLevelKeys(model.xsheet, level, model.selection.firstFrame, model.selection.lastFrame);
    if (!keys) {
        m_context.prompter.ShowVelmorMessage(
            "Sorry, we need at least three used cels to inbetween from the first to the last!");
        return;
    }
    const std::optional<CInbetweenChoice> choice = AskInbetween(
        m_context, levelDialog, {false, model.xsheet.LevelName(level), keys->first + 1, keys->last + 1, {}});
    if (!choice)
        return;
    const InbetweenType type = static_cast<InbetweenType>(choice->type);
    InbetweenLevel(model.xsheet, level, *keys, static_cast<LevelSource>(choice->source), type);
    m_context.Update(type == InbetweenType::Constant ? pictureHint : UpdateHint::CameraRedraw);
}

} // namespace velmor
