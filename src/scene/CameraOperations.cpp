#include "scene/CameraOperations.h"

#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/EditedImage.h"
#include "scene/InbetweenDialog.h"
#include "scene/SceneEdit.h"
#include "scene/Settings.h"
#include "scene/XSheetCursor.h"
#include "xsheet/CellForms.h"
#include "xsheet/CellGeometry.h"
#include "xsheet/Inbetween.h"

#include <algorithm>
#include <cstdlib>

namespace velmor {

namespace {

constexpr CInbetweenDialog cameraDialog{3, setting::lastCameraInbetweenSource, setting::lastCameraInbetweenType,
                                        setting::lastCameraInbetweenHold};
constexpr double radiansPerPixel = 0.006666666666666667; // one radian for 150 pixels

// One step of mouse input on a used cell: `moved` is the motion in the camera's own rotation.
CStatus ApplyInput(CXSheetCell& cell, InputMode mode, CPoint motion, CPoint moved) {
    switch (mode) {
    case InputMode::Move:
        return cell.Move(moved.x, moved.y);
    case InputMode::Rotate:
        return cell.Rotate(motion.x * radiansPerPixel);
    case InputMode::Zoom:
        return cell.Scale(motion.x, motion.y);
    }
    return {};
}

} // namespace

bool CCameraOperations::RequireFrame(int frame, const char* message) const {
    // The frame after the last one is accepted, as long as the track has it.
    const int last = std::min(m_context.model.Scene().xsheet.FrameCount(), CCameraTrack::capacity - 1);
    return m_context.Require(frame >= 0 && frame <= last, message);
}

double CCameraOperations::GetCamPosX(int frame) const {
    return RequireFrame(frame, "Internal Error: Invalid Frame no at CVelmorltDoc::GetCamPosX")
               ? m_context.model.Scene().camera.At(frame).panX
               : 0;
}

double CCameraOperations::GetCamPosY(int frame) const {
    return RequireFrame(frame, "Internal Error: Invalid Frame no at CVelmorltDoc::GetCamPosY")
               ? m_context.model.Scene().camera.At(frame).panY
               : 0;
}

int CCameraOperations::GetCamRotDegree(int frame) const {
    return RequireFrame(frame, "Internal Error: Invalid Frame no at CVelmorltDoc::GetCamRotDegree")
               ? RotationInDegrees(m_context.model.Scene().camera.At(frame).rotation)
               : 0;
}

double CCameraOperations::GetCamZoom(int frame) const {
    return RequireFrame(frame, "Internal Error: Invalid Frame no at CVelmorltDoc::GetCamZoom")
               ? m_context.model.Scene().camera.At(frame).zoom
               : 0;
}

void CCameraOperations::StartCamInput() {
    m_dragFrom.reset();
    m_dragged = 0;
    if (m_context.Require(m_context.model.sceneOpen, "Scene not open at StartCamInput"))
        m_dragFrom = m_context.model.Scene();
}

bool CCameraOperations::ProcessCamInput(int dx, int dy) {
    if (!m_context.Require(m_context.model.sceneOpen, "Scene not open at ProcessCamInput"))
        return false;
    CSceneEdit edit(m_context, DragName(), UpdateHint::None);
    if (m_dragFrom)
        edit.GoOnFrom(*m_dragFrom);
    m_dragged += std::abs(std::int64_t{dx}) + std::abs(std::int64_t{dy});
    return Apply(edit, dx, dy);
}

const char* CCameraOperations::DragName() const {
    switch (m_context.model.inputMode) {
    case InputMode::Rotate:
        return "Rotate";
    case InputMode::Zoom:
        return "Zoom";
    case InputMode::Move:
        break;
    }
    return "Move";
}

bool CCameraOperations::Apply(CSceneEdit& edit, int dx, int dy) {
    const CSceneModel& model = m_context.model;
    const int frame = model.cursorFrame;
    const CPoint motion{dx, dy};
    const CPoint moved = RotatePoint(motion, edit.Camera().At(frame).rotation);
    bool changed = MoveOneToOne(edit, dx, dy);
    for (int level = 0; level < edit.XSheet().LevelCount(); ++level) {
        if (model.moveSelection.IsLevelSelected(level) && edit.XSheet().Cell(level, frame).IsUsed())
            changed |= static_cast<bool>(
                ApplyInput(edit.XSheet().MutableCell(level, frame), model.inputMode, motion, moved));
        // Once for every level, chosen or not: how far a drag takes the camera grows with the number of levels.
        if (model.moveSelection.IsCameraSelected() && !MovesOneToOne()) {
            const CSize size = edit.Geometry().Frame();
            ApplyCameraInput(edit.Camera().MutableAt(frame), model.inputMode, dx, dy, size.width, size.height);
            edit.ThenAnnounce(UpdateHint::Cells);
            changed = true;
        }
    }
    if (changed)
        edit.ThenAnnounce(UpdateHint::CameraRedraw);
    return changed;
}

bool CCameraOperations::MovesOneToOne() const {
    return Get(m_context.profile, setting::cameraOneToOne) != 0;
}

void CCameraOperations::ToggleOneToOne() {
    Set(m_context.profile, setting::cameraOneToOne, MovesOneToOne() ? 0 : 1);
}

bool CCameraOperations::MoveOneToOne(CSceneEdit& edit, int dx, int dy) {
    const CSceneModel& model = m_context.model;
    if (!model.moveSelection.IsCameraSelected() || !MovesOneToOne())
        return false;
    ApplyCameraInputOneToOne(edit.Camera().MutableAt(model.cursorFrame), model.inputMode, dx, dy,
                             edit.Geometry().Frame());
    edit.ThenAnnounce(UpdateHint::Cells);
    return true;
}

void CCameraOperations::EndCamInput(int dx, int dy) {
    if (m_context.Require(m_context.model.sceneOpen, "Scene not open at EndCamInput") && ProcessCamInput(dx, dy))
        m_context.Update(pictureHint);
    const bool isSmall = m_dragged <= 1;
    if (isSmall && m_wasSmall) // placed pixel by pixel
        m_context.model.history.JoinWithLast(m_context.model.Scene());
    m_wasSmall = isSmall;
    m_context.model.history.Finish();
    m_dragFrom.reset();
}

void CCameraOperations::SetMode(InputMode mode) {
    if (!m_context.model.sceneOpen)
        return;
    m_context.model.inputMode = mode;
    m_context.Update(selectionHint);
}

void CCameraOperations::ToggleAntialias() {
    m_context.model.cameraAntialias = !m_context.model.cameraAntialias;
    m_context.Update(pictureHint);
}

int CCameraOperations::GetMotionPathSetup() const {
    return m_context.Require(m_context.model.sceneOpen, "Internal Error: Scene not open at GetMotionPathSetup")
               ? m_context.model.motionPathSetup
               : 0;
}

void CCameraOperations::ChooseMotionPaths() {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<int> setup = m_context.prompter.Ask(CMotionPathRequest{model.motionPathSetup});
    if (!setup || *setup < 0 || *setup > 2 || *setup == model.motionPathSetup)
        return;
    model.motionPathSetup = *setup;
    Set(m_context.profile, setting::motionPathSetup, *setup);
    m_context.Update(UpdateHint::CameraRedraw);
}

void CCameraOperations::EditCameraData() {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    const std::optional<CCameraForm> form = m_context.prompter.Ask(
        CCameraDataRequest{model.cursorFrame + 1, CameraFormOf(model.Scene().camera.At(model.cursorFrame))});
    if (!form)
        return;
    CSceneEdit edit(m_context, "Edit Camera Data", cellsAndPictureHint);
    edit.Camera().MutableAt(model.cursorFrame) = CameraOf(*form);
}

void CCameraOperations::Inbetween() {
    CSceneModel& model = m_context.model;
    if (!CanInbetween(model))
        return;
    // Before the dialog: Cancel leaves the step.
    CSceneEdit edit(m_context, "Inbetween Camera", selectionHint);
    const CInbetweenKeys keys{model.selection.firstFrame, model.selection.lastFrame};
    const std::optional<CInbetweenChoice> choice =
        AskInbetween(m_context, cameraDialog, {true, "", keys.first + 1, keys.last + 1, {}});
    if (!choice) {
        edit.CallOff();
        return;
    }
    const InbetweenType type = static_cast<InbetweenType>(choice->type);
    InbetweenCamera(edit.Camera(), keys, static_cast<CameraSource>(choice->source), PaceOf(*choice));
    if (type == InbetweenType::Constant)
        edit.AnnounceInstead(cellsAndPictureHint);
}

void CCameraOperations::CheckLines() {
    CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    if (!CEditedImage(m_context).SaveOrAsk())
        return;
    const int frameAtOpening = model.cursorFrame;
    m_context.prompter.RunLineCheck({model.Scene().xsheet.FrameCount(), frameAtOpening + 1, [this](int shownFrame) {
                                         // The slider's own range holds; a number beyond it is passed over.
                                         if (!m_context.model.Scene().xsheet.HasFrame(shownFrame - 1))
                                             return;
                                         m_context.model.cursorFrame = shownFrame - 1;
                                         m_context.Update(UpdateHint::CameraRedraw);
                                     }});
    m_cursor.SetCursorY(frameAtOpening);
    m_context.Update(UpdateHint::CameraRedraw);
}

} // namespace velmor
