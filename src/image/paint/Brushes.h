#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace velmor {

constexpr int penCount = 4;
constexpr int penReach = 3;
constexpr int penSide = 2 * penReach + 1;

/// Ink ('#') of a pen around its centre; the first row is dy = -3, below the centre on the screen. The gaps in the
/// two larger pens are theirs.
using CPenMask = std::array<std::string_view, penSide>;
constexpr std::array<CPenMask, penCount> penMasks{{
    {".......", ".......", ".......", "...#...", ".......", ".......", "......."},
    {".......", ".......", ".......", "..###..", "...#...", ".......", "......."},
    {".......", "...#...", "..#.#..", ".#####.", "...##..", "...#...", "......."},
    {".......", ".#####.", ".##.##.", "#######", ".#.###.", ".#####.", "...#..."},
}};

constexpr int brushCount = 6;
constexpr int brushSide = 42;
constexpr int brushReach = 21; ///< the maps go from -21 to 20 both ways, so the largest brush lacks its last column

/// A round brush around its centre: row i is dy = i - brushReach, column i likewise.
struct CBrush {
    /// Columns of a row that the hard disc covers, as dx; none when both are 0.
    struct Span {
        int begin = 0;
        int end = 0;
    };
    std::array<Span, brushSide> hard;
    std::array<std::array<std::uint8_t, brushSide>, brushSide> soft{}; ///< 255 in the core, 0 at the edge
};

/// `brush` from 0 to brushCount - 1.
const CBrush& BrushOf(int brush);

} // namespace velmor
