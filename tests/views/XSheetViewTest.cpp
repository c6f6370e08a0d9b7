#include "views/xsheet/XSheetView.h"
#include "DocumentFixture.h"
#include "TestScene.h"
#include "qt/PaletteChange.h"
#include "qt/Patience.h"
#include "scene/CameraOperations.h"
#include "scene/CellOperations.h"
#include "scene/DialogueOperations.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "views/source/SourceView.h"

#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QtTest>

namespace velmor::testing {
namespace {

// Adds up what a widget is asked to paint.
class CPaintWatch : public QObject {
public:
    QRegion painted;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

class XSheetViewTest : public CDocumentFixture {
protected:
    // Scene "Test" of `frames` frames and three levels, the middle one empty; five columns and ten rows on the
    // client area.
    void Open(int frames = 100) {
        CTestScene scene(Database());
        scene.data.xsheet.SetFrameCount(frames);
        scene.Save();
        static_cast<void>(doc->Scenes().OpenScene("Test"));
        view = std::make_unique<CXSheetView>(*doc, prompter);
        Show({30 + 5 * 80 + 140, 40 + 10 * 20});
        TakeHints();
    }
    void Show(QSize client) {
        view->resize(client);
        view->show();
        view->resize(view->size() + client - view->viewport()->size());
        QCoreApplication::processEvents();
        ASSERT_EQ(view->viewport()->size(), client);
        view->viewport()->installEventFilter(&watch);
        watch.painted = {};
    }

    QWidget* Port() { return view->viewport(); }
    void Press(QPoint point, Qt::KeyboardModifiers keys = {}) {
        QTest::mousePress(Port(), Qt::LeftButton, keys, point);
    }
    void Release(QPoint point) { QTest::mouseRelease(Port(), Qt::LeftButton, {}, point); }
    // QTest's own moves do not say that a button is down.
    void DragTo(QPoint point, Qt::MouseButton held = Qt::LeftButton) {
        QMouseEvent move(QEvent::MouseMove, point, Port()->mapToGlobal(point), Qt::NoButton, held, {});
        QCoreApplication::sendEvent(Port(), &move);
    }
    void Click(QPoint point) {
        Press(point);
        Release(point);
    }
    void Key(int key, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(view.get(), static_cast<Qt::Key>(key), keys);
    }
    QRegion TakePainted() {
        QCoreApplication::processEvents();
        return std::exchange(watch.painted, {});
    }

    bool MoveAssets(QPoint point) {
        QDragEnterEvent enter(point, Qt::CopyAction, &assets, Qt::LeftButton, {});
        QCoreApplication::sendEvent(Port(), &enter);
        if (!enter.isAccepted())
            return false;
        QDragMoveEvent move(point, Qt::CopyAction, &assets, Qt::LeftButton, {});
        QCoreApplication::sendEvent(Port(), &move);
        return move.isAccepted();
    }
    void DropAssets(QPoint point) {
        MoveAssets(point);
        QDropEvent drop(point, Qt::CopyAction, &assets, Qt::LeftButton, {});
        QCoreApplication::sendEvent(Port(), &drop);
        QCoreApplication::processEvents();
    }
    void SelectAssets(SourceMode mode, std::vector<std::string> names) {
        doc->Scenes().SetSourceMode(mode);
        doc->Scenes().SetSourceSelection(std::move(names));
    }

    static QPoint At(int level, int frame) { return {30 + 80 * level + 40, 40 + 20 * frame + 10}; }
    CSheetCell Cursor() const { return {doc->Model().cursorLevel, doc->Model().cursorFrame}; }
    CXSheetSelection Selection() const { return doc->Model().selection; }
    std::string Cel(int level, int frame) const { return doc->Model().Scene().xsheet.Cell(level, frame).CelName(); }

    CPaintWatch watch;
    QMimeData assets;
    std::unique_ptr<CXSheetView> view;

