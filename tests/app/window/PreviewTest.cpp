// Playing in place and scrubbing, in the assembled window.

#include "MainFrameFixture.h"
#include "RecordedOutput.h"
#include "TestScene.h"
#include "qt/Patience.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/preview/ScenePreview.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QDialog>
#include <QLabel>
#include <QToolBar>

namespace velmor::testing {
namespace {

class CPreviewTest : public CMainFrameFixture {
protected:
    CPreviewTest() {
        doc = std::make_unique<CVelmorltDoc>(prompter, profile, CDocumentFolders{folder.Path(), folder / "data"},
                                             std::make_unique<CRecordedAudio>(sound));
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
        Frame();
    }
    ~CPreviewTest() override { EndFrame(); }

    CScenePreview& Preview() { return doc->Preview(); }
    CCameraView& Camera() { return Frame().CameraPane().View(); }
    CXSheetView& Sheet() { return Frame().XsheetPane().View(); }
    int CursorFrame() { return doc->Model().cursorFrame; }

    // The sound as well begins with the first picture.
    bool WaitForAll() {
        return WaitFor([this] {
            if (!Preview().Frame())
                return false;
            for (int frame = 0; frame < CTestScene::frames; ++frame)
                if (!Preview().IsReady(frame))
                    return false;
            return true;
        });
    }
    static QImage FrameNumbers(CXSheetView& sheet) {
        return sheet.viewport()->grab({0, 0, CXSheetGeometry::frameColumnWidth, 240}).toImage();
    }
    void Mouse(QEvent::Type type, int frame, Qt::KeyboardModifiers modifiers) {
        const QPointF at(10, Sheet().Geometry().RowY(frame) + 5);
        const bool moves = type == QEvent::MouseMove;
        QMouseEvent event(type, at, Sheet().viewport()->mapToGlobal(at), moves ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, modifiers);
        QApplication::sendEvent(Sheet().viewport(), &event);
    }

    CTestScene scene{Database()};
    std::shared_ptr<CRecordedSound> sound = std::make_shared<CRecordedSound>();
};

TEST_F(CPreviewTest, SpaceInCameraViewAndSheetPlaysAndStops) {
    for (QWidget* view : {static_cast<QWidget*>(&Camera()), static_cast<QWidget*>(&Sheet())}) {
        view->setFocus();
        Key(Qt::Key_Space);
        EXPECT_TRUE(Preview().IsPlaying());
        ASSERT_TRUE(WaitFor([this] { return Preview().Frame().has_value(); }));
        EXPECT_EQ(sound->played.size(), 1u);
        Frame().UpdateCommands();
        EXPECT_TRUE(Frame().Action(CommandId::PreviewPlay)->isChecked());
        Key(Qt::Key_Space);
        EXPECT_FALSE(Preview().IsPlaying());
        sound->played.clear();
    }
    Frame().ShowCelEditor();
    Key(Qt::Key_Space);
    EXPECT_FALSE(Preview().IsPlaying()) << "there it moves the image and does no more";
}

TEST_F(CPreviewTest, SpaceThatIsHeldOrMovesTheImageDoesNotPlay) {
    const auto press = [this](QEvent::Type type, quint64 when) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, " ");
        event.setTimestamp(when);
        QApplication::sendEvent(&Camera(), &event);
    };
    press(QEvent::KeyPress, 1000);
    press(QEvent::KeyRelease, 1400);
    EXPECT_FALSE(Preview().IsPlaying());
    press(QEvent::KeyPress, 2000);
    QTest::mousePress(Camera().viewport(), Qt::LeftButton);
    QTest::mouseRelease(Camera().viewport(), Qt::LeftButton);
    press(QEvent::KeyRelease, 2100);
    EXPECT_FALSE(Preview().IsPlaying());
    press(QEvent::KeyPress, 3000);
    press(QEvent::KeyRelease, 3100);
    EXPECT_TRUE(Preview().IsPlaying());
}

TEST_F(CPreviewTest, TheSheetShowsWhatPlaysAndWhatIsReady) {
    const QImage before = FrameNumbers(Sheet());
    doc->Cursor().GoTo({0, 4});
    Run(CommandId::PreviewPlay);
    ASSERT_TRUE(WaitForAll());
    sound->heard = 918 * 3 + 400;
    ASSERT_TRUE(WaitFor([this] { return Preview().Frame() == 7; }));
    EXPECT_EQ(CursorFrame(), 4);
    Frame().UpdateCommands();
    EXPECT_EQ(Frame().findChild<QLabel*>("current frame")->text(), "Current Frm : 8");
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Preview().IsPlaying());
    EXPECT_EQ(CursorFrame(), 4);
    doc->Cursor().GoTo({0, 0});
    const QImage ready = FrameNumbers(Sheet());
    EXPECT_NE(ready, before);
    EXPECT_EQ(ready.copy(4, 0, 26, 240), before.copy(4, 0, 26, 240)) << "a thin bar";
    Run(CommandId::PreviewFree);
    EXPECT_EQ(FrameNumbers(Sheet()), before);
}

