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
    m_pixels = CStripedPixels(m_width, m_height);
    const auto width = static_cast<std::size_t>(m_width);
    constexpr int side = CUniformMap::tileSide;
    std::vector<std::uint32_t> band(width * side);
    std::vector<TileColor> colors(CUniformMap::TileCount(m_width) * CUniformMap::TileCount(m_height));
    TileColor* bandColors = colors.data();
    m_isOpaque = true;
    for (int y = 0; y < m_height; y += side, bandColors += CUniformMap::TileCount(m_width)) {
        const int rows = std::min(side, m_height - y);
        const std::span<std::uint32_t> pixels = std::span(band).first(width * static_cast<std::size_t>(rows));
        const auto planeRows = [&](Channel channel) {
            return image.PlaneOf(channel).subspan(image.IndexOf(0, y), pixels.size());
        };
        m_isOpaque &= InterleavePlanes(planeRows(Channel::Blue), planeRows(Channel::Green), planeRows(Channel::Red),
                                       planeRows(Channel::Alpha), pixels);
        FindTileColors(pixels, m_width, bandColors);
        for (int row = 0; row < rows; ++row)
            m_pixels.SetRow(y + row, pixels.subspan(width * static_cast<std::size_t>(row), width));
    }
    m_uniformAreas = CUniformMap(colors, m_width, m_height);
}

std::size_t CRenderSource::ByteCount() const {
    return sizeof(*this) + m_pixels.ByteCount() + m_uniformAreas.ByteCount();
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
        placed.Draw(row, spans, pixels);
        pixels.Pack(bytes, spans.all.begin, spans.all.end);
    }
}

} // namespace velmor
