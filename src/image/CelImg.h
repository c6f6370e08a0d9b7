#pragma once

#include "image/Color.h"
#include "image/Geometry.h"
#include "image/Plane.h"
#include "platform/Status.h"
#include "platform/files/Files.h"

#include <array>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <vector>

namespace velmor {

/// What a CCelImg holds, computed from what is allocated.
enum class LoadState { Nothing = 0, Picture = 1, Cel = 2 };

/// The planes, in their order in memory and in the files.
enum class Channel { Red = 0, Green = 1, Blue = 2, Alpha = 3 };

/// Bits in a row of a line mask: rounded up to a multiple of 32, and a whole extra word for multiples of 32 (the
/// rule of the cel file).
constexpr int StrideBitsOf(int width) {
    return width - width % 32 + 32;
}

/// The one image class: a cel (line mask and paint), a picture (true colour with alpha) or nothing.
///
/// Four planes of width x height bytes, pixel (x, y) at y * width + x, row 0 at the bottom. A cel has a line mask
/// besides: rows of StrideBits() bits, pixel x in bit (7 - x mod 8) of byte x / 8; a set bit is a line pixel and
/// stops fills; it is not drawn by itself. What edits pixels calls SetModified(true). Copying copies everything.
class CCelImg {
public:
    CCelImg() = default;

    LoadState GetLoadState() const;
    /// Width and height in pixels, 0 when nothing is loaded.
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int StrideBits() const { return m_strideBits; }
    /// As Width() and Height(); when nothing is loaded `value` is 10 and the status an internal error.
    CStatus GetWidth(int& value) const;
    CStatus GetHeight(int& value) const;

    bool IsModified() const { return m_modified; }
    void SetModified(bool modified) {
        m_modified = modified;
        m_changes += modified ? 1 : 0;
    }
    /// Grows with every SetModified(true): tells changes apart that are all not saved yet.
    int Changes() const { return m_changes; }
    /// The file that the image belongs to; empty when nothing is loaded.
    const Path& FilePath() const { return m_path; }
    void SetFilePath(Path path) { m_path = std::move(path); }

    /// Saves the image first when it is modified (an error of that is ignored), then empties it.
    void Clear();
    /// A cel of white paper without lines. Fails with "Invalid cel dimensions" unless both sizes are at least 2
    /// (a cel one pixel wide or high could not be read again).
    CStatus CreateCel(int width, int height, const Path& path);
    /// A cel whose lines are the dark bits of a 1-bit image: `bits` in the layout of the line mask, `colorTable`
    /// the two colours of the bit values. Nothing is kept of `bits`.
    CStatus CreateCelFromBits(int width, int height, std::span<const std::uint8_t> bits,
                              const std::array<CColor, 2>& colorTable, const Path& path);
    /// An opaque white picture, for readers to fill. Same refusal as CreateCel().
    CStatus CreatePicture(int width, int height, const Path& path);

    /// Writes the file at FilePath() (atomically) and clears the modified flag.
    CStatus Save();
    CStatus SaveCel();
    CStatus SavePicture();
    /// Whether this is a picture that is nearly opaque everywhere: its file goes without the alpha, and it is
    /// opaque when it is read again.
    bool IsAlphaLostInFile() const;
    /// The bytes that Save() would write; none when nothing is loaded. May throw std::bad_alloc.
    std::vector<std::uint8_t> FileBytes() const;
    /// Reads a ".bit" or ".rgba" file, told apart by the signature. Empties the image first (see Clear()); on
    /// failure it stays empty.
    CStatus Load(const Path& path);
    /// The same from the bytes of such a file.
    CStatus LoadBytes(std::span<const std::uint8_t> bytes, const Path& path);
    /// Reads only the header of either format. On failure `size` is unchanged.
    static CStatus GetDimensions(const Path& path, CSize& size);

    std::span<std::uint8_t> PlaneOf(Channel channel) { return m_planes[static_cast<std::size_t>(channel)].Span(); }
    std::span<const std::uint8_t> PlaneOf(Channel channel) const {
        return m_planes[static_cast<std::size_t>(channel)].Span();
    }
    /// The whole line mask, row 0 first; empty for a picture.
    std::span<std::uint8_t> LineMask() { return m_lineMask.Span(); }
    std::span<const std::uint8_t> LineMask() const { return m_lineMask.Span(); }

    std::size_t IndexOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
    }
    /// The colour of a pixel inside the image.
    CColor ColorAt(int x, int y) const;
    void SetColorAt(int x, int y, CColor color);
    /// Whether a pixel inside the image is a line pixel; never for a picture.
    bool IsLine(int x, int y) const {
        return !m_lineMask.IsEmpty() && (m_lineMask.Span()[MaskByteOf(x, y)] >> (7 - x % 8) & 1) != 0;
    }
    /// For cels only.
    void SetLine(int x, int y, bool line);

    /// Flips every byte of the line mask, padding included.
    CStatus InvertCel();
    /// Makes every line pixel black; alpha stays.
    CStatus ResetLineColors();

private:
    std::size_t MaskByteOf(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_strideBits / 8) +
               static_cast<std::size_t>(x / 8);
    }
    /// Empties the image and makes planes and mask without setting their bytes.
    CStatus Allocate(int width, int height, LoadState kind, const Path& path);
    CStatus LoadFrom(std::istream& file, const Path& source);
    // Both read what follows the sizes; on failure the image may be left half filled.
    CStatus LoadCel(std::istream& file, const CSize& size, const Path& path);
    CStatus LoadPicture(std::istream& file, const CSize& size, const Path& path);
    CStatus CreateBlank(int width, int height, LoadState kind, const Path& path);

    std::array<CPlane, 4> m_planes;
    CPlane m_lineMask;
    int m_width = 0;
    int m_height = 0;
    int m_strideBits = 0;
    bool m_modified = false;
    int m_changes = 0;
    Path m_path;
};

} // namespace velmor