    void SetUp() override { assets.setData(CSourceView::dragType, "x"); }
    void TearDown() override { view.reset(); }
};

TEST_F(XSheetViewTest, PressesSelectCellsAndShiftGrowsTheSelection) {
    Open();
    Click(At(1, 4));
    EXPECT_EQ(Cursor(), (CSheetCell{1, 4}));
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 1, 4, 4}));
    EXPECT_EQ(TakeHints(), (std::vector<int>{4, 8, 260}));

    Press(At(2, 2), Qt::ShiftModifier);
    Release(At(2, 2));
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 2, 2, 4}));
    EXPECT_EQ(Cursor(), (CSheetCell{2, 2}));
    Press(At(1, 3), Qt::ShiftModifier);
    Release(At(1, 3));
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 2, 2, 4})) << "never shrinks";

    Click({-1 + 30 + 5 * 80 + 40, 50});
    EXPECT_EQ(Cursor(), (CSheetCell{2, 0})) << "beyond the last level";
    QTest::mouseClick(Port(), Qt::RightButton, {}, At(0, 7));
    EXPECT_EQ(Cursor(), (CSheetCell{2, 0}));
}

TEST_F(XSheetViewTest, DragsSelectFromTheCursor) {
    Open();
    int told = 0;
    view->SetSelectionCallback([&] { ++told; });
    Press(At(1, 5));
    DragTo(At(2, 3));
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 2, 3, 5}));
    DragTo(At(0, 8));
    EXPECT_EQ(Selection(), (CXSheetSelection{0, 1, 5, 8}));
    EXPECT_EQ(Cursor(), (CSheetCell{1, 5}));
    Release(At(0, 8));
    EXPECT_EQ(told, 1);
    DragTo(At(2, 9));
    EXPECT_EQ(Selection(), (CXSheetSelection{0, 1, 5, 8})) << "the button is up";

    Press(At(1, 5));
    DragTo(At(1, 7), Qt::NoButton); // it was let go over another window
    DragTo(At(2, 9));
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 1, 5, 5}));
}

TEST_F(XSheetViewTest, TheRowOfNamesSelectsWholeColumns) {
    Open();
    Click(At(1, 4));
    const QPoint names[] = {{70, 30}, {150, 30}, {230, 30}};
    Press(names[2]);
    EXPECT_EQ(Selection(), (CXSheetSelection{2, 2, 0, 99}));
    EXPECT_EQ(Cursor(), (CSheetCell{2, 0}));
    DragTo(names[1]);
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 2, 0, 99}));
    Release(names[1]);
    EXPECT_EQ(Cursor(), (CSheetCell{2, 0}));
    Press(names[0], Qt::ShiftModifier);
    Release(names[0]);
    EXPECT_EQ(Selection(), (CXSheetSelection{0, 2, 0, 99}));

    Click(At(1, 4));
    Click({30 + 5 * 80 + 100, 30});
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 1, 0, 99})) << "beside the names the selected level stays";
    EXPECT_EQ(Cursor(), (CSheetCell{1, 0}));

    Click({200, 20});
    EXPECT_EQ(Selection(), (CXSheetSelection{2, 2, 0, 0})) << "the line between the header's rows selects a cell";
}

TEST_F(XSheetViewTest, SelectionsHeldOutsideKeepScrolling) {
    Open();
    Press(At(0, 2));
    DragTo({60, 240 + 7});
    EXPECT_EQ(view->Geometry().firstFrame, 2);
    DragTo({60, 240 + 145});
    EXPECT_TRUE(WaitFor([&] { return view->Geometry().firstFrame == 91; }));
    EXPECT_TRUE(WaitFor([&] { return Selection().lastFrame == 99; }));
    EXPECT_EQ(Selection().firstFrame, 2);
    EXPECT_EQ(view->verticalScrollBar()->value(), 91);
    DragTo({60, 35});
    EXPECT_EQ(view->Geometry().firstFrame, 89);
    Release({60, 35});
}

