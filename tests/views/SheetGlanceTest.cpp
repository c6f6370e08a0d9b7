// The sheet at a glance, as it is seen and handled.

#include "DocumentFixture.h"
#include "TestScene.h"
#include "scene/XSheetCursor.h"
#include "scene/sheet/OtherSheet.h"
#include "scene/sheet/SheetDisplay.h"
#include "views/xsheet/OtherSheetPane.h"
#include "views/xsheet/OtherSheetView.h"
#include "views/xsheet/XSheetView.h"

#include <QComboBox>
#include <QPushButton>
#include <QWheelEvent>
#include <QtTest>

namespace velmor::testing {
namespace {

class SheetGlanceTest : public CDocumentFixture {
protected:
    void SetUp() override {
        CTestScene scene(Database());
        ASSERT_TRUE(doc->Scenes().OpenScene("Test"));
        view = std::make_unique<CXSheetView>(*doc, prompter);
        view->resize(700, 400);
        view->show();
        view->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
        view->setFocus();
    }
    void TearDown() override { view.reset(); }

    QImage Picture() {
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents(); // pictures are made when the program is idle
        return view->viewport()->grab().toImage();
    }
    const CXSheetGeometry& Sheet() const { return view->Geometry(); }
    void Wheel(QPoint at, int notches) {
        QWheelEvent wheel(at, view->viewport()->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view->viewport(), &wheel);
    }
    std::string Names() const {
        std::string names;
        for (int level = 0; level < 3; ++level)
            names += doc->Model().Scene().xsheet.Cell(level, 0).CelName() + ' ';
        return names;
    }
    void DragLevel(int from, QPoint to, Qt::KeyboardModifiers keys = Qt::ControlModifier) {
        const QPoint name(Sheet().ColumnX(from) + 40, 30);
        QTest::mousePress(view->viewport(), Qt::LeftButton, keys, name);
        QMouseEvent move(QEvent::MouseMove, to, view->viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         keys);
        QCoreApplication::sendEvent(view->viewport(), &move);
    }

    std::unique_ptr<CXSheetView> view;
};

TEST_F(SheetGlanceTest, NothingIsOtherwiseUnlessItIsChosen) {
    const QImage usual = Picture();
    CSheetDisplay& display = doc->SheetDisplay();
    display.ColorFolders(true);
    const QImage colors = Picture();
    EXPECT_NE(colors, usual);
    display.ColorFolders(false);
    display.DrawHolds(true);
    EXPECT_NE(Picture(), usual);
    display.DrawHolds(false);
    display.SetZoom(2);
    EXPECT_NE(Picture(), usual);
    display.SetZoom(0);
    display.Fold(1, 1, true);
    EXPECT_NE(Picture(), usual);
    display.UnfoldAll();
    EXPECT_EQ(Picture(), usual);
}

TEST_F(SheetGlanceTest, TheWheelZoomsAndPicturesAppear) {
    Wheel({100, 50}, 2); // over the first frame, which stays in view
    EXPECT_EQ(doc->SheetDisplay().Zoom(), 2);
    EXPECT_EQ(Sheet().rowHeight, 74);
    const QRect cell = Sheet().CellRect({0, 0});
    const QImage picture = Picture();
    const double scale = picture.devicePixelRatio();
    EXPECT_EQ(picture.pixelColor(QPointF(cell.center().x() * scale, (cell.y() + 46) * scale).toPoint()),
              QColor(255, 0, 0))
        << "the square of paint of cel 1";
    Wheel({100, 100}, -9);
    EXPECT_EQ(doc->SheetDisplay().Zoom(), 0);
    EXPECT_EQ(Sheet().rowHeight, 20);
}

TEST_F(SheetGlanceTest, TheFrameUnderTheWheelStays) {
    CTestScene scene(Database(), "Long");
    scene.data.xsheet.SetFrameCount(200);
    scene.Save();
    ASSERT_TRUE(doc->Scenes().OpenScene("Long"));
    doc->Cursor().GoTo({0, 120});
    const QPoint at(100, 200);
    const int frame = Sheet().YToFrame(at.y());
    Wheel(at, 1);
    EXPECT_EQ(Sheet().YToFrame(at.y()), frame);
    Wheel(at, -1);
    EXPECT_EQ(Sheet().YToFrame(at.y()), frame);
}

TEST_F(SheetGlanceTest, LevelsAreFoldedByTheirHeaders) {
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, {Sheet().ColumnX(0) + 40, 30});
    EXPECT_TRUE(doc->SheetDisplay().AreFolded(0, 0));
    EXPECT_EQ(Sheet().ColumnX(1), 30 + Sheet().foldedWidth);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, {Sheet().ColumnX(0) + 5, 10});
    EXPECT_FALSE(doc->SheetDisplay().Folded().any());
}

TEST_F(SheetGlanceTest, LevelsAreDraggedAsOneStep) {
    ASSERT_EQ(Names(), "1  back ");
    const QPoint behindAll(Sheet().ColumnX(2) + 60, 100);
    DragLevel(0, behindAll);
    QTest::keyClick(view.get(), Qt::Key_Escape);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, behindAll);
    EXPECT_EQ(Names(), "1  back ") << "given up";
    DragLevel(0, behindAll, {});
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, behindAll);
    EXPECT_EQ(Names(), "1  back ") << "without Ctrl columns are selected";
    EXPECT_EQ(doc->Model().selection.lastLevel, 2);
    doc->Cursor().GoTo({1, 0});
    DragLevel(0, behindAll);
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, behindAll);
    EXPECT_EQ(Names(), " back 1 ");
    doc->History().Undo();
    EXPECT_EQ(Names(), "1  back ");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::ControlModifier, {Sheet().ColumnX(1) + 40, 30});
    EXPECT_EQ(doc->Model().selection, (CXSheetSelection{1, 1, 0, 9})) << "a name that is clicked on";
}

TEST_F(SheetGlanceTest, AnotherSceneIsShownBesideAndCopiedFrom) {
    CTestScene away(Database(), "Away");
    COtherSheetPane pane(*doc);
    pane.resize(500, 300);
    pane.show();
    auto& scenes = *pane.findChild<QComboBox*>("scenes");
    auto& copy = *pane.findChild<QPushButton*>("copy");
    ASSERT_EQ(scenes.count(), 2);
    EXPECT_FALSE(copy.isEnabled());
    scenes.setCurrentIndex(1);
    scenes.activated(1);
    EXPECT_TRUE(copy.isEnabled());
    QWidget* sheet = pane.View().viewport();
    const auto at = [&](int level, int frame) { return pane.View().Geometry().CellRect({level, frame}).center(); };
    QTest::mouseClick(sheet, Qt::LeftButton, {}, at(0, 3));
    QTest::mouseClick(sheet, Qt::LeftButton, Qt::ShiftModifier, at(0, 6));
    QTest::keyClick(&pane.View(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(doc->Model().clipboard.height, 4);
    EXPECT_EQ(doc->Model().clipboard.cells.back().CelName(), "2");
    QTest::keyClick(&pane.View(), Qt::Key_Home);
    copy.click();
    EXPECT_EQ(doc->Model().clipboard.height, 1);
    doc->Scenes().ResetToNoScene();
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

} // namespace
} // namespace velmor::testing
