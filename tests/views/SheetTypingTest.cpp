#include "DocumentFixture.h"
#include "TestScene.h"
#include "scene/XSheetCursor.h"
#include "scene/exposing/Exposing.h"
#include "scene/exposing/SheetTiming.h"
#include "scene/paper/DrawingSteps.h"
#include "views/xsheet/DrawingChooser.h"
#include "views/xsheet/XSheetView.h"

#include <QMouseEvent>
#include <QtTest>
#include <functional>
#include <initializer_list>

namespace velmor::testing {
namespace {

// The sheet of the test scene with keys and mouse: cel 1 of folder A stands on level 0 for five frames, cel 2 for
// the other five.
class SheetTypingTest : public CDocumentFixture {
protected:
    void SetUp() override {
        CTestScene scene(Database());
        for (const char* name : {"12", "21"}) {
            CCelImg cel;
            EXPECT_TRUE(cel.CreateCel(30, 20, scene.folder / "A" / (std::string(name) + ".bit")));
            EXPECT_TRUE(cel.SaveCel());
        }
        ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
        doc->Drawings().SetHold(2);
        view = std::make_unique<CXSheetView>(*doc, prompter);
        view->resize(600, 300);
        view->show();
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
        view->setFocus();
        QCoreApplication::processEvents();
    }
    void TearDown() override { view.reset(); }

    void Key(int key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(view.get(), static_cast<Qt::Key>(key), keys);
    }
    void Type(const char* keys) { QTest::keyClicks(view.get(), keys); }
    std::string Row(int level = 0) const {
        std::string row;
        const CXSheet& xsheet = doc->Model().Scene().xsheet;
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame) {
            const CXSheetCell& cell = xsheet.Cell(level, frame);
            row += !cell.IsUsed()           ? "."
                   : cell.CelName() == "12" ? "X"
                   : cell.CelName() == "21" ? "Y"
                                            : cell.CelName();
        }
        return row;
    }
    const CDrawingChooser& Chooser() const { return *view->findChild<CDrawingChooser*>("drawing chooser"); }
    bool IsTyping() const { return Chooser().isVisible(); }
    void Undo() { doc->History().Undo(); }
    bool HasSteps() const { return CanUndo(doc->Model()); }

    // Points of the grid: the border below a frame, in the middle of a level and at its right edge.
    static QPoint EdgeBelow(int level, int frame) { return {30 + 80 * level + 40, 40 + 20 * (frame + 1) - 1}; }
    static QPoint CornerOf(int level, int frame) { return {30 + 80 * (level + 1) - 4, 40 + 20 * (frame + 1) - 3}; }
    static QPoint At(int level, int frame) { return {30 + 80 * level + 40, 40 + 20 * frame + 10}; }
    void Press(QPoint point, Qt::KeyboardModifiers keys = {}) {
        QTest::mousePress(view->viewport(), Qt::LeftButton, keys, point);
    }
    void Drag(QPoint point, Qt::KeyboardModifiers keys = {}) {
        QMouseEvent move(QEvent::MouseMove, point, view->viewport()->mapToGlobal(point), Qt::NoButton,
                         Qt::LeftButton, keys);
        QCoreApplication::sendEvent(view->viewport(), &move);
    }
    void Release(QPoint point) { QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, point); }

    std::unique_ptr<CXSheetView> view;
};

TEST_F(SheetTypingTest, ANumberExposesItsDrawingAndGoesOnByTheStep) {
    Type("2");
    EXPECT_TRUE(IsTyping());
    EXPECT_EQ(Row(), "1111122222") << "nothing happens before Enter";
    ASSERT_NE(doc->Timing().Outcome(), nullptr);
    EXPECT_EQ(doc->Timing().Outcome()->xsheet.Cell(0, 1).CelName(), "2");
    ASSERT_EQ(Chooser().Choice().drawings.size(), 2U);
    EXPECT_EQ(Chooser().Choice().drawings[1].name, "21");
    EXPECT_FALSE(Chooser().Choice().drawings[1].thumbnail.isNull());
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "2211122222");
    EXPECT_FALSE(IsTyping());
    EXPECT_EQ(doc->Model().CursorCell(), (CSheetCell{0, 2}));
    Type("12");
    Key(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(Row(), "22XX122222");
    Undo();
    EXPECT_EQ(Row(), "2211122222");
    Undo();
    EXPECT_EQ(Row(), "1111122222");
}

