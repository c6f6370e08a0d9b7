// Onion skin, light table and the way from drawing to drawing, over the whole document.

#include "scene/paper/Paper.h"

#include "DocumentFixture.h"
#include "scene/AssetOperations.h"
#include "scene/DialogRequests.h"
#include "scene/EditedImage.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/paper/DrawingSteps.h"
#include "scene/paper/LightTable.h"
#include "scene/paper/Onion.h"

namespace velmor::testing {
namespace {

class CPaperTest : public CDocumentFixture {
protected:
    CPaperTest() {
        NewScene("Test", 12);
        static_cast<void>(CreateFolder(doc->Model().Paths().CelFolder("Fox")));
        doc->Scenes().SetFolderName("Fox");
    }

    /// A cel whose only line is the pixel (number, number).
    void MakeDrawing(int number, int width = 20, int height = 16) {
        CCelImg cel;
        const std::string name = std::to_string(number);
        EXPECT_TRUE(cel.CreateCel(width, height, doc->Model().Paths().CelFile("Fox", name)));
        cel.SetLine(number, number, true);
        cel.SetColorAt(number, number, {0, 0, 0, 255});
        EXPECT_TRUE(cel.Save());
    }
    /// Drawings 1 to `count`, on twos from the first frame on.
    void Expose(int count) {
        std::vector<std::string> names;
        for (int number = 1; number <= count; ++number) {
            MakeDrawing(number);
            names.push_back(std::to_string(number));
        }
        doc->Scenes().SetSourceSelection(names);
        doc->XSheet().DropCels(0, 0, 2, false);
    }
    void Change(const std::function<void(COnionSettings&)>& change) {
        COnionSettings settings = doc->Onion().Settings();
        change(settings);
        doc->Onion().Change(settings);
    }
    /// The columns with pixels under the image that are not white, each with w for a warm or c for a cool tint.
    std::string Under() {
        doc->Paper().Refresh();
        const CSkinSheet& sheet = doc->Paper().Sheet();
        std::string text;
        for (std::size_t i = 0; i < sheet.under.size(); ++i) {
            const std::uint32_t pixel = sheet.under[i];
            if (pixel == 0xffffff)
                continue;
            text += pixel >> 16 > (pixel & 0xff) ? 'w' : 'c';
            text += std::to_string(i % static_cast<std::size_t>(sheet.size.width));
            text += ' ';
        }
        return text;
    }
    std::string Edited() { return EditedDrawing(doc->Model()).name; }
    std::string Row(int frames) {
        std::string row;
        for (int frame = 0; frame < frames; ++frame) {
            const CXSheetCell& cell = doc->Model().Scene().xsheet.Cell(0, frame);
            row += cell.IsUsed() ? cell.CelName() : ".";
        }
        return row;
    }
};

} // namespace

TEST_F(CPaperTest, NeighboursShineThroughWhileTheOnionSkinIsOn) {
    Expose(5);
    doc->Drawings().Step(DrawingDirection::Next);
    EXPECT_EQ(Edited(), "1") << "the drawing at the cursor";
    doc->Cursor().GoTo({0, 4});
    doc->Assets().EditCel("3");
    EXPECT_EQ(Under(), "");
    TakeHints();
    doc->Onion().Toggle();
    EXPECT_EQ(TakeHints(), (std::vector<int>{512}));
    EXPECT_EQ(Under(), "w1 w2 c4 c5 ");
    const std::uint32_t near = doc->Paper().Sheet().under[2 * 20 + 2], far = doc->Paper().Sheet().under[20 + 1];
    EXPECT_LT(near & 0xff, far & 0xff) << "the nearer one is stronger";
    EXPECT_FALSE(doc->Paper().Refresh()) << "nothing has changed";

    MakeDrawing(4, 24, 16); // laid centre on centre
    EXPECT_EQ(Under(), "w1 w2 c2 c5 ");
    Change([](COnionSettings& settings) {
        settings.before = 1;
        settings.after = 0;
    });
    EXPECT_EQ(Under(), "w2 ");
    Change([](COnionSettings& settings) {
        settings.after = 5;
        settings.over = true;
    });
    EXPECT_EQ(Under(), "");
    EXPECT_NE(doc->Paper().Sheet().over[2 * 20 + 2], 0U);
    StartDocument();
    EXPECT_TRUE(doc->Onion().Settings().shown) << "remembered";
    EXPECT_TRUE(doc->Onion().Settings().over);
}

TEST_F(CPaperTest, NeighboursFollowTheSheetOrTheFolder) {
    Expose(5);
    MakeDrawing(6);
    doc->Onion().Toggle();
    doc->Cursor().GoTo({0, 8});
    doc->Assets().EditCel("5");
    EXPECT_EQ(Under(), "w3 w4 ");
    Change([](COnionSettings& settings) { settings.order = DrawingOrder::Folder; });
    EXPECT_EQ(Under(), "w3 w4 c6 ");
    Change([](COnionSettings& settings) { settings.order = DrawingOrder::Sheet; });
    doc->XSheet().DropCels(0, 10, 0, false);
    doc->Cursor().SetSelStartY(8);
    doc->Cursor().SetSelEndY(11);
    doc->XSheet().Cut();
    EXPECT_EQ(Under(), "w3 w4 ") << "not exposed any more, and no more after it";
}

TEST_F(CPaperTest, StepsKeepWhatWasPaintedAndTakeTheCursorAlong) {
    Expose(3);
    doc->Drawings().Step(DrawingDirection::Next);
    EditedImage().SetModified(true);
    doc->Drawings().Step(DrawingDirection::Next);
    EXPECT_EQ(Edited(), "2");
    EXPECT_EQ(doc->Model().CursorCell(), (CSheetCell{0, 2}));
    EXPECT_EQ(doc->Model().sourceSelection, std::vector<std::string>{"2"});
    doc->Drawings().Step(DrawingDirection::Next);
    doc->Drawings().Step(DrawingDirection::Next);
    EXPECT_EQ(Edited(), "3") << "the last one";
    doc->Drawings().Step(DrawingDirection::Previous);
    doc->Drawings().Step(DrawingDirection::Previous);
    EXPECT_EQ(Edited(), "1");
    EXPECT_EQ(doc->Model().cursorFrame, 0) << "where its hold begins";
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(CPaperTest, ANewDrawingIsOneStep) {
    doc->Drawings().SetHold(2);
    doc->Drawings().NewDrawing();
    EXPECT_EQ(Edited(), "1");
    EXPECT_EQ(doc->Model().celImg.Width(), 64) << "of the scene's frame";
    EXPECT_EQ(Row(4), "11..");
    doc->Drawings().NewDrawing();
    doc->Drawings().SetHold(3);
    doc->Drawings().NewDrawing();
    EXPECT_EQ(Row(8), "1122333.");
    EXPECT_EQ(doc->Model().CursorCell(), (CSheetCell{0, 4}));
    doc->Drawings().Step(DrawingDirection::Previous);
    doc->Drawings().NewDrawing();
    EXPECT_EQ(Edited(), "2a");
    EXPECT_EQ(Row(11), "11222a2a2a333.");

    const Path file = doc->Model().celImg.FilePath();
    doc->History().Undo();
    EXPECT_EQ(Row(8), "1122333.");
    EXPECT_FALSE(FileExists(file));
    EXPECT_EQ(Edited(), "");
    doc->History().Redo();
    EXPECT_EQ(Row(11), "11222a2a2a333.");
    EXPECT_TRUE(FileExists(file));
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(CPaperTest, ANewDrawingLiesWhereTheOneBeforeItWasMoved) {
    MakeDrawing(1, 30, 20);
    doc->Scenes().SetSourceSelection({"1"});
    doc->XSheet().DropCels(0, 11, 1, false);
    doc->Cursor().GoTo({0, 11});
    doc->Assets().EditCel("1");
    doc->Drawings().SetHold(1);
    doc->Drawings().NewDrawing();
    const CXSheet& sheet = doc->Model().Scene().xsheet;
    EXPECT_EQ(sheet.FrameCount(), 13) << "the sheet has grown";
    EXPECT_EQ(sheet.Cell(0, 12).Size(), (CSize{30, 20}));
    EXPECT_EQ(sheet.Cell(0, 12).Transform(), sheet.Cell(0, 11).Transform());
    doc->History().Undo();
    EXPECT_EQ(sheet.FrameCount(), 12);
}

TEST_F(CPaperTest, ANewDrawingWithoutAFolderGetsOne) {
    NewScene("Empty", 5);
    ASSERT_FALSE(doc->Model().HasFolder());
    doc->Drawings().NewDrawing();
    EXPECT_EQ(EditedDrawing(doc->Model()), (CDrawing{"Default", "1"}));
    EXPECT_TRUE(doc->Model().HasFolder());
}

TEST_F(CPaperTest, ANewDrawingAtTheCursorFollowsTheOneAbove) {
    for (const int number : {1, 4, 9})
        MakeDrawing(number, 30, 20);
    doc->Scenes().SetSourceSelection({"4"});
    doc->XSheet().DropCels(0, 3, 1, false);
    doc->Cursor().GoTo({0, 3});
    doc->Assets().EditCel("9");
    static_cast<void>(CreateFolder(doc->Model().Paths().CelFolder("Owl")));
    doc->Scenes().SetFolderName("Owl");
    doc->Drawings().SetHold(2);
    doc->Drawings().NewDrawingAtCursor();
    EXPECT_EQ(Row(8), "...4....") << "the cell is not empty";
    doc->Cursor().GoTo({0, 5});
    doc->Drawings().NewDrawingAtCursor();
    EXPECT_EQ(EditedDrawing(doc->Model()), (CDrawing{"Fox", "5"}));
    EXPECT_EQ(Row(8), "...4.55.");
    const CXSheet& sheet = doc->Model().Scene().xsheet;
    EXPECT_EQ(sheet.Cell(0, 5).Size(), (CSize{30, 20}));
    EXPECT_EQ(sheet.Cell(0, 5).Transform(), sheet.Cell(0, 3).Transform());
    doc->Cursor().GoTo({0, 0});
    doc->Drawings().NewDrawingAtCursor();
    EXPECT_EQ(Row(8), "66.4.55.") << "with none above, after the one under edit";
}

TEST_F(CPaperTest, PinnedDrawingsLieWhereTheyWereMovedAndFollowTheirFiles) {
    for (const int number : {1, 2, 9})
        MakeDrawing(number);
    doc->Assets().EditCel("9");
    doc->Scenes().SetSourceSelection({"1", "2"});
    doc->LightTable().PinSelected();
    EXPECT_TRUE(doc->LightTable().AreSelectedPinned());
    EXPECT_EQ(Under(), "c1 c2 ");
    doc->LightTable().Place(0, {10, 0, 0});
    EXPECT_EQ(Under(), "c11 c2 ");
    doc->Assets().EditCel("2");
    EXPECT_EQ(Under(), "c11 ") << "a drawing does not lie under itself";
    doc->LightTable().Toggle();
    EXPECT_EQ(Under(), "");
    doc->LightTable().Toggle();
    doc->LightTable().PutBack();
    EXPECT_EQ(Under(), "c1 ");

    doc->Scenes().SetSourceSelection({"1"});
    prompter.Answer(std::string("7"));
    doc->Assets().RenameSelected();
    EXPECT_EQ(doc->LightTable().Pins()[0].drawing.name, "7");
    EXPECT_EQ(Under(), "c1 ");
    doc->History().Undo();
    EXPECT_EQ(doc->LightTable().Pins()[0].drawing.name, "1");
    MakeDrawing(1, 22, 16);
    EXPECT_EQ(Under(), "c0 ") << "changed";
    doc->Scenes().SetSourceSelection({"1"});
    doc->Assets().DeleteSelected();
    EXPECT_EQ(doc->LightTable().Pins().size(), 1U);
    EXPECT_EQ(Under(), "");
    doc->LightTable().PinEdited();
    EXPECT_TRUE(doc->LightTable().Pins().empty()) << "taken away by pinning it once more";
    doc->LightTable().PinEdited();
    NewScene("Other");
    EXPECT_TRUE(doc->LightTable().Pins().empty());
}

TEST_F(CPaperTest, TheCameraShowsNeighboursInTheirPlaces) {
    Expose(3);
    doc->Cursor().GoTo({0, 2});
    EXPECT_FALSE(doc->Paper().RefreshCamera());
    doc->Onion().ToggleInCamera();
    EXPECT_TRUE(doc->Paper().RefreshCamera());
    const CSkinSheet& sheet = doc->Paper().CameraSheet();
    ASSERT_EQ(sheet.size, (CSize{64, 48}));
    // Drawings of 20 x 16 pixels in the middle of the frame.
    EXPECT_NE(sheet.under[(24 - 8 + 1) * 64 + 32 - 10 + 1], 0xffffffU);
    EXPECT_EQ(sheet.under[(24 - 8 + 2) * 64 + 32 - 10 + 2], 0xffffffU) << "the cursor's own";
    EXPECT_NE(sheet.under[(24 - 8 + 3) * 64 + 32 - 10 + 3], 0xffffffU);
}

TEST_F(CPaperTest, TheDialogShowsEachChoiceAndTakesItBack) {
    COnionSettings chosen = doc->Onion().Settings();
    chosen.before = 4;
    prompter.Answer(chosen);
    doc->Onion().EditSettings();
    EXPECT_EQ(doc->Onion().Settings().before, 4);
    std::any_cast<COnionSkinRequest>(prompter.lastRequest).show(COnionSettings());
    EXPECT_EQ(doc->Onion().Settings(), COnionSettings());
    prompter.Cancel();
    doc->Onion().EditSettings();
    EXPECT_EQ(doc->Onion().Settings(), COnionSettings());
}

} // namespace velmor::testing
