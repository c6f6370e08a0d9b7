#include "image/DisplayBitmap.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr const char* color1Section = "CELVIEW_GRID1COLOR";
constexpr const char* color2Section = "CELVIEW_GRID2COLOR";
constexpr const char* color2RedSection = "GRID2COLOR";
constexpr const char* sizeSection = "CELVIEW_GRIDSIZE";

std::uint8_t ReadComponent(const CProfile& profile, const char* section, const char* key, int standard) {
    return static_cast<std::uint8_t>(std::clamp(profile.GetInt(section, key, standard), 0, 255));
}

} // namespace

CGridSettings ReadGridSettings(const CProfile& profile) {
    CGridSettings grid;
    const auto read = [&](const char* section, const char* key, std::uint8_t standard) {
        return ReadComponent(profile, section, key, standard);
    };
    grid.color1 = MakeColorRef(read(color1Section, "RED", RedOf(grid.color1)),
                               read(color1Section, "GREEN", GreenOf(grid.color1)),
                               read(color1Section, "BLUE", BlueOf(grid.color1)));
    grid.color2 = MakeColorRef(read(color2RedSection, "RED", RedOf(grid.color2)),
                               read(color2Section, "GREEN", GreenOf(grid.color2)),
                               read(color2Section, "BLUE", BlueOf(grid.color2)));
    grid.size = std::max(1, profile.GetInt(sizeSection, "GRIDSIZE", grid.size));
    return grid;
}

void WriteGridSettings(CProfile& profile, const CGridSettings& grid) {
    const auto write = [&profile](const char* section, ColorRef color) {
        static_cast<void>(profile.WriteInt(section, "RED", RedOf(color)));
        static_cast<void>(profile.WriteInt(section, "GREEN", GreenOf(color)));
        static_cast<void>(profile.WriteInt(section, "BLUE", BlueOf(color)));
    };
    write(color1Section, grid.color1);
    write(color2Section, grid.color2);
    static_cast<void>(profile.WriteInt(sizeSection, "GRIDSIZE", grid.size));
}

} // namespace velmor
