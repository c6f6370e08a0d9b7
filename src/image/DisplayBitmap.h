#pragma once

#include "image/CelImg.h"
#include "image/Color.h"
#include "image/paper/Skins.h"
#include "platform/Status.h"
#include "platform/files/Profile.h"

#include <cstdint>
#include <vector>

namespace velmor {

/// The checkerboard behind transparent pixels in the cel editor.
struct CGridSettings {
    ColorRef color1 = MakeColorRef(128, 128, 128);
    ColorRef color2 = MakeColorRef(255, 255, 255);
    int size = 20; ///< pixels, at least 1

    bool operator==(const CGridSettings&) const = default;
};

/// Reads the grid settings. The red of colour 2 is read from a section of its own that nothing writes, so it is
/// 255 after every start, and the second colour of the grid a light one.
CGridSettings ReadGridSettings(const CProfile& profile);
/// Writes the settings under the keys from which they are read; colour 2's red goes beside its green and blue,
/// where it is not read (see above).
void WriteGridSettings(CProfile& profile, const CGridSettings& grid);

/// A 24-bit picture for the screen: rows of width x 3 bytes (blue, green, red), bottom row first.
struct CDisplayBitmap {
    int width = 0; ///< wider than the image: w - w mod 4 + 4; the columns beyond are black
    int height = 0;
    std::vector<std::uint8_t> bytes;
};

/// The image over the checkerboard. Grid bytes are blended in their stored order (a grid colour's red into blue and
/// the other way round), which shows only when a grid colour is not grey. Fails when nothing is loaded; `bitmap` is
/// then unchanged. Where there are skins of the image's size, they shine through it and lie over it.
CStatus CreateBitmap(const CCelImg& image, const CGridSettings& grid, CDisplayBitmap& bitmap,
                     const CSkinSheet& skins = {});
/// Redoes the part of `bitmap` under `rect` (image pixels) after an edit of the same image. A bitmap of another
/// size is left as it is.
void UpdateBitmap(const CCelImg& image, const CGridSettings& grid, const CRect& rect, CDisplayBitmap& bitmap,
                  const CSkinSheet& skins = {});
/// The colour that a pixel inside the image has over the checkerboard, without any skins.
ColorRef DisplayColor(const CCelImg& image, const CGridSettings& grid, CPoint pixel);
/// The checkerboard alone, in a bitmap for an image of a size. May throw std::bad_alloc.
CDisplayBitmap EmptyBitmap(CSize size, const CGridSettings& grid);

} // namespace velmor
