#include "views/cel/CelView.h"
#include "CelEditorFixture.h"
#include "image/DisplayBitmap.h"
#include "image/paint/Fill.h"
#include "image/paint/Tools.h"
#include "scene/DialogRequests.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/ViewList.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTest>

#include <cmath>

namespace velmor::testing {
namespace {

/// What a screen would show to which the paints of a widget are all that is ever brought.
class CScreen : public QObject {
public:
    explicit CScreen(QWidget& widget) : m_widget(widget), m_image(widget.size(), QImage::Format_RGB32) {
        m_image.fill(Qt::magenta);
        widget.installEventFilter(this);
    }

    /// Everything that has been brought up to now.
    const QImage& Image() {
        QApplication::processEvents();
        if (!m_painted.isEmpty()) {
            QPainter painter(&m_image);
            painter.setClipRegion(std::exchange(m_painted, {}));
            painter.drawImage(0, 0, Whole());
        }
        return m_image;
    }
    /// What the widget would paint now.
    QImage Whole() {
        m_isOff = true;
        const QImage whole = m_widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
        m_isOff = false;
        return whole;
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && !m_isOff)
            m_painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

private:
    QWidget& m_widget;
    QImage m_image;
    QRegion m_painted;
    bool m_isOff = false;
};

class CelViewTest : public CCelEditorFixture {
protected:
    CelViewTest() : view(*doc, prompter, profile), client(*view.viewport()) {
        view.resize(140, 120); // a margin of 20 on all sides
        view.show();
        QApplication::processEvents();
    }

    CCelImg& Image() { return EditedImage(); }
    CPoint Scroll() { return {view.horizontalScrollBar()->value(), view.verticalScrollBar()->value()}; }
    void ExpectImage(const CCelImg& expected, const char* what) { EXPECT_TRUE(AreSame(Image(), expected)) << what; }
    void Choose(CelTool tool, int brush, int bucketMode) {
        view.SetTool(tool);
        doc->Palette().SetBrush(brush);
        doc->Palette().SetPen(2);
        doc->Palette().SetBucketMode(bucketMode);
    }

