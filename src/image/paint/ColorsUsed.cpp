#include "image/paint/ColorsUsed.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <unordered_map>
#include <utility>

namespace velmor {

namespace {

using ColorCounts = std::vector<std::pair<std::uint32_t, std::int64_t>>;

std::uint32_t Packed(CColor color) {
    return static_cast<std::uint32_t>(color.alpha) << 24 | MakeColorRef(color.red, color.green, color.blue);
}

CColor Unpacked(std::uint32_t packed) {
    return {BlueOf(packed), GreenOf(packed), RedOf(packed), static_cast<std::uint8_t>(packed >> 24)};
}

// Run by run: drawings have few, and pictures are looked through once.
ColorCounts CountColors(const CCelImg& image) {
    std::unordered_map<std::uint32_t, std::int64_t> counts;
    std::uint32_t current = 0;
    std::int64_t run = 0;
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            const std::uint32_t color = Packed(image.ColorAt(x, y));
            if (color != current && run > 0)
                counts[current] += std::exchange(run, 0);
            current = color;
            ++run;
        }
    if (run > 0)
        counts[current] += run;
    return {counts.begin(), counts.end()};
}

std::string NameOf(CColor color, const CPalette& palette) {
    for (int i = 0; i < palette.Count(); ++i)
        if (palette.At(i).color == color)
            return palette.At(i).name;
    std::array<char, 8> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "#%02x%02x%02x", color.red, color.green, color.blue));
    return text.data();
}

} // namespace

std::vector<CNamedColor> NamedColorsOf(const CCelImg& image, const CPalette& palette, std::size_t most) {
    ColorCounts counts = CountColors(image);
    std::ranges::sort(counts, [](const auto& a, const auto& b) {
        return a.second != b.second ? a.second > b.second : a.first < b.first;
    });
    counts.resize(std::min(counts.size(), most));
    std::vector<CNamedColor> colors;
    for (const auto& [packed, count] : counts)
        colors.push_back({Unpacked(packed), NameOf(Unpacked(packed), palette)});
    return colors;
}

} // namespace velmor
