#include "image/select/MaskOutline.h"
#include "image/select/SelectShapes.h"

#include "RandomImages.h"

#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <tuple>

using namespace velmor;

namespace {

constexpr CSize size{37, 29};

CSelectionMask RandomMask(std::mt19937& random, int percent) {
    CSelectionMask mask(size);
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            if (RandomBetween(random, 0, 99) < percent)
                mask.AddRun(y, x, x + 1);
    mask.Measure();
    return mask;
}

/// How often a line goes round a point, counted by the sides that cross the way from it to the right.
int TurnsRound(const std::vector<CRealPoint>& line, CRealPoint point) {
    int turns = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const CRealPoint a = line[i], b = line[(i + 1) % line.size()];
        if ((a.y <= point.y) == (b.y <= point.y))
            continue;
        const double x = a.x + (point.y - a.y) * (b.x - a.x) / (b.y - a.y);
        turns += x > point.x ? (a.y < b.y ? 1 : -1) : 0;
    }
    return turns;
}

template<class Rule>
void ExpectSelected(const CSelectionMask& mask, Rule isSelected) {
    CRect bounds;
    std::int64_t count = 0;
    for (int y = 0; y < mask.Size().height; ++y)
        for (int x = 0; x < mask.Size().width; ++x) {
            ASSERT_EQ(mask.Has(x, y), isSelected(x, y)) << x << ' ' << y;
            if (isSelected(x, y)) {
                bounds = Union(bounds, {x, y, x + 1, y + 1});
                ++count;
            }
        }
    EXPECT_EQ(mask.Bounds(), bounds);
    EXPECT_EQ(mask.Count(), count);
}

} // namespace

TEST(SelectionMask, GoesTogetherPixelByPixel) {
    std::mt19937 random(3);
    for (int percent : {0, 3, 50, 100}) {
        const CSelectionMask a = RandomMask(random, percent), b = RandomMask(random, 30);
        CSelectionMask sum = a, rest = a, inverse = a, all = a;
        sum.Combine(b, SelectMode::Add);
        ExpectSelected(sum, [&](int x, int y) { return a.Has(x, y) || b.Has(x, y); });
        rest.Combine(b, SelectMode::Subtract);
        ExpectSelected(rest, [&](int x, int y) { return a.Has(x, y) && !b.Has(x, y); });
        inverse.Invert();
        ExpectSelected(inverse, [&](int x, int y) { return !a.Has(x, y); });
        all.SelectAll();
        ExpectSelected(all, [](int, int) { return true; });
        all.Combine(b, SelectMode::Replace);
        EXPECT_EQ(all, b);
    }
}

TEST(SelectionMask, ShapesTakeThePixelsWhoseMiddlesAreInside) {
    std::mt19937 random(9);
    const auto coordinate = [&] { return RandomBetween(random, -400, 900) / 19.7; };
    for (int round = 0; round < 100; ++round) {
        std::vector<CRealPoint> line;
        for (int corner = RandomBetween(random, 0, 12); corner > 0; --corner)
            line.push_back({coordinate(), coordinate()});
        ExpectSelected(SelectPolygon(size, line), [&](int x, int y) {
            return TurnsRound(line, {x + 0.5, y + 0.5}) != 0;
        });
        const CRect rect{RandomBetween(random, -9, 40), RandomBetween(random, -9, 40),
                         RandomBetween(random, -9, 40), RandomBetween(random, -9, 40)};
        ExpectSelected(SelectRectangle(size, rect),
                       [&](int x, int y) { return x >= rect.x && x < rect.endX && y >= rect.y && y < rect.endY; });
    }
    const std::vector<CRealPoint> wild{{std::numeric_limits<double>::quiet_NaN(), 3},
                                       {-1e300, -1e300},
                                       {1e300, -1e300},
                                       {std::numeric_limits<double>::infinity(), 5},
                                       {0, 1e300}};
    EXPECT_TRUE(SelectPolygon(size, wild).Has(18, 14));
}

TEST(SelectionMask, AColorIsTakenAllOverOrAsFarAsItHangsTogether) {
    std::mt19937 random(4);
    for (int round = 0; round < 30; ++round) {
        CCelImg image = RandomPicture(random, size.width, size.height);
        for (const Channel channel : allChannels)
            for (std::uint8_t& byte : image.PlaneOf(channel))
                byte = static_cast<std::uint8_t>(RandomBetween(random, 0, 9) < 8 ? 255 : 250 + byte % 6);
        const CPoint seed{RandomBetween(random, 0, size.width - 1), RandomBetween(random, 0, size.height - 1)};
        const int tolerance = RandomBetween(random, 0, 3);
        const auto isLike = [&](int x, int y) {
            const CColor a = image.ColorAt(x, y), b = image.ColorAt(seed.x, seed.y);
            return std::max({std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue),
                             std::abs(a.alpha - b.alpha)}) <= tolerance;
        };
        ExpectSelected(SelectColor(image, seed, tolerance, false), isLike);
        std::set<std::pair<int, int>> area;
        std::vector<std::pair<int, int>> open{{seed.x, seed.y}};
        while (!open.empty()) {
            const auto [x, y] = open.back();
            open.pop_back();
            if (x < 0 || y < 0 || x >= size.width || y >= size.height || !isLike(x, y) ||
                !area.insert({x, y}).second)
                continue;
            open.insert(open.end(), {{x - 1, y}, {x + 1, y}, {x, y - 1}, {x, y + 1}});
        }
        ExpectSelected(SelectColor(image, seed, tolerance, true), [&](int x, int y) {
            return area.contains({x, y});
        });
        EXPECT_TRUE(SelectColor(image, {-1, 3}, tolerance, true).IsEmpty());
    }
}

TEST(SelectionMask, ItsOutlineIsEverySideBetweenInAndOutOnce) {
    std::mt19937 random(6);
    using Side = std::tuple<int, int, int, int>;
    for (int percent : {0, 2, 30, 50, 70, 98, 100}) {
        const CSelectionMask mask = RandomMask(random, percent);
        std::multiset<Side> expected;
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) {
                if (!mask.Has(x, y))
                    continue;
                if (!mask.Has(x, y - 1))
                    expected.insert({x, y, x + 1, y});
                if (!mask.Has(x, y + 1))
                    expected.insert({x + 1, y + 1, x, y + 1});
                if (!mask.Has(x - 1, y))
                    expected.insert({x, y + 1, x, y});
                if (!mask.Has(x + 1, y))
                    expected.insert({x + 1, y, x + 1, y + 1});
            }
        std::multiset<Side> found;
        for (const std::vector<CPoint>&line :
             OutlineOf(mask.Bounds(), [&](int x, int y) { return mask.Has(x, y); }))
            for (std::size_t i = 0; i < line.size(); ++i) {
                CPoint at = line[i];
                const CPoint end = line[(i + 1) % line.size()];
                const CPoint step{(end.x > at.x) - (end.x < at.x), (end.y > at.y) - (end.y < at.y)};
                ASSERT_NE(step.x == 0, step.y == 0);
                for (; at != end; at = {at.x + step.x, at.y + step.y})
                    found.insert({at.x, at.y, at.x + step.x, at.y + step.y});
            }
        EXPECT_EQ(found, expected) << percent;
    }
}
