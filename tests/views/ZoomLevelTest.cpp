#include "views/ZoomLevel.h"

#include <gtest/gtest.h>

#include <array>

namespace velmor {
namespace {

TEST(ZoomLevelTest, LevelsBelowOneDivide) {
    CZoomLevel zoom;
    EXPECT_EQ(zoom.Percent(), 100);
    EXPECT_EQ(zoom.In().Scaled(640), 1280);
    zoom = zoom.Out();
    EXPECT_EQ(zoom.Percent(), 50);
    EXPECT_EQ(zoom.Scaled(768), 384);
    zoom = zoom.Out();
    EXPECT_EQ(zoom.Percent(), 33);
    EXPECT_EQ(zoom.Unscaled(100), 300);
    zoom = zoom.Out();
    EXPECT_EQ(zoom.Percent(), 25);
    EXPECT_EQ(zoom.Scaled(768), 192);
    EXPECT_EQ(zoom.In().In().Percent(), 50);
}

TEST(ZoomLevelTest, TheFittingZoomIsTheLargestThatShowsAll) {
    constexpr CZoomLevel large(64);
    for (const int length : {1, 99, 100, 101, 199, 200, 201, 299, 300, 301, 4000})
        for (const CSize image : {CSize{length, 10}, CSize{10, length}}) {
            const CZoomLevel zoom = FittingZoom(image, {100, 100}, large);
            const auto fits = [&image](CZoomLevel at) {
                return image.width * at.Factor() <= 100 && image.height * at.Factor() <= 100;
            };
            EXPECT_TRUE(fits(zoom)) << length << " at " << zoom.Level();
            EXPECT_FALSE(fits(zoom.In())) << length << " at " << zoom.Level();
        }
    EXPECT_EQ(FittingZoom({10, 10}, {100, 100}, CZoomLevel(1)), CZoomLevel(1)) << "not above the most";
    EXPECT_EQ(FittingZoom({640, 480}, {0, -5}, large), CZoomLevel(2 - 640)) << "no room yet";
    EXPECT_EQ(FittingZoom({}, {500, 500}, CZoomLevel(1)), CZoomLevel(1)) << "no image";
}

TEST(ZoomLevelTest, ZoomingKeepsTheCentreAndStaysInsideTheImage) {
    // The centre of the client area, 100 + 50, is image column 150; twice as large it stands at 300.
    EXPECT_EQ(ScrollAfterZoom(100, 100, 800, CZoomLevel(1), CZoomLevel(2)), 250);
    EXPECT_EQ(ScrollAfterZoom(250, 100, 400, CZoomLevel(2), CZoomLevel(1)), 100);
    EXPECT_EQ(ScrollAfterZoom(700, 100, 400, CZoomLevel(2), CZoomLevel(1)), 300) << "not past the end";
    EXPECT_EQ(ScrollAfterZoom(0, 500, 400, CZoomLevel(2), CZoomLevel(1)), 0)
        << "an image that fits is not scrolled";
}

TEST(ZoomLevelTest, BetweenTwoLevelsStandsAnyFactor) {
    for (int level = -20; level <= 64; ++level)
        EXPECT_EQ(CZoomLevel::OfFactor(CZoomLevel(level).Factor()), CZoomLevel(level));
    for (const auto& [factor, out, in] : {std::array{2.5, 2.0, 3.0}, {0.75, 0.5, 1.0}, {0.3, 0.25, 1.0 / 3}}) {
        const CZoomLevel zoom = CZoomLevel::OfFactor(factor);
        EXPECT_EQ(zoom.Factor(), factor);
        EXPECT_EQ(zoom.Out().Factor(), out);
        EXPECT_EQ(zoom.In().Factor(), in);
        for (int length = 0; length < 500; ++length)
            EXPECT_LT(zoom.Unscaled(zoom.Scaled(length + 1) - 1), length + 1) << "no pixel beside the image";
    }
}

} // namespace
} // namespace velmor
