#include "WalkCycle.h"
#include "MainFrameFixture.h"
#include "qt/CelCanvas.h"

#include "render/FrameComposer.h"
#include "scene/AssetOperations.h"
#include "scene/FillChoices.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneHistory.h"
#include "scene/SceneModel.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"

namespace velmor::testing {
namespace {

constexpr int pageWidth = 480;
constexpr int pageHeight = 360;
constexpr int hold = 2;

/// Draws a walk from an empty database as an animator does: with the pen of a tablet, the drawing before shining
/// through, each new drawing one key away. With VELMOR_PICTURES naming a folder, the pictures of
/// docs/drawing-a-walk.md are written there.
class CWalkCycleTest : public CMainFrameFixture {
protected:
    CCelView& View() { return Frame().CelPane().View(); }
    QWidget& Canvas() { return *View().viewport(); }
    const CCelImg& Image() { return doc->Model().celImg; }
    const CXSheet& Sheet() { return doc->Model().Scene().xsheet; }

    CCelCanvas Hand() { return {View(), {pageWidth, pageHeight}}; }

    void Pour(const CHandDrawing::CPour& pour) {
        doc->Palette().SetFGColorValue(pour.color);
        Hand().Click(pour.at);
    }

    ColorRef ColorAt(CRealPoint point) {
        const CColor color = Image().ColorAt(static_cast<int>(point.x), static_cast<int>(point.y));
        return MakeColorRef(color.red, color.green, color.blue);
    }

    bool IsLine(CRealPoint point) { return Image().IsLine(static_cast<int>(point.x), static_cast<int>(point.y)); }
};

TEST_F(CWalkCycleTest, TwelveDrawingsFromAnEmptyDatabaseWalk) {
    NewScene("Walk", 12, pageWidth, pageHeight);
    prompter.Answer(std::string("walker"));
    Run(CommandId::AssetsNewFolder);
    BeginPictures();
    Run(CommandId::CelNewOnTwos);
    Run(CommandId::CelNewDrawing);
    Run(CommandId::ViewCelEditor);
    Run(CommandId::CelPen);
    doc->Palette().SetPen(1);
    Run(CommandId::CelOnionSkin);
    for (int index = 0; index < CWalkCycle::count; ++index) {
        if (index > 0)
            Key(Qt::Key_N);
        ASSERT_EQ(Utf8Of(Image().FilePath().stem()), std::to_string(index + 1));
        QApplication::processEvents();
        const CHandDrawing drawing = CWalkCycle::Drawing(index);
        for (const std::vector<CRealPoint>& stroke : drawing.strokes)
            Hand().Stroke(stroke, 3);
        if (index == 0)
            Picture("walk-first");
        if (index == 4)
            Picture("walk-onion");
    }

    int firstPours = 0;
    // Painted from the last to the first, with gaps closed.
    CFillChoices fill;
    fill.gap = 16;
    doc->Palette().SetFill(fill);
    Run(CommandId::CelOnionSkin);
    Run(CommandId::CelBucket);
    for (int index = CWalkCycle::count - 1; index >= 0; --index) {
        const CHandDrawing drawing = CWalkCycle::Drawing(index);
        for (const CHandDrawing::CPour& pour : drawing.pours)
            if (!IsLine(pour.at) && ColorAt(pour.at) != pour.color) {
                Pour(pour);
                EXPECT_EQ(ColorAt(pour.at), pour.color) << index;
                firstPours += index == 0 ? 1 : 0;
            }
        EXPECT_EQ(Image().ColorAt(4, 4), (CColor{255, 255, 255, 255}))
            << "nothing has run out of drawing " << index;
        if (index == 4) {
            Run(CommandId::CelShowGaps);
            Picture("walk-painted");
            Run(CommandId::CelShowGaps);
        }
        if (index > 0)
            Key(Qt::Key_PageUp);
    }
    ASSERT_EQ(Utf8Of(Image().FilePath().stem()), "1");

    EXPECT_EQ(Sheet().FrameCount(), CWalkCycle::count * hold) << "it grew with the drawings";
    for (int frame = 0; frame < Sheet().FrameCount(); ++frame)
        EXPECT_EQ(Sheet().Cell(0, frame).CelName(), std::to_string(frame / hold + 1));

    // Flipped: the neighbour is seen while the key is held.
    const QImage first = Canvas().grab().toImage();
    QTest::keyPress(&View(), Qt::Key_Period);
    EXPECT_NE(Canvas().grab().toImage(), first);
    QTest::keyRelease(&View(), Qt::Key_Period);
    EXPECT_EQ(Canvas().grab().toImage(), first);

    // Played: drawing after drawing, until the key is pressed again.
    Key(Qt::Key_Slash);
    EXPECT_TRUE(View().Flipped().IsPlaying());
    EXPECT_TRUE(QTest::qWaitFor([&] { return Canvas().grab().toImage() != first; }));
    Key(Qt::Key_Slash);
    EXPECT_EQ(Canvas().grab().toImage(), first);

    // Every stroke can be taken back, and comes again.
    const CCelImg painted = Image();
    for (int i = 0; i < firstPours; ++i)
        doc->History().Undo();
    EXPECT_FALSE(std::ranges::equal(painted.PlaneOf(Channel::Red), Image().PlaneOf(Channel::Red)));
    for (int i = 0; i < firstPours; ++i)
        doc->History().Redo();
    EXPECT_TRUE(std::ranges::equal(painted.PlaneOf(Channel::Red), Image().PlaneOf(Channel::Red)));

    Run(CommandId::CelUpdateCamera);
    Run(CommandId::ViewCameraAndXsheet);
    Picture("walk-sheet");
    EXPECT_TRUE(prompter.messages.empty());
}

} // namespace
} // namespace velmor::testing
