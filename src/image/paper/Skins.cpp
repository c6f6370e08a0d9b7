#include "image/paper/Skins.h"

#include "image/render/SourceMapping.h"
#include "platform/process/Parallel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace velmor {

namespace {

constexpr std::uint32_t white = 0x00ffffff;
constexpr int leastRows = 64; // for a thread

constexpr std::uint32_t ByteOf(std::uint32_t pixel, int byte) {
    return pixel >> 8 * byte & 0xff;
}

constexpr std::uint32_t Multiplied(std::uint32_t a, std::uint32_t b) {
    std::uint32_t product = 0;
    for (int byte = 0; byte < 3; ++byte)
        product |= ByteOf(a, byte) * ByteOf(b, byte) / 255 << 8 * byte;
    return product;
}

// `color` is multiplied by its alpha.
constexpr std::uint32_t Covered(std::uint32_t below, std::uint32_t color) {
    const std::uint32_t rest = 255 - ByteOf(color, 3);
    std::uint32_t sum = 0;
    for (int byte = 0; byte < 4; ++byte)
        sum |= (ByteOf(color, byte) + ByteOf(below, byte) * rest / 255) << 8 * byte;
    return sum;
}

/// What each cover of a skin's ink does to its sheet.
class CTint {
public:
    explicit CTint(const CSkin& skin) : m_isOver(skin.over) {
        const std::array<std::uint32_t, 3> tint{BlueOf(skin.tint), GreenOf(skin.tint), RedOf(skin.tint)};
        const auto percent = static_cast<std::uint32_t>(std::clamp(skin.percent, 0, 100));
        for (std::uint32_t cover = 0; cover < 256; ++cover) {
            const std::uint32_t weight = cover * percent / 100;
            std::uint32_t pixel = m_isOver ? weight << 24 : 0;
            for (int byte = 0; byte < 3; ++byte) {
                const std::uint32_t value = tint[static_cast<std::size_t>(byte)];
                pixel |= (m_isOver ? value * weight / 255 : 255 - (255 - value) * weight / 255) << 8 * byte;
            }
            m_pixels[cover] = pixel;
        }
    }

    void Apply(std::uint8_t cover, std::uint32_t& pixel) const {
        pixel = m_isOver ? Covered(pixel, m_pixels[cover]) : Multiplied(pixel, m_pixels[cover]);
    }

private:
    bool m_isOver;
    std::array<std::uint32_t, 256> m_pixels{};
};

/// One skin on its way onto a sheet.
class CLaying {
public:
    CLaying(const CSkin& skin, CSize sheet)
        : m_ink(*skin.ink), m_tint(skin), m_mapping(skin.placement, m_ink.size, sheet), m_sheet(sheet) {
        const CSourcePoint corner = m_mapping.PointOf(0, 0);
        m_isStraight = !m_mapping.IsRotated() && m_mapping.StepX() == 1 && skin.placement.scaleY == 1 &&
                       corner.x == std::floor(corner.x) && corner.y == std::floor(corner.y) &&
                       m_mapping.IsEstimable();
        if (m_isStraight)
            m_shift = {static_cast<int>(corner.x), static_cast<int>(corner.y)};
    }

    void LayRow(int row, std::uint32_t* pixels) const {
        if (m_ink.IsEmpty())
            return;
        if (m_isStraight)
            LayStraight(row, pixels);
        else
            LayMapped(row, pixels);
    }

private:
    // Most of a drawing is paper: eight pixels of it are passed at a time.
    void LayStraight(int row, std::uint32_t* pixels) const {
        const int y = row + m_shift.y;
        if (y < m_ink.area.y || y >= m_ink.area.endY)
            return;
        const int first = std::max(m_ink.area.x, m_shift.x);
        const int end = std::min(m_ink.area.endX, m_sheet.width + m_shift.x);
        const std::uint8_t* cover = m_ink.RowAt(first, y);
        for (int x = first; x < end;) {
            std::uint64_t eight = 1;
            if (end - x >= 8)
                std::memcpy(&eight, cover, sizeof eight);
            if (eight == 0) {
                x += 8;
                cover += 8;
                continue;
            }
            if (*cover != 0)
                m_tint.Apply(*cover, pixels[x - m_shift.x]);
            ++x;
            ++cover;
        }
    }

