#include "app/demo/DemoColors.h"

namespace velmor::demo {

namespace {

CNamedColor Named(const char* name, ColorRef rgb, std::uint8_t alpha = 255) {
    // Written 0xRRGGBB below, the way painters note colours down.
    const auto byte = [&](int shift) { return static_cast<std::uint8_t>(rgb >> shift); };
    return {{.blue = byte(0), .green = byte(8), .red = byte(16), .alpha = alpha}, name};
}

} // namespace

std::vector<CNamedColor> FoxColors() {
    return {
        Named("Line", 0x3b2018),    Named("Fur", 0xf59a3e),         Named("Fur shade", 0xdb6c22),
        Named("Far fur", 0xc96420), Named("Cream", 0xfff3df),       Named("Cream shade", 0xf3d9b8),
        Named("Boot", 0x6b3f2c),    Named("Far boot", 0x542f22),    Named("Paw", 0x5a3326),
        Named("Scarf", 0x2fb3ab),   Named("Scarf shade", 0x1f8690), Named("Inner ear", 0x6a3a30),
        Named("Eye", 0x2c1a18),     Named("Glint", 0xffffff),       Named("Blush", 0xff9f7a),
        Named("Mouth", 0x8c2f35),   Named("Tongue", 0xf57f7d),
    };
}

std::vector<CNamedColor> ButterflyColors() {
    return {
        Named("Line", 0x43204f),     Named("Wing", 0xf6c9ff), Named("Wing edge", 0xc463dc),
        Named("Far wing", 0xb45fcf), Named("Dots", 0xfff6c8), Named("Body", 0x5b2f66),
    };
}

std::vector<CNamedColor> ShadowColors() {
    return {Named("Shade", 0x2f5a2e), Named("Air", 0x2f5a2e, 0)};
}

std::vector<CNamedColor> PlantColors() {
    return {
        Named("Line", 0x1d4a2a),        Named("Grass", 0x6dbb45),      Named("Deep grass", 0x2f8a45),
        Named("Petal", 0xffffff),       Named("Rose petal", 0xff8fa8), Named("Heart", 0xffd23f),
        Named("Heart shade", 0xf09a24), Named("Air", 0x4a8a4a, 0),
    };
}

std::vector<CNamedColor> CloudColors() {
    return {Named("Line", 0xffffff), Named("Air", 0xffffff, 0), Named("Cloud", 0xffffff),
            Named("Cloud shade", 0xd9e4f7)};
}

std::vector<CNamedColor> TitleColors() {
    return {Named("Line", 0x6b2d1c), Named("Sunlight", 0xfff2b0), Named("Ember", 0xf58b3c)};
}

CColor ColorNamed(const CPalette& palette, std::string_view name) {
    for (int i = 0; i < palette.Count(); ++i)
        if (palette.At(i).name == name)
            return palette.At(i).color;
    return {};
}

} // namespace velmor::demo
