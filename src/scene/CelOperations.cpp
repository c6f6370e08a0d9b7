#include "scene/CelOperations.h"

#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/InbetweenDialog.h"
#include "xsheet/CelForms.h"
#include "xsheet/CelGeometry.h"
#include "xsheet/Inbetween.h"

namespace velmor {

namespace {

constexpr CInbetweenDialog levelDialog{5, setting::lastInbetweenSource, setting::lastInbetweenType};

// A used cell of the cursor frame; null when there is none on that level.
const CXSheetCel* UsedCel(const CSceneModel& model, int level) {
    if (!model.xsheet.HasLevel(level) || !model.xsheet.HasFrame(model.cursorFrame))
        return nullptr;
    const CXSheetCel& cel = model.xsheet.Cel(level, model.cursorFrame);
    return cel.IsUsed() ? &cel : nullptr;
}

CCelIdentity IdentityOf(const CSceneModel& model, int level, const CXSheetCel& cel) {
    return {cel.CelName(), cel.FolderName(), model.xsheet.LevelName(level), model.cursorFrame + 1};
}

} // namespace

std::optional<std::array<CPoint, 4>> CCelOperations::GetXSheetCelPoints(int level) const {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error : GetXSheetCelPoints called with no scene open") ||
        !m_context.Require(model.xsheet.HasLevel(level),
                           "Internal Error : levelno out of range in GetXSheetCelPoints"))
        return std::nullopt;
    const CXSheetCel* cel = UsedCel(model, level);
    if (cel == nullptr)
        return std::nullopt;
    return CelCorners(*cel, model.camera.At(model.cursorFrame), model.geometry.Frame());
}

std::optional<CPoint> CCelOperations::GetXSheetCelCentre(int level, int frame) const {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !model.xsheet.HasLevel(level) || !model.xsheet.HasFrame(frame) ||
        !model.xsheet.Cel(level, frame).IsUsed())
        return std::nullopt;
    return CelCentre(model.xsheet.Cel(level, frame), model.camera.At(frame), model.geometry.Frame());
}

void CCelOperations::OnXsheetEditceldata() {
    CSceneModel& model = m_context.model;
    if (!CanEditCelData(m_context.model))
        return;
    const CXSheetCel& cel = *UsedCel(model, model.cursorLevel);
    const std::optional<CCelDataForm> form = m_context.prompter.AskCelData(
        {IdentityOf(model, model.cursorLevel, cel), CelDataFormOf(cel),
         [this](const CCelDataForm& values) { return m_context.Report(CheckCelDataForm(values)); }});
    if (!form)
        return;
    m_context.TakeSnapshot();
    ApplyCelDataForm(*form, model.xsheet.MutableCel(model.cursorLevel, model.cursorFrame));
    m_context.Update(pictureHint);
}

void CCelOperations::OnXSheetDoTrans(int level) {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen ||
        !m_context.Require(model.xsheet.HasLevel(level), "Internal Error : lvlno out of range in OnXSheetDoTrans"))
        return;
    const CXSheetCel* cel = UsedCel(model, level);
    if (cel == nullptr)
        return;
    const std::optional<double> transparency = m_context.prompter.AskTransparency(
        {IdentityOf(model, level, *cel), TransparencyFormOf(*cel),
         [this](double value) { return m_context.Report(CheckTransparency(value)); }});
    if (!transparency)
        return;
    m_context.TakeSnapshot();
    static_cast<void>(m_context.Report(model.xsheet.MutableCel(level, model.cursorFrame).SetTrans(*transparency)));
    m_context.Update(pictureHint);
}

void CCelOperations::OnXSheetDoBlur(int level) {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen ||
        !m_context.Require(model.xsheet.HasLevel(level), "Internal Error : lvlno out of range in OnXSheetDoBlur"))
        return;
    const CXSheetCel* cel = UsedCel(model, level);
    if (cel == nullptr)
        return;
    const std::optional<CBlurForm> form = m_context.prompter.AskBlur(
        {IdentityOf(model, level, *cel), BlurFormOf(*cel),
         [this](const CBlurForm& values) { return m_context.Report(CheckBlurForm(values)); }});
    if (!form)
        return;
    m_context.TakeSnapshot();
    ApplyBlurForm(*form, model.xsheet.MutableCel(level, model.cursorFrame));
    m_context.Update(pictureHint);
}

void CCelOperations::OnXsheetInbetweenleveldata() {
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
