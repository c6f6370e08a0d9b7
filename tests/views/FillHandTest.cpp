#include "CelEditorFixture.h"
#include "image/paint/Fill.h"
#include "image/paint/GapFill.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneHistory.h"
#include "views/cel/CelView.h"

#include <QElapsedTimer>
#include <QImage>
#include <QStatusTipEvent>
#include <QTest>

namespace velmor::testing {
namespace {

/// Hears what views say in the status bar.
class CStatusEar : public QObject {
public:
    explicit CStatusEar(QObject& said) { said.installEventFilter(this); }
    QString text;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::StatusTip)
            text = static_cast<QStatusTipEvent*>(event)->tip();
        return false;
    }
};

/// The editor on a box of lines, 20 to 80 by 20 to 60, with a gap of 5 pixels at the top.
class FillHandTest : public CCelEditorFixture {
protected:
    FillHandTest() : view(*doc, prompter, profile), client(*view.viewport()), ear(view) {
        view.resize(140, 120); // a margin of 20 on all sides
        view.show();
        QApplication::processEvents();
        EditCel();
        doc->Painting().Change("Test", [](CCelImg& image) {
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    const bool isRow = (y == 20 || y == 60) && x >= 20 && x <= 80;
                    const bool isColumn = (x == 20 || x == 80) && y >= 20 && y <= 60;
                    image.SetLine(x, y, (isRow || isColumn) && !(y == 60 && x > 45 && x < 51));
                    image.SetColorAt(x, y, {255, 255, 255, 255});
                }
            return CPaintResult();
        });
        doc->Views().UpdateAllViews(UpdateHint::EditedImage);
        doc->Palette().SetFGColorValue(MakeColorRef(30, 200, 40));
        Send(QEvent::MouseMove, {2, 2}, Qt::NoButton, Qt::NoModifier);
    }

    static QPoint At(int x, int y) { return {20 + x, 20 + height - y}; }
    void Send(QEvent::Type type, QPoint at, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, client.mapToGlobal(at), button, buttons, modifiers);
        QApplication::sendEvent(&client, &event);
    }
    void Click(QPoint at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Send(QEvent::MouseButtonPress, at, Qt::LeftButton, modifiers);
        Send(QEvent::MouseButtonRelease, at, Qt::NoButton, modifiers);
    }
    bool IsFilled(int x, int y) const { return doc->Model().celImg.ColorAt(x, y) == CColor{40, 200, 30, 255}; }
    QColor Shown(QPoint at) { return client.grab().toImage().pixelColor(at); }
    bool IsLeakShown() {
        const QColor color = Shown(At(48, 61));
        return color.red() > 180 && color.green() < 90 && color.blue() < 90;
    }

    CCelView view;
    QWidget& client;
    CStatusEar ear;
};

TEST_F(FillHandTest, TheBucketClosesTheGapOfTheSizeAndShowsIt) {
    view.SetTool(CelTool::Bucket);
    doc->Palette().SetFill({5});
    Click(At(50, 40));
    EXPECT_TRUE(IsFilled(21, 21) && IsFilled(79, 59) && IsFilled(46, 59));
    EXPECT_FALSE(IsFilled(48, 64));
    EXPECT_EQ(Shown(At(30, 30)), QColor(30, 200, 40));
    EXPECT_TRUE(ear.text.isEmpty());
}

TEST_F(FillHandTest, WithoutChoicesItIsThePlainFill) {
    view.SetTool(CelTool::Bucket);
    CCelImg expected = doc->Model().celImg;
    Fill(expected, 50, 40, doc->Model().paint.foreground);
    Click(At(50, 40), Qt::ShiftModifier);
    EXPECT_TRUE(AreSame(EditedImage(), expected));
    EXPECT_TRUE(IsFilled(2, 2));
}

