#include "views/camera/CameraView.h"

#include "DocumentFixture.h"
#include "TestScene.h"
#include "render/FrameRequests.h"
#include "render/FrameWorker.h"
#include "scene/CameraOperations.h"
#include "scene/CameraPictures.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "views/Icons.h"
#include "views/camera/CamFrame.h"

#include <QCursor>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QToolBar>
#include <QWheelEvent>

namespace velmor::testing {
namespace {

constexpr int waitingLimit = 20000; // ms

class CameraView : public CDocumentFixture {
protected:
    ~CameraView() override { view.reset(); }

    // The test scene without marks: the only selected level is empty and no paths are shown.
    void OpenScene() {
        ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
        doc->Cursor().SetLevelCanMove(1);
        prompter.Answer(2);
        doc->Camera().ChooseMotionPaths();
        TakeHints();
    }

    void ShowView(int width = 300, int height = 200) {
        view = std::make_unique<CCameraView>(*doc);
        view->resize(width, height);
        view->show();
    }

    CFrameBuffer Composed() const {
        const CSceneModel& model = doc->Model();
        const CShot shot{model.Scene(), model.Paths().SceneFolder(), model.cameraAntialias};
        CImageCache cache(CImageCache::usualBytes);
        CFrameBuffer frame;
        static_cast<void>(ComposeFrame(RequestCameraPicture(shot, model.cursorFrame), cache, frame, false));
        return frame;
    }

    QPoint Origin() const {
        const QSize client = view->viewport()->size();
        const CSize frame = doc->Model().Scene().geometry.Frame();
        const QSize total(view->Zoom().Scaled(frame.width), view->Zoom().Scaled(frame.height));
        return {client.width() > total.width() ? (client.width() - total.width()) / 2
                                               : -view->horizontalScrollBar()->value(),
                client.height() > total.height() ? (client.height() - total.height()) / 2
                                                 : -view->verticalScrollBar()->value()};
    }

    QImage Grab() const { return view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    // Whether the part of the frame that the view has room for is shown pixel for pixel; each of them `z` x `z`
    // times.
    bool Shows(const CFrameBuffer& frame) const {
        const QImage shown = Grab();
        const QPoint origin = Origin();
        const int z = view->Zoom().Level();
        const CSize size = doc->Model().Scene().geometry.Frame();
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x) {
                const int column = (x - origin.x()) / z;
                const int row = (y - origin.y()) / z;
                if (x < origin.x() || y < origin.y() || column >= size.width || row >= size.height)
                    continue;
                const std::uint8_t* bgr =
                    frame.pixels.data() + ((size.height - 1 - row) * frame.width + column) * 3;
                if (shown.pixel(x, y) != qRgb(bgr[2], bgr[1], bgr[0]))
                    return false;
            }
        return true;
    }

    bool WaitUntilShown() {
        const CFrameBuffer frame = Composed();
        return QTest::qWaitFor([&] { return Shows(frame); }, waitingLimit);
    }

    void Mouse(QEvent::Type type, QPoint point, Qt::MouseButton button = Qt::LeftButton) const {
        const bool isMove = type == QEvent::MouseMove;
        const bool isRelease = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, point, view->viewport()->mapToGlobal(point), isMove ? Qt::NoButton : button,
                          isRelease ? Qt::NoButton : button, Qt::NoModifier);
        QApplication::sendEvent(view->viewport(), &event);
    }
    // A drag in steps of one pixel.
    void Drag(QPoint from, QPoint by, Qt::MouseButton button = Qt::LeftButton) const {
        Mouse(QEvent::MouseButtonPress, from, button);
        const int steps = std::max(std::abs(by.x()), std::abs(by.y()));
        for (int i = 1; i <= steps; ++i)
            Mouse(QEvent::MouseMove, from + by * i / steps, button);
        Mouse(QEvent::MouseButtonRelease, from + by, button);
    }
    void Wheel(QPoint point, int angle, Qt::KeyboardModifiers modifiers) const {
        QWheelEvent event(point, view->viewport()->mapToGlobal(point), {}, {0, angle}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &event);
    }
    QPoint Scroll() const { return {view->horizontalScrollBar()->value(), view->verticalScrollBar()->value()}; }
    CPoint CelPosition(int level) const {
        const CXSheetCell& cel = doc->Model().Scene().xsheet.Cell(level, doc->Model().cursorFrame);
        return {static_cast<int>(cel.PosX()), static_cast<int>(cel.PosY())};
    }

