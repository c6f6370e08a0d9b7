#include "DocumentFixture.h"
#include "TestScene.h"
#include "scene/CameraAids.h"
#include "scene/CameraOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "views/Icons.h"
#include "views/camera/CameraMarksPainter.h"
#include "views/camera/CameraView.h"
#include "views/camera/GuidesPainter.h"
#include "views/print/GuidesPrinter.h"
#include "xsheet/CameraMap.h"

#include <QCursor>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QTest>
#include <cmath>
#include <numbers>

namespace velmor::testing {
namespace {

constexpr int frameWidth = 400;
constexpr int frameHeight = 300;

/// A cel of 100 x 60 pixels that goes across in ten frames, and a view that shows the frame pixel for pixel.
class CameraHands : public CDocumentFixture {
protected:
    CameraHands() {
        scene.data.geometry.width = frameWidth;
        scene.data.geometry.height = frameHeight;
        for (int frame = 0; frame < CTestScene::frames; ++frame) {
            scene.Expose(0, frame, "A", "1", 110 + 20 * frame, 150);
            EXPECT_TRUE(scene.data.xsheet.MutableCell(0, frame).SetScale(5, 3));
            scene.data.camera.MutableAt(frame) = {};
        }
    }
    ~CameraHands() override { view.reset(); }

    void Open() {
        scene.Save();
        ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
        doc->Cursor().SetLevelCanMove(0);
        view = std::make_unique<CCameraView>(*doc);
        view->resize(500, 400);
        view->show();
        view->ZoomOneToOne();
        QApplication::processEvents();
        TakeHints();
    }
    void Choose(bool CCameraAidChoices::*choice) const {
        CCameraAidChoices choices = doc->CameraAids().Choices();
        choices.*choice = true;
        doc->CameraAids().Change(choices);
    }

    // Where the view shows a point of the frame, y upwards.
    static QPoint At(double x, double y) {
        return {50 + static_cast<int>(x), 50 + frameHeight - static_cast<int>(y)};
    }
    void Mouse(QEvent::Type type, QPoint point, Qt::KeyboardModifiers keys = {}) const {
        const bool isMove = type == QEvent::MouseMove;
        const bool isHeld = type == QEvent::MouseButtonPress || (isMove && m_isDown);
        QMouseEvent event(type, point, view->viewport()->mapToGlobal(point), isMove ? Qt::NoButton : Qt::LeftButton,
                          isHeld ? Qt::LeftButton : Qt::NoButton, keys);
        QApplication::sendEvent(view->viewport(), &event);
    }
    void Press(QPoint at) {
        Mouse(QEvent::MouseMove, at);
        m_isDown = true;
        Mouse(QEvent::MouseButtonPress, at);
    }
    void Release(QPoint at, Qt::KeyboardModifiers keys = {}) {
        m_isDown = false;
        Mouse(QEvent::MouseButtonRelease, at, keys);
    }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers keys = {}) {
        Press(from);
        Mouse(QEvent::MouseMove, (from + to) / 2, keys);
        Mouse(QEvent::MouseMove, to, keys);
        Release(to, keys);
    }
    bool ShowsCursor(const char* name) const {
        const QCursor expected = ToolCursor(name, 16, 16, view->devicePixelRatioF());
        return view->viewport()->cursor().pixmap().toImage() == expected.pixmap().toImage();
    }
    const CXSheetCell& Cell(int frame = 0) const { return doc->Model().Scene().xsheet.Cell(0, frame); }
    std::size_t Steps() const { return doc->Model().history.Steps().size(); }

    CTestScene scene{Database()};
    std::unique_ptr<CCameraView> view;

private:
    bool m_isDown = false;
};

} // namespace

TEST_F(CameraHands, WithoutHandlesADragAtACornerIsCameraInput) {
    Open();
    Drag(At(160, 180), At(180, 190));
    EXPECT_EQ(Cell().PosX(), 130);
    EXPECT_EQ(Cell().ScaleX(), 5);
    EXPECT_TRUE(ShowsCursor("cursor-move"));
}

