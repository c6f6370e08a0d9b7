#include "scene/CelFilling.h"

#include "AssetScene.h"
#include "DocumentFixture.h"
#include "RandomImages.h"
#include "scene/PaletteOperations.h"
#include "scene/VisibleLines.h"

#include <cmath>

namespace velmor::testing {
namespace {

constexpr CColor red{0, 0, 255, 255};

/// Two rooms side by side, each open to the background by a gap of 3 pixels at its top.
class CelFillingTest : public CDocumentFixture {
protected:
    CelFillingTest() {
        NewScene("Test", 10, 100, 80);
        const CScenePaths paths = doc->Model().Paths();
        static_cast<void>(CreateFolder(paths.CelFolder("A")));
        doc->Scenes().SetFolderName("A");
        CCelImg cel;
        EXPECT_TRUE(cel.CreateCel(100, 80, paths.CelFile("A", "1")));
        for (int i = 0; i <= 60; ++i) {
            cel.SetLine(20 + i, 20, true);
            cel.SetLine(20 + i, 60, i % 30 < 13 || i % 30 > 15);
        }
        for (int y = 20; y <= 60; ++y)
            for (const int x : {20, 50, 80})
                cel.SetLine(x, y, true);
        EXPECT_TRUE(cel.Save());
        doc->Assets().EditCel("1");
        doc->Palette().SetFGColorValue(MakeColorRef(255, 0, 0));
        doc->Palette().SetBGColorValue(MakeColorRef(0, 0, 255)); // where a gradient begins
    }

