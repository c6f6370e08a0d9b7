#include "scene/CameraAids.h"
#include "MainFrameFixture.h"
#include "TestScene.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"

namespace velmor::testing {
namespace {

class CCameraAidsTest : public CMainFrameFixture {
protected:
    bool IsChecked(CommandId id) {
        Frame().UpdateCommands();
        return Frame().Action(id)->isChecked();
    }
    bool IsEnabled(CommandId id) {
        Frame().UpdateCommands();
        return Frame().Action(id)->isEnabled();
    }
    CCameraView& Camera() { return Frame().CameraPane().View(); }

    CTestScene scene{Database()};
};

} // namespace

TEST_F(CCameraAidsTest, WhatIsChosenForTheCameraViewIsCheckedAndRemembered) {
    using enum CommandId;
    const CommandId switches[] = {CameraHandles,   CameraSpacing,   CameraOneToOne,   CameraFields12,
                                  CameraFrameWide, CameraFrameTall, CameraActionSafe, CameraTitleSafe};
    for (const CommandId id : switches)
        EXPECT_FALSE(IsEnabled(id)) << "there is no scene";
    ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
    for (const CommandId id : switches) {
        EXPECT_FALSE(IsChecked(id));
        Run(id);
        EXPECT_TRUE(IsChecked(id));
    }
    EXPECT_TRUE(IsChecked(CameraFieldsOnStage));
    Run(CameraFields16);
    EXPECT_FALSE(IsChecked(CameraFields12));
    EndFrame();
    StartDocument();
    ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
    for (const CommandId id : {CameraHandles, CameraSpacing, CameraOneToOne, CameraFields16, CameraTitleSafe})
        EXPECT_TRUE(IsChecked(id));
    Run(CameraFields16);
    EXPECT_EQ(doc->CameraAids().Choices().fields, 0);
    EXPECT_FALSE(CanUndo(doc->Model())) << "nothing of the scene";
}

TEST_F(CCameraAidsTest, AHandleIsDraggedAndTakenBackInTheWindow) {
    ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
    doc->Cursor().SetLevelCanMove(0);
    Run(CommandId::ViewCamera);
    Camera().setFocus();
    Key(Qt::Key_H);
    ASSERT_TRUE(doc->CameraAids().Choices().handles);
    Camera().FitToWindow();
    QApplication::processEvents();
    const double factor = Camera().Zoom().Factor();
    const QSize room = Camera().viewport()->size();
    // The upper right corner of a square of 20 pixels about (20, 24) of 64 x 48.
    const QPoint corner(static_cast<int>(room.width() / 2.0 + (30 - 32) * factor),
                        static_cast<int>(room.height() / 2.0 - (34 - 24) * factor));
    const QPoint to = corner + QPoint(static_cast<int>(10 * factor), -static_cast<int>(10 * factor));
    QTest::mousePress(Camera().viewport(), Qt::LeftButton, {}, corner);
    QTest::mouseMove(Camera().viewport(), to);
    QTest::mouseRelease(Camera().viewport(), Qt::LeftButton, {}, to);
    const auto scale = [this] { return doc->Model().Scene().xsheet.Cell(0, 0).ScaleX(); };
    EXPECT_NEAR(scale(), 1.5, 0.1);
    Frame().UpdateCommands();
    EXPECT_TRUE(Frame().Action(CommandId::EditUndo)->text().startsWith("&Undo Scale"));
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(scale(), 1);
}

TEST_F(CCameraAidsTest, APathCanBeDrawnWhereThereAreKeys) {
    ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
    EXPECT_FALSE(IsEnabled(CommandId::CameraDrawPath));
    doc->Cursor().SetSelStartY(0);
    doc->Cursor().SetSelEndY(9);
    ASSERT_TRUE(IsEnabled(CommandId::CameraDrawPath));
    Run(CommandId::CameraDrawPath);
    EXPECT_TRUE(IsChecked(CommandId::CameraDrawPath));
    doc->Cursor().SetSelEndY(0);
    EXPECT_TRUE(IsEnabled(CommandId::CameraDrawPath)) << "to leave it again";
    Run(CommandId::CameraDrawPath);
    EXPECT_FALSE(Camera().IsDrawingPath());
    EXPECT_FALSE(IsEnabled(CommandId::CameraDrawPath));
}

} // namespace velmor::testing
