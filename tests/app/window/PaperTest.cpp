// Onion skin, light table, flipping and new drawings by the keys of the cel editor.

#include "MainFrameFixture.h"
#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "scene/paper/DrawingSteps.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Onion.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelCaption.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"

#include <QScrollBar>

namespace velmor::testing {
namespace {

class CPaperTest : public CMainFrameFixture {
protected:
    CPaperTest() {
        NewScene("Test", 20, 200, 160);
        Frame().resize(1000, 800);
        Run(CommandId::ViewCelEditor);
        View().setFocus();
    }
    ~CPaperTest() override { EndFrame(); }

    CCelView& View() { return Frame().CelPane().View(); }
    std::string Edited() { return EditedDrawing(doc->Model()).name; }
    std::string Row(int frames) {
        std::string row;
        for (int frame = 0; frame < frames; ++frame) {
            const CXSheetCell& cell = doc->Model().Scene().xsheet.Cell(0, frame);
            row += cell.IsUsed() ? cell.CelName() : ".";
        }
        return row;
    }
    QString Caption() { return Frame().findChild<CCelCaption*>("celCaption")->Text(); }
    void Hold(Qt::Key key) { QTest::keyPress(Frame().windowHandle(), key); }
    void LetGo(Qt::Key key) { QTest::keyRelease(Frame().windowHandle(), key); }
    /// Where an image pixel is in the view.
    QPoint At(int x, int y) {
        // The image is smaller than the view and stands in its middle.
        const QSize room = View().viewport()->size();
        const QSize size(doc->Model().celImg.Width(), doc->Model().celImg.Height());
        return {(room.width() - size.width()) / 2 + x, (room.height() - size.height()) / 2 + size.height() - 1 - y};
    }
    QColor Shown(int x, int y) { return View().viewport()->grab().toImage().pixelColor(At(x, y)); }
    /// A block of line in the drawing under edit.
    void Draw(int left) {
        doc->Painting().Change("Block", [left](CCelImg& image) {
            for (int y = 20; y < 40; ++y)
                for (int x = left; x < left + 20; ++x) {
                    image.SetLine(x, y, true);
                    image.SetColorAt(x, y, {0, 0, 0, 255});
                }
            image.SetModified(true);
            return CPaintResult();
        });
        doc->Views().UpdateAllViews(UpdateHint::EditedImage);
    }
    /// Three drawings on twos; number n has its block at column 40 n. The second one is under edit.
    void DrawThree() {
        for (int number = 1; number <= 3; ++number) {
            Key(Qt::Key_N);
            Draw(40 * number);
        }
        Key(Qt::Key_PageUp);
        ASSERT_EQ(Edited(), "2");
        View().ZoomOneToOne();
        QCoreApplication::processEvents();
    }
};

} // namespace

TEST_F(CPaperTest, ALoopIsMadeByKeysFromAnEmptyLevel) {
    Key(Qt::Key_N);
    EXPECT_EQ(Edited(), "1");
    EXPECT_EQ(doc->Model().folderName, "Default");
    EXPECT_TRUE(HasFocus(View()));
    Draw(40);
    Run(CommandId::CelNewOnThrees);
    Key(Qt::Key_N);
    EXPECT_EQ(Row(6), "11222.");
    Draw(80);
    Key(Qt::Key_Slash);
    EXPECT_TRUE(View().Flipped().IsPlaying());
    QSet<QString> seen;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        seen.insert(Caption());
        return seen.size() >= 2 && seen.contains("Playing: Default / 1") && seen.contains("Playing: Default / 2");
    }));
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, At(10, 10));
    EXPECT_FALSE(View().Flipped().IsPlaying());
    EXPECT_FALSE(doc->Model().celImg.IsModified()) << "played from the files, and not painted on";

    Key(Qt::Key_Z, Qt::ControlModifier); // the block
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Row(6), "11....");
    Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Row(6), "11222.");
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(CPaperTest, OnionSkinIsToggledByItsKeyAndTakesTheSettings) {
    DrawThree();
    const QImage without = View().viewport()->grab().toImage();
    EXPECT_EQ(Shown(50, 30), QColor(Qt::white));
    Key(Qt::Key_O);
    EXPECT_TRUE(doc->Onion().Settings().shown);
    // 70 percent of the tint: 255 - (255 - tint) * 178 / 255.
    EXPECT_EQ(Shown(50, 30), QColor(235, 139, 101));
    EXPECT_EQ(Shown(90, 30), QColor(Qt::black));
    EXPECT_EQ(Shown(130, 30), QColor(98, 154, 231));
    Run(CommandId::CelPickColor);
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, At(50, 30));
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{255, 255, 255, 255})) << "what is picked is the image's own";
    Key(Qt::Key_O);
    EXPECT_TRUE(View().viewport()->grab().toImage() == without);
}