    CTestScene scene{Database()};
    std::unique_ptr<CCameraView> view;
};

TEST_F(CameraView, ShowsTheComposedFramePixelForPixel) {
    OpenScene();
    ShowView();
    EXPECT_TRUE(WaitUntilShown());
    doc->Cursor().SetCursorY(7);
    EXPECT_TRUE(WaitUntilShown());
    doc->Camera().ToggleAntialias();
    EXPECT_TRUE(WaitUntilShown());
    view->ZoomIn();
    view->ZoomIn();
    EXPECT_TRUE(WaitUntilShown());
    view->resize(101, 75); // scrolled: pixels are cut at the edges
    view->horizontalScrollBar()->setValue(31);
    view->verticalScrollBar()->setValue(17);
    EXPECT_TRUE(WaitUntilShown());
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CameraView, ScrollSizesFollowTheZoomAndTheCentreStays) {
    NewScene("Wide", 3, 640, 480);
    ShowView();
    view->ZoomOneToOne();
    const QScrollBar& across = *view->horizontalScrollBar();
    const QScrollBar& down = *view->verticalScrollBar();
    view->ZoomIn();
    QApplication::processEvents(); // the scroll bars
    EXPECT_EQ(across.maximum() + view->viewport()->width(), 1280);
    EXPECT_EQ(down.maximum() + view->viewport()->height(), 960);
    EXPECT_EQ(across.pageStep(), 128);
    EXPECT_EQ(down.pageStep(), 96);
    EXPECT_EQ(across.singleStep(), 1);
    view->horizontalScrollBar()->setValue(400);
    view->verticalScrollBar()->setValue(300);
    const int halfWidth = view->viewport()->width() / 2;
    const int halfHeight = view->viewport()->height() / 2;
    view->ZoomIn();
    EXPECT_EQ(Scroll(), QPoint((400 + halfWidth) * 3 / 2 - halfWidth, (300 + halfHeight) * 3 / 2 - halfHeight));
    // About the pointer: what lies under it stays there.
    const QPoint pointer(250, 20);
    const QPoint under = (Scroll() + pointer) / 3;
    Wheel(pointer, 60, Qt::ControlModifier);
    EXPECT_EQ(view->Zoom().Level(), 3) << "half a notch";
    Wheel(pointer, 60, Qt::ControlModifier);
    EXPECT_EQ(view->Zoom().Level(), 4);
    EXPECT_NEAR((Scroll() + pointer).x() / 4.0, under.x(), 1);
    EXPECT_NEAR((Scroll() + pointer).y() / 4.0, under.y(), 1);
    view->ZoomOneToOne();
    view->ZoomOut();
    view->ZoomOut();
    EXPECT_EQ(view->Zoom().Percent(), 33);
    EXPECT_EQ(across.maximum(), 0) << "213 columns fit";
}

TEST_F(CameraView, APictureThatIsOpenedFitsUntilItIsZoomed) {
    NewScene("Wide", 3, 640, 480);
    ShowView(330, 330);
    EXPECT_EQ(view->Zoom().Percent(), 50);
    view->resize(220, 220);
    EXPECT_EQ(view->Zoom().Percent(), 33);
    view->resize(3000, 2000);
    EXPECT_EQ(view->Zoom().Percent(), 100) << "not more by itself";
    view->FitToWindow();
    EXPECT_EQ(view->Zoom().Percent(), 400);
    view->ZoomOneToOne();
    view->resize(220, 220);
    EXPECT_EQ(view->Zoom().Percent(), 100) << "it was chosen";
    NewScene("Wider", 3, 1280, 480);
    EXPECT_EQ(view->Zoom().Percent(), 16);
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), 0);
}

