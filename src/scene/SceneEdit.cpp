#include "scene/SceneEdit.h"

#include "scene/SceneSound.h"

#include <utility>

namespace velmor {

CSceneEdit::CSceneEdit(CSceneContext& context, std::string name, UpdateHint hint, UndoStep step)
    : m_context(context),
      m_name(std::move(name)),
      m_hints{hint},
      m_step(step),
      m_before(context.model.Scene()),
      m_isHeard(step == UndoStep::Forget) {
    if (step == UndoStep::Always)
        m_context.model.m_undo = CUndoStep{m_name, m_before};
    else if (step == UndoStep::Forget)
        m_context.model.m_undo.reset();
}

void CSceneEdit::TakeBack() {
    CSceneModel& model = m_context.model;
    CScene before = std::move(model.m_undo->scene);
    model.m_undo.reset();
    // The camera beyond the sheet's last frame is not what a step has changed.
    CCameraTrack camera = Scene().camera;
    camera.SetFirstFrames(before.camera, before.xsheet.FrameCount());
    before.camera = std::move(camera);
    Scene() = std::move(before);
}

bool CSceneEdit::CanBeHeard() const {
    const CScene& now = m_context.model.Scene();
    return m_isHeard || now.sounds != m_before.sounds || now.xsheet.FrameCount() != m_before.xsheet.FrameCount() ||
           now.geometry.frameRate != m_before.geometry.frameRate;
}

void CSceneEdit::End() {
    if (std::exchange(m_hasEnded, true))
        return;
    CSceneModel& model = m_context.model;
    if (m_step == UndoStep::IfChanged && HasChanged())
        model.m_undo = CUndoStep{m_name, m_before};
    model.ClampToXSheet();
    if (model.sceneOpen && CanBeHeard())
        static_cast<void>(m_context.Report(PrepareSoundTrack(model))); // without a track there is silence
    for (const UpdateHint hint : m_hints)
        if (hint != UpdateHint::None)
            m_context.Update(hint);
}

void CSceneEdit::CallOff() {
    m_hints.clear();
    End();
}

} // namespace velmor
