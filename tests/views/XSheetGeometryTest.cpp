#include "views/xsheet/XSheetGeometry.h"
#include "views/xsheet/XSheetMouse.h"
#include "views/xsheet/XSheetSounds.h"

#include <Qt>
#include <gtest/gtest.h>

namespace velmor {
namespace {

// Five whole columns and ten whole rows.
CXSheetGeometry Sheet(int levels = 12, int frames = 100) {
    CXSheetGeometry sheet;
    sheet.client = {30 + 5 * 80 + 140, 40 + 10 * 20};
    sheet.levelCount = levels;
    sheet.frameCount = frames;
    return sheet;
}

TEST(XSheetGeometryTest, ScrollMaximaLeaveARowBelowTheLastFrame) {
    EXPECT_EQ(Sheet().MostFirstFrame(), 91);
    EXPECT_EQ(Sheet(12, 10).MostFirstFrame(), 0);
    EXPECT_EQ(Sheet(12, 11).MostFirstFrame(), 2);
    EXPECT_EQ(Sheet().MostFirstLevel(), 7);
    EXPECT_EQ(Sheet(5).MostFirstLevel(), 0);

    CXSheetGeometry sheet = Sheet();
    sheet.firstFrame = 1000;
    sheet.firstLevel = -3;
    sheet.ClampScroll();
    EXPECT_EQ(sheet.firstFrame, 91);
    EXPECT_EQ(sheet.firstLevel, 0);
    sheet.client = {};
    sheet.ClampScroll();
    EXPECT_EQ(sheet.VisibleFrames(), 0);
    EXPECT_EQ(sheet.firstFrame, 91);
}

TEST(XSheetGeometryTest, PointsGoToTheNearestLevelAndFrame) {
    CXSheetGeometry sheet = Sheet();
    sheet.firstLevel = 2;
    sheet.firstFrame = 5;
    EXPECT_EQ(sheet.XToLevel(30), 2);
    EXPECT_EQ(sheet.XToLevel(109), 2);
    EXPECT_EQ(sheet.XToLevel(110), 3);
    EXPECT_EQ(sheet.XToLevel(0), 2) << "the frame numbers belong to the first visible level";
    EXPECT_EQ(sheet.XToLevel(-51), 1);
    EXPECT_EQ(sheet.XToLevel(-4000), 0);
    EXPECT_EQ(sheet.XToLevel(4000), 11);
    EXPECT_EQ(sheet.YToFrame(40), 5);
    EXPECT_EQ(sheet.YToFrame(59), 5);
    EXPECT_EQ(sheet.YToFrame(60), 6);
    EXPECT_EQ(sheet.YToFrame(21), 5) << "so does the row of names to the first visible frame";
    EXPECT_EQ(sheet.YToFrame(20), 4);
    EXPECT_EQ(sheet.YToFrame(-400), 0);
    EXPECT_EQ(sheet.YToFrame(40000), 99);
}

TEST(XSheetGeometryTest, DropsOutsideTheSheetHaveNoTarget) {
    CXSheetGeometry sheet = Sheet(3, 8);
    EXPECT_EQ(sheet.DropTarget({30 + 2 * 80, 40 + 7 * 20}), (CSheetCell{2, 7}));
    EXPECT_EQ(sheet.DropTarget({30 + 3 * 80, 100}), std::nullopt);
    EXPECT_EQ(sheet.DropTarget({40, 40 + 8 * 20}), std::nullopt);
    EXPECT_EQ(sheet.DropTarget({40, 20}), std::nullopt);
    EXPECT_EQ(sheet.DropTarget({-50, 100}), std::nullopt);
    EXPECT_EQ(sheet.DropFrame(40 + 8 * 20), std::nullopt);
    sheet.firstFrame = 2;
    EXPECT_EQ(sheet.DropFrame(45), 2);
}

TEST(XSheetGeometryTest, HeaderButtonsStartOnePixelInsideTheLevels) {
    CXSheetGeometry sheet = Sheet(4);
    sheet.firstLevel = 1;
    EXPECT_EQ(sheet.HeaderButtonAt(30), std::nullopt);
    EXPECT_EQ(sheet.HeaderButtonAt(31), (CHeaderHit{HeaderButton::Blur, 1}));
    EXPECT_EQ(sheet.HeaderButtonAt(50), (CHeaderHit{HeaderButton::Transparency, 1}));
    EXPECT_EQ(sheet.HeaderButtonAt(70), (CHeaderHit{HeaderButton::Move, 1}));
    EXPECT_EQ(sheet.HeaderButtonAt(90), std::nullopt) << "the number";
    EXPECT_EQ(sheet.HeaderButtonAt(110), (CHeaderHit{HeaderButton::Blur, 2}));
    EXPECT_EQ(sheet.HeaderButtonAt(30 + 3 * 80), std::nullopt) << "no level there";

    const int cameraX = sheet.client.width() - 140;
    EXPECT_EQ(sheet.HeaderButtonAt(cameraX), std::nullopt);
    EXPECT_EQ(sheet.HeaderButtonAt(cameraX + 1), (CHeaderHit{HeaderButton::Camera, 0}));
    EXPECT_EQ(sheet.HeaderButtonAt(cameraX + 19), (CHeaderHit{HeaderButton::Camera, 0}));
    EXPECT_EQ(sheet.HeaderButtonAt(cameraX + 20), std::nullopt);
}

TEST(XSheetGeometryTest, OnlyWhatIsSeenIsACell) {
    const CXSheetGeometry sheet = Sheet();
    const int cameraX = sheet.client.width() - 140;
    EXPECT_EQ(sheet.CellAt({cameraX - 1, 45}), (CSheetCell{4, 0}));
    EXPECT_EQ(sheet.CellAt({cameraX, 45}), std::nullopt);
    EXPECT_EQ(sheet.CellAt({40, 39}), std::nullopt);
    EXPECT_EQ(sheet.CellAt({29, 45}), std::nullopt);
    EXPECT_EQ(sheet.CameraFrameAt({cameraX, 60}), 1);
    EXPECT_EQ(sheet.CameraFrameAt({cameraX + 79, 39}), std::nullopt);
    EXPECT_EQ(sheet.CameraFrameAt({cameraX + 80, 60}), std::nullopt) << "sounds";
    EXPECT_EQ(sheet.CellRect({1, 2}), QRect(110, 80, 80, 20));
}

TEST(XSheetGeometryTest, SelectionsScrollFasterFartherOut) {
    const CXSheetGeometry sheet = Sheet();
    const int right = sheet.client.width(), bottom = sheet.client.height();
    EXPECT_EQ(sheet.SelectionScroll({30, 40}), QPoint(0, 0));
    EXPECT_EQ(sheet.SelectionScroll({right - 1, bottom - 1}), QPoint(0, 0));
    EXPECT_EQ(sheet.SelectionScroll({30, bottom}), QPoint(0, 1));
    EXPECT_EQ(sheet.SelectionScroll({30, bottom + 23}), QPoint(0, 5));
    EXPECT_EQ(sheet.SelectionScroll({30, 39}), QPoint(0, -1));
    EXPECT_EQ(sheet.SelectionScroll({30, 0}), QPoint(0, -9));
    EXPECT_EQ(sheet.SelectionScroll({right + 500, 100}), QPoint(1, 0));
    EXPECT_EQ(sheet.SelectionScroll({29, 100}), QPoint(-1, 0));
}

TEST(XSheetGeometryTest, ShowingACellScrollsAsLittleAsItCan) {
    CXSheetGeometry sheet = Sheet();
    sheet.firstFrame = 20;
    sheet.firstLevel = 3;
    EXPECT_EQ(sheet.Showing({5, 25}), sheet);
    EXPECT_EQ(sheet.Showing({5, 30}).firstFrame, 21);
    EXPECT_EQ(sheet.Showing({5, 12}).firstFrame, 12);
    EXPECT_EQ(sheet.Showing({8, 25}).firstLevel, 4);
    EXPECT_EQ(sheet.Showing({0, 25}).firstLevel, 0);
}

TEST(XSheetGeometryTest, KeysMoveInsideTheSheet) {
    const CXSheetGeometry sheet = Sheet();
    EXPECT_EQ(CursorAfterKey(Qt::Key_PageDown, {3, 5}, sheet), (CSheetCell{3, 14}));
    EXPECT_EQ(CursorAfterKey(Qt::Key_PageUp, {3, 5}, sheet), (CSheetCell{3, 0}));
    EXPECT_EQ(CursorAfterKey(Qt::Key_Right, {11, 5}, sheet), (CSheetCell{11, 5}));
    EXPECT_EQ(CursorAfterKey(Qt::Key_End, {3, 5}, sheet), (CSheetCell{3, 99}));
    EXPECT_EQ(CursorAfterKey(Qt::Key_A, {3, 5}, sheet), std::nullopt);
}

TEST(XSheetSoundsTest, ALaterSoundCoversAnEarlierOneThatGoesOnBehindIt) {
    const std::vector<CSoundPlacement> placements{{4, "short"}, {1, "long"}, {9, "none"}, {30, "past the end"}};
    const auto lengthOf = [](const std::string& name) -> std::uint64_t {
        return name == "long" ? 882 * 6 + 1 : name == "short" ? 882 : 0;
    };
    EXPECT_EQ(HeardSounds(placements, 10, 25, lengthOf), (std::vector<int>{-1, 1, 1, 1, 0, 1, 1, 1, -1, -1}));
    EXPECT_EQ(HeardSounds(placements, 5, 25, lengthOf), (std::vector<int>{-1, 1, 1, 1, 0}));
}

// Levels 1 and 3 are strips of 18 pixels: the columns begin at 30, 110, 128, 208, 226, 306.
TEST(XSheetGeometryTest, FoldedLevelsAreStrips) {
    CXSheetGeometry sheet = Sheet(8);
    sheet.folded[1] = sheet.folded[3] = true;
    EXPECT_EQ(sheet.ColumnX(2), 128);
    EXPECT_EQ(sheet.CellRect({3, 0}), QRect(208, 40, 18, 20));
    for (int level = 0; level < 6; ++level) {
        EXPECT_EQ(sheet.XToLevel(sheet.ColumnX(level)), level);
        EXPECT_EQ(sheet.XToLevel(sheet.ColumnX(level) + sheet.WidthOf(level) - 1), level);
    }
    EXPECT_EQ(sheet.VisibleLevels(), 6);
    EXPECT_EQ(sheet.EndLevel(), 7);
    EXPECT_EQ(sheet.MostFirstLevel(), 3) << "18 and four times 80";
    EXPECT_FALSE(sheet.HeaderButtonAt(115)) << "a strip has no buttons";
    EXPECT_EQ(sheet.HeaderButtonAt(128 + 21), (CHeaderHit{HeaderButton::Transparency, 2}));
    EXPECT_EQ(sheet.Showing({6, 0}).firstLevel, 1);
    sheet.firstLevel = 2;
    EXPECT_EQ(sheet.ColumnX(0), 30 - 80 - 18);
    EXPECT_EQ(CursorAfterKey(Qt::Key_Right, {2, 0}, sheet), (CSheetCell{4, 0}));
    EXPECT_EQ(CursorAfterKey(Qt::Key_Left, {2, 0}, sheet), (CSheetCell{0, 0}));
}

} // namespace
} // namespace velmor
