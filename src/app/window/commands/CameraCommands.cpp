#include "app/window/commands/CommandRows.h"
#include "app/window/commands/MenuCommands.h"
#include "scene/CameraAids.h"
#include "scene/CameraOperations.h"
#include "scene/CommandState.h"
#include "scene/paper/Onion.h"
#include "views/camera/CameraView.h"

namespace velmor::commands {

namespace {

template<auto Operation>
void Camera(Target& target) {
    (target.camera.*Operation)();
}
template<InputMode Mode>
bool IsMode(const Target& target) {
    return target.doc.Model().sceneOpen && target.doc.Model().inputMode == Mode;
}
template<InputMode Mode>
void SetMode(Target& target) {
    target.doc.Camera().SetMode(Mode);
}
template<bool CCameraAidChoices::*Choice>
bool HasAid(const Target& target) {
    return target.doc.CameraAids().Choices().*Choice;
}
template<bool CCameraAidChoices::*Choice>
void ToggleAid(Target& target) {
    CCameraAidChoices choices = target.doc.CameraAids().Choices();
    choices.*Choice = !(choices.*Choice);
    target.doc.CameraAids().Change(choices);
}
template<int Fields>
bool HasChart(const Target& target) {
    return target.doc.CameraAids().Choices().fields == Fields;
}
template<int Fields>
void ToggleChart(Target& target) {
    CCameraAidChoices choices = target.doc.CameraAids().Choices();
    choices.fields = choices.fields == Fields ? 0 : Fields;
    target.doc.CameraAids().Change(choices);
}
bool CanDrawPath(const Target& target) {
    return CanInbetween(target.doc.Model()) || target.camera.IsDrawingPath();
}

constexpr CCommand rows[] = {
    {CommandId::CameraMoveMode, "&Move Mode\tF5", "move-mode", "F5",
     "Selects the move mode for the selected level(s) and camera", "Move/Pan", HasScene, IsMode<InputMode::Move>,
     SetMode<InputMode::Move>, camera, Shown, InputModes},
    {CommandId::CameraRotateMode, "&Rotate Mode\tF6", "rotate-mode", "F6",
     "Selects the rotate mode for the selected level(s) and camera", "Rotate/Tilt", HasScene,
     IsMode<InputMode::Rotate>, SetMode<InputMode::Rotate>, camera, Shown, InputModes},
    {CommandId::CameraZoomMode, "&Zoom Mode\tF7", "zoom-mode", "F7",
     "Selects the zoom mode for the selected level(s) and camera", "Zoom", HasScene, IsMode<InputMode::Zoom>,
     SetMode<InputMode::Zoom>, camera, Shown, InputModes},
    {CommandId::CameraZoomIn, "Zoom &In\t +", "zoom-in", "+", "Zooms One Level In", "Zoom In", HasScene, nullptr,
     Camera<&CCameraView::ZoomIn>, camera, Shown},
    {CommandId::CameraZoomOut, "Zoom &Out\t -", "zoom-out", "-", "Zooms one level out", "Zoom Out", HasScene,
     nullptr, Camera<&CCameraView::ZoomOut>, camera, Shown},
    {CommandId::CameraZoomOneToOne, "Zoom &1:1\t *", "zoom-one", "*", "Zooms to 100%", "Zoom 1:1", HasScene,
     nullptr, Camera<&CCameraView::ZoomOneToOne>, camera, Shown, CommandGroup::None, "1"},
    {CommandId::CameraPan, "&Pan", "pan", "", "Toggles Pan Mode", "Pan", HasScene,
     [](const Target& target) { return target.camera.IsPanMode(); }, Camera<&CCameraView::TogglePan>, camera},
    {CommandId::CameraAntialias, "&Antialias", "antialias", "",
     "Turns antialiasing on and off for the camera rendering", "Antialias Toggle", HasScene,
     [](const Target& target) { return target.doc.Model().cameraAntialias; },
     Do<&CVelmorltDoc::Camera, &CCameraOperations::ToggleAntialias>, camera},
    {CommandId::CameraMotionPathSetup, "Motion Path Setup", "motion-path", "",
     "Show Motion Path Setup Dialog for the Camera View", "Motion Path Setup", HasScene, nullptr,
     Do<&CVelmorltDoc::Camera, &CCameraOperations::ChooseMotionPaths>, camera},
    {CommandId::CameraFit, "&Fit to Window\t0", "zoom-fit", "0",
     "Shows the whole picture, as large as there is room", "Fit to Window", HasScene, nullptr,
     Camera<&CCameraView::FitToWindow>, camera, Focused},
    {CommandId::CameraOnionSkin, "&Onion Skin", "onion-skin", "",
     "Shows the drawings before and after the current one under the picture of the frame", "Onion Skin", HasScene,
     [](const Target& target) { return target.doc.Onion().Settings().inCamera; },
     Do<&CVelmorltDoc::Onion, &COnion::ToggleInCamera>, camera},
    {CommandId::CameraHandles, "&Handles\tH", "camera-handles", "H",
     "Scales and turns the selected level(s) by the corners: Shift keeps proportions or steps, Ctrl the middle",
     "Handles", HasScene, HasAid<&CCameraAidChoices::handles>, ToggleAid<&CCameraAidChoices::handles>, camera,
     Focused},
    {CommandId::CameraSpacing, "&Spacing on Motion Paths\tT", "camera-spacing", "T",
     "Drags the ticks of motion paths, which changes the pace between two keys; Ctrl drags one tick alone",
     "Spacing on Motion Paths", HasScene, HasAid<&CCameraAidChoices::spacing>,
     ToggleAid<&CCameraAidChoices::spacing>, camera, Focused},
    {CommandId::CameraDrawPath, "&Draw Path\tD", "camera-draw-path", "D",
     "Draws the path of the current level from the first to the last selected key, spaced as it was inbetweened "
     "last",
     "Draw Path", CanDrawPath, [](const Target& target) { return target.camera.IsDrawingPath(); },
     Camera<&CCameraView::TogglePathDrawing>, camera, Focused},
    {CommandId::CameraOneToOne, "Move Camera &One to One", "camera-one-to-one", "",
     "Drags the camera with what is under the pointer, however many levels there are", "Move Camera One to One",
     HasScene, [](const Target& target) { return target.doc.Camera().MovesOneToOne(); },
     Do<&CVelmorltDoc::Camera, &CCameraOperations::ToggleOneToOne>, camera},
    {CommandId::CameraFields12, "Field Chart of &12", "fields-12", "", "Lays a chart of 12 fields over the picture",
     "Field Chart of 12", HasScene, HasChart<12>, ToggleChart<12>, camera},
    {CommandId::CameraFields16, "Field Chart of 1&6", "fields-16", "", "Lays a chart of 16 fields over the picture",
     "Field Chart of 16", HasScene, HasChart<16>, ToggleChart<16>, camera},
    {CommandId::CameraFieldsOnStage, "Chart Moves with the &Stage", "fields-stage", "",
     "Shows the field chart through the camera, as drawings are seen; otherwise it lies still over the picture",
     "Chart Moves with the Stage", HasScene, HasAid<&CCameraAidChoices::fieldsOnStage>,
     ToggleAid<&CCameraAidChoices::fieldsOnStage>, camera},
    {CommandId::CameraFrameWide, "Frame 16:&9", "frame-wide", "", "Shows what a 16:9 screen has of the picture",
     "Frame 16:9", HasScene, HasAid<&CCameraAidChoices::wideFrame>, ToggleAid<&CCameraAidChoices::wideFrame>,
     camera},
    {CommandId::CameraFrameTall, "Frame &4:3", "frame-tall", "", "Shows what a 4:3 screen has of the picture",
     "Frame 4:3", HasScene, HasAid<&CCameraAidChoices::tallFrame>, ToggleAid<&CCameraAidChoices::tallFrame>,
     camera},
    {CommandId::CameraActionSafe, "&Action Safe", "action-safe", "",
     "Shows the area that action is to stay in, of each frame that is shown", "Action Safe", HasScene,
     HasAid<&CCameraAidChoices::actionSafe>, ToggleAid<&CCameraAidChoices::actionSafe>, camera},
    {CommandId::CameraTitleSafe, "&Title Safe", "title-safe", "",
     "Shows the area that titles are to stay in, of each frame that is shown", "Title Safe", HasScene,
     HasAid<&CCameraAidChoices::titleSafe>, ToggleAid<&CCameraAidChoices::titleSafe>, camera},
    {CommandId::CameraPrintGuides, "&Print Guides...", "print-guides", "",
     "Shows the page with the chosen guides, or a field chart, to be printed", "Print Guides", HasScene, nullptr,
     Frame<&CMainFrame::PreviewGuides>},
};

} // namespace

std::span<const CCommand> CameraCommands() {
    return rows;
}

} // namespace velmor::commands
