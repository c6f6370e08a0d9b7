#pragma once

#include "image/DisplayBitmap.h"
#include "views/ViewMapping.h"

#include <QImage>
#include <vector>

class QPainter;
class QRect;

namespace velmor {

/// The colour beside the image.
inline constexpr ColorRef surroundColor = MakeColorRef(72, 72, 72);

/// The picture of the image under edit, over the grid, ready for the screen. Kept in step with the image by the
/// rectangles that change; painting scales only what is exposed.
class CCelDisplay {
public:
    /// Makes the picture anew, an empty one when nothing is loaded. A failure leaves it as it was.
    CStatus Rebuild(const CCelImg& image, const CGridSettings& grid);
    /// Redoes the pixels of a rectangle.
    void Update(const CCelImg& image, const CGridSettings& grid, const CRect& changed);

    bool IsEmpty() const { return m_size == CSize{}; }
    CSize Size() const { return m_size; }
    /// The colour shown for a pixel inside the image.
    ColorRef ColorAt(CPoint pixel) const;

    /// Paints the part of the image, of its border and of the margins around it that an exposed client rectangle
    /// shows.
    void Paint(QPainter& painter, const CViewMapping& mapping, const QRect& exposed);

private:
    const std::uint8_t* RowOf(int y) const;
    /// Puts the pixels of a client rectangle inside the image into m_scaled, from its top left corner on.
    void Scale(const CViewMapping& mapping, const QRect& part);

    CSize m_size;
    CDisplayBitmap m_bitmap;
    QImage m_scaled;                      ///< grows to the size of the client area
    std::vector<std::uint32_t> m_columns; ///< where in a bitmap row the pixels of a part begin
};

} // namespace velmor
