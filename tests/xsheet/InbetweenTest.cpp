#include "xsheet/Inbetween.h"
#include "SheetPictures.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr InbetweenType cubicTypes[] = {InbetweenType::Linear, InbetweenType::SlowOut, InbetweenType::SlowIn,
                                        InbetweenType::SlowOutSlowIn};

// The same curve in Hermite form, exact for all that matters here.
double Hermite(InbetweenType type, CInbetweenKeys keys, double y0, double y1, int frame) {
    const double span = keys.last - keys.first, t = (frame - keys.first) / span;
    const bool flatStart = type == InbetweenType::SlowOut || type == InbetweenType::SlowOutSlowIn;
    const bool flatEnd = type == InbetweenType::SlowIn || type == InbetweenType::SlowOutSlowIn;
    const double slope0 = flatStart ? 0 : y1 - y0, slope1 = flatEnd ? 0 : y1 - y0;
    return y0 + t * slope0 + t * t * (3 * (y1 - y0) - 2 * slope0 - slope1) +
           t * t * t * (slope0 + slope1 - 2 * (y1 - y0));
}

double MostError(InbetweenType type, CInbetweenKeys keys, double y0, double y1) {
    const CKeyCurve curve(type, keys, y0, y1);
    double most = 0;
    for (int frame = keys.first; frame <= keys.last; ++frame)
        most = std::max(most, std::abs(curve.At(frame) - Hermite(type, keys, y0, y1, frame)));
    return most;
}

} // namespace

TEST(Inbetween, CurvesKeepToTheirShape) {
    for (const InbetweenType type : cubicTypes)
        for (const CInbetweenKeys keys : {CInbetweenKeys{0, 4}, {0, 100}, {3, 27}, {50, 99}, {10, 12}})
            EXPECT_LT(MostError(type, keys, 100, -60), 0.005) << keys.first << ' ' << static_cast<int>(type);
    const CKeyCurve smooth(InbetweenType::SlowOutSlowIn, {0, 4}, 0, 100);
    EXPECT_FLOAT_EQ(static_cast<float>(smooth.At(1)), 15.625f);
    EXPECT_FLOAT_EQ(static_cast<float>(smooth.At(2)), 50);
    EXPECT_FLOAT_EQ(static_cast<float>(smooth.At(3)), 84.375f);
}

TEST(Inbetween, HighFrameNumbersHaveSinglePrecision) {
    // Late curves are off, but by no more than single precision costs.
    const double error = MostError(InbetweenType::SlowOutSlowIn, {1500, 1596}, 100, 300);
    EXPECT_GT(error, 0.01);
    EXPECT_LT(error, 1);
    const double value = CKeyCurve(InbetweenType::SlowIn, {800, 900}, 0.1, 0.7).At(850);
    EXPECT_EQ(value, static_cast<double>(static_cast<float>(value)));
    // Whatever the keys, cells get numbers; these have equations that cannot be told apart.
    for (const InbetweenType type : cubicTypes) {
        EXPECT_NEAR(CKeyCurve(type, {1551, 1561}, 100, 300).At(1556), 200, 0.01);
        EXPECT_NEAR(CKeyCurve(type, {1900, 1911}, 0, 110).At(1901), 10, 0.01);
    }
}

