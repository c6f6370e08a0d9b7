#pragma once

#include "image/Color.h"
#include "image/paper/Ink.h"
#include "image/render/Render.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace velmor {

/// The sheets of paper under and over an image, as one picture of each: what the display adds to the image. The
/// image itself is none of it.
struct CSkinSheet {
    CSize size; ///< of the image; the bottom row comes first
    /// What the display is multiplied by, blue in the low byte, then green and red: light that comes from below.
    /// White where nothing lies; empty when nothing does anywhere.
    std::vector<std::uint32_t> under;
    /// What covers the display: the colours already multiplied by the alpha in the high byte. 0 where nothing lies;
    /// empty as above.
    std::vector<std::uint32_t> over;

    bool IsEmpty() const { return under.empty() && over.empty(); }
};

/// A drawing on its sheet.
struct CSkin {
    std::shared_ptr<const CInk> ink;
    CPlacement placement; ///< centre, angle and scales count
    ColorRef tint = 0;
    int percent = 100; ///< of the tint that the ink gets
    bool over = false;

    bool operator==(const CSkin&) const = default;
};

/// Lays skins, the first ones lowest, on sheets of a size. May throw std::bad_alloc.
CSkinSheet LaySkins(std::span<const CSkin> skins, CSize size);

/// Adds what lies under and over the pixels x to endX - 1 of a row to their colours (blue, green, red; the first
/// byte is that of column x). The sheet has the row.
void ShineThrough(const CSkinSheet& sheet, int row, int x, int endX, std::uint8_t* colors);

} // namespace velmor
