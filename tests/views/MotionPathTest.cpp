#include "views/camera/MotionPath.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

using Stops = std::vector<std::optional<CPathStop>>;

Stops StopsAt(std::initializer_list<CPoint> points) {
    Stops stops;
    for (const CPoint& point : points)
        stops.push_back(CPathStop{point, false});
    return stops;
}

// A letter for each point: K, D or a dot for a tick.
std::string MarksOf(const CPathRun& run) {
    std::string marks;
    for (const CPathPoint& point : run.points)
        marks += point.mark == PathMark::Key ? 'K' : point.mark == PathMark::Drawing ? 'D' : '.';
    return marks;
}

TEST(MotionPathTest, EmptyCellsDivideThePath) {
    Stops stops = StopsAt({{0, 0}, {5, 0}, {10, 0}, {15, 0}, {20, 0}});
    stops[2].reset();
    stops.push_back(std::nullopt);
    const CMotionPath path = TraceMotionPath(7, stops);
    ASSERT_EQ(path.size(), 2u);
    EXPECT_EQ(path[0].firstFrame, 7);
    EXPECT_EQ(path[1].firstFrame, 10);
    EXPECT_EQ(path[1].points.front().at, (CPoint{15, 0}));
    EXPECT_EQ(MarksOf(path[1]), "KK");
    EXPECT_TRUE(TraceMotionPath(0, Stops(4)).empty());
    EXPECT_TRUE(TraceMotionPath(0, {}).empty());
}

TEST(MotionPathTest, KeysStandWhereTheMotionChangesAtOnce) {
    const auto marks = [](const Stops& stops) { return MarksOf(TraceMotionPath(0, stops).front()); };
    EXPECT_EQ(marks(StopsAt({{0, 0}, {8, 0}, {16, 0}, {24, 8}, {32, 16}})), "K.K.K") << "a corner";
    EXPECT_EQ(marks(StopsAt({{0, 0}, {4, 0}, {8, 0}, {20, 0}, {32, 0}})), "K.K.K") << "another speed";
    EXPECT_EQ(marks(StopsAt({{0, 0}, {3, 1}, {6, 1}, {10, 2}, {13, 3}})), "K...K") << "rounding is no key";
    EXPECT_EQ(marks(StopsAt({{0, 0}, {2, 0}, {8, 0}, {18, 0}, {32, 0}, {50, 0}})), "K....K") << "speeding up";
    EXPECT_EQ(marks(StopsAt({{50, 0}, {35, 35}, {0, 50}, {-35, 35}, {-50, 0}})), "K...K") << "a circle";
}

TEST(MotionPathTest, ChangesOfDrawingAreMarked) {
    Stops stops = StopsAt({{0, 0}, {5, 0}, {10, 0}, {15, 0}});
    stops[0]->newDrawing = stops[2]->newDrawing = true;
    EXPECT_EQ(MarksOf(TraceMotionPath(0, stops).front()), "K.DK");
}

TEST(MotionPathTest, ManyLongPathsAreShownAroundTheCurrentFrame) {
    EXPECT_EQ(FramesOfPaths(1, 1999, 700), (CFrameRange{0, 1999}));
    EXPECT_EQ(FramesOfPaths(0, 10, 3), (CFrameRange{0, 10}));
    const CFrameRange middle = FramesOfPaths(49, 1999, 1000);
    EXPECT_LT(middle.end - middle.first, 100);
    EXPECT_GT(middle.end - middle.first, 30);
    EXPECT_NEAR((middle.first + middle.end) / 2, 1000, 1);
    EXPECT_EQ(FramesOfPaths(49, 1999, 2).first, 0);
    EXPECT_EQ(FramesOfPaths(49, 1999, 1998).end, 1999);
}

} // namespace
} // namespace velmor
