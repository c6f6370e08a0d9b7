#pragma once

#include <QPalette>

namespace velmor {

/// Whether light text stands on a dark ground.
inline bool IsDark(const QPalette& palette) {
    constexpr int middle = 128;
    return palette.color(QPalette::Window).lightness() < middle;
}

} // namespace velmor
