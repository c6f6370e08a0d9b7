#include "image/render/PlacedImage.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr double coarseSteps = 128;

bool IsCoarse(double fraction) {
    return fraction * coarseSteps == std::floor(fraction * coarseSteps);
}

// From the source pixel of a column to that of the same column a few rows later: as far as memory takes to answer.
std::ptrdiff_t BytesAhead(const CSourceMapping& mapping) {
    constexpr int rows = 4;
    constexpr double most = 1 << 20; // further away than any image's neighbouring rows
    const CSourcePoint here = mapping.PointOf(0, 0);
    const CSourcePoint there = mapping.PointOf(0, rows);
    const double bytes = (std::round(there.x - here.x) + std::round(there.y - here.y) * CStripedPixels::rowPitch) *
                         sizeof(std::uint32_t);
    return std::abs(bytes) < most ? static_cast<std::ptrdiff_t>(bytes) : 0;
}

} // namespace

CPlacedImage::CPlacedImage(const CRenderSource& source, const CPlacement& placement, CSize destination)
    : m_source(&source),
      m_mapping(placement, {source.Width(), source.Height()}, destination),
      m_antialias(placement.antialias),
      m_runs(m_mapping),
      m_aheadBytes(BytesAhead(m_mapping)) {
    if (placement.transparency != 0)
        MakeAlphaTable(placement.transparency);
    if (!m_mapping.IsRotated())
        MakeColumnTable(std::max(destination.width, 0));
    else if (m_mapping.IsEstimable())
        MakeLaneSteps();
}

void CPlacedImage::MakeAlphaTable(double transparency) {
    // A percentage beyond its range, which only a damaged file can hold, counts as the end of the range; what is
    // not a number shows nothing.
    const double percent = transparency >= 0 ? std::min(transparency, 100.0) : (transparency < 0 ? 0.0 : 100.0);
    AlphaTable& alphas = m_alphas.emplace();
    for (int alpha = 0; alpha < 256; ++alpha)
        alphas[static_cast<std::size_t>(alpha)] = static_cast<std::int32_t>((100.0 - percent) * alpha * 0.01);
    m_isInvisible = alphas.back() == 0;
}

void CPlacedImage::MakeColumnTable(int columnCount) {
    CColumnTable& table = m_columns.emplace();
    const auto size = static_cast<std::size_t>(columnCount + CPixelRow::slack);
    table.x.assign(size, 0);
    table.byteOffset.assign(size, 0);
    table.fraction.assign(size, 0);
    table.roughFraction.assign(size, 0);
    table.isConsecutive = table.isDense = table.isIntegral = table.isCoarse = true;
    int previous = -1;
    bool first = true;
    for (int column = 0; column < columnCount; ++column) {
        const double x = m_mapping.PointOf(column, 0).x;
        if (!(x >= 0 && x < m_source->Width()))
            continue;
        const int truncated = static_cast<int>(x);
        const double fraction = x - truncated;
        const auto index = static_cast<std::size_t>(column);
        table.x[index] = truncated;
        table.byteOffset[index] = m_source->Pixels().OffsetOf(truncated, 0) * std::ptrdiff_t{sizeof(std::uint32_t)};
        table.fraction[index] = fraction;
        table.roughFraction[index] = static_cast<float>(fraction);
        table.isConsecutive &= first || truncated == previous + 1;
        table.isDense &= first || truncated == previous || truncated == previous + 1;
        table.isIntegral &= fraction == 0;
        table.isCoarse &= IsCoarse(fraction);
        previous = truncated;
        first = false;
    }
}

void CPlacedImage::MakeLaneSteps() {
    const CFixedLine x(0, m_mapping.StepX());
    const CFixedLine y(0, m_mapping.StepY());
    for (int lane = 0; lane < CPixelRow::slack; ++lane) {
        m_laneSteps.x[static_cast<std::size_t>(lane)] = x.At(lane);
        m_laneSteps.y[static_cast<std::size_t>(lane)] = y.At(lane);
    }
}

CRowSpans CPlacedImage::SpansOf(int row) const {
    if (m_isInvisible)
        return {};
    const CRect area = m_source->PaintedArea();
    const CColumnSpan all = m_mapping.ColumnsInside(row, area);
    if (all.IsEmpty())
        return {};
    CColumnSpan interpolated{all.end, all.end};
    if (m_antialias) {
        // The last column and row of an image have no neighbour to be interpolated with.
        const CRect inner{area.x, area.y, std::min(area.endX, m_source->Width() - 1),
                          std::min(area.endY, m_source->Height() - 1)};
        const CColumnSpan span = m_mapping.ColumnsInside(row, inner);
        if (!span.IsEmpty())
            interpolated = span;
    }
    return {all, interpolated};
}

void CPlacedImage::Draw(int row, const CRowSpans& spans, CPixelRow& pixels) const {
    if (spans.all.IsEmpty())
        return;
    CRowWork work{*m_source, m_mapping};
    work.laneSteps = &m_laneSteps;
    work.alphas = m_alphas ? &*m_alphas : nullptr;
    work.runs = m_runs;
    work.aheadBytes = m_aheadBytes;
    work.start = m_mapping.PointOf(0, row);
    work.row = row;
    CColumnSpan interpolated = spans.interpolated;
    if (m_columns) {
        const double y = work.start.y;
        work.columns = &*m_columns;
        work.sourceY = static_cast<int>(y);
        work.sourceFraction = y - work.sourceY;
        // Interpolation at whole coordinates gives the pixel itself.
        if (m_columns->isIntegral && work.sourceFraction == 0)
            interpolated = {spans.all.end, spans.all.end};
    }
    DrawNearest(work, {spans.all.begin, interpolated.begin}, pixels.Pixels());
    DrawInterpolated(work, interpolated, pixels.Pixels());
    DrawNearest(work, {interpolated.end, spans.all.end}, pixels.Pixels());
}

} // namespace velmor
