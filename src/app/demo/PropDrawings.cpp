#include "app/demo/PropDrawings.h"

#include "app/demo/CelDrawing.h"
#include "app/demo/DemoColors.h"
#include "image/paint/Fill.h"

#include <array>
#include <cmath>

namespace velmor::demo {

namespace {

/// A wing of the butterfly as it is when spread; `palette` names the colours.
void DrawWings(CCelDrawing& drawing, const CPalette& palette, const CPlacement& side, bool near) {
    const CColor edge = ColorNamed(palette, near ? "Wing edge" : "Far wing");
    const CColor inner = ColorNamed(palette, near ? "Wing" : "Wing edge");
    const CCurve hind = side.Of(ClosedCurve({{0, 0}, {30, -10}, {56, -44}, {40, -70}, {12, -52}}));
    const CCurve fore = side.Of(ClosedCurve({{0, 0}, {24, 50}, {66, 84}, {92, 62}, {72, 18}, {34, 0}}));
    drawing.Shape(hind, CPour(inner, edge, 120), PenWidth::Medium);
    drawing.Shape(fore, CPour(inner, edge, -130), PenWidth::Medium);
    drawing.Spot(side.Of(Ellipse({62, 52}, 11, 9, 30)), ColorNamed(palette, "Dots"));
    drawing.Spot(side.Of(Ellipse({36, -44}, 8, 6)), ColorNamed(palette, "Dots"));
}

struct CBlade {
    double x, height, sway, width;
    bool deep; ///< in the shade of the others
};

/// Blades of grass side by side, their measures varied by fixed patterns.
std::vector<CBlade> Blades() {
    constexpr std::array<double, 7> heights = {84, 116, 66, 124, 96, 112, 76};
    constexpr std::array<double, 5> sways = {-34, 22, 44, -14, -52};
    std::vector<CBlade> blades;
    for (int i = 0; i < 44; ++i) {
        const auto n = static_cast<std::size_t>(i);
        // Low in the middle of the picture, so that the fox can be seen.
        const double rise = 0.7 + 0.3 * std::cos(i * 0.29);
        blades.push_back({30.0 + i * 33, heights[n % heights.size()] * rise, sways[n % sways.size()],
                          11.0 + 3 * static_cast<double>(n % 3), i % 2 == 1});
    }
    return blades;
}

struct CFlower {
    double x, height, size;
    bool rose;
};
constexpr std::array<CFlower, 7> flowers = {{
    {96, 158, 25, false},
    {186, 118, 19, true},
    {520, 108, 18, false},
    {790, 104, 18, true},
    {1090, 128, 21, false},
    {1300, 160, 25, true},
    {1410, 126, 20, false},
}};

/// The petals are outlined first; then one bucket fill over the whole flower paints them all.
void DrawFlower(CCelImg& cel, CCelDrawing& drawing, const CPalette& palette, const CFlower& flower) {
    const CSpot head{flower.x + 8, flower.height};
    drawing.Shape(Tube(Bow({flower.x - 6, -10}, {flower.x + 16, flower.height / 2}, head), 5),
                  ColorNamed(palette, "Deep grass"), PenWidth::Medium);
    constexpr int petals = 7;
    const CColor color = ColorNamed(palette, flower.rose ? "Rose petal" : "Petal");
    for (int i = 0; i < petals; ++i) {
        const double degrees = 360.0 * i / petals + flower.x;
        drawing.Shape(Ellipse(head + Turned({flower.size * 1.1, 0}, degrees), flower.size * 0.85,
                              flower.size * 0.55, degrees),
                      color, PenWidth::Medium);
    }
    const int reach = static_cast<int>(flower.size * 2.4);
    const int x = static_cast<int>(head.x);
    const int y = static_cast<int>(head.y);
    FillBox(cel, x - reach, x + reach, y - reach, y + reach, color);
    drawing.Shape(Ellipse(head, flower.size * 0.62, flower.size * 0.56),
                  CPour(ColorNamed(palette, "Heart"), ColorNamed(palette, "Heart shade")), PenWidth::Medium);
}

/// The strokes of a letter on a line of its own, 100 high, and how far the next letter is.
struct CLetter {
    std::vector<CCurve> strokes;
    double advance = 0;
};

std::vector<CLetter> DemoLetters() {
    const std::vector<CCurve> ring = {Arc({40, 36}, 36, 36, -10, 190), Arc({40, 36}, 36, 36, 170, 370)};
    return {
        {{{{0, 0}, {0, 104}}, OpenCurve({{0, 104}, {34, 104}, {74, 88}, {84, 52}, {74, 16}, {34, 0}, {0, 0}})},
         130},
        {{{{8, 37}, {74, 37}}, Arc({40, 36}, 36, 36, 10, 300)}, 122},
        {{{{0, 0}, {0, 72}},
          OpenCurve({{0, 46}, {10, 66}, {28, 72}, {44, 62}, {48, 44}, {48, 0}}),
          OpenCurve({{48, 46}, {58, 66}, {76, 72}, {92, 62}, {96, 44}, {96, 0}})},
         142},
        {ring, 0},
    };
}

} // namespace

std::vector<double> WingBeat() {
    return {1, 0.66, 0.22, 0.55};
}

void DrawButterfly(CCelImg& cel, const CPalette& palette, double spread) {
    CCelDrawing drawing(cel, ColorNamed(palette, transparentPaper));
    const CSpot middle{120, 104};
    DrawWings(drawing, palette, {middle + CSpot{4, 2}, 38, {spread, 1}}, false);
    DrawWings(drawing, palette, {middle, -2, {-spread, 1}}, true);
    const CPlacement body{middle, -24};
    drawing.Shape(body.Of(Tube({{0, -34}, {0, -10}, {0, 16}, {0, 36}}, {{0, 5}, {0.55, 9}, {1, 8}})),
                  ColorNamed(palette, "Body"), PenWidth::Medium);
    drawing.Line(body.Of(Bow({2, 40}, {4, 62}, {22, 72})), PenWidth::Medium);
    drawing.Line(body.Of(Bow({-2, 40}, {-6, 60}, {-18, 70})), PenWidth::Medium);
    drawing.ColorLines(ColorNamed(palette, "Line"));
}

void DrawShadow(CCelImg& cel, const CPalette& palette) {
    CCelDrawing drawing(cel, ColorNamed(palette, "Air"));
    drawing.Spot(Ellipse({200, 48}, 168, 34), ColorNamed(palette, "Shade"));
}

void DrawPlants(CCelImg& cel, const CPalette& palette) {
    CCelDrawing drawing(cel, ColorNamed(palette, "Air"));
    for (const bool deep : {true, false})
        for (const CBlade& blade : Blades())
            if (blade.deep == deep)
                drawing.Shape(
                    Tube(Bow({blade.x, -8}, {blade.x, blade.height * 0.6}, {blade.x + blade.sway, blade.height}),
                         {{0, blade.width * 0.8}, {0.3, blade.width}, {1, 1.5}}),
                    ColorNamed(palette, deep ? "Deep grass" : "Grass"), PenWidth::Medium);
    for (const CFlower& flower : flowers)
        DrawFlower(cel, drawing, palette, flower);
    drawing.ColorLines(ColorNamed(palette, "Line"));
}

void DrawCloud(CCelImg& cel, const CPalette& palette) {
    CCelDrawing drawing(cel, ColorNamed(palette, "Air"));
    const std::vector<CCurve> puffs = {Ellipse({250, 120}, 100, 78), Ellipse({160, 100}, 76, 56),
                                       Ellipse({350, 106}, 84, 60),  Ellipse({96, 82}, 52, 34),
                                       Ellipse({430, 84}, 54, 34),   Ellipse({260, 76}, 180, 34)};
    drawing.Shape(puffs, CPour(ColorNamed(palette, "Cloud"), ColorNamed(palette, "Cloud shade"), 80, 1.0));
    drawing.ColorLines(ColorNamed(palette, "Line"));
}

void DrawTitle(CCelImg& cel, const CPalette& palette) {
    CCelDrawing drawing(cel, ColorNamed(palette, transparentPaper));
    constexpr double size = 1.5;
    constexpr double brush = 20;
    CSpot pen{60, 84};
    double tilt = 5;
    for (const CLetter& letter : DemoLetters()) {
        std::vector<CCurve> strokes;
        for (const CCurve& stroke : letter.strokes)
            strokes.push_back(Tube(CPlacement{pen, tilt, {size, size}}.Of(stroke), brush));
        drawing.Shape(strokes, CPour(ColorNamed(palette, "Sunlight"), ColorNamed(palette, "Ember"), 90, 3.5),
                      PenWidth::Broad);
        pen = pen + CSpot{letter.advance * size, tilt > 0 ? -8.0 : 8.0};
        tilt = -tilt;
    }
    drawing.ColorLines(ColorNamed(palette, "Line"));
}

} // namespace velmor::demo
