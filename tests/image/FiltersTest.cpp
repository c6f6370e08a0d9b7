#include "image/paint/Filters.h"

#include "RandomImages.h"

#include <gtest/gtest.h>
#include <vector>

using namespace velmor;

namespace {

/// The smoothing pixel by pixel; returns how many pixels took the weight of the one before.
int PlainSmooth(CCelImg& cel) {
    int weight = 0, carried = 0;
    for (int y = 0; y < cel.Height(); ++y)
        for (int x = 0; x < cel.Width(); ++x) {
            int lines = 0, red = 0, green = 0, blue = 0;
            for (int nearY = std::max(y - 1, 0); nearY <= std::min(y + 1, cel.Height() - 1); ++nearY)
                for (int nearX = std::max(x - 1, 0); nearX <= std::min(x + 1, cel.Width() - 1); ++nearX)
                    if (cel.IsLine(nearX, nearY)) {
                        const CColor color = cel.ColorAt(nearX, nearY);
                        ++lines, red += color.red, green += color.green, blue += color.blue;
                    }
            if (cel.IsLine(x, y) || lines == 0)
                continue;
            carried += lines == 5 && weight > 0;
            if (lines != 5)
                weight = lines < 3 ? 0 : lines == 3 ? 64 : lines == 4 ? 128 : 192;
            CColor own = cel.ColorAt(x, y);
            const auto blend = [&](int value, int sum) {
                return static_cast<std::uint8_t>(((255 - weight) * value + weight * (sum / lines)) / 255);
            };
            own = {blend(own.blue, blue), blend(own.green, green), blend(own.red, red),
                   std::max(own.alpha, static_cast<std::uint8_t>(weight))};
            cel.SetColorAt(x, y, own);
        }
    return carried;
}

/// The mean of each box by a table of the sums of everything to the left and below.
void PlainBlur(CCelImg& image, int radiusX, int radiusY) {
    const int width = image.Width(), height = image.Height();
    for (const Channel channel : allChannels) {
        const auto plane = image.PlaneOf(channel);
        std::vector<std::vector<std::int64_t>> sums(static_cast<std::size_t>(height) + 1);
        const auto sum = [&sums](int x, int y) -> std::int64_t& {
            return sums[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)];
        };
        for (auto& row : sums)
            row.resize(static_cast<std::size_t>(width) + 1);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                sum(x + 1, y + 1) = plane[image.IndexOf(x, y)] + sum(x, y + 1) + sum(x + 1, y) - sum(x, y);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const int x0 = std::max(x - radiusX, 0), x1 = std::min(x + radiusX + 1, width);
                const int y0 = std::max(y - radiusY, 0), y1 = std::min(y + radiusY + 1, height);
                const std::int64_t box = sum(x1, y1) - sum(x0, y1) - sum(x1, y0) + sum(x0, y0);
                plane[image.IndexOf(x, y)] = static_cast<std::uint8_t>(box / ((x1 - x0) * (y1 - y0)));
            }
    }
}

} // namespace

TEST(FiltersTest, SmoothSoftensTheEdgesOfLines) {
    std::mt19937 random(1);
    int carried = 0;
    for (int i = 0; i < 300; ++i) {
        CCelImg cel = RandomCel(random, RandomBetween(random, 2, 200), RandomBetween(random, 2, 40));
        for (int lines = RandomBetween(random, 0, 6); lines > 0; --lines)
            DrawRandomLine(cel, random);
        Sprinkle(cel, random, i % 3 * RandomBetween(random, 0, 40));
        const CCelImg before = cel;
        CCelImg expected = cel;
        carried += PlainSmooth(expected);
        const CPaintResult result = Smooth(cel);
        EXPECT_TRUE(result.status);
        ASSERT_TRUE(AreSame(cel, expected)) << i;
        const CRect difference = Differences(before, cel);
        EXPECT_EQ(Union(result.changed, difference), result.changed);
    }
    EXPECT_GT(carried, 1000);
    CCelImg paper = RandomCel(random, 70, 9);
    EXPECT_TRUE(Smooth(paper).changed.IsEmpty());
}

TEST(FiltersTest, BlurIsTheMeanOfTheBoxInsideTheImage) {
    std::mt19937 random(2);
    const CPoint radii[] = {{0, 1},   {1, 0}, {2, 3},    {7, 7},    {20, 4},
                            {50, 50}, {9, 0}, {-3, 400}, {500, -1}, {1 << 30, 1 << 30}};
    for (const CPoint& radius : radii)
        for (const CSize size : {CSize{2, 2}, CSize{61, 37}, CSize{130, 120}, CSize{5, 301}}) {
            CCelImg picture = RandomPicture(random, size.width, size.height);
            std::ranges::fill(picture.PlaneOf(Channel::Alpha), std::uint8_t{255});
            if (radius.y > 1) // the largest sums that there are, and sums that are almost a whole mean
                std::ranges::generate(picture.PlaneOf(Channel::Red), [&random] {
                    return static_cast<std::uint8_t>(RandomBetween(random, 0, 99) == 0 ? 254 : 255);
                });
            CCelImg expected = picture;
            PlainBlur(expected, std::clamp(radius.x, 0, 400), std::clamp(radius.y, 0, 400));
            EXPECT_TRUE(Blur(picture, radius.x, radius.y).status);
            EXPECT_TRUE(AreSame(picture, expected)) << radius.x << ' ' << radius.y << ' ' << size.width;
        }
}

TEST(FiltersTest, BlurOfVeryLargeBoxesDoesNotOverflow) {
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(6000, 3000, "a.rgba"));
    picture.PlaneOf(Channel::Red)[0] = 254;
    EXPECT_TRUE(Blur(picture, 6000, 3000).status);
    EXPECT_EQ(picture.ColorAt(2999, 1499), (CColor{255, 255, 254, 255}));
    EXPECT_EQ(picture.ColorAt(5999, 2999), (CColor{255, 255, 254, 255}));
}

TEST(FiltersTest, NeedAnImage) {
    CCelImg nothing, picture;
    ASSERT_TRUE(picture.CreatePicture(4, 4, "a.rgba"));
    EXPECT_EQ(Smooth(picture).status.Message(), "Internal Error :  Smooth called with no cel b/w image");
    EXPECT_EQ(Blur(nothing, 1, 1).status.Message(), "Internal Error : No Cel data at CCelImg::Blur");
}
