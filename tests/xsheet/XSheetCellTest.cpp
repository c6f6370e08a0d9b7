#include "TempFolder.h"
#include "image/CelImg.h"
#include "xsheet/CellGeometry.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr CSize frameSize{768, 576};

CXSheetCell CelAt(double x, double y, CSize size, double rotation = 0) {
    return CXSheetCell::FromFile("F", "1", {x, y, 1, 1, rotation}, 0, 1, 1, size);
}

using Corners = std::array<CPoint, 4>;

} // namespace

TEST(XSheetCell, EmptyCellsRefuseEveryChange) {
    CXSheetCell cell;
    CSize size{1, 1};
    const auto text = [](const CStatus& status) { return status.Message(); };
    const auto expected = [](const std::string& operation) {
        return "Internal error : " + operation + " called with empty xsheet cel";
    };
    EXPECT_EQ(text(cell.ChangeName("1")), expected("ChangeName"));
    EXPECT_EQ(text(cell.CheckDimensions("/")), expected("CheckDimensions"));
    EXPECT_EQ(text(cell.GetCelSize(size)), expected("GetCelSize"));
    EXPECT_EQ(text(cell.Move(1, 1)), expected("Move"));
    EXPECT_EQ(text(cell.Scale(1, 1)), expected("Scale"));
    EXPECT_EQ(text(cell.Rotate(1)), expected("Scale"));
    EXPECT_EQ(text(cell.SetPos(1, 1)), expected("SetPos"));
    EXPECT_EQ(text(cell.SetRot(1)), expected("SetRot"));
    EXPECT_EQ(text(cell.SetScale(2, 2)), expected("SetScale"));
    EXPECT_EQ(text(cell.SetTrans(1)), expected("SetTrans"));
    EXPECT_EQ(text(cell.SetBlur(2, 2)), expected("SetBlur"));
    EXPECT_EQ(cell, CXSheetCell());
    EXPECT_EQ(size, CSize());
}

TEST(XSheetCell, ScalesByPixelGrowth) {
    CXSheetCell cell = CelAt(0, 0, {100, 100});
    ASSERT_TRUE(cell.Scale(10, 0));
    EXPECT_DOUBLE_EQ(cell.ScaleX(), 1.05);
    EXPECT_DOUBLE_EQ(cell.ScaleY(), 1.05);
    ASSERT_TRUE(cell.SetScale(2, 0.5) && cell.Scale(20, 10)); // grows by 10 % and 20 %
    EXPECT_DOUBLE_EQ(cell.ScaleX(), 2.3);
    EXPECT_DOUBLE_EQ(cell.ScaleY(), 0.575);
    for (const CSize size : {CSize{0, 100}, CSize{100, 0}, CSize{0, 0}}) {
        CXSheetCell flat = CelAt(0, 0, size);
        EXPECT_TRUE(flat.Scale(10, 10) && flat.Scale(0, 0));
        EXPECT_EQ(flat, CelAt(0, 0, size));
    }
}

TEST(XSheetCell, TakesItsSizeFromTheImageFile) {
    const CTempFolder scene;
    static_cast<void>(CreateFolder(scene / "_Pictures_"));
    CCelImg image;
    ASSERT_TRUE(image.CreatePicture(40, 30, scene / "_Pictures_/sky.rgba") && image.Save());
    CXSheetCell cell = CelAt(7, 7, {1, 1}, 1);
    EXPECT_TRUE(cell.Set(scene.Path(), "_Pictures_", "sky", {769, 577}));
    EXPECT_EQ(cell, CXSheetCell::FromFile("_Pictures_", "sky", {384, 288, 1, 1, 0}, 0, 1, 1, {40, 30}));
    ASSERT_TRUE(image.CreatePicture(20, 10, scene / "_Pictures_/sky.rgba") && image.Save());
    EXPECT_TRUE(cell.CheckDimensions(scene.Path()));
    EXPECT_EQ(cell.Size(), (CSize{20, 10}));
    EXPECT_FALSE(cell.Set(scene.Path(), "F", "12a", frameSize));
    EXPECT_EQ(cell, CXSheetCell::FromFile("F", "12a", {384, 288, 1, 1, 0}, 0, 1, 1, {0, 0}));
    EXPECT_EQ(AssetFilePath("/db/S.scene", "F", "12a"), "/db/S.scene/F/12a.bit");
    EXPECT_EQ(AssetFilePath("/db/S.scene/", "/etc", "/x"), "/db/S.scene//etc//x.bit");
}

TEST(CellGeometry, CornersGoThroughTheCamera) {
    const CXSheetCell cell = CelAt(384, 288, {200, 100});
    const CCameraFrame still;
    EXPECT_EQ(CellCorners(cell, still, frameSize), (Corners{{{284, 238}, {484, 238}, {484, 338}, {284, 338}}}));
    const CCameraFrame moved{10.9, -20.9, 0, 2};
    EXPECT_EQ(CellCorners(cell, moved, frameSize), (Corners{{{204, 148}, {604, 148}, {604, 348}, {204, 348}}}));
    // A right angle's cosine misses 0 by a hair, which cuts two corners short by one; cel and camera turn alike.
    const Corners turned{{{433, 188}, {434, 388}, {335, 388}, {334, 188}}};
    EXPECT_EQ(CellCorners(CelAt(384.5, 288.5, {200, 100}, -std::numbers::pi / 2), still, frameSize), turned);
    EXPECT_EQ(CellCorners(cell, {0, 0, -std::numbers::pi / 2, 1}, frameSize), turned);
}

TEST(CellGeometry, StepsCutOffFractions) {
    // 0.6 + 0.6: parts are cut one by one for corners, the sum for the centre.
    const CXSheetCell cell = CXSheetCell::FromFile("F", "1", {0.6, -0.6, 1.5, 1.5, 0}, 0, 1, 1, {3, 3});
    const CCameraFrame camera{0.6, -0.6, 0, 1};
    EXPECT_EQ(CellCorners(cell, camera, {101, 101})[0], (CPoint{-2, -2})); // trunc(4.5) / 2
    EXPECT_EQ(CellCentre(cell, camera, {101, 101}), (CPoint{1, -1}));
    EXPECT_EQ(CellCentre(cell, {0, 0, 0, 0.25}, {101, 101}), (CPoint{50 - 12, 50 - 12}));
    EXPECT_EQ(RotatePoint({10, 5}, 0.5), (CPoint{6, 9})); // 6.38, 9.18
    EXPECT_EQ(RotatePoint({-10, -5}, 0.5), (CPoint{-6, -9}));
}

TEST(CellGeometry, AnyValueOfAFileGivesAPoint) {
    constexpr int most = std::numeric_limits<int>::max(), least = std::numeric_limits<int>::min();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(CellCentre(CelAt(1e300, -1e300, {1, 1}), {1e300, 0, 0, 9}, frameSize), (CPoint{most, least}));
    EXPECT_EQ(CellCentre(CelAt(notANumber, 5, {1, 1}), {}, frameSize), (CPoint{0, 0}));
    const Corners huge = CellCorners(CelAt(2e9, 2e9, {most, most}), {2e9, 2e9, 0, 2}, frameSize);
    EXPECT_EQ(huge[2], (CPoint{most, most}));
    EXPECT_EQ(RotatePoint({most, least}, notANumber), (CPoint{0, 0}));
}