TEST_F(SheetTypingTest, ArrowsChooseWhatANumberStandsFor) {
    Type("2");
    Key(Qt::Key_Right);
    EXPECT_EQ(Chooser().Choice().chosen, 1);
    EXPECT_EQ(doc->Model().CursorCell(), CSheetCell{}) << "the cursor stays";
    EXPECT_EQ(doc->Timing().Outcome()->xsheet.Cell(0, 0).CelName(), "21");
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "YY11122222");
    Key(Qt::Key_Right);
    EXPECT_EQ(doc->Model().CursorCell(), (CSheetCell{1, 2})) << "and goes again when nothing is typed";
}

TEST_F(SheetTypingTest, SignsEmptyHoldAndSetExposures) {
    Type("-3");
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "1111122222") << "there is nothing above the first frame";
    EXPECT_TRUE(IsTyping());
    Key(Qt::Key_Escape);
    Type(".");
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "..11122222");
    doc->Cursor().GoTo({0, 5});
    Type("-1");
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "..11112222");
    EXPECT_EQ(doc->Model().cursorFrame, 6);
    Key(Qt::Key_2, Qt::ControlModifier);
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "..11112222") << "what is pulled up leaves its last drawing";
    doc->Cursor().GoTo({0, 3});
    Type("+");
    EXPECT_EQ(doc->Timing().Outcome()->xsheet.Cell(0, 6).CelName(), "1");
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "..11111222");
    doc->Timing().SetWhatFollows(Following::Eat);
    doc->Cursor().GoTo({0, 2});
    Key(Qt::Key_1, Qt::ControlModifier);
    Key(Qt::Key_Return);
    EXPECT_EQ(Row(), "..12222222") << "what follows begins earlier";
    EXPECT_EQ(doc->Model().cursorFrame, 3);
}

TEST_F(SheetTypingTest, ALineIsGivenUpWithoutATrace) {
    const CScene before = doc->Model().Scene();
    for (const auto& giveUp : std::initializer_list<std::function<void()>>{
             [this] { Key(Qt::Key_Escape); }, [this] { Key(Qt::Key_Backspace); },
             [this] {
                 doc->Cursor().GoTo({1, 4});
             },
             [this] { QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, At(2, 2)); },
             [this] { Key(Qt::Key_PageDown); }, [this] { view->clearFocus(); }}) {
        view->setFocus();
        doc->Cursor().GoTo({0, 1});
        Type("2");
        ASSERT_TRUE(IsTyping());
        giveUp();
        EXPECT_FALSE(IsTyping());
        EXPECT_EQ(doc->Timing().Outcome(), nullptr);
    }
    doc->Cursor().GoTo({0, 1});
    Type("7");
    Key(Qt::Key_Return);
    EXPECT_TRUE(IsTyping()) << "there is no such drawing";
    Key(Qt::Key_Escape);
    EXPECT_EQ(doc->Model().Scene(), before);
    EXPECT_FALSE(HasSteps());
    Type("2");
    doc->Scenes().ResetToNoScene();
    doc->Views().UpdateAllViews(everythingHint);
    EXPECT_FALSE(IsTyping());
    Type("2");
    EXPECT_FALSE(IsTyping());
}

