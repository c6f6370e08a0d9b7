#pragma once

#include "scene/DialogRequests.h"
#include "scene/SceneContext.h"

#include <cstdint>
#include <string>

namespace velmor {

class CPaletteOperations;
class CSceneLifecycle;
struct CHistoryRequest;

/// Undo, redo and what goes with them: the way through the history of the open scene, its journal, and the recovery
/// of work that was in no file when the program ended.
///
/// What a step changed is brought into view before it is changed again: the cell under the cursor, the drawing into
/// the cel editor.
class CSceneHistory {
public:
    /// Journals lie in `journals`; without one there are none.
    CSceneHistory(CSceneContext context, CSceneLifecycle& scenes, CPaletteOperations& palettes, Path journals = {})
        : m_context(context), m_scenes(scenes), m_palettes(palettes), m_journals(std::move(journals)) {}

    /// Takes up the journal of the scene that was just opened. False when the user wants to leave work that was
    /// found in it as it is for now: the scene has to be closed again.
    [[nodiscard]] bool Begin();

    void Undo();
    void Redo();
    /// "Undo Stroke on Fox 7" without the key, "Undo" alone when there is nothing to be undone.
    std::string UndoText() const;
    std::string RedoText() const;
    /// Undoes or does again until a step is the last one that is done; 0 for none of them.
    void GoTo(std::int64_t step);
    /// Puts back what a step has deleted or overwritten, as a step of its own.
    void BringBack(std::int64_t step);
    /// Opens the list of all steps.
    void Show();

    /// Called between two events: every finished step is safe from the death of the program when this returns.
    void Settle();
    /// Tells once that the journal cannot be written any more.
    void TellFault();

private:
    enum class Moved { Done, PassedBy, Failed };

    CHistoryRequest Request(bool isReadOnly);
    /// Moves one step; false when it could not, and stays where it is.
    bool Step(ChangeDirection direction, bool tell);
    Moved Move(const CHistory::CStep& step, ChangeDirection direction, bool tell);
    bool MoveImage(const std::string& image, const CStepChanges& changes, ChangeDirection direction);
    Moved MoveFiles(const CStepChanges& changes, ChangeDirection direction);
    void FollowMove(const CDrawing& drawing, const std::string& name);
    void FollowFiles(const CStepChanges& changes, ChangeDirection direction);
    bool BringIntoEditor(const std::string& image);
    void ShowCells(const CHistory::CStep& step);

    bool OpenJournal();
    void TakeBackUnfinished();
    /// What was not saved; false for "later".
    bool OfferRecovery();
    void Recover();
    void RecoverImage(const std::string& image);
    void StartAnew();
    void BeginAfterFault();
    Path JournalFile() const;
    std::string XSheetName() const;

    CSceneContext m_context;
    CSceneLifecycle& m_scenes;
    CPaletteOperations& m_palettes;
    Path m_journals;
    bool m_isMissingTold = false;
};

} // namespace velmor
