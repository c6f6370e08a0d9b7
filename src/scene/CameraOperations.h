#pragma once

#include "scene/SceneContext.h"

#include <cstdint>
#include <optional>

namespace velmor {

class CSceneEdit;
class CXSheetCursor;

/// The camera track, mouse input to camera and levels, the camera's dialogs and the line check.
class CCameraOperations {
public:
    CCameraOperations(CSceneContext context, CXSheetCursor& cursor) : m_context(context), m_cursor(cursor) {}

    double GetCamPosX(int frame) const;
    double GetCamPosY(int frame) const;
    int GetCamRotDegree(int frame) const;
    double GetCamZoom(int frame) const;

    /// A drag begins. It is one step of undo from its first motion that changes something; a click is none.
    void StartCamInput();
    /// Motion in pixels since the previous call; whether anything changed.
    bool ProcessCamInput(int dx, int dy);
    void EndCamInput(int dx, int dy);

    /// Whether a drag takes the camera along once, with what is under the pointer, and not once for every level.
    bool MovesOneToOne() const;
    void ToggleOneToOne();
    /// What drags change.
    void SetMode(InputMode mode);
    /// Each toggle has the camera picture composed again.
    void ToggleAntialias();
    int GetMotionPathSetup() const;
    void ChooseMotionPaths();
    void EditCameraData();
    void Inbetween();
    void CheckLines();

private:
    /// What a drag in the current mode is called.
    const char* DragName() const;
    bool Apply(CSceneEdit& edit, int dx, int dy);
    bool MoveOneToOne(CSceneEdit& edit, int dx, int dy);
    [[nodiscard]] bool RequireFrame(int frame, const char* message) const;

    CSceneContext m_context;
    CXSheetCursor& m_cursor;
    std::optional<CScene> m_dragFrom; ///< what the drag that is going on began with
    std::int64_t m_dragged = 0;       ///< pixels so far
    bool m_wasSmall = false;          ///< the drag before it was one of a pixel
};

} // namespace velmor