    CCelView view;
    QWidget& client;
};

constexpr CPoint from{30, 60}, over{60, 50}, to{70, 20}; // in the image

struct CToolCase {
    const char* name;
    CelTool tool;
    int brush;
    int bucketMode;
    void (*paint)(CCelImg& image, CColor foreground, CColor background);
};

const CToolCase toolCases[] = {
    {"solid", CelTool::Bucket, 0, 0, [](CCelImg& image, CColor fg, CColor) { Fill(image, to.x, to.y, fg); }},
    {"gradient", CelTool::Bucket, 0, 1,
     [](CCelImg& image, CColor fg, CColor bg) { FillGradient(image, from.x, from.y, fg, to.x, to.y, bg); }},
    {"box", CelTool::Bucket, 0, 2,
     [](CCelImg& image, CColor fg, CColor) { FillBox(image, from.x, to.x, to.y, from.y, fg); }},
    {"pen", CelTool::Pen, -1, 0,
     [](CCelImg& image, CColor, CColor) {
         PenStroke(image, from, over, 2);
         PenStroke(image, over, to, 2);
     }},
    {"eraser", CelTool::Eraser, 1, 0,
     [](CCelImg& image, CColor, CColor bg) {
         EraserStroke(image, from, over, 1, bg);
         EraserStroke(image, over, to, 1, bg);
     }},
    {"eraser rectangle", CelTool::Eraser, -1, 0,
     [](CCelImg& image, CColor, CColor bg) { DrawEraserRect(image, from.x, to.x, to.y, from.y, bg); }},
    {"line brush", CelTool::LineBrush, 2, 0,
     [](CCelImg& image, CColor fg, CColor) {
         LineBrushStroke(image, from, over, 2, fg);
         LineBrushStroke(image, over, to, 2, fg);
     }},
    {"line brush rectangle", CelTool::LineBrush, -1, 0,
     [](CCelImg& image, CColor fg, CColor) { DrawLineBrushRect(image, from.x, to.x, to.y, from.y, fg); }},
};

TEST_F(CelViewTest, EveryToolPaintsWhatItsOperationPaints) {
    doc->Palette().SetFGColorValue(MakeColorRef(200, 30, 40));
    doc->Palette().SetBGColorValue(MakeColorRef(10, 220, 90));
    for (const CToolCase& toolCase : toolCases) {
        EditCel();
        Image().SetLine(from.x, from.y, false);
        Image().SetLine(to.x, to.y, false);
        Image().SetModified(false);
        Choose(toolCase.tool, toolCase.brush, toolCase.bucketMode);
        CCelImg expected = Image();
        toolCase.paint(expected, doc->Model().paint.foreground, doc->Model().paint.background);
        const auto point = [](CPoint pixel) { return QPoint(20 + pixel.x, 20 + height - pixel.y); };
        Drag(client, point(from), point(over), point(to));
        ExpectImage(expected, toolCase.name);
        EXPECT_TRUE(Image().IsModified()) << toolCase.name;
        Image().SetModified(false);
        expected.SetModified(false);
    }
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CelViewTest, PaintsWhereTheZoomedAndScrolledImageStands) {
    EditCel();
    Choose(CelTool::Pen, 0, 0);
    view.ZoomIn();
    view.ZoomIn();
    view.horizontalScrollBar()->setValue(50);
    view.verticalScrollBar()->setValue(31);
    CCelImg expected = Image();
    const auto at = [](int x, int y) { return CPoint{(x + 50) / 3, height - (y + 31) / 3}; };
    PenStroke(expected, at(10, 10), at(90, 20), 2);
    PenStroke(expected, at(90, 20), at(40, 99), 2);
    Drag(client, {10, 10}, {90, 20}, {40, 99});
    ExpectImage(expected, "zoom 3");
    Image().SetModified(false);
}

TEST_F(CelViewTest, ASecondQuickDotIsPainted) {
    EditCel();
    Choose(CelTool::Pen, 0, 0);
    CCelImg expected = Image();
    PenStroke(expected, {30, 40}, {30, 40}, 2);
    Mouse(client, QEvent::MouseButtonDblClick, {50, 60}, Qt::LeftButton, Qt::LeftButton);
    Release(client, {50, 60});
    ExpectImage(expected, "double click");
}

TEST_F(CelViewTest, TheRightButtonGivesUp) {
    EditCel();
    for (const CToolCase& toolCase : toolCases) {
        Choose(toolCase.tool, toolCase.brush, toolCase.bucketMode);
        const CCelImg before = Image();
        Press(client, {50, 50});
        Mouse(client, QEvent::MouseButtonPress, {50, 50}, Qt::RightButton, Qt::LeftButton | Qt::RightButton);
        Move(client, {70, 80}, Qt::LeftButton | Qt::RightButton);
        Mouse(client, QEvent::MouseButtonRelease, {80, 80}, Qt::RightButton, Qt::LeftButton);
        Move(client, {90, 80});
        Release(client, {90, 90});
        Mouse(client, QEvent::MouseButtonPress, {50, 50}, Qt::LeftButton, Qt::LeftButton | Qt::RightButton);
        Move(client, {70, 80}, Qt::LeftButton | Qt::RightButton);
        Mouse(client, QEvent::MouseButtonRelease, {70, 80}, Qt::LeftButton, Qt::RightButton);
        ExpectImage(before, toolCase.name);
    }
    EXPECT_FALSE(Image().IsModified());
}

TEST_F(CelViewTest, PanningScrollsAndPaintsNothing) {
    EditCel();
    Choose(CelTool::Pen, 0, 0);
    for (int i = 0; i < 4; ++i)
        view.ZoomIn();
    view.horizontalScrollBar()->setValue(100);
    view.verticalScrollBar()->setValue(100);
    const CCelImg before = Image();
    view.TogglePan();
    EXPECT_TRUE(view.IsPanMode());
    Drag(client, {50, 50}, {40, 55}, {35, 60});
    EXPECT_EQ(Scroll(), (CPoint{110, 95}));
    view.TogglePan();
    Press(client, {50, 50}, Qt::MiddleButton);
    Move(client, {60, 50}, Qt::MiddleButton);
    Release(client, {60, 50}, Qt::MiddleButton);
    EXPECT_EQ(Scroll(), (CPoint{100, 95}));
    QKeyEvent spaceDown(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QApplication::sendEvent(&view, &spaceDown);
    Drag(client, {50, 50}, {50, 45}, {50, 45});
    EXPECT_EQ(Scroll(), (CPoint{100, 100}));
    ExpectImage(before, "panning");
    QKeyEvent spaceUp(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
    QApplication::sendEvent(&view, &spaceUp);
    Drag(client, {50, 50}, {50, 45}, {50, 45});
    EXPECT_TRUE(Image().IsModified()) << "the space bar is up again";
    Image().SetModified(false);
}

TEST_F(CelViewTest, ZoomKeepsTheCentreAndHasNoBounds) {
    EditCel();
    for (int i = 0; i < 9; ++i)
        view.ZoomIn();
    QApplication::processEvents(); // the scroll bars
    const int clientWidth = client.width();
    view.horizontalScrollBar()->setValue(300);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    view.ZoomIn();
    EXPECT_EQ(Scroll().x, (300 + clientWidth / 2) * 11 / 10 - clientWidth / 2);
    EXPECT_EQ(Scroll().y, (height * 10 - client.height() / 2) * 11 / 10 - client.height() / 2);
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), width * 11 - clientWidth);
    EXPECT_EQ(view.horizontalScrollBar()->pageStep(), width * 11 / 10);
    EXPECT_EQ(view.horizontalScrollBar()->singleStep(), 1);
    view.ZoomOneToOne();
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
    for (int i = 0; i < 200; ++i)
        view.ZoomOut();
    EXPECT_EQ(view.Zoom().Level(), -199);
    view.grab();
}

TEST_F(CelViewTest, TheWheelScrollsAndZoomsAboutThePointer) {
    EditCel();
    for (int i = 0; i < 7; ++i)
        view.ZoomIn();
    view.horizontalScrollBar()->setValue(200);
    view.verticalScrollBar()->setValue(200);
    Wheel(client, {30, 90}, -120, Qt::NoModifier);
    EXPECT_GT(Scroll().y, 200);
    EXPECT_EQ(Scroll().x, 200);
    const CPoint before{(Scroll().x + 30) / 8, (Scroll().y + 90) / 8};
    Wheel(client, {30, 90}, 60, Qt::ControlModifier);
    EXPECT_NEAR(view.Zoom().Factor(), 8 * std::exp2(0.125), 1e-9) << "without steps";
    Wheel(client, {30, 90}, 60, Qt::ControlModifier);
    const double factor = view.Zoom().Factor();
    const CPoint after{static_cast<int>((Scroll().x + 30) / factor), static_cast<int>((Scroll().y + 90) / factor)};
    EXPECT_LE(std::abs(after.x - before.x), 1);
    EXPECT_LE(std::abs(after.y - before.y), 1);
    for (int i = 0; i < 6; ++i)
        Wheel(client, {30, 90}, -60, Qt::ControlModifier);
    Wheel(client, {30, 90}, -360, Qt::ControlModifier);
    Wheel(client, {30, 90}, 120, Qt::ControlModifier);
    EXPECT_EQ(view.Zoom(), CZoomLevel(4)) << "levels are met again";
}

TEST_F(CelViewTest, ATurnedViewShowsAndPaintsThePixelsUnderThePointer) {
    EditCel();
    view.SetTool(CelTool::Bucket); // no outline of a brush
    for (int i = 0; i < 3; ++i)
        view.ZoomIn();
    for (const CViewTurn turn :
         {CViewTurn{0, true}, CViewTurn{90, false}, CViewTurn{37, false}, CViewTurn{211, true}}) {
        view.SetTurn(turn);
        QApplication::processEvents();
        const QImage screen = client.grab().toImage();
        CDisplayBitmap bitmap;
        ASSERT_TRUE(CreateBitmap(Image(), {}, bitmap));
        const CViewMapping mapping{{width, height}, {client.width(), client.height()}, view.Zoom(), Scroll(), turn};
        int compared = 0;
        for (int y = 0; y < screen.height(); y += 3)
            for (int x = 0; x < screen.width(); x += 3)
                if (const std::optional<CPoint> pixel = mapping.PixelShownAt({x, y})) {
                    const std::uint8_t* bytes = bitmap.bytes.data() + (pixel->y * bitmap.width + pixel->x) * 3;
                    ASSERT_EQ(screen.pixel(x, y), qRgb(bytes[2], bytes[1], bytes[0])) << x << ' ' << y;
                    ++compared;
                }
        EXPECT_GT(compared, 500);
    }
    Choose(CelTool::Pen, 0, 0);
    const QPoint at(client.width() / 2, client.height() / 2);
    const CViewMapping mapping{
        {width, height}, {client.width(), client.height()}, view.Zoom(), Scroll(), view.Turn()};
    const CPoint shown = *mapping.PixelShownAt({at.x(), at.y()});
    Press(client, at);
    Release(client, at);
    EXPECT_TRUE(Image().IsLine(shown.x, shown.y + 1)) << "one row above, as in an upright view";
}

TEST_F(CelViewTest, SpaceAndAModifierTurnAndZoom) {
    EditCel();
    view.ZoomIn();
    const QPoint centre(client.width() / 2, client.height() / 2);
    const auto drag = [&](QPoint press, QPoint release, Qt::KeyboardModifiers modifiers) {
        QKeyEvent hold(QEvent::KeyPress, Qt::Key_Space, modifiers);
        QApplication::sendEvent(&view, &hold);
        QTest::mousePress(&client, Qt::LeftButton, modifiers, press);
        Move(client, release);
        QTest::mouseRelease(&client, Qt::LeftButton, modifiers, release);
        QKeyEvent letGo(QEvent::KeyRelease, Qt::Key_Space, modifiers);
        QApplication::sendEvent(&view, &letGo);
    };
    drag(centre + QPoint(50, 0), centre + QPoint(40, 40), Qt::ShiftModifier);
    EXPECT_NEAR(view.Turn().degrees, 45, 2);
    drag(centre + QPoint(40, 40), centre + QPoint(0, 50), Qt::ShiftModifier);
    EXPECT_EQ(view.Turn().degrees, 90) << "drawn to the quarter";
    view.TurnUpright();
    EXPECT_EQ(view.Turn(), CViewTurn());
    drag({20, 40}, {140, 40}, Qt::ControlModifier);
    EXPECT_EQ(view.Zoom(), CZoomLevel(4));
    EXPECT_EQ(doc->Model().celImg.Changes(), 0) << "nothing is painted";
}

TEST_F(CelViewTest, TheNavigatorIsSeenWhereTheImageIsCutAndMovesTheView) {
    EditCel();
    auto* navigator = view.findChild<QWidget*>("celNavigator");
    ASSERT_NE(navigator, nullptr);
    for (int i = 0; i < 7; ++i)
        view.ZoomIn();
    EXPECT_FALSE(navigator->isVisibleTo(&view)) << "not asked for";
    view.ToggleNavigator();
    EXPECT_TRUE(navigator->isVisibleTo(&view));
    QApplication::processEvents(); // the scroll bars
    QTest::mousePress(navigator, Qt::LeftButton, {}, {1, 1});
    EXPECT_EQ(Scroll(), (CPoint{0, 0}));
    QTest::mouseRelease(navigator, Qt::LeftButton, {}, {1, 1});
    QTest::mousePress(navigator, Qt::LeftButton, {}, {navigator->width() - 1, navigator->height() - 1});
    EXPECT_EQ(Scroll().x, view.horizontalScrollBar()->maximum());
    EXPECT_EQ(Scroll().y, view.verticalScrollBar()->maximum());
    view.FitToWindow();
    EXPECT_FALSE(navigator->isVisibleTo(&view)) << "all is seen";
}

TEST_F(CelViewTest, WhatIsRepaintedIsTheWholeTruth) {
    EditCel();
    for (const int zoomSteps : {0, 2, -1, -2, 1, 0, 3}) {
        view.ZoomOneToOne();
        switch (zoomSteps) {
        case -2:
            view.ToggleSmooth();
            break;
        case 1:
            view.SetTurn(CViewTurn().TurnedBy(33));
            break;
        case 3:
            view.MirrorView();
            break;
        default:
            break;
        }
        for (int i = 0; i < std::abs(zoomSteps); ++i)
            zoomSteps > 0 ? view.ZoomIn() : view.ZoomOut();
        QApplication::processEvents(); // the scroll bars
        CScreen screen(client);
        client.update();
        for (int round = 0; round < 60; ++round) {
            const auto point = [this] {
                return QPoint(RandomBetween(m_random, 0, 139), RandomBetween(m_random, 0, 119));
            };
            const CToolCase& toolCase = toolCases[static_cast<std::size_t>(round) % std::size(toolCases)];
            Choose(toolCase.tool, toolCase.brush < 0 ? -1 : RandomBetween(m_random, 0, 5), toolCase.bucketMode);
            doc->Palette().SetFGColorValue(static_cast<ColorRef>(m_random() & 0xffffff));
            Press(client, point());
            for (int i = 0; i < 3; ++i) {
                Move(client, point());
                screen.Image();
            }
            ASSERT_EQ(screen.Image(), screen.Whole()) << toolCase.name << " held, zoom " << view.Zoom().Level();
            Release(client, point());
            ASSERT_EQ(screen.Image(), screen.Whole()) << toolCase.name << ", zoom " << view.Zoom().Level();
        }
    }
    view.TurnUpright();
    view.ZoomOneToOne();
    QApplication::processEvents(); // the scroll bars
    view.SetTool(CelTool::Bucket); // no outline of a brush
    CDisplayBitmap bitmap;
    ASSERT_TRUE(CreateBitmap(Image(), {}, bitmap));
    const QImage shown = view.grab().toImage();
    EXPECT_EQ(shown.pixel(19, 60), 0xff000000) << "the border";
    EXPECT_EQ(shown.pixel(18, 60), 0xff484848) << "the margin";
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const std::uint8_t* const bytes = bitmap.bytes.data() + ((height - 1 - y) * bitmap.width + x) * 3;
            ASSERT_EQ(shown.pixel(20 + x, 20 + y), qRgb(bytes[2], bytes[1], bytes[0])) << x << ", " << y;
        }
    Image().SetModified(false);
}

TEST_F(CelViewTest, TheBrushIsOutlinedUnderThePointer) {
    EditCel();
    Choose(CelTool::LineBrush, 3, 0);
    CScreen screen(client);
    client.update();
    const QImage without = screen.Image();
    Move(client, {70, 60}, Qt::NoButton);
    EXPECT_NE(screen.Image(), without);
    Move(client, {90, 40}, Qt::NoButton);
    EXPECT_EQ(screen.Image(), screen.Whole());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&client, &leave);
    EXPECT_EQ(screen.Image(), without);
}

