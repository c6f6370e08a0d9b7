#pragma once

#include "scene/SceneContext.h"
#include "xsheet/exposing/ExposureEntry.h"
#include "xsheet/exposing/SheetEdit.h"

#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CSheetTiming;
class CXSheetCursor;

/// Exposing by typing at the cursor.
class CExposing {
public:
    CExposing(CSceneContext context, CXSheetCursor& cursor, CSheetTiming& timing)
        : m_context(context), m_cursor(cursor), m_timing(timing) {}

    /// Frames for which a drawing is exposed: as long as a new one is held.
    int Step() const;
    /// What the status bar says of the two choices: "On twos, pushing".
    std::string ChoicesText() const;

    /// The folder whose drawings are typed at the cursor: that of the level's nearest exposed cell from there
    /// upwards, otherwise downwards, and the current one where the level is empty; empty for none.
    std::string Folder() const;
    /// The folder's drawings that a typed number can stand for, the likeliest first.
    std::vector<std::string> DrawingsFor(const std::string& number) const;
    /// What was typed as an edit at the cursor; `choice` counts in the drawings that its number can stand for.
    /// Nothing where there is no such drawing, nothing above to be held, or nothing under the cursor to be exposed
    /// longer.
    std::optional<CSheetEdit> EditFor(const CTypedExposure& typed, int choice) const;
    /// Does it and goes on to the frame behind. False, and nothing done, where there is nothing to be done.
    [[nodiscard]] bool Enter(const CTypedExposure& typed, int choice);

private:
    std::optional<CSheetEdit> ExposeEdit(CSheetEdit edit, const std::string& number, int choice) const;
    std::optional<CSheetEdit> LengthEdit(CSheetEdit edit, const CTypedExposure& typed) const;

    CSceneContext m_context;
    CXSheetCursor& m_cursor;
    CSheetTiming& m_timing;
};

} // namespace velmor