TEST_F(CPreviewTest, WhatIsEditedWhileItPlaysIsPlayedAsItIsThen) {
    Run(CommandId::PreviewPlay);
    ASSERT_TRUE(WaitForAll());
    const std::int64_t composed = Preview().Composed();
    doc->Cursor().GoTo({0, 6});
    Run(CommandId::EditCut);
    EXPECT_TRUE(Preview().IsPlaying());
    EXPECT_TRUE(doc->Model().Scene().xsheet.Cell(0, 5).IsUsed());
    EXPECT_FALSE(doc->Model().Scene().xsheet.Cell(0, 6).IsUsed());
    ASSERT_TRUE(WaitForAll());
    EXPECT_EQ(Preview().Composed(), composed + 1);
    EXPECT_EQ(sound->played.size(), 1u) << "nothing that is heard has changed";
}

TEST_F(CPreviewTest, AnArrowKeyGoesOnFromTheFrameThatIsSeen) {
    for (QWidget* view : {static_cast<QWidget*>(&Camera()), static_cast<QWidget*>(&Sheet())}) {
        doc->Cursor().GoTo({0, 2});
        view->setFocus();
        Key(Qt::Key_Space);
        ASSERT_TRUE(WaitForAll());
        sound->heard = 918 * 3 + 400;
        ASSERT_TRUE(WaitFor([this] { return Preview().Frame() == 5; }));
        Key(Qt::Key_Down);
        EXPECT_FALSE(Preview().IsPlaying());
        EXPECT_EQ(CursorFrame(), 6);
    }
}

TEST_F(CPreviewTest, StopsBeforeAnythingModal) {
    Run(CommandId::PreviewPlay);
    ASSERT_TRUE(WaitFor([this] { return Preview().Frame().has_value(); }));
    QDialog dialog(&Frame());
    dialog.setModal(true);
    dialog.show();
    EXPECT_FALSE(Preview().IsPlaying());
    EXPECT_FALSE(sound->isOpen);
}

TEST_F(CPreviewTest, TheTransportBarStepsSetsTheRangeAndIsRemembered) {
    doc->Cursor().GoTo({0, 3});
    Run(CommandId::PreviewRangeIn);
    Run(CommandId::PreviewLast);
    EXPECT_EQ(CursorFrame(), 9);
    Run(CommandId::PreviewBack);
    Run(CommandId::PreviewRangeOut);
    EXPECT_EQ(Frame().findChild<QLabel*>("played")->text(), "100 %   4 - 9");
    Run(CommandId::PreviewFirst);
    EXPECT_EQ(CursorFrame(), 3);
    Run(CommandId::PreviewBack);
    Run(CommandId::PreviewNext);
    EXPECT_EQ(CursorFrame(), 3);
    Run(CommandId::PreviewRangeClear);
    Run(CommandId::PreviewFirst);
    EXPECT_EQ(CursorFrame(), 0);
    Run(CommandId::PreviewBack);
    EXPECT_EQ(CursorFrame(), 0);

    Run(CommandId::PreviewLoop);
    Run(CommandId::PreviewSlower);
    Run(CommandId::PreviewFullSize);
    Run(CommandId::PreviewFollowsCamera);
    const CPreviewChoices chosen = Preview().Choices();
    EXPECT_EQ(chosen, (CPreviewChoices{false, 75, false, true}));
    EXPECT_EQ(CPreviewChoices::Remembered(profile), chosen);
    Run(CommandId::ViewTransportBar);
    EXPECT_TRUE(Frame().CameraPane().findChild<QToolBar*>("transport")->isHidden());
}

TEST_F(CPreviewTest, DraggingOverFrameNumbersSelectsAndWithCtrlScrubs) {
    Mouse(QEvent::MouseButtonPress, 1, Qt::NoModifier);
    Mouse(QEvent::MouseMove, 3, Qt::NoModifier);
    Mouse(QEvent::MouseButtonRelease, 3, Qt::NoModifier);
    EXPECT_EQ(doc->Model().selection, (CXSheetSelection{0, 0, 1, 3}));
    EXPECT_TRUE(sound->played.empty());

    Mouse(QEvent::MouseButtonPress, 2, Qt::ControlModifier);
    for (int frame = 2; frame <= 5; ++frame)
        Mouse(QEvent::MouseMove, frame, Qt::ControlModifier);
    EXPECT_EQ(CursorFrame(), 5);
    const auto track = *doc->Sounds().GetSoundBuffer();
    ASSERT_EQ(sound->played.size(), 4u);
    EXPECT_EQ(sound->played[2], std::vector<std::uint8_t>(track.begin() + 4 * 918, track.begin() + 5 * 918));
    Mouse(QEvent::MouseButtonRelease, 5, Qt::ControlModifier);
    EXPECT_FALSE(sound->isOpen);

    Run(CommandId::PreviewScrub);
    Mouse(QEvent::MouseButtonPress, 1, Qt::NoModifier);
    EXPECT_EQ(sound->played.size(), 5u);
    Mouse(QEvent::MouseButtonRelease, 1, Qt::NoModifier);
    Run(CommandId::PreviewScrub);
}

} // namespace
} // namespace velmor::testing