    void LayMapped(int row, std::uint32_t* pixels) const {
        const CRect reach{m_ink.area.x - 1, m_ink.area.y - 1, m_ink.area.endX, m_ink.area.endY};
        const CColumnSpan span = m_mapping.ColumnsInside(row, reach);
        const CSourcePoint start = m_mapping.PointOf(0, row);
        for (int column = span.begin; column < span.end; ++column) {
            const std::uint8_t cover =
                CoverAt(start.x + m_mapping.StepX() * column, start.y + m_mapping.StepY() * column);
            if (cover != 0)
                m_tint.Apply(cover, pixels[column]);
        }
    }

    // Interpolated with the next pixels, as the compositor does it.
    std::uint8_t CoverAt(double x, double y) const {
        const double left = std::floor(x);
        const double bottom = std::floor(y);
        const int column = static_cast<int>(left);
        const int row = static_cast<int>(bottom);
        const int inX = static_cast<int>((x - left) * 256);
        const int inY = static_cast<int>((y - bottom) * 256);
        const int lower = m_ink.At(column, row) * (256 - inX) + m_ink.At(column + 1, row) * inX;
        const int upper = m_ink.At(column, row + 1) * (256 - inX) + m_ink.At(column + 1, row + 1) * inX;
        return static_cast<std::uint8_t>((lower * (256 - inY) + upper * inY) / (256 * 256));
    }

    const CInk& m_ink;
    CTint m_tint;
    CSourceMapping m_mapping;
    CSize m_sheet;
    bool m_isStraight = false;
    CPoint m_shift; ///< of an unturned skin: the pixel of the ink that comes to lie at the sheet's first
};

void Lay(std::span<const CSkin> skins, bool over, CSize size, std::uint32_t paper,
         std::vector<std::uint32_t>& pixels) {
    std::vector<CLaying> layings;
    for (const CSkin& skin : skins)
        if (skin.over == over && skin.ink && !skin.ink->IsEmpty())
            layings.emplace_back(skin, size);
    if (layings.empty())
        return;
    const auto width = static_cast<std::size_t>(size.width);
    pixels.resize(width * static_cast<std::size_t>(size.height));
    ParallelFor(size.height, leastRows, [&](int begin, int end) {
        for (int row = begin; row < end; ++row) {
            std::uint32_t* const line = pixels.data() + static_cast<std::size_t>(row) * width;
            std::fill_n(line, width, paper);
            for (const CLaying& laying : layings)
                laying.LayRow(row, line);
        }
    });
}

template<class Change>
void ChangePixels(const std::uint32_t* sheet, std::uint32_t paper, int count, std::uint8_t* colors, Change change) {
    for (int i = 0; i < count; ++i, colors += 3) {
        if (sheet[i] == paper)
            continue;
        const std::uint32_t shown =
            colors[0] | static_cast<std::uint32_t>(colors[1]) << 8 | static_cast<std::uint32_t>(colors[2]) << 16;
        const std::uint32_t pixel = change(shown, sheet[i]);
        for (int byte = 0; byte < 3; ++byte)
            colors[byte] = static_cast<std::uint8_t>(ByteOf(pixel, byte));
    }
}

} // namespace

CSkinSheet LaySkins(std::span<const CSkin> skins, CSize size) {
    CSkinSheet sheet;
    sheet.size = size;
    Lay(skins, false, size, white, sheet.under);
    Lay(skins, true, size, 0, sheet.over);
    return sheet;
}

void ShineThrough(const CSkinSheet& sheet, int row, int x, int endX, std::uint8_t* colors) {
    const std::size_t first =
        static_cast<std::size_t>(row) * static_cast<std::size_t>(sheet.size.width) + static_cast<std::size_t>(x);
    if (!sheet.under.empty())
        ChangePixels(sheet.under.data() + first, white, endX - x, colors, Multiplied);
    if (!sheet.over.empty())
        ChangePixels(sheet.over.data() + first, 0, endX - x, colors, Covered);
}

} // namespace velmor