TEST_F(XSheetViewTest, HeaderButtonsActOnRelease) {
    Open();
    prompter.Answer(30.0);
    Press({50, 10});
    EXPECT_FALSE(prompter.AllAnswersTaken());
    Release({50, 10});
    EXPECT_EQ(doc->Model().Scene().xsheet.Cell(0, 0).Transparency(), 30);
    prompter.Answer(CBlurForm{5, 5, true});
    Click({30, 5});
    EXPECT_FALSE(prompter.AllAnswersTaken()) << "the first pixel column is no button's";
    Click({31, 5});
    EXPECT_EQ(doc->Model().Scene().xsheet.Cell(0, 0).BlurX(), 5);

    Click({30 + 80 + 40, 19});
    EXPECT_TRUE(doc->Cursor().GetLevelSmoothed(1));
    EXPECT_FALSE(doc->Model().moveSelection.IsCameraSelected());
    Click({30 + 2 * 80 + 60, 10});
    EXPECT_TRUE(doc->Cursor().GetLevelSmoothed(1)) << "a number is no button";
    Click({30 + 5 * 80 + 10, 10});
    EXPECT_TRUE(doc->Model().moveSelection.IsCameraSelected());
    EXPECT_EQ(Cursor(), (CSheetCell{0, 0}));
}

TEST_F(XSheetViewTest, DoubleClicksEditTheCelOrTheCamera) {
    Open();
    CCellDataForm form;
    form.posX = 7;
    prompter.Answer(form);
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, At(0, 6));
    EXPECT_EQ(doc->Model().Scene().xsheet.Cell(0, 6).PosX(), 7);
    EXPECT_EQ(Selection(), (CXSheetSelection{0, 0, 6, 6}));

    prompter.Answer(CCameraForm{11, 0, 100, {}});
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, {30 + 5 * 80 + 40, At(0, 3).y()});
    EXPECT_EQ(doc->Camera().GetCamPosX(3), 11);
    DragTo(At(1, 9));
    EXPECT_EQ(Selection().lastFrame, 3) << "no drag is left over";
    EXPECT_EQ(doc->Model().cursorLevel, 2) << "the level nearest to the camera";

    QTest::mouseDClick(Port(), Qt::LeftButton, Qt::ControlModifier, At(0, 6));
    EXPECT_EQ(doc->Model().celImg.FilePath(), SceneFolder("Test") / "A" / "2.bit");
}

TEST_F(XSheetViewTest, ARightClickChoosesWhatItsMenuIsAbout) {
    Open();
    std::array<QMenu, 4> menus;
    CSheetMenus handed{};
    for (std::size_t i = 0; i < menus.size(); ++i) {
        menus[i].addAction("x");
        handed[i] = &menus[i];
    }
    view->SetContextMenus(handed);
    // Which of the menus opens.
    const auto open = [&](QPoint point) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, Port()->mapToGlobal(point));
        QCoreApplication::sendEvent(Port(), &event);
        const auto shown = std::ranges::find_if(menus, &QMenu::isVisible);
        const auto which = static_cast<int>(shown - menus.begin());
        for (QMenu& menu : menus)
            menu.close();
        return which;
    };
    Press(At(0, 2));
    DragTo(At(1, 4));
    Release(At(1, 4));
    const CXSheetSelection block = Selection();
    EXPECT_EQ(open(At(1, 3)), 0);
    EXPECT_EQ(Selection(), block) << "to be cut as a whole";
    EXPECT_EQ(Cursor(), (CSheetCell{0, 2}));
    EXPECT_EQ(open(At(1, 5)), 0);
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 1, 5, 5}));
    EXPECT_EQ(Cursor(), (CSheetCell{1, 5}));

    EXPECT_EQ(open({30 + 2 * 80 + 40, 30}), 1);
    EXPECT_EQ(Selection(), (CXSheetSelection{2, 2, 0, 99}));
    EXPECT_EQ(doc->Model().cursorLevel, 2);
    EXPECT_EQ(open({30 + 5 * 80 + 40, At(0, 7).y()}), 2);
    EXPECT_EQ(doc->Model().cursorFrame, 0) << "a frame of the selected column";
    Click(At(2, 1));
    EXPECT_EQ(open({30 + 5 * 80 + 40, At(0, 7).y()}), 2);
    EXPECT_EQ(Cursor(), (CSheetCell{2, 7}));
    EXPECT_EQ(open({510, At(0, 8).y()}), 3) << "of the sounds";
    EXPECT_EQ(Cursor(), (CSheetCell{2, 8}));
    EXPECT_EQ(open({30 + 4 * 80 + 40, 30}), 4) << "no level there";
}

