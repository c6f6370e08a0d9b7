#include "image/render/ImagePacker.h"

#include "image/paint/LineEdges.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

constexpr int tileSide = CUniformMap::tileSide;

// The area and some pixels around it, as far as the image goes.
CRect Widened(const CRect& area, int before, int behind, CSize image) {
    return {std::max(area.x - before, 0), std::max(area.y - before, 0), std::min(area.endX + behind, image.width),
            std::min(area.endY + behind, image.height)};
}

// The pixel with its colour blended with the line pixels around it, as far as they go, and at least the weight for
// alpha. `corner` is the neighbour before it in the row below.
std::uint32_t SmoothedPixel(const CLineEdge& edge, std::uint32_t own, const std::uint32_t* corner) {
    // Two channels a word: sums of eight neighbours fit 16 bits.
    constexpr std::uint32_t two = 0xff00ff;
    constexpr std::ptrdiff_t above = CStripedPixels::rowPitch;
    constexpr std::array<std::ptrdiff_t, 9> places{
        2, 1, 0, above + 2, above + 1, above + 0, 2 * above + 2, 2 * above + 1, 2 * above};
    std::uint32_t blueAndRed = 0, green = 0;
    ForEachLine(edge.lines, [&](std::size_t line) {
        const std::uint32_t neighbour = corner[places[line]];
        blueAndRed += neighbour & two;
        green += neighbour >> 8 & 0xff;
    });
    const auto channel = [&](int bit, std::uint32_t sum) {
        return std::uint32_t{edge.Blend(static_cast<int>(own >> bit & 0xff), static_cast<int>(sum))} << bit;
    };
    const std::uint32_t alpha = std::max(own >> 24, static_cast<std::uint32_t>(edge.weight));
    return channel(0, blueAndRed & 0xffff) | channel(8, green) | channel(16, blueAndRed >> 16) | alpha << 24;
}

} // namespace

void CVisibleArea::AddY(int y) {
    m_firstRow = std::min(m_firstRow, y);
    m_endRow = std::max(m_endRow, y + 1);
}

void CVisibleArea::AddRow(int y, const std::uint8_t* alphas) {
    std::uint8_t any = 0;
    std::uint8_t* const columns = m_columns.data();
    const std::size_t width = m_columns.size();
    for (std::size_t x = 0; x < width; ++x) {
        columns[x] |= alphas[x];
        any |= alphas[x];
    }
    if (any != 0)
        AddY(y);
}

void CVisibleArea::AddPixel(int x, int y) {
    m_columns[static_cast<std::size_t>(x)] = 1;
    AddY(y);
}

CRect CVisibleArea::Area() const {
    if (m_endRow == 0)
        return {};
    const auto isVisible = [](std::uint8_t alpha) { return alpha != 0; };
    const auto first = std::ranges::find_if(m_columns, isVisible) - m_columns.begin();
    const auto behind = std::find_if(m_columns.rbegin(), m_columns.rend(), isVisible) - m_columns.rbegin();
    return {static_cast<int>(first), m_firstRow, static_cast<int>(m_columns.size()) - static_cast<int>(behind),
            m_endRow};
}

bool CImagePacker::Pack(IImageRows& rows, const std::optional<CLineMask>& smoothedLines) {
    size = rows.Size();
    kind = rows.Kind();
    CVisibleArea visible(size);
    if (!rows.FindVisible(visible))
        return false;
    if (smoothedLines) {
        CLineEdges edges(*smoothedLines);
        for (int y = 0; y < size.height; ++y)
            edges.VisitRow(y, [&](const CLineEdge& edge) { visible.AddPixel(edge.x, y); });
    }
    TakePlace(visible.Area());

    std::optional<CLineEdges> edges;
    if (smoothedLines)
        edges.emplace(*smoothedLines);
    const CRect kept = pixels.Area();
    for (int y = 0; edges && y < kept.y; ++y)
        edges->VisitRow(y, [](const CLineEdge&) {});
    for (int y = kept.y; y < kept.endY; ++y) {
        CChannelRows row{};
        if (!rows.Read(y, pixels.FirstColumn(), pixels.EndColumn(size.width), row))
            return false;
        isOpaque &= pixels.SetRow(y, row, size.width);
        if (y > kept.y)
            FinishRow(y - 1, edges ? &*edges : nullptr);
    }
    if (!kept.IsEmpty())
        FinishRow(kept.endY - 1, edges ? &*edges : nullptr);
    uniformAreas = CUniformMap(m_tileColors, size.width, size.height);
    opaqueAreas = COpaqueMap(m_tileColors, size.width, size.height);
    return true;
}

void CImagePacker::TakePlace(const CRect& visible) {
    isOpaque = visible == CRect{0, 0, size.width, size.height};
    m_tileColors.resize(CUniformMap::TileCount(size.width) * CUniformMap::TileCount(size.height));
    if (visible.IsEmpty())
        return;
    // A point is interpolated with the next pixel, and may be estimated to lie in the one beside.
    constexpr int spare = 3;
    paintedArea = Widened(visible, 1, 0, size);
    pixels = CStripedPixels(Widened(visible, spare, spare, size));
}

void CImagePacker::FinishRow(int y, CLineEdges* edges) {
    if (edges)
        Smooth(y, *edges);
    if (y % tileSide == tileSide - 1 || y == pixels.Area().endY - 1)
        LookAtTiles(y / tileSide);
}

void CImagePacker::Smooth(int y, CLineEdges& edges) {
    edges.VisitRow(y, [&](const CLineEdge& edge) {
        const std::uint32_t* const before = pixels.Origin() + pixels.OffsetOf(edge.x - 1, y);
        pixels.Set(edge.x, y, SmoothedPixel(edge, before[1], before - CStripedPixels::rowPitch));
    });
}

// Finds the colours of a row of tiles. What of a tile is not kept is transparent, and so is a row or column of it
// that is kept: the tile's colour is that of its kept pixels.
void CImagePacker::LookAtTiles(int row) {
    const CRect& kept = pixels.Area();
    const int y = std::max(row * tileSide, kept.y);
    const int endY = std::min((row + 1) * tileSide, kept.endY);
    const int endX = std::min((kept.endX + tileSide - 1) / tileSide * tileSide, size.width);
    TileColor* const colors =
        m_tileColors.data() + static_cast<std::size_t>(row) * CUniformMap::TileCount(size.width);
    // The tiles that begin in a stripe lie whole in its rows.
    static_assert(CStripedPixels::shift < tileSide && tileSide < CPixelRow::slack);
    for (int x = kept.x / tileSide * tileSide; x < endX;) {
        const int next = std::min((x / CStripedPixels::stripeSide + 1) * CStripedPixels::stripeSide, endX);
        FindTileColors(pixels.Origin() + pixels.OffsetOf(x, y), CStripedPixels::rowPitch, {next - x, endY - y},
                       colors + x / tileSide);
        x = next;
    }
}

} // namespace velmor
