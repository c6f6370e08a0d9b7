#include "image/DisplayBitmap.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <utility>

namespace velmor {

namespace {

constexpr std::size_t pixelSize = 3;

int DisplayWidthOf(int width) {
    return width - width % 4 + 4;
}

std::size_t RowSizeOf(const CDisplayBitmap& bitmap) {
    return static_cast<std::size_t>(bitmap.width) * pixelSize;
}

bool Fits(const CDisplayBitmap& bitmap, int width, int height) {
    return bitmap.width == DisplayWidthOf(width) && bitmap.height == height &&
           bitmap.bytes.size() == RowSizeOf(bitmap) * static_cast<std::size_t>(height);
}

// Three channels in lanes of 16 bits (green on top, from where one shift brings it between the others), so that one
// multiplication serves all of them.
constexpr std::uint64_t Lanes(std::uint64_t blue, std::uint64_t green, std::uint64_t red) {
    return blue | red << 16 | green << 32;
}

// (color * alpha + background * (255 - alpha)) / 255 in each lane. A lane never exceeds 255 * 255, and for these
// v / 255 equals (v + 1 + v / 256) / 256.
constexpr std::uint64_t Blend(std::uint64_t color, std::uint64_t background, std::uint64_t alpha) {
    constexpr std::uint64_t lowBytes = Lanes(255, 255, 255);
    const std::uint64_t sum = color * alpha + background * (255 - alpha);
    return (sum + Lanes(1, 1, 1) + (sum >> 8 & lowBytes)) >> 8 & lowBytes;
}

constexpr std::uint32_t Packed(std::uint64_t lanes) {
    return static_cast<std::uint32_t>(lanes) | static_cast<std::uint32_t>(lanes >> 24);
}

// The planes of one image row.
struct CRow {
    CRow(const CCelImg& image, int y)
        : red(image.PlaneOf(Channel::Red).data() + image.IndexOf(0, y)),
          green(image.PlaneOf(Channel::Green).data() + image.IndexOf(0, y)),
          blue(image.PlaneOf(Channel::Blue).data() + image.IndexOf(0, y)),
          alpha(image.PlaneOf(Channel::Alpha).data() + image.IndexOf(0, y)) {}

    std::uint32_t Over(std::uint64_t background, int x) const {
        if (alpha[x] == 255)
            return static_cast<std::uint32_t>(blue[x] | green[x] << 8 | red[x] << 16);
        return Packed(Blend(Lanes(blue[x], green[x], red[x]), background, alpha[x]));
    }

