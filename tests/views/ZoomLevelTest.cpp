#include "views/ZoomLevel.h"

#include <gtest/gtest.h>

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

TEST(ZoomLevelTest, ZoomingKeepsTheCentreAndStaysInsideTheImage) {
    // The centre of the client area, 100 + 50, is image column 150; twice as large it stands at 300.
    EXPECT_EQ(ScrollAfterZoom(100, 100, 800, CZoomLevel(1), CZoomLevel(2)), 250);
    EXPECT_EQ(ScrollAfterZoom(250, 100, 400, CZoomLevel(2), CZoomLevel(1)), 100);
    EXPECT_EQ(ScrollAfterZoom(700, 100, 400, CZoomLevel(2), CZoomLevel(1)), 300) << "not past the end";
    EXPECT_EQ(ScrollAfterZoom(0, 500, 400, CZoomLevel(2), CZoomLevel(1)), 0)
        << "an image that fits is not scrolled";
}

} // namespace
} // namespace velmor