    bool IsRed(int x, int y) const { return doc->Model().celImg.ColorAt(x, y) == red; }
    void Choose(const CFillChoices& choices, int mode = 0) {
        doc->Palette().SetFill(choices);
        doc->Palette().SetBucketMode(mode);
    }
    CPaintResult Drag(CelTool tool, const std::vector<CPoint>& way, bool force = false) {
        EXPECT_TRUE(doc->Filling().Begin(tool, way.front()));
        CPaintResult all;
        for (std::size_t i = 1; i < way.size(); ++i) {
            const CPaintResult moved = doc->Filling().Move(way[i], force);
            all = {moved.status, Union(all.changed, moved.changed), moved.leak ? moved.leak : all.leak};
        }
        const CPaintResult ended = doc->Filling().End(way.back(), force);
        return {ended.status, Union(all.changed, ended.changed), ended.leak ? ended.leak : all.leak};
    }
    /// Undo must lead back by one step.
    void ExpectOneStepFrom(const CCelImg& before, const char* what) {
        const CCelImg after = doc->Model().celImg;
        doc->History().Undo();
        EXPECT_TRUE(AreSamePixels(doc->Model().celImg, before)) << what;
        doc->History().Redo();
        EXPECT_TRUE(AreSamePixels(doc->Model().celImg, after)) << what;
        doc->History().Undo();
    }
    static bool AreSamePixels(const CCelImg& a, const CCelImg& b) { return a.FileBytes() == b.FileBytes(); }
};

TEST_F(CelFillingTest, EveryModeStaysInsideGapsAndIsOneStep) {
    struct {
        const char* name;
        CelTool tool;
        int mode;
        bool overAreas;
        std::vector<CPoint> way;
        bool second; ///< whether the right room is filled as well
    } const cases[] = {
        {"solid", CelTool::Bucket, 0, false, {{90, 70}, {30, 30}}, false},
        {"gradient", CelTool::Bucket, 1, false, {{30, 30}, {100, 30}}, false},
        {"box", CelTool::Bucket, 2, false, {{85, 65}, {15, 15}}, true},
        {"dragged", CelTool::Bucket, 0, true, {{30, 30}, {60, 40}}, true},
        {"loop", CelTool::AreaFill, 0, false, {{15, 15}, {85, 15}, {85, 65}, {15, 65}}, true},
        {"half a loop", CelTool::AreaFill, 0, false, {{15, 15}, {70, 15}, {70, 65}, {15, 65}}, false},
    };
    const CCelImg before = doc->Model().celImg;
    for (const auto& one : cases) {
        CFillChoices choices;
        choices.gap = 3;
        choices.overAreas = one.overAreas;
        Choose(choices, one.mode);
        const CPaintResult result = Drag(one.tool, one.way);
        EXPECT_TRUE(result.status) << one.name;
        EXPECT_NE(doc->Model().celImg.ColorAt(21, 21), before.ColorAt(21, 21)) << one.name;
        EXPECT_NE(doc->Model().celImg.ColorAt(49, 59), before.ColorAt(49, 59)) << one.name;
        EXPECT_EQ(IsRed(79, 21), one.second) << one.name;
        EXPECT_EQ(doc->Model().celImg.ColorAt(35, 70), before.ColorAt(35, 70)) << one.name;
        ExpectOneStepFrom(before, one.name);
    }
}

TEST_F(CelFillingTest, ALeakIsRefusedUntilItIsForced) {
    CFillChoices choices;
    choices.gap = 2;
    Choose(choices);
    const CCelImg before = doc->Model().celImg;
    const bool couldUndo = CanUndo(doc->Model());
    const CPaintResult refused = Drag(CelTool::Bucket, {{30, 30}});
    ASSERT_TRUE(refused.leak);
    EXPECT_NEAR(refused.leak->x, 34, 1);
    EXPECT_NEAR(refused.leak->y, 60, 1);
    EXPECT_TRUE(AreSamePixels(doc->Model().celImg, before));
    EXPECT_EQ(CanUndo(doc->Model()), couldUndo);
    EXPECT_FALSE(Drag(CelTool::Bucket, {{30, 30}}, true).leak);
    EXPECT_TRUE(IsRed(2, 2));
    ExpectOneStepFrom(before, "forced");
    choices.refuseLeaks = false;
    Choose(choices);
    EXPECT_FALSE(Drag(CelTool::Bucket, {{30, 30}}).leak);
    EXPECT_TRUE(IsRed(2, 2));
}

TEST_F(CelFillingTest, ADragGivenUpLeavesWhatItHasPaintedAsAStep) {
    Choose({3, true, 0, FillLines::ThisCel, true});
    const CCelImg before = doc->Model().celImg;
    ASSERT_TRUE(doc->Filling().Begin(CelTool::Bucket, {30, 30}));
    EXPECT_FALSE(doc->Filling().Begin(CelTool::Bucket, {30, 30}));
    static_cast<void>(doc->Filling().Move({31, 30}, false));
    doc->Filling().Cancel();
    EXPECT_TRUE(IsRed(40, 40));
    EXPECT_FALSE(IsRed(60, 40));
    ExpectOneStepFrom(before, "given up");
    EXPECT_FALSE(doc->Filling().Move({60, 40}, false).leak);
    EXPECT_FALSE(IsRed(60, 40));
}

TEST_F(CelFillingTest, ChoicesAreHeldToTheirRangesAndComeBack) {
    const CFillChoices odd{77, false, -3, FillLines::VisibleCels, true};
    doc->Palette().SetFill(odd);
    const CFillChoices held{mostFillGap, false, 0, FillLines::VisibleCels, true};
    EXPECT_EQ(doc->Model().paint.fill, held);
    StartDocument();
    EXPECT_EQ(doc->Model().paint.fill, held);
    prompter.Answer(CFillChoices{4, true, 2, FillLines::ThisCel, false});
    doc->Palette().EditFillSettings();
    EXPECT_EQ(doc->Model().paint.fill.gap, 4);
    prompter.Cancel();
    doc->Palette().EditFillSettings();
    EXPECT_EQ(doc->Model().paint.fill.underLine, 2);
}

class VisibleLinesTest : public CAssetScene {
protected:
    VisibleLinesTest() {
        SetLevels(4);
        for (int level = 0; level < 3; ++level)
            Put(level, 0, std::to_string(level));
        CCelImg lines;
        EXPECT_TRUE(lines.CreateCel(100, 100, CelFile("0")));
        for (int i = 10; i < 90; ++i)
            for (const auto& [x, y] : {std::pair(i, 10), std::pair(10, i), std::pair(i, 60)})
                lines.SetLine(x, y, true);
        EXPECT_TRUE(lines.Save());
        CCelImg paint;
        EXPECT_TRUE(paint.CreateCel(100, 100, CelFile("1")));
        paint.SetLine(3, 3, true);
        EXPECT_TRUE(paint.Save());
        model.celImg = paint;
        model.celImg.SetFilePath(CelFile("1"));
    }
    void Place(int level, const CCellTransform& transform, double transparency = 0) {
        scene.xsheet.MutableCell(level, 0) =
            CXSheetCell::FromFile("Man", std::to_string(level), transform, transparency, 1, 1, {100, 100});
    }
    std::vector<CPoint> Found(int most = 1 << 20) {
        std::vector<CPoint> found;
        const CMaskPlane& lines = visible.Of(model);
        for (int y = 0; y < lines.Height(); ++y)
            for (int x = 0; x < lines.Width() && static_cast<int>(found.size()) < most; ++x)
                if (lines.Has(x, y))
                    found.push_back({x, y});
        return found;
    }

