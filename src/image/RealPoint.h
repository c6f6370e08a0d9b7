#pragma once

namespace velmor {

/// A point between pixels. Of an image: x from its left edge, y from its bottom edge, so that the centre of pixel
/// (0, 0) is at (0.5, 0.5). Of a view: x from the left, y from the top.
struct CRealPoint {
    double x = 0;
    double y = 0;

    bool operator==(const CRealPoint&) const = default;
};

} // namespace velmor