TEST_F(XSheetViewTest, KeysMoveTheCursorAndKeepItInView) {
    Open();
    Key(Qt::Key_Right);
    Key(Qt::Key_Down);
    EXPECT_EQ(Cursor(), (CSheetCell{1, 1}));
    Key(Qt::Key_Down, Qt::ShiftModifier);
    Key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (CXSheetSelection{0, 1, 1, 2}));
    Key(Qt::Key_Up, Qt::ShiftModifier);
    Key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Selection(), (CXSheetSelection{0, 1, 0, 1})) << "past the corner that stays";

    Key(Qt::Key_End);
    EXPECT_EQ(Cursor().frame, 99);
    EXPECT_EQ(view->Geometry().firstFrame, 90);
    prompter.Answer(31);
    doc->Camera().CheckLines();
    EXPECT_EQ(view->Geometry().firstFrame, 90) << "back at the frame before the check";
    doc->Cursor().SetCursorY(50);
    EXPECT_EQ(view->Geometry().firstFrame, 50);
}

TEST_F(XSheetViewTest, TheWheelScrollsFramesAndWithShiftLevels) {
    Open();
    prompter.Answer(std::string("a"));
    prompter.Answer(std::string("b"));
    prompter.Answer(std::string("c"));
    for (int i = 0; i < 3; ++i)
        doc->XSheet().AddLevel();
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), 1);
    // The bar has taken some of the height.
    EXPECT_EQ(view->verticalScrollBar()->maximum(), view->Geometry().MostFirstFrame());
    const auto turn = [&](Qt::KeyboardModifiers keys) {
        QWheelEvent wheel(At(1, 1), Port()->mapToGlobal(At(1, 1)), {}, {0, -120}, {}, keys, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(Port(), &wheel);
    };
    turn({});
    EXPECT_GT(view->Geometry().firstFrame, 0);
    EXPECT_EQ(view->Geometry().firstLevel, 0);
    turn(Qt::ShiftModifier);
    EXPECT_EQ(view->Geometry().firstLevel, 1);
    doc->Cursor().SetCursorX(0);
    EXPECT_EQ(view->Geometry().firstLevel, 1) << "the cursor has not moved";
    doc->Cursor().SetCursorX(1);
    doc->Cursor().SetCursorX(0);
    EXPECT_EQ(view->Geometry().firstLevel, 0);
    Click({30 + 5 * 80 + 100, 50});
    EXPECT_EQ(Cursor().level, 5);
    EXPECT_EQ(view->Geometry().firstLevel, 0) << "the sheet stands still under the mouse";
}

