#pragma once

namespace velmor {

struct CSize {
    int width = 0;
    int height = 0;

    bool operator==(const CSize&) const = default;
};

struct CPoint {
    int x = 0;
    int y = 0;

    bool operator==(const CPoint&) const = default;
};

/// Columns x to endX - 1, rows y to endY - 1.
struct CRect {
    int x = 0;
    int y = 0;
    int endX = 0;
    int endY = 0;

    bool IsEmpty() const { return endX <= x || endY <= y; }
    bool operator==(const CRect&) const = default;
};

/// The smallest rectangle that holds both; an empty one adds nothing.
CRect Union(const CRect& a, const CRect& b);
/// What both cover; empty (all zero) when they do not meet.
CRect Intersection(const CRect& a, const CRect& b);

} // namespace velmor
