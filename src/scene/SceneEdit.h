#pragma once

#include "scene/SceneContext.h"

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace velmor {

/// What an edit leaves in the history.
enum class UndoStep {
    Own,   ///< a step, if anything has changed
    None,  ///< nothing: undo and redo themselves
    Forget ///< another scene is there afterwards, whose history is another one
};

/// One change of the scene and its files, and the only way to change a scene. Made with the name of its command;
/// when it ends, at the latest with its life, it has left a step in the history, brought cursor and selections back
/// into a sheet that has shrunk, prepared the sound track if the change can be heard, and told the views.
///
/// An operation that is to change nothing is const and has no context that an edit can be made of.
class CSceneEdit {
public:
    CSceneEdit(CSceneContext& context, std::string name, UpdateHint hint, UndoStep step = UndoStep::Own);
    CSceneEdit(const CSceneEdit&) = delete;
    CSceneEdit& operator=(const CSceneEdit&) = delete;
    ~CSceneEdit() { End(); }

    CXSheet& XSheet() { return Scene().xsheet; }
    CCameraTrack& Camera() { return Scene().camera; }
    CSoundPlacements& Sounds() { return Scene().sounds; }
    CSceneGeometry& Geometry() { return Scene().geometry; }
    CScene& Scene() { return m_context.model.m_scene; }

    /// Told before files of the scene are made, replaced or removed. What becomes of them is part of the step; if
    /// the program should die meanwhile, they come back as they are now.
    void KeepFiles(std::span<const Path> files);
    void KeepFile(const Path& file) { KeepFiles(std::span(&file, 1)); }
    /// Told before a file is renamed.
    void KeepRenaming(const Path& from, const Path& to);
    /// The files that are kept, or a whole folder, are deleted: undo passes it by. False when there is more than
    /// can be kept.
    void KeepDeletion(std::span<const Path> files);
    void KeepDeletedFolder(const Path& folder);

    /// The edit goes on with the one before it, which began with this scene: both are one step.
    void GoOnFrom(const CScene& before) { m_dragFrom = before; }

    /// Prepares the sound track even if the same sounds start at the same frames: their files may be others.
    void PrepareSound() { m_isHeard = true; }
    /// Leaves the sound track to who prepares it later.
    void PrepareNoSound() { m_isSilent = true; }
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

private:
    bool CanBeHeard() const;
    void LeaveStep();
    KeptFile ContentsNow(const Path& file, std::uint64_t mostBytes);
    void TakeFilesAfter();

    CSceneContext& m_context;
    std::string m_name;
    std::vector<UpdateHint> m_hints;
    UndoStep m_step;
    CScene m_before;
    std::optional<CScene> m_dragFrom;
    std::vector<CFileChange> m_files;
    std::vector<std::string> m_deleted; ///< as a heading has them
    std::uint64_t m_keptBytes = 0;
    bool m_isHeard;
    bool m_isSilent = false;
    bool m_hasEnded = false;
};

} // namespace velmor