TEST_F(XSheetViewTest, DroppedCelsLandUnderTheMouse) {
    Open();
    doc->Scenes().SetFolderName("A");
    SelectAssets(SourceMode::Cels, {"1", "2"});
    view->verticalScrollBar()->setValue(20);
    prompter.Answer(0);
    DropAssets(At(1, 2));
    EXPECT_TRUE(prompter.AllAnswersTaken());
    EXPECT_EQ(Cel(1, 22), "1");
    EXPECT_EQ(Cel(1, 23), "2");
    EXPECT_EQ(Selection(), (CXSheetSelection{1, 1, 22, 22}));
    const QPoint screen = Port()->mapToGlobal(At(1, 2));
    EXPECT_EQ(std::any_cast<CDropTypeRequest>(prompter.lastRequest).screenPoint, (CPoint{screen.x(), screen.y()}));

    prompter.Answer(0);
    DropAssets(At(3, 2));
    EXPECT_FALSE(prompter.AllAnswersTaken()) << "there is no such level";
    EXPECT_TRUE(MoveAssets(At(0, 3)));
    EXPECT_FALSE(MoveAssets(At(3, 3)));
    EXPECT_FALSE(MoveAssets({500, 100})) << "nor does the camera take cels";
    EXPECT_EQ(prompter.messages, std::vector<std::string>{});
}

TEST_F(XSheetViewTest, DroppedSoundsCountByFrameOnly) {
    Open();
    SelectAssets(SourceMode::Sounds, {"tick"});
    DropAssets({520, At(0, 7).y()});
    DropAssets(At(0, 9));
    EXPECT_NE(doc->Model().Scene().sounds.NameAt(7), nullptr);
    EXPECT_NE(doc->Model().Scene().sounds.NameAt(9), nullptr);
    const int placed = doc->Model().Scene().sounds.Count();
    view->DropSounds(Port()->mapToGlobal(QPoint(520, 5)));
    EXPECT_EQ(doc->Model().Scene().sounds.Count(), placed);
}

TEST_F(XSheetViewTest, SoundsAreDraggedAlongTheirColumn) {
    Open();
    const auto placed = [this] { return doc->Model().Scene().sounds.All(); };
    const auto sound = [](int frame) { return QPoint(520, At(0, frame).y()); };
    ASSERT_EQ(placed(), (std::vector<CSoundPlacement>{{2, "tick"}}));
    Press(sound(2));
    DragTo(sound(6));
    Release(sound(6));
    EXPECT_EQ(Selection(), (CXSheetSelection{2, 2, 2, 6})) << "a drag selects";
    EXPECT_EQ(placed().front().frame, 2);

    TakePainted();
    Press(sound(2), Qt::ControlModifier);
    DragTo(sound(6));
    EXPECT_TRUE(TakePainted().contains(sound(6))) << "where it would be";
    EXPECT_EQ(placed().front().frame, 2);
    Key(Qt::Key_Escape);
    Release(sound(6));
    EXPECT_EQ(placed().front().frame, 2);

    Press(sound(2), Qt::ControlModifier);
    DragTo(sound(4));
    DragTo(sound(6));
    Release(sound(6));
    EXPECT_EQ(placed(), (std::vector<CSoundPlacement>{{6, "tick"}}));
    EXPECT_EQ(Selection(), (CXSheetSelection{2, 2, 2, 6})) << "what was selected stays";
    doc->History().Undo();
    EXPECT_EQ(placed().front().frame, 2) << "one step";

    Press(sound(2), Qt::ControlModifier);
    DragTo({520, Port()->height() + 40});
    EXPECT_TRUE(WaitFor([&] { return view->Geometry().firstFrame >= 3; })) << "the sheet follows";
    DragTo({520, -1000});
    Release({520, -1000});
    EXPECT_EQ(placed().front().frame, 0) << "no sound starts before the sheet does";
    Press(sound(9), Qt::ControlModifier);
    Release(sound(9));
    EXPECT_EQ(Cursor().frame, view->Geometry().firstFrame + 9) << "without a sound it is a click";
}