TEST(Inbetween, LevelSourcesWriteTheirOwnFields) {
    struct CCase {
        LevelSource source;
        CCellTransform transform;
        double transparency, blurX, blurY;
    };
    // The middle of five frames, straight from start to end.
    const CCase cases[] = {{LevelSource::Position, {55, -10, 1, 2, 0}, 0, 1, 1},
                           {LevelSource::Rotation, {2, 0, 1, 2, 1.5}, 0, 1, 1},
                           {LevelSource::Zoom, {2, 0, 2, 1.5, 0}, 0, 1, 1},
                           {LevelSource::Transparency, {2, 0, 1, 2, 0}, 30, 1, 1},
                           {LevelSource::Blur, {2, 0, 1, 2, 0}, 0, 5, 13}};
    for (const CCase& expected : cases) {
        CXSheet xsheet(1, 5);
        for (int frame = 0; frame < 4; ++frame)
            xsheet.MutableCell(0, frame) =
                CXSheetCell::FromFile("F", "1", {static_cast<double>(frame), 0, 1, 2, 0}, 0, 1, 1, {10, 10});
        xsheet.MutableCell(0, 4) = CXSheetCell::FromFile("F", "1", {110, -20, 3, 1, 3}, 60, 9, 25, {10, 10});
        const CXSheet before = xsheet;
        InbetweenLevel(xsheet, 0, {0, 4}, expected.source, InbetweenType::Linear);
        const CXSheetCell cell = xsheet.Cell(0, 2);
        EXPECT_EQ(cell, CXSheetCell::FromFile("F", "1", expected.transform, expected.transparency, expected.blurX,
                                              expected.blurY, {10, 10}))
            << static_cast<int>(expected.source);
        EXPECT_EQ(xsheet.Cell(0, 0), before.Cell(0, 0));
        EXPECT_EQ(xsheet.Cell(0, 4), before.Cell(0, 4));
    }
}

TEST(Inbetween, LevelsSkipEmptyCells) {
    CXSheet xsheet = SheetOf({"A.AAA"});
    ASSERT_TRUE(xsheet.MutableCell(0, 4).SetPos(100, 8));
    InbetweenLevel(xsheet, 0, {0, 4}, LevelSource::Position, InbetweenType::Linear);
    EXPECT_EQ(xsheet.Cell(0, 1), CXSheetCell());
    EXPECT_EQ(xsheet.Cell(0, 2).PosX(), 50);
    EXPECT_EQ(xsheet.Cell(0, 3).PosX(), 75);
    EXPECT_EQ(xsheet.Cell(0, 3).PosY(), 6);
    ASSERT_TRUE(xsheet.MutableCell(0, 0).SetPos(0.1, 0));
    InbetweenLevel(xsheet, 0, {0, 4}, LevelSource::Position, InbetweenType::Constant);
    EXPECT_EQ(xsheet.Cell(0, 1), CXSheetCell());
    EXPECT_EQ(xsheet.Cell(0, 3).PosX(), 0.1);
    EXPECT_EQ(xsheet.Cell(0, 4).PosX(), 0.1);
}

TEST(Inbetween, KeysAreFoundInward) {
    const CXSheet xsheet = SheetOf({"A..A.A..", "AA......", ".......A", "A.A....."});
    EXPECT_EQ(FindLevelKeys(xsheet, 0, 1, 7), (CInbetweenKeys{3, 5}));
    EXPECT_EQ(FindLevelKeys(xsheet, 0, 0, 4), (CInbetweenKeys{0, 3}));
    EXPECT_EQ(FindLevelKeys(xsheet, 0, 4, 7), std::nullopt);
    EXPECT_EQ(FindLevelKeys(xsheet, 1, 0, 7), std::nullopt);
    EXPECT_EQ(FindLevelKeys(xsheet, 2, 0, 7), std::nullopt);
    EXPECT_EQ(FindLevelKeys(xsheet, 3, 0, 2), (CInbetweenKeys{0, 2}));
}

TEST(Inbetween, CameraSourcesWriteTheirOwnTracks) {
    CCameraTrack camera;
    camera.MutableAt(10) = {0, 8, 0.1, 2};
    camera.MutableAt(14) = {100, 0, 4.1, 4};
    InbetweenCamera(camera, {10, 14}, CameraSource::Pan, InbetweenType::Linear);
    EXPECT_NEAR(camera.At(11).panX, 25, 1e-3);
    EXPECT_NEAR(camera.At(13).panY, 2, 1e-3);
    EXPECT_EQ(camera.At(12).rotation, 0);
    EXPECT_EQ(camera.At(12).zoom, 1);
    InbetweenCamera(camera, {10, 14}, CameraSource::Tilt, InbetweenType::Linear);
    EXPECT_NEAR(camera.At(12).rotation, 2.1, 1e-4);
    InbetweenCamera(camera, {10, 14}, CameraSource::Zoom, InbetweenType::Constant);
    EXPECT_EQ(camera.At(11).zoom, 2);
    EXPECT_EQ(camera.At(14).zoom, 2);
    EXPECT_EQ(camera.At(15).zoom, 1);
    EXPECT_EQ(camera.At(14).panX, 100);
}