    const std::uint8_t* red;
    const std::uint8_t* green;
    const std::uint8_t* blue;
    const std::uint8_t* alpha;
};

// Columns x to endX - 1 over one square of the grid; `out` is where column x stands. Every pixel but the last is
// stored with a fourth byte that the next one overwrites.
void DrawSquareRow(const CRow& row, std::uint64_t background, int x, int endX, std::uint8_t* out) {
    for (; x < endX - 1; ++x, out += pixelSize) {
        const std::uint32_t pixel = row.Over(background, x);
        std::memcpy(out, &pixel, sizeof pixel);
    }
    const std::uint32_t last = row.Over(background, x);
    std::memcpy(out, &last, pixelSize);
}

// Calls draw(x, endX, background) for the piece of a row that each square of the grid has.
template<class Draw>
void ForEachSquare(const CGridSettings& grid, int y, int x, int rowEnd, Draw draw) {
    const int square = std::max(grid.size, 1);
    const auto lanesOf = [](ColorRef color) { return Lanes(RedOf(color), GreenOf(color), BlueOf(color)); };
    const std::uint64_t colors[2] = {lanesOf(grid.color1), lanesOf(grid.color2)};
    while (x < rowEnd) {
        const int endX = rowEnd - x > square - x % square ? x + square - x % square : rowEnd;
        draw(x, endX, colors[(x / square + y / square) % 2]);
        x = endX;
    }
}

void DrawRect(const CCelImg& image, const CGridSettings& grid, const CRect& rect, CDisplayBitmap& bitmap,
              const CSkinSheet& skins) {
    const bool hasSkins = !skins.IsEmpty() && skins.size == CSize{image.Width(), image.Height()};
    for (int y = rect.y; y < rect.endY; ++y) {
        const CRow row(image, y);
        std::uint8_t* const out = bitmap.bytes.data() + static_cast<std::size_t>(y) * RowSizeOf(bitmap);
        ForEachSquare(grid, y, rect.x, rect.endX, [&](int x, int endX, std::uint64_t background) {
            DrawSquareRow(row, background, x, endX, out + static_cast<std::size_t>(x) * pixelSize);
        });
        if (hasSkins)
            ShineThrough(skins, y, rect.x, rect.endX, out + static_cast<std::size_t>(rect.x) * pixelSize);
    }
}

void BlackenColumnsBeyond(int width, CDisplayBitmap& bitmap) {
    const std::size_t used = static_cast<std::size_t>(width) * pixelSize;
    for (std::size_t row = 0; row < bitmap.bytes.size(); row += RowSizeOf(bitmap))
        std::memset(bitmap.bytes.data() + row + used, 0, RowSizeOf(bitmap) - used);
}

} // namespace

CStatus CreateBitmap(const CCelImg& image, const CGridSettings& grid, CDisplayBitmap& bitmap,
                     const CSkinSheet& skins) {
    if (image.GetLoadState() == LoadState::Nothing)
        return CStatus::Failure("Internal error : CreateBitmap called with no cel/picture image!");
    if (!Fits(bitmap, image.Width(), image.Height())) {
        try {
            CDisplayBitmap fresh{DisplayWidthOf(image.Width()), image.Height(), {}};
            fresh.bytes.resize(RowSizeOf(fresh) * static_cast<std::size_t>(fresh.height));
            bitmap = std::move(fresh);
        } catch (const std::exception&) {
            return CStatus::Failure("Could not create bitmap");
        }
    }
    DrawRect(image, grid, {0, 0, image.Width(), image.Height()}, bitmap, skins);
    BlackenColumnsBeyond(image.Width(), bitmap);
    return {};
}

void UpdateBitmap(const CCelImg& image, const CGridSettings& grid, const CRect& rect, CDisplayBitmap& bitmap,
                  const CSkinSheet& skins) {
    if (image.GetLoadState() != LoadState::Nothing && Fits(bitmap, image.Width(), image.Height()))
        DrawRect(image, grid, Intersection(rect, {0, 0, image.Width(), image.Height()}), bitmap, skins);
}

ColorRef DisplayColor(const CCelImg& image, const CGridSettings& grid, CPoint pixel) {
    std::uint32_t color = 0;
    ForEachSquare(grid, pixel.y, pixel.x, pixel.x + 1,
                  [&](int x, int, std::uint64_t background) { color = CRow(image, pixel.y).Over(background, x); });
    const auto byte = [color](int index) { return static_cast<std::uint8_t>(color >> 8 * index & 0xff); };
    return MakeColorRef(byte(2), byte(1), byte(0));
}

CDisplayBitmap EmptyBitmap(CSize size, const CGridSettings& grid) {
    CDisplayBitmap bitmap{DisplayWidthOf(size.width), size.height, {}};
    bitmap.bytes.resize(RowSizeOf(bitmap) * static_cast<std::size_t>(size.height));
    for (int y = 0; y < size.height; ++y) {
        std::uint8_t* const out = bitmap.bytes.data() + static_cast<std::size_t>(y) * RowSizeOf(bitmap);
        ForEachSquare(grid, y, 0, size.width, [&](int x, int endX, std::uint64_t background) {
            const std::uint32_t pixel = Packed(background);
            for (; x < endX; ++x)
                std::memcpy(out + static_cast<std::size_t>(x) * pixelSize, &pixel, pixelSize);
        });
    }
    return bitmap;
}

} // namespace velmor
