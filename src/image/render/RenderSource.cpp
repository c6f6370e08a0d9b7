#include "image/render/RenderSource.h"

#include "image/paint/Filters.h"
#include "image/render/PixelRow.h"
#include "image/render/PlacedImage.h"

#include <algorithm>
#include <cmath>
#include <utility>

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

/// The rows of planes in memory.
class CPlaneRows : public IImageRows {
public:
    explicit CPlaneRows(const CCelImg& image) : m_image(image) {}

    CSize Size() const override { return {m_image.Width(), m_image.Height()}; }
    LoadState Kind() const override { return m_image.GetLoadState(); }
    bool FindVisible(CVisibleArea& area) override {
        for (int y = 0; y < m_image.Height(); ++y)
            area.AddRow(y, m_image.PlaneOf(Channel::Alpha).data() + m_image.IndexOf(0, y));
        return true;
    }
    bool Read(int y, int, int, CChannelRows& row) override {
        for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
            row[static_cast<std::size_t>(channel)] = m_image.PlaneOf(channel).data() + m_image.IndexOf(0, y);
        return true;
    }

private:
    const CCelImg& m_image;
};

CImagePacker Packed(const CCelImg& image) {
    CPlaneRows rows(image);
    CImagePacker packer;
    static_cast<void>(packer.Pack(rows, std::nullopt)); // rows in memory can be read
    return packer;
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
        *this = CRenderSource(Packed(image));
    else
        *this = CRenderSource(Packed(PreparedCopy(image, preparation)));
}

CRenderSource::CRenderSource(CCelImg&& image, const CRenderPreparation& preparation) {
    CCelImg own = std::move(image);
    image = CCelImg{};
    Prepare(own, preparation);
    *this = CRenderSource(Packed(own));
}

CRenderSource::CRenderSource(CImagePacker&& packed)
    : m_width(packed.size.width),
      m_height(packed.size.height),
      m_kind(packed.kind),
      m_isOpaque(packed.isOpaque),
      m_paintedArea(packed.paintedArea),
      m_pixels(std::move(packed.pixels)),
      m_uniformAreas(std::move(packed.uniformAreas)),
      m_opaqueAreas(std::move(packed.opaqueAreas)) {}

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
