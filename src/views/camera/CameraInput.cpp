#include "views/camera/CameraInput.h"

#include "scene/CameraOperations.h"
#include "scene/SceneModel.h"

#include <cmath>

namespace velmor {

namespace {

// Only moving turns the mouse's motion into the camera's rotation.
double TurnOfInput(const CSceneModel& model, const CCameraOperations& camera) {
    if (model.moveSelection.IsCameraSelected() && camera.MovesOneToOne())
        return 0; // which cuts nothing off
    const double rotation = model.Scene().camera.At(model.cursorFrame).rotation;
    return model.inputMode == InputMode::Move && std::isfinite(rotation) ? rotation : 0;
}

CPoint InPicture(CPoint point, const CViewMapping& mapping) {
    const CPoint origin = mapping.Origin();
    return {point.x - origin.x, point.y - origin.y};
}

} // namespace

CCameraDrag CCameraInput::DragFrom(CPoint point, const CViewMapping& mapping) const {
    return {InPicture(point, mapping), mapping.zoom, TurnOfInput(m_model, m_camera)};
}

CPoint CCameraInput::MotionTo(CPoint point, const CViewMapping& mapping) {
    // Another mode or frame may have been chosen meanwhile.
    if (m_drag->Turn() != TurnOfInput(m_model, m_camera))
        m_drag = DragFrom(m_last, mapping);
    m_last = point;
    return m_drag->MotionTo(InPicture(point, mapping));
}

void CCameraInput::Begin(CPoint at, const CViewMapping& mapping) {
    m_last = at;
    m_drag = DragFrom(at, mapping);
    m_camera.StartCamInput();
}

void CCameraInput::Move(CPoint to, const CViewMapping& mapping) {
    if (!m_drag)
        return;
    const CPoint motion = MotionTo(to, mapping);
    if (motion != CPoint{})
        m_camera.ProcessCamInput(motion.x, motion.y);
}

// The document applies the motion it is given at the end once more, so that it gets only what is still open.
void CCameraInput::End(CPoint at, const CViewMapping& mapping) {
    if (!m_drag)
        return;
    const CPoint motion = MotionTo(at, mapping);
    m_drag.reset();
    m_camera.EndCamInput(motion.x, motion.y);
}

void CCameraInput::FollowZoom(const CViewMapping& mapping) {
    if (m_drag)
        m_drag = DragFrom(m_last, mapping);
}

} // namespace velmor
