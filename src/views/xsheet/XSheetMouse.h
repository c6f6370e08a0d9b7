#pragma once

#include "views/xsheet/XSheetGeometry.h"

#include <optional>

namespace velmor {

class CVelmorltDoc;
struct CXSheetSelection;

/// What presses, drags and releases of the left button do to the document. Takes the geometry as it is at each
/// event, since a drag may scroll. The document has an open scene.
class CXSheetMouse {
public:
    explicit CXSheetMouse(CVelmorltDoc& doc) : m_doc(doc) {}

    /// In the button row: arms a button. On a level's name: selects its column, beside the names all frames of the
    /// selected levels. Below: selects the cell. With `extend` the selection grows instead. All but the first set
    /// the cursor.
    void Press(const CXSheetGeometry& geometry, QPoint point, bool extend);
    /// Selects from the cursor to the point, whole columns after a press in the row of names.
    void Drag(const CXSheetGeometry& geometry, QPoint point);
    /// Runs the header button under the point after a press in the button row.
    void Release(const CXSheetGeometry& geometry, QPoint point);
    /// Ends a press without doing anything more.
    void Cancel() { m_press = Pressed::Nothing; }

    bool IsPressed() const { return m_press != Pressed::Nothing; }
    bool IsButtonPressed() const { return m_press == Pressed::Button; }
    bool IsSelecting() const { return m_press == Pressed::Cells || m_press == Pressed::Columns; }
    bool IsSelectingColumns() const { return m_press == Pressed::Columns; }

private:
    enum class Pressed { Nothing, Button, Columns, Cells };

    void ClickButton(const CHeaderHit& hit);

    CVelmorltDoc& m_doc;
    Pressed m_press = Pressed::Nothing;
};

/// What a menu at a point is to be about: the cell or camera frame there becomes the cursor, the level whose header
/// it is gets its column selected; what is selected already stays.
void SelectForMenu(CVelmorltDoc& doc, const CXSheetGeometry& geometry, QPoint point);
/// Selects one cell and puts the cursor there; with `extend` the selection's corner at the cursor moves along
/// instead and the opposite one stays.
void MoveCursor(CVelmorltDoc& doc, CSheetCell cell, bool extend);
/// Where a key takes the cursor: arrows, which pass folded levels by, page up and down, home and end (the first and
/// last frame); nothing for any other key.
std::optional<CSheetCell> CursorAfterKey(int key, CSheetCell cursor, const CXSheetGeometry& geometry);

} // namespace velmor