TEST_F(CelViewTest, PickTakesTheColourShown) {
    EditCel();
    Image().SetColorAt(10, height - 1, {10, 20, 30, 255}); // blue, green, red
    Image().SetColorAt(11, height - 1, {0, 0, 0, 0});
    view.OnUpdate(UpdateHint::EditedImage);
    const CCelImg before = Image();
    view.Pick();
    Drag(client, {60, 60}, {50, 50}, {30, 20});
    EXPECT_EQ(view.PendingPick(), CelPick::Nothing);
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{10, 20, 30, 255}));
    view.Pick();
    Release(client, {31, 20});
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{255, 255, 255, 255})) << "the grid";
    view.Pick();
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&view, &escape);
    Release(client, {30, 20});
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{255, 255, 255, 255})) << "called off";
    view.Pick();
    Release(client, {5, 5});
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{72, 72, 72, 255})) << "the margin";
    ExpectImage(before, "picking");

    // A pick comes before moving the image.
    view.ZoomIn();
    view.ZoomIn();
    view.ZoomIn();
    view.ZoomIn();
    view.TogglePan();
    view.Pick();
    const CPoint scroll = Scroll();
    Drag(client, {60, 60}, {50, 50}, {50, 50});
    Move(client, {20, 20});
    EXPECT_EQ(view.PendingPick(), CelPick::Nothing);
    EXPECT_EQ(Scroll(), scroll);
}