TEST_F(FillHandTest, ARefusedFillIsMarkedAndExplainedUntilTheNextActionAndShiftForcesIt) {
    view.SetTool(CelTool::Bucket);
    doc->Palette().SetFill({3});
    Click(At(50, 40));
    EXPECT_FALSE(IsFilled(50, 40));
    EXPECT_TRUE(ear.text.startsWith("Not filled")) << ear.text.toStdString();
    EXPECT_TRUE(IsLeakShown());
    Send(QEvent::MouseMove, At(60, 40), Qt::NoButton, Qt::NoModifier);
    EXPECT_TRUE(IsLeakShown()) << "moving is no action";
    Click(At(50, 40), Qt::ShiftModifier);
    EXPECT_FALSE(IsLeakShown());
    EXPECT_TRUE(IsFilled(50, 40) && IsFilled(1, 1));
    doc->History().Undo();
    EXPECT_FALSE(IsFilled(50, 40));
    Click(At(50, 40));
    EXPECT_TRUE(IsLeakShown());
    doc->Palette().SetFill({5});
    EXPECT_FALSE(IsLeakShown());
}

TEST_F(FillHandTest, DraggingFillsEveryAreaOnTheWay) {
    view.SetTool(CelTool::Bucket);
    doc->Palette().SetFill({5, false, 0, FillLines::ThisCel, true});
    Send(QEvent::MouseButtonPress, At(5, 40), Qt::LeftButton, Qt::NoModifier);
    Send(QEvent::MouseMove, At(10, 40), Qt::LeftButton, Qt::NoModifier);
    EXPECT_TRUE(IsFilled(2, 2)) << "on the way already";
    EXPECT_FALSE(IsFilled(50, 40));
    Send(QEvent::MouseMove, At(50, 40), Qt::LeftButton, Qt::NoModifier);
    Send(QEvent::MouseButtonRelease, At(50, 40), Qt::NoButton, Qt::NoModifier);
    EXPECT_TRUE(IsFilled(50, 40));
    doc->History().Undo();
    EXPECT_FALSE(IsFilled(2, 2) || IsFilled(50, 40)) << "one step";
}

TEST_F(FillHandTest, ALoopShowsItselfAndFillsWhatItGoesRound) {
    view.SetTool(CelTool::AreaFill);
    doc->Palette().SetFill({5});
    const QImage before = client.grab().toImage();
    Send(QEvent::MouseButtonPress, At(10, 10), Qt::LeftButton, Qt::NoModifier);
    for (const QPoint& to : {At(90, 10), At(90, 70), At(10, 70)})
        Send(QEvent::MouseMove, to, Qt::LeftButton, Qt::NoModifier);
    EXPECT_NE(client.grab().toImage(), before);
    EXPECT_FALSE(IsFilled(50, 40));
    Send(QEvent::MouseButtonRelease, At(10, 70), Qt::NoButton, Qt::NoModifier);
    EXPECT_TRUE(IsFilled(50, 40));
    EXPECT_FALSE(IsFilled(15, 40));
    EXPECT_EQ(Shown(At(90, 40)), before.pixelColor(At(90, 40))) << "the loop is gone";
}

TEST_F(FillHandTest, GapsAreMarkedWhileNobodyDrawsAndFollowTheDrawing) {
    doc->Palette().SetFill({6});
    const auto isMarked = [this] {
        const QColor color = Shown(At(48, 61));
        return color.red() > 180 && color.green() < 90 && color.blue() > 100;
    };
    EXPECT_FALSE(isMarked());
    view.ToggleGaps();
    EXPECT_TRUE(QTest::qWaitFor(isMarked));
    doc->Painting().Change("Test", [](CCelImg& image) {
        for (int x = 46; x < 51; ++x)
            image.SetLine(x, 60, true);
        image.SetModified(true);
        return CPaintResult();
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isMarked(); })) << "the gap has been closed";
    view.ToggleGaps();
    EXPECT_FALSE(view.ShowsGaps());
    doc->Palette().SetFill({0});
    view.ToggleGaps();
    EXPECT_FALSE(ear.text.isEmpty()) << "there is nothing to show";
}

} // namespace
} // namespace velmor::testing