TEST_F(CameraView, ArrowsAndPageKeysGoToOtherFrames) {
    NewScene("Long", 100);
    ShowView();
    const std::pair<Qt::Key, int> steps[] = {
        {Qt::Key_Down, 1},   {Qt::Key_Right, 2}, {Qt::Key_PageDown, 27}, {Qt::Key_Left, 26},     {Qt::Key_Up, 25},
        {Qt::Key_PageUp, 0}, {Qt::Key_Up, 0},    {Qt::Key_End, 99},      {Qt::Key_PageDown, 99}, {Qt::Key_Home, 0}};
    ASSERT_EQ(doc->Sounds().GetFPS(), 25) << "a page is a second";
    for (const auto& [key, frame] : steps) {
        QTest::keyClick(view.get(), key);
        EXPECT_EQ(doc->Model().cursorFrame, frame) << key;
    }
    EXPECT_EQ(doc->Model().selection, (CXSheetSelection{0, 0, 0, 0}));
    QTest::keyClick(view.get(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(doc->Model().cursorFrame, 0);
}

TEST_F(CameraView, TheWheelScrollsByThePixelsOfTheDevice) {
    NewScene("Wide", 3, 640, 480);
    ShowView();
    view->ZoomOneToOne();
    view->horizontalScrollBar()->setValue(0);
    view->verticalScrollBar()->setValue(100);
    QWheelEvent pad({50, 50}, view->viewport()->mapToGlobal(QPointF(50, 50)), {0, -7}, {0, -15}, Qt::NoButton,
                    Qt::NoModifier, Qt::ScrollUpdate, false);
    QApplication::sendEvent(view->viewport(), &pad);
    EXPECT_EQ(Scroll(), QPoint(0, 107));
    Wheel({50, 50}, -120, {});
    EXPECT_EQ(Scroll(), QPoint(0, 155)) << "a notch as in the cel editor";
    Wheel({50, 50}, -120, Qt::ShiftModifier);
    EXPECT_EQ(Scroll(), QPoint(48, 155));
}

TEST_F(CameraView, DragsMoveCelsAndCameraInFramePixels) {
    OpenScene();
    ShowView();
    doc->Cursor().SetLevelCanMove(0);
    const auto dragged = [&](QPoint by) {
        const CPoint before = CelPosition(0);
        Drag({100, 100}, by);
        return CPoint{CelPosition(0).x - before.x, CelPosition(0).y - before.y};
    };
    EXPECT_EQ(dragged({10, -6}), (CPoint{10, 6}));
    EXPECT_EQ(TakeHints().back(), 260) << "the end has the picture composed";
    view->ZoomIn();
    EXPECT_EQ(dragged({5, 9}), (CPoint{2, -4}));
    view->ZoomOneToOne();
    view->ZoomOut();
    EXPECT_EQ(dragged({-3, 1}), (CPoint{-6, -2}));
    doc->History().Undo();
    EXPECT_EQ(CelPosition(0), (CPoint{20 + 10 + 2, 24 + 6 - 4})) << "a drag is one step of undo";

    view->ZoomOneToOne();
    doc->Cursor().SelectCamera();
    Drag({100, 100}, {4, -2});
    EXPECT_EQ(doc->Camera().GetCamPosX(0), 12) << "once for each of the three levels";
    EXPECT_EQ(doc->Camera().GetCamPosY(0), 6);
    doc->Camera().SetMode(InputMode::Rotate);
    const double rotation = doc->Model().Scene().camera.At(0).rotation;
    Drag({100, 100}, {15, 0});
    EXPECT_NEAR(doc->Model().Scene().camera.At(0).rotation - rotation, 3 * 15 / 150.0, 1e-9);
}

TEST_F(CameraView, OnlyWholeDragsOfTheLeftButtonAreInput) {
    OpenScene();
    doc->Cursor().SetLevelCanMove(0);
    ShowView();
    const CXSheet before = doc->Model().Scene().xsheet;
    Mouse(QEvent::MouseButtonDblClick, {100, 100});
    Mouse(QEvent::MouseMove, {120, 100});
    Mouse(QEvent::MouseButtonRelease, {120, 100});
    Mouse(QEvent::MouseMove, {150, 100});
    Drag({100, 100}, {20, 0}, Qt::RightButton);
    EXPECT_EQ(doc->Model().Scene().xsheet, before);
    EXPECT_FALSE(CanUndo(doc->Model()));
    // Let go unseen: the drag ends where it was last seen.
    Mouse(QEvent::MouseButtonPress, {100, 100});
    Mouse(QEvent::MouseMove, {105, 100});
    Mouse(QEvent::MouseMove, {150, 100}, Qt::NoButton);
    Mouse(QEvent::MouseMove, {180, 100});
    EXPECT_EQ(CelPosition(0), (CPoint{25, 24}));
    EXPECT_EQ(TakeHints().back(), 260);
}

TEST_F(CameraView, PanningScrollsAndChangesNothing) {
    OpenScene();
    doc->Cursor().SetLevelCanMove(0);
    ShowView(50, 40);
    for (int i = 0; i < 5; ++i)
        view->ZoomIn();
    view->horizontalScrollBar()->setValue(100);
    view->verticalScrollBar()->setValue(100);
    const CXSheet before = doc->Model().Scene().xsheet;
    view->TogglePan();
    EXPECT_TRUE(view->IsPanMode());
    Drag({10, 20}, {7, -5});
    EXPECT_EQ(Scroll(), QPoint(93, 105)) << "the picture follows the mouse";
    Drag({10, 10}, {300, 0});
    EXPECT_EQ(Scroll(), QPoint(0, 105));
    view->TogglePan();
    Drag({10, 20}, {-7, 5}, Qt::MiddleButton);
    EXPECT_EQ(Scroll(), QPoint(7, 100));
    QTest::keyPress(view.get(), Qt::Key_Space);
    Drag({10, 20}, {-7, 5});
    QTest::keyRelease(view.get(), Qt::Key_Space);
    EXPECT_EQ(Scroll(), QPoint(14, 95));
    EXPECT_EQ(doc->Model().Scene().xsheet, before);
    EXPECT_FALSE(CanUndo(doc->Model()));
    Drag({10, 20}, {6, 0});
    EXPECT_EQ(CelPosition(0), (CPoint{21, 24})) << "input again";
}

TEST_F(CameraView, WithoutASceneNothingIsShownAndTheMouseIgnored) {
    ShowView();
    view->OnUpdate(pictureHint);
    const QImage empty = Grab();
    EXPECT_EQ(empty.pixel(150, 100), empty.pixel(0, 0)) << "no text";
    Drag({100, 100}, {10, 10});
    Wheel({100, 100}, 120, Qt::ControlModifier);
    EXPECT_EQ(view->Zoom().Level(), 1);
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(view->horizontalScrollBar()->pageStep(), 10);
    EXPECT_EQ(view->horizontalScrollBar()->singleStep(), 1);
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CameraView, ComposesWhenToldOrWhenTheFrameHasChanged) {
    OpenScene();
    ShowView();
    ASSERT_TRUE(WaitUntilShown());
    const auto picture = doc->CameraPictures().GetCameraBitmap();
    view->OnUpdate(UpdateHint::Cells);
    view->OnUpdate(UpdateHint::CameraCompose);
    view->OnUpdate(UpdateHint::CameraRedraw);
    EXPECT_EQ(doc->CameraPictures().GetCameraBitmap(), picture) << "nothing to compose";
    view->OnUpdate(pictureHint);
    EXPECT_NE(doc->CameraPictures().GetCameraBitmap(), picture);
    EXPECT_TRUE(Shows(Composed())) << "the last picture stays meanwhile";

    // What sends the redraw alone, as drags do, is followed all the same.
    doc->Cursor().SetLevelCanMove(0);
    doc->Camera().StartCamInput();
    doc->Camera().ProcessCamInput(9, 5);
    doc->Cursor().SetLevelCanMove(1);
    EXPECT_TRUE(WaitUntilShown());
    prompter.Answer(9);
    doc->Camera().CheckLines(); // to frame 9 and back
    EXPECT_TRUE(WaitUntilShown());
}

// A frame that takes longer to compose than the mouse takes to move on.
TEST_F(CameraView, PicturesAppearDuringAFastDrag) {
    scene.data.geometry.width = 2000;
    scene.data.geometry.height = 1500;
    CXSheetCell& back = scene.data.xsheet.MutableCell(2, 0);
    ASSERT_TRUE(back.SetPos(1000, 750));
    ASSERT_TRUE(back.SetScale(60, 60));
    scene.Save();
    OpenScene();
    ShowView();
    view->ZoomOneToOne();
    doc->Camera().ToggleAntialias();
    ASSERT_TRUE(WaitUntilShown());
    doc->Cursor().SetLevelCanMove(2);
    const QRect inside(100, 100, 100, 20); // away from the marks
    const QImage first = Grab().copy(inside);
    Mouse(QEvent::MouseButtonPress, {100, 100});
    QElapsedTimer clock;
    clock.start();
    int moves = 0;
    bool changed = false;
    while (!changed && !clock.hasExpired(waitingLimit)) {
        Mouse(QEvent::MouseMove, {101 + moves++ % 100, 100});
        QCoreApplication::processEvents();
        changed = Grab().copy(inside) != first;
    }
    EXPECT_TRUE(changed);
    Mouse(QEvent::MouseButtonRelease, {400, 300});
    doc->Cursor().SetLevelCanMove(1);
    EXPECT_TRUE(WaitUntilShown()) << "and the last one is that of the end";
}

TEST_F(CameraView, MissingFileIsToldOnceAndThePartialPictureShown) {
    OpenScene();
    const Path gone = SceneFolder("Test") / "A" / "1.bit";
    std::filesystem::remove(gone);
    const std::vector<std::string> told{"Unable to open cel file for reading :: Reading file ->" + Utf8Of(gone)};
    ShowView();
    EXPECT_TRUE(WaitUntilShown());
    EXPECT_EQ(prompter.TakeMessages(), told);
    // No message at every step of a drag.
    doc->Cursor().SetLevelCanMove(2);
    doc->Camera().ProcessCamInput(5, 5);
    doc->Cursor().SetLevelCanMove(1);
    EXPECT_TRUE(WaitUntilShown());
    EXPECT_TRUE(prompter.messages.empty());
    // None at the next frames that show the same file; the scene opened anew says it again.
    view->OnUpdate(pictureHint);
    EXPECT_TRUE(WaitUntilShown());
    EXPECT_TRUE(prompter.messages.empty());
    ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !prompter.messages.empty(); }, waitingLimit));
    EXPECT_EQ(prompter.TakeMessages(), told);
}

