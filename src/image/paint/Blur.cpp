#include "image/paint/Filters.h"

#include "platform/process/Parallel.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <vector>

namespace velmor {

namespace {

/// Pixels of [0, size) that differ from `at` by at most `radius`.
int CountWithin(int at, int radius, int size) {
    return std::min(at + radius, size - 1) - std::max(at - radius, 0) + 1;
}

/// The most pixels that a box may have for single precision: the mean is truncate((sum + 1/2) x (1 / count)), off
/// by less than 255.5 x 2^-23 before truncation, while sum + 1/2 over count is at least 1/2 over count away from
/// any whole number.
constexpr std::int64_t mostPixelsInSingle = 12000;
/// Columns whose sum still fits 16 bits.
constexpr int mostColumnsInWord = 257;

/// Blurs planes of one size by running sums, along the rows and then up the columns. RowSum holds the sum over one
/// row of a box; Real the sum over all of it, exactly.
template<class RowSum, class Real>
class CBoxBlur {
public:
    CBoxBlur(CSize size, int radiusX, int radiusY)
        : m_size(size),
          m_radiusX(radiusX),
          m_radiusY(radiusY),
          m_columns(static_cast<std::size_t>(size.width)),
          m_ringRows(static_cast<std::size_t>(std::min(2 * radiusY + 2, size.height))),
          m_padded(m_columns + 2 * static_cast<std::size_t>(radiusX) + 1),
          m_ring(m_ringRows * m_columns),
          m_noRow(m_columns),
          m_sums(m_columns),
          m_factors(m_columns) {}

    void Run(std::uint8_t* plane) {
        std::ranges::fill(m_sums, Real{0});
        for (int y = 0; y < m_radiusY; ++y)
            AddToSums(SumAlongRow(plane, y));
        int countY = 0;
        for (int y = 0; y < m_size.height; ++y) {
            const bool enters = y + m_radiusY < m_size.height;
            const RowSum* const entering = enters ? SumAlongRow(plane, y + m_radiusY) : m_noRow.data();
            const RowSum* const leaving = y > m_radiusY ? RingRow(y - m_radiusY - 1) : m_noRow.data();
            if (const int count = CountWithin(y, m_radiusY, m_size.height); count != countY)
                SetFactors(countY = count);
            WriteMeans(entering, leaving, plane + static_cast<std::size_t>(y) * m_columns);
        }
    }

private:
    RowSum* RingRow(int y) { return m_ring.data() + static_cast<std::size_t>(y) % m_ringRows * m_columns; }

    /// For each column the sum of row y over the box's width.
    const RowSum* SumAlongRow(const std::uint8_t* plane, int y) {
        std::uint8_t* const first = m_padded.data() + m_radiusX + 1;
        std::copy_n(plane + static_cast<std::size_t>(y) * m_columns, m_columns, first);
        const std::uint8_t* const leaving = m_padded.data();
        const std::uint8_t* const entering = first + m_radiusX;
        RowSum* const sums = RingRow(y);
        int sum = std::accumulate(first, first + m_radiusX, 0);
        for (std::size_t x = 0; x < m_columns; ++x) {
            sum += entering[x] - leaving[x];
            sums[x] = static_cast<RowSum>(sum);
        }
        return sums;
    }

    void AddToSums(const RowSum* row) {
        for (std::size_t x = 0; x < m_columns; ++x)
            m_sums[x] += static_cast<Real>(row[x]);
    }

    void SetFactors(int countY) {
        for (int x = 0; x < m_size.width; ++x) {
            const Real countX = static_cast<Real>(CountWithin(x, m_radiusX, m_size.width));
            m_factors[static_cast<std::size_t>(x)] = Real{1} / (countX * static_cast<Real>(countY));
        }
    }

    void WriteMeans(const RowSum* entering, const RowSum* leaving, std::uint8_t* row) {
        Real* const sums = m_sums.data();
        const Real* const factors = m_factors.data();
        for (std::size_t x = 0; x < m_columns; ++x) {
            sums[x] += static_cast<Real>(static_cast<int>(entering[x]) - static_cast<int>(leaving[x]));
            row[x] = static_cast<std::uint8_t>(static_cast<int>((sums[x] + Real{0.5}) * factors[x]));
        }
    }

    CSize m_size;
    int m_radiusX;
    int m_radiusY;
    std::size_t m_columns;
    std::size_t m_ringRows;
    std::vector<std::uint8_t> m_padded; ///< a row between zeros as wide as the box reaches
    std::vector<RowSum> m_ring;         ///< row y at y mod m_ringRows: those in the box and the one that leaves it
    std::vector<RowSum> m_noRow;
    std::vector<Real> m_sums;
    std::vector<Real> m_factors; ///< 1 / pixels in the box
};

bool IsUniform(std::span<const std::uint8_t> plane) {
    return std::memcmp(plane.data(), plane.data() + 1, plane.size() - 1) == 0;
}

template<class RowSum, class Real>
void BlurPlanes(CCelImg& image, int radiusX, int radiusY) {
    std::vector<std::uint8_t*> planes;
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
        if (const auto plane = image.PlaneOf(channel); !IsUniform(plane))
            planes.push_back(plane.data());
    const CBoxBlur<RowSum, Real> pattern({image.Width(), image.Height()}, radiusX, radiusY);
    std::vector blurs(planes.size(), pattern);
    ParallelFor(static_cast<int>(planes.size()), 1, [&](int begin, int end) {
        for (auto i = static_cast<std::size_t>(begin); i < static_cast<std::size_t>(end); ++i)
            blurs[i].Run(planes[i]);
    });
}

} // namespace

CPaintResult Blur(CCelImg& image, int horizontalRadius, int verticalRadius) {
    if (image.GetLoadState() == LoadState::Nothing)
        return {CStatus::Failure("Internal Error : No Cel data at CCelImg::Blur"), {}};
    const int radiusX = std::clamp(horizontalRadius, 0, image.Width() - 1);
    const int radiusY = std::clamp(verticalRadius, 0, image.Height() - 1);
    const int mostColumns = std::min(2 * radiusX + 1, image.Width());
    const int mostRows = std::min(2 * radiusY + 1, image.Height());
    if (mostColumns == 1 && mostRows == 1)
        return {};
    return PaintWithMemory([&] {
        if (mostColumns <= mostColumnsInWord && std::int64_t{mostColumns} * mostRows <= mostPixelsInSingle)
            BlurPlanes<std::uint16_t, float>(image, radiusX, radiusY);
        else
            BlurPlanes<std::int32_t, double>(image, radiusX, radiusY);
        return CRect{0, 0, image.Width(), image.Height()};
    });
}

} // namespace velmor
