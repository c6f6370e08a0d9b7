#include "scene/CellOperations.h"

#include "scene/CellTrial.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/InbetweenDialog.h"
#include "scene/SceneEdit.h"
#include "xsheet/CellForms.h"
#include "xsheet/CellGeometry.h"
#include "xsheet/Inbetween.h"

namespace velmor {

namespace {

constexpr CInbetweenDialog levelDialog{5, setting::lastInbetweenSource, setting::lastInbetweenType,
                                       setting::lastInbetweenHold};

// A used cell of the cursor frame; null when there is none on that level.
const CXSheetCell* UsedCell(const CSceneModel& model, int level) {
    if (!model.Scene().xsheet.HasLevel(level) || !model.Scene().xsheet.HasFrame(model.cursorFrame))
        return nullptr;
    const CXSheetCell& cell = model.Scene().xsheet.Cell(level, model.cursorFrame);
    return cell.IsUsed() ? &cell : nullptr;
}

CCellIdentity IdentityOf(const CSceneModel& model, int level, const CXSheetCell& cell) {
    return {cell.CelName(), cell.FolderName(), model.Scene().xsheet.LevelName(level), model.cursorFrame + 1};
}

} // namespace

std::optional<std::array<CPoint, 4>> CCellOperations::GetXSheetCelPoints(int level) const {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error : GetXSheetCelPoints called with no scene open") ||
        !m_context.Require(model.Scene().xsheet.HasLevel(level),
                           "Internal Error : levelno out of range in GetXSheetCelPoints"))
        return std::nullopt;
    const CXSheetCell* cell = UsedCell(model, level);
    if (cell == nullptr)
        return std::nullopt;
    return CellCorners(*cell, model.Scene().camera.At(model.cursorFrame), model.Scene().geometry.Frame());
}

std::optional<CPoint> CCellOperations::GetXSheetCellCentre(int level, int frame) const {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !model.Scene().xsheet.HasLevel(level) || !model.Scene().xsheet.HasFrame(frame) ||
        !model.Scene().xsheet.Cell(level, frame).IsUsed())
        return std::nullopt;
    return CellCentre(model.Scene().xsheet.Cell(level, frame), model.Scene().camera.At(frame),
                      model.Scene().geometry.Frame());
}

void CCellOperations::EditCellData() {
    const CSceneModel& model = m_context.model;
    if (!CanEditCellData(m_context.model))
        return;
    const CXSheetCell& cell = *UsedCell(model, model.cursorLevel);
    CCellTrial trial(m_context, {model.cursorLevel, model.cursorFrame});
    const auto show = [&trial](const CCellDataForm& values) {
        if (CheckCellDataForm(values))
            trial.Show([&values](CXSheetCell& shown) { ApplyCellDataForm(values, shown); });
    };
    const std::optional<CCellDataForm> form = m_context.prompter.Ask(CCellDataRequest{
        IdentityOf(model, model.cursorLevel, cell), CellDataFormOf(cell),
        [this](const CCellDataForm& values) { return m_context.Report(CheckCellDataForm(values)); }, show});
    trial.End();
    if (!form)
        return;
    CSceneEdit edit(m_context, "Edit Cel Data", pictureHint);
    ApplyCellDataForm(*form, edit.XSheet().MutableCell(model.cursorLevel, model.cursorFrame));
}

void CCellOperations::OnXSheetDoTrans(int level) {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !m_context.Require(model.Scene().xsheet.HasLevel(level),
                                               "Internal Error : lvlno out of range in OnXSheetDoTrans"))
        return;
    const CXSheetCell* cell = UsedCell(model, level);
    if (cell == nullptr)
        return;
    CCellTrial trial(m_context, {level, model.cursorFrame});
    const auto show = [&trial](double value) {
        if (CheckTransparency(value))
            trial.Show([value](CXSheetCell& shown) { static_cast<void>(shown.SetTrans(value)); });
    };
    const std::optional<double> transparency = m_context.prompter.Ask(
        CTransparencyRequest{IdentityOf(model, level, *cell), TransparencyFormOf(*cell),
                             [this](double value) { return m_context.Report(CheckTransparency(value)); }, show});
    trial.End();
    if (!transparency)
        return;
    CSceneEdit edit(m_context, "Edit Transparency", pictureHint);
    static_cast<void>(
        m_context.Report(edit.XSheet().MutableCell(level, model.cursorFrame).SetTrans(*transparency)));
}

void CCellOperations::OnXSheetDoBlur(int level) {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !m_context.Require(model.Scene().xsheet.HasLevel(level),
                                               "Internal Error : lvlno out of range in OnXSheetDoBlur"))
        return;
    const CXSheetCell* cell = UsedCell(model, level);
    if (cell == nullptr)
        return;
    CCellTrial trial(m_context, {level, model.cursorFrame});
    const auto show = [&trial](const CBlurForm& values) {
        if (CheckBlurForm(values))
            trial.Show([&values](CXSheetCell& shown) { ApplyBlurForm(values, shown); });
    };
    const std::optional<CBlurForm> form = m_context.prompter.Ask(
        CBlurRequest{IdentityOf(model, level, *cell), BlurFormOf(*cell),
                     [this](const CBlurForm& values) { return m_context.Report(CheckBlurForm(values)); }, show});
    trial.End();
    if (!form)
        return;
    CSceneEdit edit(m_context, "Edit Blur", pictureHint);
    ApplyBlurForm(*form, edit.XSheet().MutableCell(level, model.cursorFrame));
}

void CCellOperations::Inbetween() {
    const CSceneModel& model = m_context.model;
    const int level = model.cursorLevel;
    if (!CanInbetween(m_context.model) || !model.Scene().xsheet.HasLevel(level))
        return;
    // Before anything is asked: a refusal or Cancel leaves the step.
    CSceneEdit edit(m_context, "Inbetween Level", pictureHint);
    const std::optional<CInbetweenKeys> keys =
        FindLevelKeys(model.Scene().xsheet, level, model.selection.firstFrame, model.selection.lastFrame);
    if (!keys) {
        edit.CallOff();
        m_context.prompter.ShowVelmorMessage(
            "Sorry, we need at least three used cels to inbetween from the first to the last!");
        return;
    }
    const std::optional<CInbetweenChoice> choice =
        AskInbetween(m_context, levelDialog,
                     {false, model.Scene().xsheet.LevelName(level), keys->first + 1, keys->last + 1, {}});
    if (!choice) {
        edit.CallOff();
        return;
    }
    const InbetweenType type = static_cast<InbetweenType>(choice->type);
    InbetweenLevel(edit.XSheet(), level, *keys, static_cast<LevelSource>(choice->source), PaceOf(*choice));
    if (type != InbetweenType::Constant)
        edit.AnnounceInstead(UpdateHint::CameraRedraw);
}

} // namespace velmor
