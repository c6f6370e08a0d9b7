#include "image/select/SelectionMask.h"

#include <algorithm>

namespace velmor {

CSelectionMask::CSelectionMask(CSize size)
    : m_size(size), m_bytes(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height)) {}

std::int64_t CSelectionMask::Count() const {
    return std::ranges::count(m_bytes, 1);
}

void CSelectionMask::SetRun(int y, int x, int endX, std::uint8_t value) {
    x = std::max(x, 0);
    endX = std::min(endX, m_size.width);
    if (y >= 0 && y < m_size.height && x < endX)
        std::fill_n(m_bytes.data() + StartOf(y) + x, endX - x, value);
}

void CSelectionMask::Measure() {
    m_bounds = {};
    for (int y = 0; y < m_size.height; ++y) {
        const auto row = Row(y);
        const auto first = std::ranges::find(row, 1);
        if (first == row.end())
            continue;
        int last = m_size.width - 1;
        while (row[static_cast<std::size_t>(last)] == 0)
            --last;
        m_bounds = Union(m_bounds, {static_cast<int>(first - row.begin()), y, last + 1, y + 1});
    }
}

void CSelectionMask::Combine(const CSelectionMask& other, SelectMode mode) {
    if (mode == SelectMode::Replace) {
        *this = other;
        return;
    }
    const auto combine = [&](auto operation) {
        std::ranges::transform(
            m_bytes, other.m_bytes, m_bytes.begin(),
            [operation](std::uint8_t a, std::uint8_t b) { return static_cast<std::uint8_t>(operation(a, b)); });
    };
    if (mode == SelectMode::Add)
        combine([](int a, int b) { return a | b; });
    else
        combine([](int a, int b) { return a & ~b; });
    Measure();
}

void CSelectionMask::Invert() {
    for (std::uint8_t& byte : m_bytes)
        byte ^= 1;
    Measure();
}

void CSelectionMask::SelectAll() {
    std::ranges::fill(m_bytes, std::uint8_t{1});
    Measure();
}

} // namespace velmor
