#include "views/scan/ScanForm.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace velmor {

namespace {

constexpr QSizeF ordinaryGlass(216, 297);
constexpr double leastSide = 2;     // of an area, in millimetres
constexpr double sameWithin = 0.51; // millimetres
constexpr double margin = 10;       // around the glass, in pixels
constexpr int largestSide = 15000;  // of an image
constexpr std::size_t mostChoices = 40;
constexpr double millimetresPerInch = 25.4;
constexpr int usualResolutions[] = {75, 100, 150, 200, 300, 400, 600, 800, 1200, 2400};

constexpr CPaper papers[] = {
    {"Whole glass", 0, 0}, {"A4", 210, 297},         {"A4 half, A5 landscape", 210, 148},
    {"A5", 148, 210},      {"Letter", 215.9, 279.4}, {"Half letter, landscape", 215.9, 139.7}};

// The part of [start, start + length) within [0, whole), no shorter than can be scanned.
void FitSide(double& start, double& length, double whole) {
    const double least = std::min(leastSide, whole);
    length = std::clamp(length, least, whole);
    start = std::clamp(start, 0.0, whole - length);
}

bool IsSame(const CScanArea& a, const CScanArea& b) {
    return std::abs(a.left - b.left) < sameWithin && std::abs(a.top - b.top) < sameWithin &&
           std::abs(a.width - b.width) < sameWithin && std::abs(a.height - b.height) < sameWithin;
}

} // namespace

std::span<const CPaper> Papers() {
    return papers;
}

QSizeF GlassOf(const CScannerAbilities& abilities) {
    const QSizeF glass(abilities.width, abilities.height);
    return glass.width() >= leastSide && glass.height() >= leastSide ? glass : ordinaryGlass;
}

CScanArea FitArea(const CScanArea& area, QSizeF glass) {
    // What is no number fails the comparison as well.
    if (!(area.width > 0 && area.height > 0) || !std::isfinite(area.left + area.top + area.width + area.height))
        return {0, 0, glass.width(), glass.height()};
    CScanArea fitted = area;
    FitSide(fitted.left, fitted.width, glass.width());
    FitSide(fitted.top, fitted.height, glass.height());
    return fitted;
}

CScanArea AreaOf(const CPaper& paper, QSizeF glass) {
    return FitArea({0, 0, paper.width, paper.height}, glass);
}

int PaperOf(const CScanArea& area, QSizeF glass) {
    for (std::size_t index = 0; index < std::size(papers); ++index)
        if (IsSame(area, AreaOf(papers[index], glass)))
            return static_cast<int>(index);
    return -1;
}

std::vector<int> ResolutionsOf(const CScannerAbilities& abilities) {
    std::vector<int> resolutions = abilities.resolutions;
    if (resolutions.empty() || resolutions.size() > mostChoices) {
        resolutions.clear();
        for (const int resolution : usualResolutions)
            if (resolution >= abilities.leastResolution && resolution <= abilities.mostResolution)
                resolutions.push_back(resolution);
    }
    if (resolutions.empty())
        resolutions.push_back(abilities.leastResolution);
    return resolutions;
}

int NearestResolution(std::span<const int> resolutions, int wanted) {
    const auto nearest =
        std::ranges::min_element(resolutions, {}, [wanted](int value) { return std::abs(value - wanted); });
    return static_cast<int>(nearest - resolutions.begin());
}

CScanSize SizeOf(const CScanArea& area, int resolution) {
    const auto pixels = [resolution](double millimetres) {
        return static_cast<int>(std::lround(millimetres / millimetresPerInch * resolution));
    };
    const CScanSize size{pixels(area.width), pixels(area.height)};
    const auto fits = [](int side) { return side >= 2 && side <= largestSide; };
    return {size.width, size.height, fits(size.width) && fits(size.height)};
}

QRectF GlassRectangle(QSizeF glass, QSizeF window) {
    const QSizeF room = (window - QSizeF(margin * 2, margin * 2)).expandedTo({1, 1});
    const QSizeF size = glass.scaled(room, Qt::KeepAspectRatio);
    return {QPointF((window.width() - size.width()) / 2, (window.height() - size.height()) / 2), size};
}

QRectF ToWindow(const CScanArea& area, QSizeF glass, const QRectF& glassRectangle) {
    const double scale = glassRectangle.width() / glass.width();
    return {glassRectangle.left() + area.left * scale, glassRectangle.top() + area.top * scale, area.width * scale,
            area.height * scale};
}

CScanArea ToGlass(const QRectF& rectangle, QSizeF glass, const QRectF& glassRectangle) {
    const QRectF inside = rectangle.normalized() & glassRectangle;
    const double scale = glass.width() / glassRectangle.width();
    const QPointF corner = (inside.topLeft() - glassRectangle.topLeft()) * scale;
    return FitArea({corner.x(), corner.y(), std::max(inside.width() * scale, leastSide),
                    std::max(inside.height() * scale, leastSide)},
                   glass);
}

} // namespace velmor