TEST_F(CelViewTest, ColorKeyNeedsAPicture) {
    EditCel();
    view.ColorKey();
    EXPECT_EQ(prompter.TakeMessages(),
              std::vector<std::string>{"Internal Error : no picture image loaded in CCelView::ColorKey"});
    EXPECT_EQ(view.PendingPick(), CelPick::Nothing);
    EditPicture();
    Image().SetColorAt(40, height - 1 - 40, {10, 20, 30, 255});
    view.OnUpdate(UpdateHint::EditedImage);
    view.ColorKey();
    EXPECT_EQ(view.PendingPick(), CelPick::ColorKey);
    Press(client, {60, 60});
    Release(client, {60, 60});
    EXPECT_EQ(view.PendingPick(), CelPick::Nothing);
    const auto* request = std::any_cast<CColorKeyRequest>(&prompter.lastRequest);
    ASSERT_NE(request, nullptr) << "the keying was not asked for";
    EXPECT_EQ(request->initial.color, (CColor{10, 20, 30, 255}));
}

TEST_F(CelViewTest, BucketAndPenLeavePicturesAlone) {
    EditPicture();
    const CCelImg before = Image();
    for (const CelTool tool : {CelTool::Bucket, CelTool::Pen}) {
        Choose(tool, 0, 0);
        EXPECT_EQ(client.cursor().shape(), Qt::ArrowCursor);
        Drag(client, {50, 50}, {60, 60}, {70, 70});
    }
    ExpectImage(before, "a picture");
    EXPECT_TRUE(prompter.TakeMessages().empty());
    Choose(CelTool::Eraser, 0, 0);
    EXPECT_EQ(client.cursor().shape(), Qt::BitmapCursor);
}

