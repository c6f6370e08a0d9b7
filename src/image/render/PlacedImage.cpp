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

/// The columns that are open, up to a whole group of them, as far as there are more: groups are drawn faster than
/// pixels, and what is hidden may be drawn.
CColumnSpan Within(const CColumnSpan& open, const CColumnSpan& columns) {
    static_assert(CPixelRow::slack <= CStripCover::blockColumns, "open columns would be drawn twice");
    const int begin = std::max(open.begin, columns.begin);
    const int count = std::min(open.end, columns.end) - begin;
    if (count <= 0)
        return {};
    const int groups = (count + CPixelRow::slack - 1) / CPixelRow::slack;
    return {begin, std::min(begin + groups * CPixelRow::slack, columns.end)};
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
        const CColumnSpan span = inner == area ? all : m_mapping.ColumnsInside(row, inner);
        if (!span.IsEmpty())
            interpolated = span;
    }
    return {all, interpolated};
}

CRowWork CPlacedImage::WorkOf(int row) const {
    CRowWork work{*m_source, m_mapping};
    work.laneSteps = &m_laneSteps;
    work.alphas = m_alphas ? &*m_alphas : nullptr;
    work.runs = m_runs;
    work.aheadBytes = m_aheadBytes;
    work.start = m_mapping.PointOf(0, row);
    work.row = row;
    if (m_columns) {
        work.columns = &*m_columns;
        work.sourceY = static_cast<int>(work.start.y);
        work.sourceFraction = work.start.y - work.sourceY;
    }
    return work;
}

void CPlacedImage::Draw(int row, const CRowSpans& spans, std::span<const CColumnSpan> open,
                        CPixelRow& pixels) const {
    if (spans.all.IsEmpty() || open.empty())
        return;
    const CRowWork work = WorkOf(row);
    CColumnSpan interpolated = spans.interpolated;
    // Interpolation at whole coordinates gives the pixel itself.
    if (m_columns && m_columns->isIntegral && work.sourceFraction == 0)
        interpolated = {spans.all.end, spans.all.end};
    for (const CColumnSpan& span : open) {
        DrawNearest(work, Within(span, {spans.all.begin, interpolated.begin}), pixels.Pixels());
        DrawInterpolated(work, Within(span, interpolated), pixels.Pixels());
        DrawNearest(work, Within(span, {interpolated.end, spans.all.end}), pixels.Pixels());
    }
}

void CPlacedImage::Cover(int firstRow, int rowCount, CStripCover& cover) const {
    const COpaqueMap& opaque = m_source->OpaqueAreas();
    if (opaque.IsEmpty() || m_alphas || !m_mapping.IsEstimable())
        return;
    constexpr double halfColumns = (CStripCover::blockColumns - 1) / 2.0;
    const double halfRows = (rowCount - 1) / 2.0;
    const CSourcePoint start = m_mapping.PointOf(0, firstRow);
    const CSourcePoint above = m_mapping.PointOf(0, firstRow + 1);
    const double acrossX = above.x - start.x;
    const double acrossY = above.y - start.y;
    // Beside the farthest point of a block there is the pixel that it is interpolated with; another one is for what
    // is rounded here.
    constexpr double beside = 2;
    const double fromMiddle =
        beside + std::max(halfColumns * std::abs(m_mapping.StepX()) + halfRows * std::abs(acrossX),
                          halfColumns * std::abs(m_mapping.StepY()) + halfRows * std::abs(acrossY));
    const CColumnSpan inside = m_mapping.ColumnsInside(firstRow + rowCount / 2, m_source->PaintedArea());
    const int endBlock = std::min(inside.end / CStripCover::blockColumns, cover.BlockCount());
    for (int block = inside.begin / CStripCover::blockColumns; block < endBlock; ++block) {
        const double middle = block * CStripCover::blockColumns + halfColumns;
        const double x = start.x + middle * m_mapping.StepX() + halfRows * acrossX;
        const double y = start.y + middle * m_mapping.StepY() + halfRows * acrossY;
        const bool isInside = x >= 0 && x < m_source->Width() && y >= 0 && y < m_source->Height();
        if (isInside && opaque.ReachAt(static_cast<int>(x), static_cast<int>(y)) >= fromMiddle)
            cover.Cover(block);
    }
}

} // namespace velmor
