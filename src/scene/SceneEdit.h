#pragma once

#include "scene/SceneContext.h"

#include <string>
#include <vector>

namespace velmor {

/// What an edit leaves for undo.
enum class UndoStep {
    Always,    ///< the scene as it was, from the moment the edit begins
    IfChanged, ///< the same, if the edit has changed anything
    None,      ///< whatever was there before
    Forget     ///< nothing: another scene is there afterwards
};

/// One change of the scene, and the only way to make it. Made with the name of its command; when it ends, at the
/// latest with its life, it keeps what undo needs, brings cursor and selections back into a sheet that has shrunk,
/// prepares the sound track if the change can be heard, and tells the views.
///
/// An operation that is to change nothing is const and has no context that an edit can be made of.
class CSceneEdit {
public:
    CSceneEdit(CSceneContext& context, std::string name, UpdateHint hint, UndoStep step = UndoStep::Always);
    CSceneEdit(const CSceneEdit&) = delete;
    CSceneEdit& operator=(const CSceneEdit&) = delete;
    ~CSceneEdit() { End(); }

    CXSheet& XSheet() { return Scene().xsheet; }
    CCameraTrack& Camera() { return Scene().camera; }
    CSoundPlacements& Sounds() { return Scene().sounds; }
    CSceneGeometry& Geometry() { return Scene().geometry; }
    CScene& Scene() { return m_context.model.m_scene; }

    /// Calls change(scene) for the scene and for what undo would bring back. Returns what it returned for the
    /// scene.
    template<class Change>
    auto ChangeEveryState(Change change) {
        if (m_context.model.m_undo)
            change(m_context.model.m_undo->scene);
        return change(Scene());
    }
    /// Takes the step that there is to be undone back, and with it the chance to do so again. There must be one.
    void TakeBack();

    /// Prepares the sound track even if the same sounds start at the same frames: their files may be others.
    void PrepareSound() { m_isHeard = true; }
    /// Told to the views besides the hint that the edit was made with, or in its place.
    void AlsoAnnounce(UpdateHint hint) { m_hints.front() = m_hints.front() | hint; }
    void AnnounceInstead(UpdateHint hint) { m_hints.front() = hint; }
    /// Told after it.
    void ThenAnnounce(UpdateHint hint) { m_hints.push_back(hint); }
    /// Whether the scene differs from the one that the edit began with.
    bool HasChanged() const { return m_context.model.Scene() != m_before; }
    void End();
    /// Ends what was called off before it changed anything: the views are not told.
    void CallOff();
    /// Leaves nothing to be undone.
    static void ForgetUndo(CSceneContext& context) { context.model.m_undo.reset(); }

private:
    bool CanBeHeard() const;

    CSceneContext& m_context;
    std::string m_name;
    std::vector<UpdateHint> m_hints;
    UndoStep m_step;
    CScene m_before;
    bool m_isHeard;
    bool m_hasEnded = false;
};

} // namespace velmor