TEST_F(CelViewTest, WhatIsDraggedOutStaysWithTheImage) {
    EditCel();
    Choose(CelTool::LineBrush, -1, 0);
    for (int i = 0; i < 3; ++i)
        view.ZoomIn();
    view.horizontalScrollBar()->setValue(0);
    view.verticalScrollBar()->setValue(0);
    CCelImg expected = Image();
    DrawLineBrushRect(expected, 10, 25, height - 30, height - 5, doc->Model().paint.foreground);
    Press(client, {40, 20});
    Move(client, {60, 60});
    view.verticalScrollBar()->setValue(80);
    Release(client, {100, 40});
    ExpectImage(expected, "scrolled");
    const CCelImg before = Image();
    Press(client, {40, 20});
    Move(client, {60, 60});
    view.SetTool(CelTool::Eraser);
    Release(client, {100, 40});
    ExpectImage(before, "another tool");
}

TEST_F(CelViewTest, CursorsTellWhatTheMouseDoes) {
    EXPECT_EQ(client.cursor().shape(), Qt::ArrowCursor);
    EditCel();
    const auto drawing = [this] { return client.cursor().pixmap().toImage(); };
    ASSERT_EQ(client.cursor().shape(), Qt::BitmapCursor);
    const QImage bucket = drawing();
    view.SetTool(CelTool::Pen);
    const QImage pen = drawing();
    EXPECT_NE(pen, bucket);
    view.TogglePan();
    const QImage pan = drawing();
    EXPECT_NE(pan, pen);
    view.Pick();
    EXPECT_NE(drawing(), pan);
    view.CancelPick();
    EXPECT_EQ(drawing(), pan);
    view.TogglePan();
    Press(client, {50, 50}, Qt::MiddleButton);
    EXPECT_EQ(drawing(), pan);
    Release(client, {50, 50}, Qt::MiddleButton);
    EXPECT_EQ(drawing(), pen);
    doc->Scenes().SetFolderName("");
    doc->Views().UpdateAllViews(UpdateHint::AssetLists);
    EXPECT_EQ(client.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(CelViewTest, GridSettingsAreWrittenAndShownAtOnce) {
    EditCel();
    std::ranges::fill(Image().PlaneOf(Channel::Alpha), std::uint8_t{0});
    const CGridSettings grid{MakeColorRef(1, 1, 1), MakeColorRef(2, 2, 2), 7};
    CGridSettings empty = grid;
    empty.size = 0;
    prompter.Answer(empty);
    prompter.Answer(grid);
    view.EditGrid();
    EXPECT_EQ(prompter.TakeMessages().size(), 1u);
    EXPECT_EQ(ReadGridSettings(profile).size, 7);
    EXPECT_EQ(ReadGridSettings(profile).color1, grid.color1);
    const QImage shown = view.grab().toImage();
    EXPECT_EQ(shown.pixel(20, 20 + height - 1), qRgb(1, 1, 1));
    EXPECT_EQ(shown.pixel(27, 20 + height - 1), qRgb(2, 2, 2));
}

TEST_F(CelViewTest, AnImageThatIsGoneIsNeitherShownNorPainted) {
    EditCel();
    Choose(CelTool::Pen, 0, 0);
    view.ZoomIn();
    Press(client, {50, 50});
    Image().Clear();
    view.OnUpdate(UpdateHint::EditedImage);
    Move(client, {60, 60});
    Release(client, {70, 70});
    Drag(client, {50, 50}, {60, 60}, {70, 70});
    EXPECT_TRUE(prompter.messages.empty());
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
}

TEST_F(CelViewTest, AnOpenedImageIsShownWholeUntilTheViewIsTouched) {
    view.resize(60, 50);
    EditCel();
    EXPECT_EQ(view.Zoom(), CZoomLevel(0)) << "half as large";
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
    view.resize(220, 200);
    EXPECT_EQ(view.Zoom(), CZoomLevel(1)) << "never above its own size";
    view.ZoomIn();
    view.ZoomIn();
    view.resize(60, 50);
    doc->Views().UpdateAllViews(UpdateHint::EditedImage);
    EXPECT_EQ(view.Zoom(), CZoomLevel(3)) << "a refresh is no opening";
    EditCel();
    EXPECT_EQ(view.Zoom(), CZoomLevel(0)) << "opened again";
    Press(client, {30, 20});
    Release(client, {30, 20});
    view.resize(220, 200);
    EXPECT_EQ(view.Zoom(), CZoomLevel(0)) << "not while something is done to it";
    view.resize(350, 300);
    view.FitToWindow();
    EXPECT_EQ(view.Zoom(), CZoomLevel(3));
    Image().SetModified(false);
}

TEST_F(CelViewTest, TheRightButtonAloneOpensTheMenu) {
    EditCel();
    Choose(CelTool::Pen, 0, 0);
    QMenu menu;
    menu.addAction("Undo");
    view.SetContextMenu(&menu);
    const auto isOpenAfter = [&](const std::function<void()>& gesture) {
        gesture();
        const bool isOpen = menu.isVisible();
        menu.close();
        return isOpen;
    };
    const auto right = [this](QEvent::Type type, Qt::MouseButtons buttons) {
        Mouse(client, type, {50, 50}, Qt::RightButton, buttons);
    };
    using enum QEvent::Type;
    EXPECT_FALSE(isOpenAfter([&] { right(MouseButtonPress, Qt::RightButton); })) << "pressed";
    EXPECT_TRUE(isOpenAfter([&] { right(MouseButtonRelease, Qt::NoButton); })) << "and let go";
    EXPECT_FALSE(isOpenAfter([&] {
        Press(client, {50, 50});
        right(MouseButtonPress, Qt::LeftButton | Qt::RightButton);
        right(MouseButtonRelease, Qt::LeftButton);
        right(MouseButtonPress, Qt::LeftButton | Qt::RightButton);
        Release(client, {50, 50});
        right(MouseButtonRelease, Qt::NoButton);
    })) << "a stroke given up";
    EXPECT_FALSE(isOpenAfter([&] {
        right(MouseButtonPress, Qt::RightButton);
        Mouse(client, MouseButtonPress, {50, 50}, Qt::LeftButton, Qt::LeftButton | Qt::RightButton);
        right(MouseButtonRelease, Qt::LeftButton);
        Release(client, {50, 50});
    })) << "the left joined in";
    EXPECT_FALSE(isOpenAfter([&] {
        view.Pick();
        right(MouseButtonPress, Qt::RightButton);
        right(MouseButtonRelease, Qt::NoButton);
    })) << "a pick called off";
    EXPECT_FALSE(Image().IsModified());
}

} // namespace
} // namespace velmor::testing