TEST_F(CameraView, AnotherSceneDoesNotShowThePictureOfTheLast) {
    OpenScene();
    ShowView();
    ASSERT_TRUE(WaitUntilShown());
    const CTestScene other(Database(), "Other");
    view->OnUpdate(pictureHint);
    ASSERT_TRUE(doc->Scenes().OpenScene("Other"));
    EXPECT_EQ(Grab().pixel(Origin() + QPoint(50, 5)), qRgb(0x40, 0x40, 0x40));
    doc->Cursor().SetLevelCanMove(1);
    EXPECT_TRUE(WaitUntilShown());
}

TEST_F(CameraView, MayDieWhileAPictureIsComposed) {
    for (int i = 0; i < 10; ++i) {
        StartDocument();
        OpenScene();
        ShowView();
        view->OnUpdate(pictureHint);
        view.reset();
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return doc->CameraPictures().GetCameraBitmap() != nullptr; }, waitingLimit));
    }
}

TEST_F(CameraView, MarksStandOverTheCelsAndFollowADrag) {
    OpenScene();
    ShowView();
    ASSERT_TRUE(WaitUntilShown());
    doc->Cursor().SetLevelCanMove(0);
    const auto isWhite = [&](CPoint frame) {
        return Grab().pixel(Origin() + QPoint(frame.x, CTestScene::height - frame.y)) == qRgb(255, 255, 255);
    };
    EXPECT_TRUE(isWhite({10, 34})) << "the handle of the upper left corner";
    EXPECT_TRUE(isWhite({20, 24})) << "the centre";
    doc->Camera().ProcessCamInput(6, 9);
    EXPECT_TRUE(isWhite({16, 43}));
    EXPECT_FALSE(isWhite({10, 34}));

    const QImage without = Grab();
    prompter.Answer(0);
    doc->Camera().ChooseMotionPaths();
    EXPECT_NE(Grab(), without);
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CameraView, CursorTellsWhatADragDoes) {
    ShowView();
    const auto cursorIs = [&](const char* name) {
        const QImage shown = view->viewport()->cursor().pixmap().toImage();
        return !shown.isNull() && shown == ToolCursor(name, 16, 16, view->devicePixelRatioF()).pixmap().toImage();
    };
    EXPECT_TRUE(cursorIs("cursor-none"));
    OpenScene();
    EXPECT_TRUE(cursorIs("cursor-move"));
    doc->Camera().SetMode(InputMode::Rotate);
    EXPECT_TRUE(cursorIs("cursor-rotate"));
    doc->Camera().SetMode(InputMode::Zoom);
    EXPECT_TRUE(cursorIs("cursor-zoom"));
    view->TogglePan();
    EXPECT_TRUE(cursorIs("cursor-pan"));
    view->TogglePan();
    Mouse(QEvent::MouseButtonPress, {50, 50}, Qt::MiddleButton);
    EXPECT_TRUE(cursorIs("cursor-pan"));
    Mouse(QEvent::MouseButtonRelease, {50, 50}, Qt::MiddleButton);
    EXPECT_TRUE(cursorIs("cursor-zoom"));
}

TEST_F(CameraView, FrameHoldsToolsMenuAndShrinks) {
    QAction action("Zoom &In");
    QMenu menu;
    menu.addAction(&action);
    CCamFrame frame(*doc, {&action, nullptr}, {});
    frame.View().SetContextMenu(&menu);
    frame.resize(300, 20);
    frame.show();
    EXPECT_EQ(frame.height(), 20);
    const auto* bar = frame.findChild<QToolBar*>();
    EXPECT_EQ(bar->windowTitle(), "Camera Tools");
    EXPECT_EQ(bar->actions().front(), &action);
    const auto* zoom = frame.findChild<QLabel*>("camera zoom");
    EXPECT_EQ(zoom->text(), "100 %");
    frame.View().ZoomOut();
    EXPECT_EQ(zoom->text(), "50 %");
    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, {5, 5});
    QApplication::sendEvent(frame.View().viewport(), &event);
    EXPECT_TRUE(menu.isVisible());
}

} // namespace
} // namespace velmor::testing