TEST_F(CameraHands, HandlesScaleAndTurnWhatIsSelected) {
    Open();
    Choose(&CCameraAidChoices::handles);
    Drag(At(160, 180), At(170, 210)); // the upper right corner
    EXPECT_NEAR(Cell().ScaleX(), 5.5, 1e-6);
    EXPECT_NEAR(Cell().ScaleY(), 4.5, 1e-6);
    EXPECT_NEAR(Cell().PosX(), 115, 1e-6) << "the corner opposite stays";
    EXPECT_NEAR(Cell().PosY(), 165, 1e-6);
    EXPECT_EQ(Steps(), 1U);
    EXPECT_EQ(TakeHints().back(), 260);
    doc->History().Undo();
    EXPECT_EQ(Cell().ScaleX(), 5);

    Drag(At(160, 180), At(185, 160), Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_NEAR(Cell().ScaleX() / Cell().ScaleY(), 5.0 / 3, 1e-9);
    EXPECT_EQ(Cell().PosX(), 110) << "about the middle";
    doc->History().Undo();

    const auto at = [](double degrees) { // about the middle, just beyond the corner
        const double angle = std::atan2(30, 50) + degrees * std::numbers::pi / 180;
        return At(110.5 + 72 * std::cos(angle), 150.5 + 72 * std::sin(angle));
    };
    Drag(at(0), at(40));
    EXPECT_NEAR(Cell().Rotation() * 180 / std::numbers::pi, -40, 2);
    EXPECT_EQ(doc->Model().history.Steps().back().heading.name, "Turn");
    doc->History().Undo();
    Drag(at(0), at(40), Qt::ShiftModifier);
    EXPECT_NEAR(Cell().Rotation() * 180 / std::numbers::pi, -45, 1e-9);
    EXPECT_EQ(Cell(1).Rotation(), 0);
}

TEST_F(CameraHands, TheCursorSaysWhatAHandleDoes) {
    Open();
    Choose(&CCameraAidChoices::handles);
    const auto shows = [&](QPoint at, const char* cursor) {
        Mouse(QEvent::MouseMove, at);
        return ShowsCursor(cursor);
    };
    EXPECT_TRUE(shows(At(160, 180), "cursor-scale-rising"));
    EXPECT_TRUE(shows(At(160, 120), "cursor-scale-falling"));
    EXPECT_TRUE(shows(At(172, 190), "cursor-rotate"));
    EXPECT_TRUE(shows(At(140, 165), "cursor-move")) << "inside is input";
    EXPECT_TRUE(shows(At(300, 280), "cursor-move"));
    doc->Cursor().SelectCamera();
    EXPECT_TRUE(shows(At(160, 180), "cursor-move")) << "it is not selected";
}

TEST_F(CameraHands, HandlesWorkThroughATurnedAndZoomedCamera) {
    scene.data.camera.MutableAt(0) = {30, -12, 0.6, 1.5};
    Open();
    Choose(&CCameraAidChoices::handles);
    const CCameraMap camera(doc->Model().Scene().camera.At(0), {frameWidth, frameHeight});
    const auto shown = [&](CRealPoint stage) {
        const CRealPoint at = camera.ToView(stage);
        return At(at.x, at.y);
    };
    Drag(shown({160, 180}), shown({180, 180}));
    EXPECT_NEAR(Cell().ScaleX(), 6, 0.15);
    EXPECT_NEAR(Cell().ScaleY(), 3, 0.15);
}

TEST_F(CameraHands, EscapeGivesADragUpAndAClickIsNone) {
    Open();
    Choose(&CCameraAidChoices::handles);
    const CXSheet before = doc->Model().Scene().xsheet;
    Press(At(160, 180));
    Mouse(QEvent::MouseMove, At(190, 220));
    EXPECT_NE(Cell().ScaleX(), 5);
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_EQ(doc->Model().Scene().xsheet, before);
    Mouse(QEvent::MouseMove, At(250, 220));
    Release(At(250, 220));
    Drag(At(160, 180), At(160, 180), Qt::ShiftModifier);
    EXPECT_EQ(doc->Model().Scene().xsheet, before);
    EXPECT_EQ(Steps(), 0U);
    // A key that is pressed later means something all the same.
    Press(At(160, 180));
    Mouse(QEvent::MouseMove, At(190, 182));
    QTest::keyPress(view.get(), Qt::Key_Shift);
    EXPECT_NEAR(Cell().ScaleX() / Cell().ScaleY(), 5.0 / 3, 1e-9);
    QTest::keyRelease(view.get(), Qt::Key_Shift);
    EXPECT_GT(Cell().ScaleX() / Cell().ScaleY(), 2);
    Release(At(190, 182));
    EXPECT_EQ(Steps(), 1U);
}

TEST_F(CameraHands, TicksOfAPathAreDraggedAlongIt) {
    Open();
    Drag(At(210, 150), At(170, 150));
    EXPECT_EQ(Cell(0).PosX(), 70) << "input, without the choice";
    doc->History().Undo();
    Choose(&CCameraAidChoices::spacing);
    const CXSheet before = doc->Model().Scene().xsheet;
    Mouse(QEvent::MouseMove, At(210, 150));
    EXPECT_TRUE(ShowsCursor("cursor-spacing"));
    Drag(At(210, 150), At(170, 140)); // frame 6 of 110 to 290
    EXPECT_NEAR(Cell(5).PosX(), 170, 1);
    EXPECT_NEAR(Cell(5).PosY(), 150, 1e-9);
    for (int frame = 1; frame < 9; ++frame) {
        EXPECT_LT(Cell(frame).PosX(), before.Cell(0, frame).PosX()) << frame;
        EXPECT_GT(Cell(frame).PosX(), Cell(frame - 1).PosX()) << frame;
    }
    EXPECT_EQ(Cell(0), before.Cell(0, 0));
    EXPECT_EQ(Cell(9), before.Cell(0, 9));
    EXPECT_EQ(Steps(), 1U);
    doc->History().Undo();
    EXPECT_EQ(doc->Model().Scene().xsheet, before);

    Drag(At(210, 150), At(200, 150), Qt::ControlModifier);
    EXPECT_NEAR(Cell(5).PosX(), 200, 1);
    EXPECT_EQ(Cell(4), before.Cell(0, 4)) << "alone";
    doc->History().Undo();
    // Between the keys of a selection that holds the frame.
    doc->Cursor().SetSelStartY(3);
    doc->Cursor().SetSelEndY(7);
    Drag(At(210, 150), At(195, 150));
    EXPECT_EQ(Cell(2), before.Cell(0, 2));
    EXPECT_EQ(Cell(3), before.Cell(0, 3));
    EXPECT_NE(Cell(4), before.Cell(0, 4));
    EXPECT_EQ(Cell(7), before.Cell(0, 7));
}

TEST_F(CameraHands, APathIsDrawnBetweenTheKeysOfTheSelection) {
    Open();
    view->TogglePathDrawing();
    Mouse(QEvent::MouseMove, At(20, 20));
    EXPECT_TRUE(ShowsCursor("cursor-path"));
    Drag(At(20, 20), At(60, 60));
    EXPECT_EQ(prompter.TakeMessages().size(), 1U) << "nothing is selected";
    EXPECT_EQ(Steps(), 0U);

    doc->Cursor().SetSelStartY(0);
    doc->Cursor().SetSelEndY(9);
    Press(At(110, 150));
    for (const CRealPoint way : {CRealPoint{110, 200}, {110, 250}, {200, 250}, {290, 250}, {290, 200}})
        Mouse(QEvent::MouseMove, At(way.x, way.y));
    Mouse(QEvent::MouseMove, At(290, 150));
    Release(At(290, 150));
    EXPECT_EQ(Cell(0).PosX(), 110);
    EXPECT_EQ(Cell(9).PosX(), 290);
    EXPECT_NEAR(Cell(5).PosY(), 250, 15);
    EXPECT_GT(Cell(1).PosY(), 170);
    EXPECT_NEAR(Cell(1).PosX(), 110, 12);
    EXPECT_EQ(Steps(), 1U);
    Press(At(20, 20));
    Mouse(QEvent::MouseMove, At(90, 90));
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_TRUE(view->IsDrawingPath());
    Release(At(90, 90));
    QTest::keyClick(view.get(), Qt::Key_Escape);
    EXPECT_FALSE(view->IsDrawingPath());
    EXPECT_EQ(Steps(), 1U);
}

TEST_F(CameraHands, OneToOneTheCameraStaysUnderThePointer) {
    scene.data.camera.MutableAt(0) = {10, 5, 0.6, 2};
    Open();
    doc->Cursor().SelectCamera();
    doc->Camera().ToggleOneToOne();
    const auto shown = [&](CRealPoint stage) {
        return CCameraMap(doc->Model().Scene().camera.At(0), {frameWidth, frameHeight}).ToView(stage);
    };
    const CRealPoint stage =
        CCameraMap(doc->Model().Scene().camera.At(0), {frameWidth, frameHeight}).ToStage({200, 100});
    Press(At(200, 100));
    for (int x = 201; x <= 233; ++x) {
        const int y = 100 + (x - 200) / 3;
        Mouse(QEvent::MouseMove, At(x, y));
    }
    Release(At(233, 111));
    EXPECT_NEAR(shown(stage).x, 233, 1e-6);
    EXPECT_NEAR(shown(stage).y, 111, 1e-6);
    EXPECT_EQ(Steps(), 1U);
}

TEST_F(CameraHands, GuidesAreLaidOverThePictureThroughTheCamera) {
    Open();
    doc->Cursor().SelectCamera();
    const auto grab = [this] { return view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); };
    const QImage plain = grab();
    Choose(&CCameraAidChoices::titleSafe);
    const QImage safe = grab();
    const QPoint onEdge = At(200, frameHeight * 0.9);
    const QRgb ink = CGuideInk().safe.rgb();
    EXPECT_NE(plain.pixel(onEdge), ink);
    EXPECT_EQ(safe.pixel(onEdge), ink);
    // A painted chart moves with the camera, or lies still.
    const CCameraFrame moved{31, 0, 0, 1};
    const auto painted = [&](bool onStage, const CCameraFrame& camera) {
        CCameraAidChoices choices;
        choices.fields = 12;
        choices.fieldsOnStage = onStage;
        QImage image(frameWidth, frameHeight, QImage::Format_RGB32);
        image.fill(Qt::gray);
        QPainter painter(&image);
        PaintGuides(painter, choices, {{frameWidth, frameHeight}, camera}, {{0, 0}, 1, frameHeight}, {});
        return image;
    };
    painted(true, {}); // loads the font, whose first letters come out otherwise
    const QImage still = painted(true, {});
    EXPECT_EQ(painted(false, moved), still);
    const QImage shifted = painted(true, moved);
    EXPECT_NE(shifted, still);
    EXPECT_EQ(shifted.copy(231 - 4, 40, 8, 20), still.copy(200 - 4, 40, 8, 20)) << "the line through the middle";
}

TEST_F(CameraHands, GuidesArePrintedOnOnePage) {
    Open();
    const Path file = folder / "guides.pdf";
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(file.string()));
    EXPECT_TRUE(PrintGuides(doc->Model(), doc->CameraAids().Choices(), prompter, printer));
    EXPECT_GT(std::filesystem::file_size(file), 1000U);
    printer.setOutputFileName(QString::fromStdString((folder / "none" / "guides.pdf").string()));
    EXPECT_FALSE(PrintGuides(doc->Model(), doc->CameraAids().Choices(), prompter, printer));
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
}

} // namespace velmor::testing
