#include "image/paint/LineDistance.h"

#include "platform/process/Parallel.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int rowsInPart = 32;

int ReachOf(int limit) {
    int reach = 1;
    while (reach * reach <= limit)
        ++reach;
    return reach;
}

// row = min(row, beside + 1)
void StepOn(std::uint8_t* row, const std::uint8_t* beside, int width) {
    for (int x = 0; x < width; ++x)
        row[x] = std::min<std::uint8_t>(row[x], static_cast<std::uint8_t>(beside[x] + 1));
}

// out = min(out, from + square)
void Lower(std::int16_t* out, const std::int16_t* from, int square, int width) {
    for (int x = 0; x < width; ++x)
        out[x] = std::min<std::int16_t>(out[x], static_cast<std::int16_t>(from[x] + square));
}

} // namespace

CLineDistance::CLineDistance(const CMaskPlane& lines, const CRect& window, int limit)
    : m_width(window.endX - window.x),
      m_height(window.endY - window.y),
      m_reach(ReachOf(limit)),
      m_rowLength(static_cast<std::size_t>(m_width)),
      m_steps(m_rowLength * static_cast<std::size_t>(m_height), static_cast<std::uint8_t>(m_reach)),
      m_squares(m_steps.size()) {
    AlongColumns(lines, window);
    const bool lineAtLeft = window.x == 0;
    const bool lineAtRight = window.endX == lines.Width();
    std::vector<std::vector<std::int16_t>> padded(static_cast<std::size_t>((m_height - 1) / rowsInPart + 1));
    for (std::vector<std::int16_t>& row : padded)
        row.resize(m_rowLength + 2 * static_cast<std::size_t>(m_reach));
    ParallelFor(static_cast<int>(padded.size()), 1, [&](int begin, int end) {
        for (int y = begin * rowsInPart; y < std::min(end * rowsInPart, m_height); ++y)
            AlongRow(y, lineAtLeft, lineAtRight, padded[static_cast<std::size_t>(begin)]);
    });
    m_steps = {};
}

void CLineDistance::AlongColumns(const CMaskPlane& lines, const CRect& window) {
    const auto row = [this](int y) { return &m_steps[static_cast<std::size_t>(y) * m_rowLength]; };
    if (window.y == 0)
        std::fill_n(row(0), m_width, std::uint8_t{1});
    if (window.endY == lines.Height())
        std::fill_n(row(m_height - 1), m_width, std::uint8_t{1});
    for (int y = 0; y < m_height; ++y) {
        if (y > 0)
            StepOn(row(y), row(y - 1), m_width);
        lines.ForEachRun(window.y + y, window.x, window.endX, true, [&](int x, int endX) {
            std::fill(row(y) + (x - window.x), row(y) + (endX - window.x), std::uint8_t{0});
        });
    }
    for (int y = m_height - 2; y >= 0; --y)
        StepOn(row(y), row(y + 1), m_width);
}

void CLineDistance::AlongRow(int y, bool lineAtLeft, bool lineAtRight, std::vector<std::int16_t>& padded) {
    const std::uint8_t* const steps = &m_steps[static_cast<std::size_t>(y) * m_rowLength];
    std::int16_t* const out = &m_squares[static_cast<std::size_t>(y) * m_rowLength];
    const auto farAway = static_cast<std::int16_t>(m_reach * m_reach);
    std::int16_t* const middle = padded.data() + m_reach;
    std::fill(padded.data(), middle, lineAtLeft ? std::int16_t{0} : farAway);
    std::fill_n(middle + m_width, m_reach, lineAtRight ? std::int16_t{0} : farAway);
    for (int x = 0; x < m_width; ++x)
        out[x] = middle[x] = static_cast<std::int16_t>(steps[x] * steps[x]);
    for (int d = 1; d < m_reach; ++d) {
        Lower(out, middle + d, d * d, m_width);
        Lower(out, middle - d, d * d, m_width);
    }
}

} // namespace velmor