TEST_F(XSheetViewTest, SoundWavesAreDrawnWhenTheyAreComputed) {
    Open();
    std::vector<std::uint8_t> loud(3 * 918, 128);
    for (std::size_t i = 918; i < 2 * 918; ++i)
        loud[i] = i % 2 == 0 ? 28 : 228;
    ASSERT_TRUE(doc->Sounds().StoreSound("Loud", 22050, loud));
    SelectAssets(SourceMode::Sounds, {"Loud"});
    doc->Sounds().DropSound(5);
    const QImage without = Port()->grab().toImage();
    EXPECT_FALSE(view->ShowsSoundWaves());
    const auto row = [](int frame) { return QRect(480, 40 + 20 * frame, 60, 19); };
    const auto differs = [&](int frame) { return Port()->grab(row(frame)).toImage() != without.copy(row(frame)); };
    view->ShowSoundWaves(true);
    EXPECT_TRUE(WaitFor([&] { return differs(6); }));
    EXPECT_FALSE(differs(8)) << "it is over";
    EXPECT_EQ(Port()->grab().toImage().copy(0, 0, 480, 240), without.copy(0, 0, 480, 240));

    std::ranges::fill(loud, std::uint8_t{128});
    const QImage before = Port()->grab(row(6)).toImage();
    ASSERT_TRUE(doc->Sounds().StoreSound("Loud", 22050, loud));
    EXPECT_TRUE(WaitFor([&] { return Port()->grab(row(6)).toImage() != before; })) << "its file has changed";
    view->ShowSoundWaves(false);
    EXPECT_EQ(Port()->grab().toImage(), without);
}

TEST_F(XSheetViewTest, WithCtrlASoundIsMovedAndWithShiftItsNearerEndIsTrimmed) {
    Open();
    ASSERT_TRUE(doc->Sounds().StoreSound("Long", 22050, std::vector<std::uint8_t>(4 * 918, 28)));
    SelectAssets(SourceMode::Sounds, {"Long"});
    doc->Sounds().DropSound(4);
    const auto placed = [&](int frame) { return *doc->Model().Scene().sounds.At(frame); };
    const auto drag = [&](int from, int to, Qt::KeyboardModifiers keys) {
        const auto at = [](int frame) { return QPoint(510, 40 + 20 * frame + 10); };
        Press(at(from), keys);
        DragTo(at(to));
        Release(at(to));
    };
    const Qt::KeyboardModifiers trims = Qt::ControlModifier | Qt::ShiftModifier;
    drag(4, 5, trims);
    EXPECT_EQ(placed(5), (CSoundPlacement{5, "Long", 918, 0, 0})) << "what is left stays under its frames";
    drag(7, 0, trims);
    EXPECT_EQ(placed(5), (CSoundPlacement{5, "Long", 918, 2 * 918, 0})) << "a frame is left of it";
    drag(5, 0, trims);
    EXPECT_EQ(placed(4), (CSoundPlacement{4, "Long", 0, 2 * 918, 0})) << "no more than there is";
    drag(5, 9, trims);
    EXPECT_EQ(placed(4), (CSoundPlacement{4, "Long", 0, 0, 0}));
    drag(5, 6, Qt::ControlModifier);
    EXPECT_EQ(placed(5), (CSoundPlacement{5, "Long", 0, 0, 0}));
}

TEST_F(XSheetViewTest, WhatIsSpokenStandsBesideTheSound) {
    Open();
    const QImage without = Port()->grab().toImage();
    ASSERT_TRUE(doc->Dialogue().PutLine({1, 4, "Ann", "abcd"}));
    const QImage with = Port()->grab().toImage();
    const auto row = [](int frame) { return QRect(510, 40 + 20 * frame, 60, 20); };
    for (int frame = 0; frame < 6; ++frame)
        EXPECT_EQ(with.copy(row(frame)) != without.copy(row(frame)), frame >= 1 && frame <= 4) << frame;
    EXPECT_EQ(with.copy(0, 0, 510, 240), without.copy(0, 0, 510, 240));
    EXPECT_NE(with.copy(row(1)), with.copy(row(2))) << "each its own letters";
    ASSERT_TRUE(doc->Dialogue().PutLine({1, 4, "", ""}));
    EXPECT_EQ(Port()->grab().toImage(), without);
}

