#pragma once

#include "image/DisplayBitmap.h"
#include "views/ViewMapping.h"
#include "views/cel/DisplayPyramid.h"

#include <QImage>
#include <span>
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
    CStatus Rebuild(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins);
    /// Redoes the pixels of a rectangle.
    void Update(const CCelImg& image, const CGridSettings& grid, const CSkinSheet& skins, const CRect& changed);
    /// Shows another picture, made for an image of this size, until it is made anew.
    void ShowInstead(CDisplayBitmap bitmap);

    bool IsEmpty() const { return m_size == CSize{}; }
    CSize Size() const { return m_size; }

    /// Whether an image that is shown smaller than it is shows the mean of what falls together, instead of one of
    /// its pixels.
    void SetSmooth(bool isSmooth) { m_isSmooth = isSmooth; }
    /// Whether pixels of the screen show more than one of the image, in a view like this.
    bool IsMixed(const CViewMapping& mapping) const;

    /// Paints the part of the image, of its border and of the margins around it that an exposed client rectangle
    /// shows.
    void Paint(QPainter& painter, const CViewMapping& mapping, const QRect& exposed);

private:
    const std::uint8_t* RowOf(int y) const;
    /// Puts the pixels of a client rectangle inside the image into m_scaled, from its top left corner on.
    void Scale(const CViewMapping& mapping, const QRect& part);

    void PaintUpright(QPainter& painter, const CViewMapping& mapping, const QRect& exposed);
    void PaintTurned(QPainter& painter, const CViewMapping& mapping, const QRect& exposed);
    void GrowScaled(const CViewMapping& mapping, CSize least);
    /// The colours of the columns from `left` on in a row of the client area.
    void SampleRow(const CViewMapping& mapping, CPoint left, bool isMixed, std::span<QRgb> colors) const;

    CSize m_size;
    CDisplayBitmap m_bitmap;
    CDisplayPyramid m_pyramid;
    bool m_isSmooth = false;
    QImage m_scaled;                      ///< grows to the size of the client area
    std::vector<std::uint32_t> m_columns; ///< where in a bitmap row the pixels of a part begin
};

} // namespace velmor