TEST_F(SheetTypingTest, TheFillHandleRepeatsOrHolds) {
    doc->Cursor().GoTo({0, 4});
    doc->Cursor().SetSelEndY(5);
    Press(CornerOf(0, 5));
    Drag(CornerOf(0, 9));
    ASSERT_NE(doc->Timing().Outcome(), nullptr);
    EXPECT_EQ(doc->Timing().Outcome()->xsheet.Cell(0, 8).CelName(), "1");
    EXPECT_EQ(Row(), "1111122222");
    Release(CornerOf(0, 9));
    EXPECT_EQ(Row(), "1111121212");
    EXPECT_EQ(doc->Model().selection, (CXSheetSelection{0, 0, 4, 9}));
    Undo();
    EXPECT_EQ(Row(), "1111122222");

    doc->Cursor().GoTo({0, 4});
    Press(CornerOf(0, 4), Qt::ControlModifier);
    Drag(At(0, 7), Qt::ControlModifier);
    Release(At(0, 7));
    EXPECT_EQ(Row(), "1111111122");
    Undo();

    doc->Cursor().GoTo({0, 4});
    Press(CornerOf(0, 4));
    Drag(At(0, 7));
    ASSERT_NE(doc->Timing().Outcome(), nullptr);
    Key(Qt::Key_Escape);
    Release(At(0, 7));
    EXPECT_EQ(Row(), "1111122222");
    EXPECT_EQ(doc->Timing().Outcome(), nullptr);
    EXPECT_FALSE(HasSteps());
}

TEST_F(SheetTypingTest, AnEdgeSlidesOverWhatFollows) {
    doc->Cursor().GoTo({0, 1});
    Press(EdgeBelow(0, 4));
    Drag(EdgeBelow(0, 6));
    Release(EdgeBelow(0, 6));
    EXPECT_EQ(Row(), "1111111222");
    doc->Timing().SetWhatFollows(Following::Eat);
    doc->Cursor().GoTo({0, 6});
    Press(EdgeBelow(0, 6));
    Drag(EdgeBelow(0, 1));
    Release(EdgeBelow(0, 1));
    EXPECT_EQ(Row(), "1122222222");
    EXPECT_EQ(doc->Model().CursorCell(), (CSheetCell{0, 1})) << "it stays on what was slid";
    Undo();
    EXPECT_EQ(Row(), "1111111222");
    doc->Cursor().GoTo({0, 6});
    Press(EdgeBelow(0, 6));
    Drag(EdgeBelow(0, 20));
    Release(EdgeBelow(0, 20));
    EXPECT_EQ(Row(), "1111111111");
}

TEST_F(SheetTypingTest, TheMouseDoesEverywhereElseWhatItDid) {
    doc->Cursor().GoTo({0, 4});
    Press(CornerOf(0, 4));
    Release(CornerOf(0, 4));
    EXPECT_EQ(doc->Model().selection, (CXSheetSelection{0, 0, 4, 4})) << "a handle that is not dragged is its cell";
    Press(EdgeBelow(0, 2)); // within an exposure
    Drag(At(1, 6));
    Release(At(1, 6));
    EXPECT_EQ(doc->Model().selection, (CXSheetSelection{0, 1, 2, 6}));
    doc->Cursor().GoTo({0, 0});
    Press(EdgeBelow(2, 9)); // of another level than the cursor's
    Drag(At(1, 6));
    Release(At(1, 6));
    EXPECT_EQ(doc->Model().selection, (CXSheetSelection{1, 2, 6, 9}));
    EXPECT_EQ(Row(), "1111122222");
    EXPECT_FALSE(HasSteps());
}

TEST_F(SheetTypingTest, HandlesAreSeenNearThePointer) {
    doc->Cursor().GoTo({0, 4});
    const auto picture = [this](QPoint pointer) {
        QTest::mouseMove(view->viewport(), pointer);
        QMouseEvent move(QEvent::MouseMove, pointer, view->viewport()->mapToGlobal(pointer), Qt::NoButton,
                         Qt::NoButton, {});
        QCoreApplication::sendEvent(view->viewport(), &move);
        return view->viewport()->grab().toImage();
    };
    const QImage away = picture(At(2, 8));
    const QImage corner = picture(CornerOf(0, 4));
    EXPECT_EQ(view->viewport()->cursor().shape(), Qt::CrossCursor);
    EXPECT_NE(corner.pixelColor(CornerOf(0, 4)), away.pixelColor(CornerOf(0, 4)));
    EXPECT_NE(picture(EdgeBelow(0, 4)).pixelColor(EdgeBelow(0, 4)), away.pixelColor(EdgeBelow(0, 4)));
    EXPECT_EQ(picture(At(2, 8)), away);
    EXPECT_EQ(view->viewport()->cursor().shape(), Qt::ArrowCursor);
}

} // namespace
} // namespace velmor::testing
