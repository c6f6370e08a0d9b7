#pragma once

#include "scene/SceneContext.h"
#include "xsheet/exposing/SheetEdit.h"

#include <optional>

namespace velmor {

class CXSheetCursor;

/// Edits of the sheet's timing over the selected cells, and what they would make of the sheet, which is shown
/// before it is done. Where a number is needed it is asked for, with the outcome seen meanwhile.
class CSheetTiming {
public:
    CSheetTiming(CSceneContext context, CXSheetCursor& cursor) : m_context(context), m_cursor(cursor) {}

    /// Has the views show what an edit would make of the scene; nothing is changed. An edit of cells that are not
    /// in the sheet shows nothing.
    void ShowOutcome(const CSheetEdit& edit);
    void HideOutcome();
    /// What is to be shown in place of the scene; null for the scene itself.
    const CScene* Outcome() const;

    /// What follows an exposure that gets longer or shorter; remembered.
    Following WhatFollows() const;
    void SetWhatFollows(Following following);

    /// Does an edit as one step; the selection goes with what it was made of.
    void Do(const CSheetEdit& edit);

    /// An edit of the selected cells as it would be done now; nothing while there are none.
    std::optional<CSheetEdit> EditOfSelection(SheetEditKind kind, int count = 1) const;
    /// The selected exposures on ones, twos and so on.
    void ExposeOn(int step);
    void Swing();
    /// In another order each time.
    void Random();
    void AskAndShift();
    void AskAndRoll();
    void AskAndStretch();
    /// At the cursor's frame.
    void AskAndInsertTime();
    void AskAndDeleteTime();

private:
    struct CQuestion {
        const char* title;
        const char* prompt;
        int initial;
        int least;
        int most;
    };

    [[nodiscard]] bool IsInSheet(const CXSheetSelection& cells) const;
    void AskAndDo(CSheetEdit edit, const CQuestion& question);

    CSceneContext m_context;
    CXSheetCursor& m_cursor;
    unsigned m_seed = 1; ///< of the next random order
    CScene m_outcomeOf;  ///< the scene that it was made of
    std::optional<CScene> m_outcome;
};

} // namespace velmor
