#include "image/clean/DarkGrid.h"

#include "image/clean/NearestPixels.h"
#include "image/import/LineThreshold.h"

#include <algorithm>
#include <cstdlib>

namespace velmor {

namespace {

int PartsOf(int length, int part) {
    return (length + part - 1) / part;
}

} // namespace

CDarkGrid::CDarkGrid(const CCelImg& image, int threshold)
    : m_scale(std::max(1, PartsOf(std::max(image.Width(), image.Height()), longestSide))) {
    m_size = {PartsOf(image.Width(), m_scale), PartsOf(image.Height(), m_scale)};
    m_dark.assign(static_cast<std::size_t>(m_size.width) * static_cast<std::size_t>(m_size.height), 0);
    const bool isCel = image.GetLoadState() == LoadState::Cel;
    const CLineThreshold rule(threshold);
    const auto isDark = [&](int x, int y) {
        if (isCel)
            return image.IsLine(x, y);
        const CColor color = image.ColorAt(x, y);
        return color.alpha != 0 && rule.IsLine(color.red, color.green, color.blue);
    };
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x)
            if (isDark(x, y))
                m_dark[IndexOf(x / m_scale, y / m_scale)] = 1;
}

void CDarkGrid::Grow(int pixels) {
    if (pixels == 0)
        return;
    const std::uint8_t growing = pixels > 0 ? 1 : 0;
    const CNearestPixels nearest(m_size, std::abs(pixels), [&](int y, std::span<std::uint8_t> row) {
        std::transform(&m_dark[IndexOf(0, y)], &m_dark[IndexOf(0, y)] + row.size(), row.begin(),
                       [growing](std::uint8_t dark) { return static_cast<std::uint8_t>(dark == growing); });
    });
    for (int y = 0; y < m_size.height; ++y)
        for (int x = 0; x < m_size.width; ++x)
            if (nearest.Find({x, y}))
                m_dark[IndexOf(x, y)] = growing;
}

} // namespace velmor
