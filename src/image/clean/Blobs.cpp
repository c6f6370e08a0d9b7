#include "image/clean/Blobs.h"

#include <algorithm>
#include <cmath>

namespace velmor {

CBlobs::CBlobs(const CDarkGrid& page) : m_size(page.Size()) {
    m_rowStarts.push_back(0);
    for (int y = 0; y < m_size.height; ++y) {
        FindRuns(page, y);
        m_rowStarts.push_back(m_runs.size());
        if (y > 0)
            JoinRow(static_cast<std::size_t>(y));
    }
    Number();
}

void CBlobs::FindRuns(const CDarkGrid& page, int y) {
    for (int x = 0; x < m_size.width;) {
        const bool isDark = page.IsDark(x, y);
        int end = x + 1;
        while (end < m_size.width && page.IsDark(end, y) == isDark)
            ++end;
        const int region = static_cast<int>(m_parents.size());
        m_parents.push_back(region);
        m_runs.push_back({x, end, region, isDark});
        x = end;
    }
}

int CBlobs::RootOf(int region) {
    auto parent = [this](int of) -> int& { return m_parents[static_cast<std::size_t>(of)]; };
    while (parent(region) != region) {
        parent(region) = parent(parent(region));
        region = parent(region);
    }
    return region;
}

// Joins the runs of a row with those below that they touch.
void CBlobs::JoinRow(std::size_t row) {
    std::size_t below = m_rowStarts[row - 1];
    for (std::size_t i = m_rowStarts[row]; i < m_rowStarts[row + 1]; ++i) {
        const CRun& run = m_runs[i];
        const int corner = run.isDark ? 1 : 0;
        while (m_runs[below].endX + corner <= run.x)
            ++below;
        for (std::size_t j = below; j < m_rowStarts[row] && m_runs[j].x < run.endX + corner; ++j)
            if (m_runs[j].isDark == run.isDark)
                m_parents[static_cast<std::size_t>(RootOf(run.region))] = RootOf(m_runs[j].region);
    }
}

void CBlobs::Number() {
    std::vector<CSums> sums;
    std::vector<int> numbers(m_parents.size(), -1);
    std::vector<bool> areDark;
    for (std::size_t y = 0; y + 1 < m_rowStarts.size(); ++y)
        for (std::size_t i = m_rowStarts[y]; i < m_rowStarts[y + 1]; ++i) {
            CRun& run = m_runs[i];
            int& number = numbers[static_cast<std::size_t>(RootOf(run.region))];
            if (number < 0) {
                number = static_cast<int>(sums.size());
                sums.emplace_back();
                areDark.push_back(run.isDark);
            }
            run.region = number;
            CSums& sum = sums[static_cast<std::size_t>(number)];
            const double n = run.endX - run.x;
            const double middle = (run.x + run.endX - 1) / 2.0;
            const double row = static_cast<double>(y);
            sum.n += n;
            sum.x += n * middle;
            sum.y += n * row;
            sum.xx += n * middle * middle + n * (n * n - 1) / 12;
            sum.xy += n * middle * row;
            sum.yy += n * row * row;
        }
    for (std::size_t i = 0; i < sums.size(); ++i) {
        m_blobs.push_back(BlobOf(sums[i]));
        m_blobs.back().number = static_cast<int>(i);
        m_blobs.back().isDark = areDark[i];
    }
    m_parents = {};
}

CBlob CBlobs::BlobOf(const CSums& sums) {
    constexpr double onePixel = 1.0 / 12; // a pixel's own extent
    CBlob blob;
    blob.area = sums.n;
    blob.x = sums.x / sums.n;
    blob.y = sums.y / sums.n;
    const double xx = sums.xx / sums.n - blob.x * blob.x + onePixel;
    const double yy = sums.yy / sums.n - blob.y * blob.y + onePixel;
    const double xy = sums.xy / sums.n - blob.x * blob.y;
    const double middle = (xx + yy) / 2;
    const double apart = std::hypot((xx - yy) / 2, xy);
    blob.length = std::sqrt(12 * (middle + apart));
    blob.width = std::sqrt(12 * std::max(middle - apart, onePixel));
    blob.angle = std::atan2(2 * xy, xx - yy) / 2;
    return blob;
}

int CBlobs::NumberAt(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_size.width || y >= m_size.height)
        return -1;
    const auto row = static_cast<std::size_t>(y);
    const auto begin = m_runs.begin() + static_cast<std::ptrdiff_t>(m_rowStarts[row]);
    const auto end = m_runs.begin() + static_cast<std::ptrdiff_t>(m_rowStarts[row + 1]);
    return std::prev(std::upper_bound(begin, end, x, [](int at, const CRun& run) { return at < run.x; }))->region;
}

} // namespace velmor
