#pragma once

#include "views/ViewMapping.h"
#include "views/camera/CameraDrag.h"

#include <optional>

namespace velmor {

class CCameraOperations;
struct CSceneModel;

/// A drag over the camera picture that moves, turns or scales what is selected. Points are those of the viewport.
class CCameraInput {
public:
    /// Both outlive the object.
    CCameraInput(const CSceneModel& model, CCameraOperations& camera) : m_model(model), m_camera(camera) {}

    void Begin(CPoint at, const CViewMapping& mapping);
    void Move(CPoint to, const CViewMapping& mapping);
    void End(CPoint at, const CViewMapping& mapping);
    /// Ends where the pointer was seen last.
    void EndUnseen(const CViewMapping& mapping) { End(m_last, mapping); }
    /// The picture has another zoom; what is dragged stays.
    void FollowZoom(const CViewMapping& mapping);
    /// Ends without another word to the document.
    void Forget() { m_drag.reset(); }

private:
    CCameraDrag DragFrom(CPoint point, const CViewMapping& mapping) const;
    CPoint MotionTo(CPoint point, const CViewMapping& mapping);

    const CSceneModel& m_model;
    CCameraOperations& m_camera;
    std::optional<CCameraDrag> m_drag; ///< under way
    CPoint m_last;
};

} // namespace velmor
