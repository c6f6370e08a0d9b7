#include "app/demo/Landscape.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velmor::demo {

namespace {

struct CTone {
    double red, green, blue; ///< 0 to 255
};

CTone Mixed(CTone a, CTone b, double t) {
    const double share = std::clamp(t, 0.0, 1.0);
    return {std::lerp(a.red, b.red, share), std::lerp(a.green, b.green, share), std::lerp(a.blue, b.blue, share)};
}

double SmoothStep(double from, double to, double value) {
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

/// A fixed pattern without visible order, 0 to 1.
double Grain(int x, int y) {
    auto n = static_cast<std::uint32_t>(x) * 374761393U + static_cast<std::uint32_t>(y) * 668265263U;
    n = (n ^ (n >> 13)) * 1274126177U;
    return ((n ^ (n >> 16)) & 0xffff) / 65535.0;
}

/// Grain at the scale of `size` pixels, running softly from place to place.
double SoftGrain(double x, double y, double size) {
    const double column = std::floor(x / size);
    const double row = std::floor(y / size);
    const double tx = SmoothStep(0, 1, x / size - column);
    const double ty = SmoothStep(0, 1, y / size - row);
    const auto at = [&](int dx, int dy) {
        return Grain(static_cast<int>(column) + dx, static_cast<int>(row) + dy);
    };
    return std::lerp(std::lerp(at(0, 0), at(1, 0), tx), std::lerp(at(0, 1), at(1, 1), tx), ty);
}

/// A range of hills: the sum of two waves over a base line.
struct CHill {
    double base, swell, length, shift, ripple;
    CTone crest, foot;
    double depth; ///< rows over which crest turns into foot
};

constexpr std::array<CHill, 4> hills = {{
    {330, 34, 520, 40, 9, {176, 208, 214}, {196, 222, 206}, 110},
    {280, 40, 640, 330, 12, {140, 194, 158}, {176, 214, 150}, 130},
    {232, 30, 460, 700, 8, {122, 188, 104}, {158, 210, 112}, 110},
    {196, 16, 900, 120, 5, {138, 204, 88}, {104, 178, 74}, 190},
}};

double CrestOf(const CHill& hill, double x) {
    const double phase = (x + hill.shift) / hill.length * 6.2831853;
    return hill.base + hill.swell * std::sin(phase) + hill.ripple * std::sin(phase * 2.7 + 1);
}

/// A round tree standing on a range of hills.
struct CTree {
    double x, size;
    std::size_t hill;
};

constexpr std::array<CTree, 14> trees = {{
    {60, 30, 1},
    {150, 22, 1},
    {470, 20, 1},
    {520, 27, 1},
    {830, 24, 1},
    {890, 32, 1},
    {1290, 26, 1},
    {1470, 30, 1},
    {30, 62, 2},
    {395, 50, 2},
    {700, 40, 2},
    {1060, 66, 2},
    {1140, 46, 2},
    {1455, 70, 2},
}};

struct CPuff {
    double x, y, radius; ///< in sizes of the tree, from its foot
};
constexpr std::array<CPuff, 6> crown = {{{0, 1.5, 0.72},
                                         {-0.55, 1.25, 0.52},
                                         {0.55, 1.3, 0.5},
                                         {-0.25, 2.0, 0.5},
                                         {0.3, 1.95, 0.48},
                                         {0.02, 1.1, 0.5}}};

constexpr double sunX = 690;
constexpr double sunY = 470;

class CPainter {
public:
    CPainting Paint() {
        PaintSky();
        for (std::size_t range = 0; range < hills.size(); ++range) {
            PaintHill(hills[range], range + 1 == hills.size());
            for (const CTree& tree : trees)
                if (tree.hill == range)
                    PaintTree(tree);
        }
        PaintPath();
        PaintTufts();
        return Finished();
    }

private:
    CTone& At(int x, int y) { return m_tones[static_cast<std::size_t>(y * landscapeSize.width + x)]; }

    /// Lays `tone` over a pixel, thin or thick (0 to 1).
    void Glaze(int x, int y, CTone tone, double thickness) {
        if (x >= 0 && x < landscapeSize.width && y >= 0 && y < landscapeSize.height && thickness > 0)
            At(x, y) = Mixed(At(x, y), tone, thickness);
    }

    template<class Visit>
    static void EachPixel(const Visit& visit) {
        for (int y = 0; y < landscapeSize.height; ++y)
            for (int x = 0; x < landscapeSize.width; ++x)
                visit(x, y);
    }

    void PaintSky() {
        constexpr CTone zenith{104, 178, 226};
        constexpr CTone middle{178, 220, 236};
        constexpr CTone horizon{255, 236, 204};
        EachPixel([&](int x, int y) {
            CTone tone = Mixed(horizon, middle, SmoothStep(250, 460, y));
            tone = Mixed(tone, zenith, SmoothStep(400, 700, y));
            const double away = std::hypot(x - sunX, y - sunY);
            tone = Mixed(tone, {255, 232, 180}, 0.75 * std::exp(-away / 130));
            tone = Mixed(tone, {255, 250, 224}, 1 - SmoothStep(44, 48, away));
            // Veils of high cloud.
            const double veil = SoftGrain(x + 0.4 * y, y * 5.0, 190) * 0.6 + SoftGrain(x, y * 4.0, 70) * 0.4;
            At(x, y) = Mixed(tone, {255, 250, 240}, 0.45 * SmoothStep(0.5, 0.85, veil) * SmoothStep(330, 480, y));
        });
    }

    void PaintHill(const CHill& hill, bool meadow) {
        EachPixel([&](int x, int y) {
            const double below = CrestOf(hill, x) - y;
            if (below < -1)
                return;
            CTone tone = Mixed(hill.crest, hill.foot, below / hill.depth);
            tone =
                Mixed(tone, {255, 240, 180}, 0.35 * std::exp(-std::max(below, 0.0) / 7)); // light along the crest
            const double patch = SoftGrain(x, y * 3.0, meadow ? 60 : 40) - 0.5;
            tone = Mixed(tone, patch > 0 ? CTone{232, 236, 140} : CTone{50, 120, 80}, std::abs(patch) * 0.28);
            Glaze(x, y, tone, std::clamp(below + 0.5, 0.0, 1.0));
        });
    }

    void PaintDisc(double centreX, double centreY, double radius, CTone tone, double thickness, double softness) {
        const int reach = static_cast<int>(radius + softness) + 2;
        const int middleX = static_cast<int>(centreX);
        const int middleY = static_cast<int>(centreY);
        for (int y = middleY - reach; y <= middleY + reach; ++y)
            for (int x = middleX - reach; x <= middleX + reach; ++x) {
                const double away = std::hypot(x - centreX, y - centreY);
                Glaze(x, y, tone, thickness * (1 - SmoothStep(radius - softness, radius + softness, away)));
            }
    }

    void PaintTree(const CTree& tree) {
        const double far = tree.hill == 1 ? 0.45 : 0.1; // haze
        const auto hazy = [&](CTone tone) { return Mixed(tone, {190, 216, 190}, far); };
        const double foot = CrestOf(hills[tree.hill], tree.x) - 4;
        for (int i = -6; i <= 6; ++i)
            PaintDisc(tree.x + i * tree.size * 0.14, foot - 1, tree.size * 0.1, {70, 130, 70}, 0.16,
                      tree.size * 0.1);
        for (double rise = 0; rise < tree.size; rise += 1)
            PaintDisc(tree.x, foot + rise, tree.size * 0.11, hazy({112, 80, 62}), 1, 1);
        // The sun stands to one side of the tree: shade first, light on top of it.
        const double lit = tree.x < sunX ? 1 : -1;
        struct CCoat {
            double shift, shrink;
            CTone tone;
        };
        for (const CCoat& coat : {CCoat{0, 1, {58, 124, 78}}, CCoat{0.1, 0.84, {88, 156, 82}},
                                  CCoat{0.2, 0.58, {134, 190, 92}}, CCoat{0.27, 0.3, {190, 220, 118}}})
            for (const CPuff& puff : crown)
                PaintDisc(tree.x + (puff.x + lit * coat.shift) * tree.size,
                          foot + (puff.y + coat.shift) * tree.size, puff.radius * tree.size * coat.shrink,
                          hazy(coat.tone), coat.shift == 0 ? 1 : 0.75,
                          std::max(1.0, tree.size * 0.12 * coat.shift * 5));
    }

    /// Where the fox walks: a sandy band with soft, uneven edges.
    void PaintPath() {
        EachPixel([&](int x, int y) {
            const double wave =
                6 * std::sin(x / 130.0) + 5 * std::sin(x / 47.0 + 2) + 7 * (SoftGrain(x, y, 14) - 0.5);
            const double inside = std::min(y - (62 + wave * 0.7), 122 + wave - y);
            if (inside < -6)
                return;
            CTone tone = Mixed({238, 212, 160}, {222, 188, 132}, (122.0 - y) / 60);
            tone = Mixed(tone, {196, 156, 104}, 0.5 * SmoothStep(0.62, 0.9, SoftGrain(x, y * 2.2, 9)));
            tone = Mixed({120, 168, 80}, tone, SmoothStep(-4, 5, inside));
            Glaze(x, y, tone, SmoothStep(-6, 0, inside));
        });
    }

    /// Short strokes of grass and dots of far flowers on the meadow.
    void PaintTufts() {
        for (int i = 0; i < 900; ++i) {
            const int x = static_cast<int>(Grain(i, 11) * landscapeSize.width);
            const int y = static_cast<int>(Grain(i, 29) * 178);
            if (y > 52 && y < 132)
                continue;
            const double size = 5 + 9 * (178.0 - y) / 178;
            const CTone tone = Grain(i, 5) > 0.5 ? CTone{86, 156, 70} : CTone{176, 222, 104};
            const double sway = (Grain(i, 3) - 0.5) * 0.9;
            for (double rise = 0; rise < size; rise += 0.5)
                PaintDisc(x + sway * rise * rise / size, y + rise, 1.3 * (1 - rise / size) + 0.4, tone, 0.55, 0.6);
            if (i % 9 == 0)
                PaintDisc(x + 3, y + size, 2.6, i % 2 == 0 ? CTone{255, 250, 240} : CTone{255, 206, 92}, 0.95, 0.8);
        }
    }

    CPainting Finished() {
        CPainting painting{landscapeSize, {}};
        EachPixel([&](int x, int y) {
            const double paper = (Grain(x, y) - 0.5) * 5;
            const CTone& tone = At(x, y);
            for (const double value : {tone.blue, tone.green, tone.red})
                painting.pixels.push_back(static_cast<std::uint8_t>(std::clamp(value + paper, 0.0, 255.0)));
        });
        return painting;
    }

    std::vector<CTone> m_tones{static_cast<std::size_t>(landscapeSize.width * landscapeSize.height)};
};

} // namespace

CPainting PaintLandscape() {
    return CPainter().Paint();
}

} // namespace velmor::demo