TEST_F(XSheetViewTest, AssetsHeldNearAnEdgeScroll) {
    Open();
    SelectAssets(SourceMode::Sounds, {"tick"});
    MoveAssets({520, 238});
    EXPECT_TRUE(WaitFor([&] { return view->Geometry().firstFrame >= 3; }));
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(Port(), &leave);
    QMimeData text;
    text.setText("x");
    QDragEnterEvent foreign(At(0, 0), Qt::CopyAction, &text, Qt::LeftButton, {});
    QCoreApplication::sendEvent(Port(), &foreign);
    EXPECT_FALSE(foreign.isAccepted());
}

TEST_F(XSheetViewTest, OnlyWhatChangedIsPainted) {
    Open();
    TakePainted();
    doc->Cursor().SetSelStartY(4);
    doc->Cursor().SetSelEndY(4);
    doc->Cursor().SetCursorY(4);
    const QRegion moved = TakePainted();
    EXPECT_TRUE(moved.contains(At(0, 0)));
    EXPECT_TRUE(moved.contains(At(0, 4)));
    EXPECT_TRUE(moved.contains(QPoint(10, At(0, 4).y()))) << "the frame's number";
    EXPECT_FALSE(moved.contains(At(0, 2)));
    EXPECT_FALSE(moved.contains(At(1, 4)));

    for (const UpdateHint hint : {UpdateHint::CameraRedraw, UpdateHint::Cells, UpdateHint::Levels, everythingHint})
        view->OnUpdate(hint);
    EXPECT_TRUE(TakePainted().isEmpty());

    doc->Cursor().SelectCamera();
    doc->Cursor().SetLevelCanMove(2);
    const QRegion header = TakePainted();
    EXPECT_TRUE(header.contains(QPoint(30 + 2 * 80 + 50, 10)));
    EXPECT_TRUE(header.contains(QPoint(30 + 5 * 80 + 10, 10)));
    EXPECT_EQ(header.boundingRect().bottom(), 39);

    // The effects of a cell are told with the camera's picture alone.
    prompter.Answer(30.0);
    doc->Cells().OnXSheetDoTrans(0);
    EXPECT_TRUE(TakePainted().contains(At(0, 4)));

    view->verticalScrollBar()->setValue(1);
    EXPECT_LT(TakePainted().boundingRect().height(), 60) << "what stays in view is moved";
}

TEST_F(XSheetViewTest, WhatWasMovedAndPaintedInPartsLooksLikeWhatIsPaintedWhole) {
    Open();
    const auto expectSame = [&](const char* after) {
        QCoreApplication::processEvents();
        const QImage screen = view->screen()->grabWindow(view->winId()).toImage().convertedTo(QImage::Format_RGB32);
        const QImage whole = view->grab().toImage().convertedTo(QImage::Format_RGB32);
        EXPECT_EQ(screen, whole) << after;
    };
    view->verticalScrollBar()->setValue(7);
    expectSame("scrolling down");
    doc->Cursor().SetCursorY(3);
    expectSame("scrolling to a cursor that has moved");
    doc->Cursor().SetLevelCanMove(1);
    doc->Cursor().SetSelEndY(9);
    view->verticalScrollBar()->setValue(1);
    expectSame("scrolling with changes not yet painted");
    SelectAssets(SourceMode::Cels, {"1", "2"});
    MoveAssets(At(1, 5));
    view->verticalScrollBar()->setValue(2);
    expectSame("scrolling under dragged assets");
    for (int i = 0; i < 4; ++i) {
        prompter.Answer(std::string("more"));
        doc->XSheet().AddLevel();
    }
    view->horizontalScrollBar()->setValue(2);
    expectSame("scrolling to the right");
    doc->Cursor().SetCursorX(0);
    doc->Cursor().SetCursorY(80);
    expectSame("scrolling both ways");
    EXPECT_EQ(view->Geometry(), view->Geometry().Showing({0, 80}));
    EXPECT_EQ(view->horizontalScrollBar()->value(), 0);
}