    CVisibleLines visible;
};

TEST_F(VisibleLinesTest, AreThoseOfOtherCelsWhereTheyLie) {
    EXPECT_EQ(Found(1), (std::vector<CPoint>{{10, 10}}));
    EXPECT_EQ(Found().size(), 80u * 3 - 2);
    EXPECT_FALSE(visible.Of(model).Has(3, 3)) << "its own lines are its own";
    Place(0, {389, 285, 1, 1, 0}); // moved by (5, -3)
    EXPECT_EQ(Found(1), (std::vector<CPoint>{{15, 7}}));
    Place(1, {389, 285, 1, 1, 0}); // and the paint with it
    EXPECT_EQ(Found(1), (std::vector<CPoint>{{10, 10}}));
    Place(0, {389, 285, 1, 1, 0}, 100);
    EXPECT_TRUE(Found().empty()) << "it is not to be seen";
    model.cursorFrame = 5;
    Place(0, {389, 285, 1, 1, 0});
    EXPECT_TRUE(Found().empty()) << "it is not in this frame";
}

TEST_F(VisibleLinesTest, KeepTheirWayWhenOneIsTurnedOrSmaller) {
    // A line of the other cel, drawn pixel by pixel at its place, is never missed.
    for (const CCellTransform& transform :
         {CCellTransform{384, 288, 0.5, 0.5, 0}, CCellTransform{384, 288, 1, 1, 0.3},
          CCellTransform{390, 280, 2, 2, 1}}) {
        Place(0, transform);
        const CMaskPlane& lines = visible.Of(model);
        const double c = std::cos(transform.rotation);
        const double s = std::sin(transform.rotation);
        for (int i = 10; i < 90; ++i) {
            const double dx = (i + 0.5 - 50) * transform.scaleX;
            const double dy = (60.5 - 50) * transform.scaleY;
            // Rendering turns the frame's point to find the image's, so the image turns the other way.
            const int x = static_cast<int>(std::floor(dx * c + dy * s + transform.posX - 384 + 50));
            const int y = static_cast<int>(std::floor(dy * c - dx * s + transform.posY - 288 + 50));
            bool isNear = x < 1 || y < 1 || x > 98 || y > 98;
            for (int v = y - 1; v <= y + 1 && !isNear; ++v)
                for (int u = x - 1; u <= x + 1; ++u)
                    isNear |= lines.Has(u, v);
            EXPECT_TRUE(isNear) << transform.scaleX << ' ' << x << ' ' << y;
        }
    }
}

TEST_F(VisibleLinesTest, FollowFilesAndForgetThoseThatAreGone) {
    EXPECT_EQ(Found().size(), 80u * 3 - 2);
    CCelImg other;
    ASSERT_TRUE(other.CreateCel(100, 100, CelFile("0")));
    other.SetLine(50, 50, true);
    ASSERT_TRUE(other.Save());
    EXPECT_EQ(Found(), (std::vector<CPoint>{{50, 50}}));
    ASSERT_TRUE(RemoveFile(CelFile("0")));
    EXPECT_TRUE(Found().empty());
}

} // namespace
} // namespace velmor::testing
