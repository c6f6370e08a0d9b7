#pragma once

#include "image/RealPoint.h"
#include "views/ViewMapping.h"

#include <QPointF>
#include <QPolygonF>
#include <QRect>
#include <QTransform>

#include <optional>
#include <vector>

class QPainter;

namespace velmor {

class CCelSelection;

/// What of a selection the pointer has hold of.
enum class SelectGrip { Nothing, Inside, Handle, Corner };

/// A grip; of a handle, the side or corner of the frame that it is at: -1, 0 or 1 from left to right and up.
struct CSelectGrip {
    SelectGrip kind = SelectGrip::Nothing;
    int x = 0;
    int y = 0;
};

/// The outline of what is selected, in dashes of two colours, and the frame with its handles. The outline is gone
/// round once for each selection; how it is moved and turned is left to the painting.
class CSelectionMarks {
public:
    /// The selection outlives the object.
    explicit CSelectionMarks(const CCelSelection& selection) : m_selection(selection) {}

    /// What the marks depend on.
    struct CState {
        int changes = -1;
        QTransform transform;
        QRect around; ///< everything that they cover; empty without a selection
        bool hasHandles = false;

        bool operator==(const CState&) const = default;
    };
    CState StateOf(const CViewMapping& mapping, bool hasHandles) const;
    void Paint(QPainter& painter, const CViewMapping& mapping, bool hasHandles);
    CSelectGrip GripAt(CRealPoint client, const CViewMapping& mapping) const;

private:
    struct CHandle {
        CSelectGrip grip;
        QPointF at;
    };

    /// From the selection as it was lifted to the client area.
    QTransform TransformOf(const CViewMapping& mapping) const;
    QPolygonF FrameOn(const CViewMapping& mapping) const;
    std::vector<CHandle> HandlesOn(const CViewMapping& mapping) const;
    void GoRound();

    const CCelSelection& m_selection;
    int m_changes = -1; ///< the selection's, when it was gone round
    std::vector<QPolygonF> m_outline;
    bool m_isDense = false;
};

} // namespace velmor