TEST_F(XSheetViewTest, StructureChangesTheScrollBars) {
    Open();
    EXPECT_EQ(view->verticalScrollBar()->maximum(), 91);
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), 0);
    view->verticalScrollBar()->setValue(91);
    prompter.Answer(60);
    doc->XSheet().DeleteFrames();
    EXPECT_EQ(view->verticalScrollBar()->maximum(), 31);
    EXPECT_EQ(view->Geometry().firstFrame, 31);
    EXPECT_EQ(TakePainted().boundingRect(), Port()->rect());
}

TEST_F(XSheetViewTest, WithoutASceneThereIsNothingToDo) {
    view = std::make_unique<CXSheetView>(*doc, prompter);
    Show({600, 300});
    SelectAssets(SourceMode::Sounds, {"tick"});
    TakeHints();
    Click(At(0, 1));
    Click({40, 10});
    Click({600 - 140 + 5, 10});
    Key(Qt::Key_Down);
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, At(0, 0));
    EXPECT_FALSE(MoveAssets(At(0, 0)));
    view->DropCels(Port()->mapToGlobal(At(0, 0)));
    view->DropSounds(Port()->mapToGlobal(At(0, 0)));
    EXPECT_EQ(TakeHints(), std::vector<int>{});
    EXPECT_EQ(prompter.messages, std::vector<std::string>{});

    const QImage image = Port()->grab().toImage();
    for (const QPoint point : {QPoint(0, 0), At(0, 0), QPoint(599, 299)})
        EXPECT_EQ(image.pixelColor(point), QColor(128, 128, 128));
}

TEST_F(XSheetViewTest, CellsHaveTheColoursOfCursorAndSelection) {
    Open();
    doc->Cursor().SetSelEndX(1);
    doc->Cursor().SetSelEndY(2);
    doc->Cursor().SetCursorY(0);
    const QImage image = Port()->grab().toImage();
    const auto colourOf = [&](int level, int frame) { return image.pixelColor(At(level, frame) - QPoint(38, 8)); };
    EXPECT_EQ(colourOf(0, 0), QColor(128, 255, 128));
    EXPECT_EQ(colourOf(1, 2), QColor(192, 192, 255));
    EXPECT_EQ(colourOf(1, 3), QColor(224, 224, 208));
    EXPECT_EQ(colourOf(3, 0), QColor(128, 128, 128)) << "no such level";
}

TEST_F(XSheetViewTest, CellsAreDimmedAsLongAsTheDesktopIsDark) {
    Open();
    doc->Cursor().SetSelEndX(1);
    doc->Cursor().SetSelEndY(2);
    doc->Cursor().SetCursorY(0);
    const auto colours = [this] {
        const QImage image = Port()->grab().toImage();
        std::vector<QColor> seen;
        for (const auto& [level, frame] : {std::pair(0, 0), {1, 2}, {1, 3}, {3, 0}})
            seen.push_back(image.pixelColor(At(level, frame) - QPoint(38, 8)));
        return seen;
    };
    const std::vector<QColor> light = colours();
    {
        view->setPalette(DarkDesktop());
        std::vector<QColor> dimmed = colours();
        for (const QColor& color : dimmed)
            EXPECT_LT(color.lightness(), 110) << color.name().toStdString();
        std::ranges::sort(dimmed, {}, &QColor::rgb);
        EXPECT_EQ(std::ranges::adjacent_find(dimmed), dimmed.end()) << "they can be told apart";
        view->setPalette({});
    }
    EXPECT_EQ(colours(), light);
}

} // namespace
} // namespace velmor::testing