TEST(Inbetween, DrawnCurvesAreAsExactLateAsEarly) {
    const CInbetweenPace straight(InbetweenType::Drawn, {{1.0 / 3, 1.0 / 3}, {2.0 / 3, 2.0 / 3}});
    const CInbetweenPace drawn(InbetweenType::Drawn, {{0.3, -0.5}, {0.7, 1.5}});
    for (int frame = 1; frame < 96; ++frame) {
        EXPECT_NEAR(CBetweenValues(straight, {1900, 1996}, 100, 300).At(1900 + frame), 100 + 200 * frame / 96.0,
                    1e-9);
        EXPECT_EQ(CBetweenValues(drawn, {1900, 1996}, 0.1, 0.7).At(1900 + frame),
                  CBetweenValues(drawn, {0, 96}, 0.1, 0.7).At(frame));
        // As it is made it is the curve that is slow at both ends.
        EXPECT_NEAR(CBetweenValues(InbetweenType::Drawn, {0, 96}, 0, 1).At(frame),
                    Hermite(InbetweenType::SlowOutSlowIn, {0, 96}, 0, 1, frame), 1e-12);
    }
    EXPECT_LT(CBetweenValues(drawn, {0, 96}, 0, 1).At(10), 0) << "swings back";
    EXPECT_GT(CBetweenValues(drawn, {0, 96}, 0, 1).At(86), 1) << "and over";
    const double none = std::nan("");
    EXPECT_EQ((CPaceCurve{{none, 0}, {9, -9}}.Kept()), (CPaceCurve{{1.0 / 3, 0}, {1, -0.5}}));
}

TEST(Inbetween, ADrawnCurveKeepsEffectsWithinTheirRanges) {
    CXSheet xsheet = SheetOf({"AAAAAA"});
    ASSERT_TRUE(xsheet.MutableCell(0, 5).SetTrans(100));
    ASSERT_TRUE(xsheet.MutableCell(0, 5).SetBlur(50, 3));
    const CInbetweenPace swings(InbetweenType::Drawn, {{0.2, -0.5}, {0.3, 1.5}});
    InbetweenLevel(xsheet, 0, {0, 5}, LevelSource::Transparency, swings);
    InbetweenLevel(xsheet, 0, {0, 5}, LevelSource::Blur, swings);
    InbetweenLevel(xsheet, 0, {0, 5}, LevelSource::Rotation, swings);
    for (int frame = 1; frame < 5; ++frame) {
        const CXSheetCell& cell = xsheet.Cell(0, frame);
        EXPECT_TRUE(cell.Transparency() >= 0 && cell.Transparency() <= 100) << frame;
        EXPECT_TRUE(cell.BlurX() >= 1 && cell.BlurX() <= 50 && cell.BlurY() >= 1) << frame;
    }
    EXPECT_EQ(xsheet.Cell(0, 3).Transparency(), 100);
}

TEST(Inbetween, ValuesStandOnTwosAndThreesFromTheFirstKey) {
    for (const InbetweenType type : {InbetweenType::Linear, InbetweenType::SlowIn, InbetweenType::Drawn}) {
        CCameraTrack ones, threes;
        for (CCameraTrack* camera : {&ones, &threes}) {
            camera->MutableAt(10).panX = 0.1;
            camera->MutableAt(18).panX = 80;
        }
        InbetweenCamera(ones, {10, 18}, CameraSource::Pan, type);
        InbetweenCamera(threes, {10, 18}, CameraSource::Pan, {type, {}, 3});
        const int shown[] = {10, 10, 10, 13, 13, 13, 16, 16, 18};
        for (int frame = 10; frame <= 18; ++frame)
            EXPECT_EQ(threes.At(frame).panX, ones.At(shown[frame - 10]).panX) << frame;
    }
    EXPECT_EQ(CBetweenValues({InbetweenType::Linear, {}, -7}, {0, 4}, 0, 4).At(3), 3) << "on ones";
}
