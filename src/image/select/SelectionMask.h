#pragma once

#include "image/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// How a new selection goes with the one that is there.
enum class SelectMode { Replace, Add, Subtract };

/// Which pixels of an image are selected: a byte for each, 1 or 0, row 0 at the bottom. A value. Making one, or
/// changing it, may throw std::bad_alloc.
class CSelectionMask {
public:
    CSelectionMask() = default;
    /// Nothing of an image of that size.
    explicit CSelectionMask(CSize size);

    CSize Size() const { return m_size; }
    bool IsEmpty() const { return m_bounds.IsEmpty(); }
    /// The smallest rectangle around what is selected.
    const CRect& Bounds() const { return m_bounds; }
    std::int64_t Count() const;
    /// False beside the image.
    bool Has(int x, int y) const {
        return x >= 0 && y >= 0 && x < m_size.width && y < m_size.height &&
               Row(y)[static_cast<std::size_t>(x)] != 0;
    }
    std::span<const std::uint8_t> Row(int y) const {
        return std::span(m_bytes).subspan(StartOf(y), static_cast<std::size_t>(m_size.width));
    }

    /// Selects pixels x to endX - 1 of a row, or no longer does, as far as they are in the image. Whoever does is
    /// to call Measure() when the last row is done.
    void AddRun(int y, int x, int endX) { SetRun(y, x, endX, 1); }
    void RemoveRun(int y, int x, int endX) { SetRun(y, x, endX, 0); }
    void Measure();

    /// Both are of one size.
    void Combine(const CSelectionMask& other, SelectMode mode);
    void Invert();
    void SelectAll();

    bool operator==(const CSelectionMask&) const = default;

private:
    void SetRun(int y, int x, int endX, std::uint8_t value);
    std::size_t StartOf(int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_size.width);
    }

    CSize m_size;
    std::vector<std::uint8_t> m_bytes;
    CRect m_bounds;
};

} // namespace velmor