TEST_F(CPaperTest, AHeldKeyShowsTheNeighbourUntilItIsLetGo) {
    DrawThree();
    const CCelImg before = doc->Model().celImg;
    Hold(Qt::Key_Comma);
    EXPECT_EQ(Shown(50, 30), QColor(Qt::black));
    EXPECT_EQ(Shown(90, 30), QColor(Qt::white));
    EXPECT_EQ(Caption(), "Flipped to Default / 1");
    LetGo(Qt::Key_Comma);
    EXPECT_EQ(Shown(90, 30), QColor(Qt::black));
    EXPECT_TRUE(Caption().contains("Default / 2"));

    Run(CommandId::CelPen);
    Hold(Qt::Key_Period);
    EXPECT_EQ(Shown(130, 30), QColor(Qt::black));
    QTest::mousePress(View().viewport(), Qt::LeftButton, {}, At(10, 10));
    QTest::mouseMove(View().viewport(), At(60, 60));
    QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, At(60, 60));
    LetGo(Qt::Key_Period);
    EXPECT_TRUE(doc->Model().celImg.Changes() == before.Changes()) << "nothing is painted meanwhile";

    Hold(Qt::Key_Period);
    EXPECT_TRUE(View().Flipped().IsOn());
    Frame().findChild<QWidget*>("assets")->setFocus();
    EXPECT_FALSE(View().Flipped().IsOn()) << "the keyboard has gone";
    EXPECT_EQ(Shown(90, 30), QColor(Qt::black));
    LetGo(Qt::Key_Period);

    View().setFocus();
    Key(Qt::Key_PageDown);
    Hold(Qt::Key_Period);
    EXPECT_FALSE(View().Flipped().IsOn()) << "there is none after the last";
    LetGo(Qt::Key_Period);
}

TEST_F(CPaperTest, ThePlaceInTheViewIsKeptFromDrawingToDrawing) {
    DrawThree();
    for (int i = 0; i < 3; ++i)
        View().ZoomIn();
    View().TurnLeft();
    View().horizontalScrollBar()->setValue(70);
    View().verticalScrollBar()->setValue(50);
    const auto place = [this] {
        return std::tuple(View().Zoom().Percent(), View().Turn().degrees, View().horizontalScrollBar()->value(),
                          View().verticalScrollBar()->value());
    };
    const auto before = place();
    for (const Qt::Key key : {Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_N}) {
        Key(key);
        QCoreApplication::processEvents();
        EXPECT_EQ(place(), before) << key;
    }
    EXPECT_EQ(Edited(), "4");
}

TEST_F(CPaperTest, ShiftAndTraceMovesPinnedDrawingsAndNothingElse) {
    DrawThree();
    Key(Qt::Key_T, Qt::ShiftModifier);
    EXPECT_TRUE(doc->LightTable().IsPinned({"Default", "2"}));
    Key(Qt::Key_PageDown);
    EXPECT_NE(Shown(90, 30), QColor(Qt::white));
    Key(Qt::Key_T, Qt::ControlModifier);
    EXPECT_TRUE(View().ShiftsPins());
    const int changes = doc->Model().celImg.Changes();
    QTest::mousePress(View().viewport(), Qt::LeftButton, {}, At(90, 30));
    QTest::mouseMove(View().viewport(), At(70, 60));
    QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, At(70, 60));
    EXPECT_EQ(doc->LightTable().Pins()[0].pegs, (CPegPlace{-20, 30, 0}));
    EXPECT_EQ(Shown(95, 25), QColor(Qt::white));
    EXPECT_NE(Shown(75, 55), QColor(Qt::white));

    // A quarter about its middle, (80, 110), against the clock.
    QTest::mousePress(View().viewport(), Qt::LeftButton, Qt::ShiftModifier, At(130, 110));
    QTest::mouseMove(View().viewport(), At(80, 158));
    QTest::mouseRelease(View().viewport(), Qt::LeftButton, Qt::ShiftModifier, At(80, 158));
    EXPECT_NEAR(doc->LightTable().Pins()[0].pegs.angle, -1.57, 0.02);
    // The block's middle lay 10 to the left of the sheet's and 50 below it.
    EXPECT_NE(Shown(80 + 50, 110 - 10), QColor(Qt::white));
    EXPECT_EQ(doc->Model().celImg.Changes(), changes);
    Run(CommandId::CelPutBackPins);
    EXPECT_EQ(doc->LightTable().Pins()[0].pegs, CPegPlace());
    Key(Qt::Key_P);
    EXPECT_FALSE(View().ShiftsPins()) << "a tool was chosen";
    Key(Qt::Key_T);
    EXPECT_EQ(Shown(90, 30), QColor(Qt::white));
}

TEST_F(CPaperTest, TheCameraShowsNeighboursUnderItsPicture) {
    DrawThree();
    doc->Cursor().GoTo({0, 2});
    Run(CommandId::ViewCamera);
    CCameraView& camera = Frame().CameraPane().View();
    camera.ZoomOneToOne();
    const auto shown = [&](int x, int y) {
        const QSize room = camera.viewport()->size();
        return camera.viewport()->grab().toImage().pixelColor(
            {(room.width() - 200) / 2 + x, (room.height() - 160) / 2 + 159 - y});
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown(90, 30) == QColor(Qt::black); }));
    EXPECT_EQ(shown(50, 30), QColor(Qt::white));
    Run(CommandId::CameraOnionSkin);
    EXPECT_EQ(shown(50, 30), QColor(235, 139, 101));
    EXPECT_EQ(shown(130, 30), QColor(98, 154, 231));
    Run(CommandId::CameraOnionSkin);
    EXPECT_EQ(shown(50, 30), QColor(Qt::white));
}

} // namespace velmor::testing
