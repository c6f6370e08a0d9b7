#include "image/render/RenderSource.h"

#include "image/paint/Filters.h"
#include "image/render/PixelPacking.h"
#include "image/render/PixelRow.h"
#include "image/render/PlacedImage.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace velmor {

namespace {

/// A greater radius than any image is wide has no further effect.
constexpr double mostBlur = 1 << 20;

/// What is not a number gives 0.
int RadiusOf(double blur) {
    const double radius = std::floor(blur);
    return radius > 0 ? static_cast<int>(std::min(radius, mostBlur)) : 0;
}

/// Does the preparation to the image itself.
void Prepare(CCelImg& image, const CRenderPreparation& preparation) {
    if (preparation.blurX > 0 || preparation.blurY > 0)
        static_cast<void>(
            Blur(image, std::min(preparation.blurX, image.Width()), std::min(preparation.blurY, image.Height())));
    if (preparation.smooth)
        static_cast<void>(Smooth(image));
    image.SetModified(false);
}

CCelImg PreparedCopy(const CCelImg& image, const CRenderPreparation& preparation) {
    CCelImg copy = image;
    Prepare(copy, preparation);
    return copy;
}

// The smallest area with every pixel that is not transparent.
CRect VisibleArea(const CCelImg& image) {
    const auto width = static_cast<std::size_t>(image.Width());
    std::vector<std::uint8_t> columns(width);
    CRect area{0, image.Height(), 0, 0};
    for (int y = 0; y < image.Height(); ++y) {
        const std::span<const std::uint8_t> alpha =
            image.PlaneOf(Channel::Alpha).subspan(image.IndexOf(0, y), width);
        std::uint8_t any = 0;
        for (std::size_t x = 0; x < width; ++x) {
            columns[x] |= alpha[x];
            any |= alpha[x];
        }
        if (any == 0)
            continue;
        area.y = std::min(area.y, y);
        area.endY = y + 1;
    }
    if (area.IsEmpty() && area.endY == 0)
        return {};
    const auto isVisible = [](std::uint8_t alpha) { return alpha != 0; };
    area.x = static_cast<int>(std::ranges::find_if(columns, isVisible) - columns.begin());
    area.endX = static_cast<int>(columns.size()) -
                static_cast<int>(std::find_if(columns.rbegin(), columns.rend(), isVisible) - columns.rbegin());
    return area;
}

// The area and some pixels around it, as far as the image goes.
CRect Widened(const CRect& area, int before, int behind, CSize image) {
    return {std::max(area.x - before, 0), std::max(area.y - before, 0), std::min(area.endX + behind, image.width),
            std::min(area.endY + behind, image.height)};
}

} // namespace

CRenderPreparation PreparationFor(const CPlacement& placement, LoadState kind) {
    CRenderPreparation preparation;
    if (std::floor(placement.blurX) > 1.0 || std::floor(placement.blurY) > 1.0) {
        preparation.blurX = RadiusOf(placement.blurX);
        preparation.blurY = RadiusOf(placement.blurY);
    }
    preparation.smooth = placement.antialias && kind == LoadState::Cel;
    return preparation;
}

CRenderSource::CRenderSource(const CCelImg& image, const CRenderPreparation& preparation) {
    if (preparation == CRenderPreparation{})
        PackPlanes(image);
    else
        PackPlanes(PreparedCopy(image, preparation));
}

CRenderSource::CRenderSource(CCelImg&& image, const CRenderPreparation& preparation) {
    CCelImg own = std::move(image);
    image = CCelImg{};
    Prepare(own, preparation);
    PackPlanes(own);
}

void CRenderSource::PackPlanes(const CCelImg& image) {
    m_width = image.Width();
    m_height = image.Height();
    m_kind = image.GetLoadState();
    const CRect visible = VisibleArea(image);
    const CRect whole{0, 0, m_width, m_height};
    if (!visible.IsEmpty()) {
        // A point is interpolated with the next pixel, and may be estimated to lie in the one beside.
        constexpr int spare = 3;
        m_paintedArea = Widened(visible, 1, 0, {m_width, m_height});
        m_pixels = CStripedPixels(Widened(visible, spare, spare, {m_width, m_height}));
    }
    const CRect kept = m_pixels.Area();
    const auto width = static_cast<std::size_t>(m_width);
    constexpr int side = CUniformMap::tileSide;
    std::vector<std::uint32_t> band(width * side);
    std::vector<TileColor> colors(CUniformMap::TileCount(m_width) * CUniformMap::TileCount(m_height));
    TileColor* bandColors = colors.data();
    m_isOpaque = visible == whole;
    for (int y = 0; y < m_height; y += side, bandColors += CUniformMap::TileCount(m_width)) {
        const int rows = std::min(side, m_height - y);
        if (y >= kept.endY || y + rows <= kept.y)
            continue; // transparent tiles
        const std::span<std::uint32_t> pixels = std::span(band).first(width * static_cast<std::size_t>(rows));
        const auto planeRows = [&](Channel channel) {
            return image.PlaneOf(channel).subspan(image.IndexOf(0, y), pixels.size());
        };
        m_isOpaque &= InterleavePlanes(planeRows(Channel::Blue), planeRows(Channel::Green), planeRows(Channel::Red),
                                       planeRows(Channel::Alpha), pixels);
        FindTileColors(pixels, m_width, bandColors);
        for (int row = std::max(kept.y - y, 0); row < std::min(rows, kept.endY - y); ++row)
            m_pixels.SetRow(y + row, pixels.subspan(width * static_cast<std::size_t>(row), width));
    }
    m_uniformAreas = CUniformMap(colors, m_width, m_height);
    m_opaqueAreas = COpaqueMap(colors, m_width, m_height);
}

std::size_t CRenderSource::ByteCount() const {
    return sizeof(*this) + m_pixels.ByteCount() + m_uniformAreas.ByteCount() + m_opaqueAreas.ByteCount();
}

void CRenderSource::DrawRows(const CPlacement& placement, CFrameView destination, int firstRow, int endRow) const {
    const CPlacedImage placed(*this, placement, {destination.width, destination.height});
    CPixelRow pixels(destination.width);
    const std::size_t rowBytes = static_cast<std::size_t>(destination.width) * 3;
    for (int row = firstRow; row < endRow; ++row) {
        const CRowSpans spans = placed.SpansOf(row);
        if (spans.all.IsEmpty())
            continue;
        const auto bytes = destination.pixels.subspan(static_cast<std::size_t>(row) * rowBytes, rowBytes);
        pixels.Unpack(bytes, spans.all.begin, spans.all.end);
        placed.Draw(row, spans, {&spans.all, 1}, pixels);
        pixels.Pack(bytes, spans.all.begin, spans.all.end);
    }
}

} // namespace velmor
