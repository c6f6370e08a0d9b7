#pragma once

#include "image/Geometry.h"
#include "image/paint/MaskPlane.h"

#include <cstdint>
#include <vector>

namespace velmor {

/// How far the pixels of a rectangle are from the nearest line pixel, as squares. Exact up to a limit; what is
/// farther has some value above it. Around the image all is line. Two passes over columns and rows after A.
/// Meijster, J. Roerdink and W. Hesselink, "A general algorithm for computing distance transforms in linear time",
/// 2000, the second one by trying all columns in reach, which vectors do quickly.
class CLineDistance {
public:
    /// `window` lies inside the image, `limit` is below 10000. Pixels nearer than the limit to a side of the window
    /// that is not one of the image see no lines beyond it. May throw std::bad_alloc.
    CLineDistance(const CMaskPlane& lines, const CRect& window, int limit);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// Row y of the window; 0 for a line pixel.
    const std::int16_t* Row(int y) const { return &m_squares[static_cast<std::size_t>(y) * m_rowLength]; }

private:
    void AlongColumns(const CMaskPlane& lines, const CRect& window);
    void AlongRow(int y, bool lineAtLeft, bool lineAtRight, std::vector<std::int16_t>& padded);

    int m_width;
    int m_height;
    int m_reach; ///< the first whole distance above the limit
    std::size_t m_rowLength;
    std::vector<std::uint8_t> m_steps; ///< along the column, up to m_reach
    std::vector<std::int16_t> m_squares;
};

} // namespace velmor
