#pragma once

#include "image/RealPoint.h"
#include "xsheet/XSheetCell.h"

#include <array>

namespace velmor {

/// The corners of a used cell on the stage, between pixels: lower left, lower right, upper right, upper left of the
/// unrotated cell.
std::array<CRealPoint, 4> CellCornersOnStage(const CCellTransform& cell, CSize image);

enum class CellHandle { Scale, Turn };

/// A cell that is dragged by one of its corners. Each motion is counted from the press, so nothing adds up.
class CCellHandleDrag {
public:
    /// What is held down meanwhile.
    struct CKeys {
        bool constrained = false; ///< keeps proportions; turns by steps of 15 degrees
        bool otherPivot = false;  ///< scales about the middle; turns about the opposite corner
    };

    /// `corner` 0 to 3, as above. `press` is on the stage.
    CCellHandleDrag(const CCellTransform& cell, CSize image, CellHandle handle, int corner, CRealPoint press);

    CellHandle Handle() const { return m_handle; }
    /// The cell when the pointer is there. It is never mirrored, and never smaller than a pixel.
    CCellTransform To(CRealPoint point, const CKeys& keys);

private:
    CCellTransform ScaledTo(CRealPoint point, const CKeys& keys) const;
    CCellTransform TurnedTo(CRealPoint point, const CKeys& keys);
    CRealPoint Centre() const { return {m_cell.posX, m_cell.posY}; }

    CCellTransform m_cell; ///< at the press
    CSize m_image;
    CellHandle m_handle;
    int m_corner;
    CRealPoint m_press;
    CRealPoint m_last;   ///< where it was when it was turned last
    double m_turned = 0; ///< since the press, counter-clockwise, whole turns included
};

} // namespace velmor
