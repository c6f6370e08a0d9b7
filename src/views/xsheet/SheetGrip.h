#pragma once

#include "views/xsheet/XSheetLook.h"
#include "xsheet/exposing/SheetEdit.h"

#include <Qt>
#include <optional>

namespace velmor {

class CVelmorltDoc;

enum class GripKind {
    Fill, ///< repeats what is selected, or holds its last cells on
    Edge  ///< has the exposure under the cursor end earlier or later
};

/// A handle at the lower edge of cells.
struct CSheetGrip {
    GripKind kind = GripKind::Fill;
    CXSheetSelection cells; ///< the selected ones, or the exposure

    bool operator==(const CSheetGrip&) const = default;
};

/// The handle near a point of the grid, which is when it is seen; the nearer one of two.
std::optional<CSheetGrip> GripNear(const CSceneModel& model, const CXSheetGeometry& geometry, QPoint point);
/// Whether a press at the point takes it.
bool IsOn(const CSheetGrip& grip, const CXSheetGeometry& geometry, QPoint point);
CGripLook LookOf(const CSheetGrip& grip, const CXSheetGeometry& geometry);
Qt::CursorShape ShapeOver(const CSheetGrip& grip, const CXSheetGeometry& geometry, QPoint point);
/// What dragging a handle to a point does; nothing where it would change nothing. `other` has the last cells held
/// on in place of the repeating, or what follows eaten in place of pushed, and the reverse.
std::optional<CSheetEdit> EditAt(const CSheetGrip& grip, const CXSheetGeometry& geometry, QPoint point,
                                 Following following, bool other);

/// A handle in the hand: the outcome is shown while it is dragged, and done when it is let go.
class CGripDrag {
public:
    explicit CGripDrag(CVelmorltDoc& doc) : m_doc(doc) {}

    /// Whether there is a handle at the point, which is taken then.
    [[nodiscard]] bool Press(const CXSheetGeometry& geometry, QPoint point);
    /// With Ctrl a fill holds on, and an edge does to what follows what was not chosen.
    void Drag(const CXSheetGeometry& geometry, QPoint point, Qt::KeyboardModifiers keys);
    /// Where it was pressed, if it was not dragged away from there.
    std::optional<QPoint> Release();
    void Cancel();
    bool IsDragging() const { return m_grip.has_value(); }

private:
    CVelmorltDoc& m_doc;
    std::optional<CSheetGrip> m_grip;
    std::optional<CSheetEdit> m_edit;
    QPoint m_pressed;
    bool m_moved = false;
};

} // namespace velmor
