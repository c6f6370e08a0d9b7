#include "views/camera/CameraMarks.h"

#include "DocumentFixture.h"
#include "TestScene.h"
#include "scene/CameraOperations.h"
#include "scene/CellOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

#include <cmath>

namespace velmor::testing {
namespace {

class CCameraMarksTest : public CDocumentFixture {
protected:
    CCameraMarksTest() {
        const CTestScene scene(Database());
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
        prompter.Answer(0); // paths of all levels
        doc->Camera().ChooseMotionPaths();
    }

    CPathPoint PointOf(int level, int frame) const {
        const CCameraMarks marks = CollectCameraMarks(doc->Model(), doc->Cells());
        const auto path = std::ranges::find(marks.paths, level, &CLevelPath::level);
        return path->path.front().points.at(static_cast<std::size_t>(frame - path->path.front().firstFrame));
    }
};

} // namespace

TEST_F(CCameraMarksTest, PathsRunThroughTheMiddleOfWhatTheCameraSees) {
    for (int frame = 0; frame < CTestScene::frames; ++frame) {
        doc->Cursor().SetCursorY(frame);
        const auto corners = doc->Cells().GetXSheetCelPoints(0);
        ASSERT_TRUE(corners);
        double x = 0;
        double y = 0;
        for (const CPoint& corner : *corners) {
            x += corner.x / 4.0;
            y += corner.y / 4.0;
        }
        // Both are cut to whole pixels on their way.
        const CPoint point = PointOf(0, frame).at;
        EXPECT_NEAR(point.x, x, 2) << frame;
        EXPECT_NEAR(point.y, y, 2) << frame;
        EXPECT_EQ(point, doc->Cells().GetXSheetCellCentre(0, frame)) << frame;
    }
}

TEST_F(CCameraMarksTest, AnInbetweenShowsOnThePathAtOnceAndACancelledOneChangesNothing) {
    doc->Cursor().SetSelEndY(8);
    const CXSheet before = doc->Model().Scene().xsheet;
    prompter.Answer(CInbetweenAnswer{false, {0, 3}});
    doc->Cells().Inbetween();
    EXPECT_EQ(doc->Model().Scene().xsheet, before);

    const CPoint straight = PointOf(0, 2).at;
    prompter.Answer(CInbetweenAnswer{true, {0, 3}});
    doc->Cells().Inbetween();
    const CPoint eased = PointOf(0, 2).at;
    EXPECT_LT(eased.x, straight.x) << "it starts slowly";
    EXPECT_EQ(eased, doc->Cells().GetXSheetCellCentre(0, 2));
    doc->History().Undo();
    EXPECT_EQ(PointOf(0, 2).at, straight);
}

} // namespace velmor::testing
