#pragma once

namespace velmor {

/// Which part of a cel is meant: its lines (pixels with a line bit, and their colours), its paint (all other
/// pixels), or both. A picture has no lines: there all of it is meant, whatever is chosen.
enum class SelectWhat { Line = 0, Paint = 1, Both = 2 };

constexpr bool HoldsLines(SelectWhat what) {
    return what != SelectWhat::Paint;
}
constexpr bool HoldsPaint(SelectWhat what) {
    return what != SelectWhat::Line;
}

} // namespace velmor
