#include "XSheetScene.h"
#include "scene/CommandState.h"

#include <array>
#include <limits>
#include <sys/inotify.h>
#include <unistd.h>

namespace velmor::testing {

namespace {

using CXSheetOperationsTest = CXSheetScene;

std::vector<std::uint8_t> CelHeader(std::uint8_t width, std::uint8_t height) {
    const std::string signature = "VELMORBITFILE1.0";
    std::vector<std::uint8_t> bytes(signature.begin(), signature.end());
    bytes.insert(bytes.end(), {0, width, 0, height});
    return bytes;
}

} // namespace

TEST_F(CXSheetOperationsTest, RefusesIndicesOutOfRange) {
    model.selection = {0, 0, 3, 5};
    for (const auto& [level, frame] : {std::pair(-1, -1), std::pair(1, 100)}) {
        cursor.GetLevelName(level);
        cursor.GetLevelSmoothed(level);
        cursor.GetXsheetData(level, frame); // the level's message, not the frame's
        cursor.GetXsheetData(0, frame);
        EXPECT_EQ(prompter.TakeMessages(), (Texts{"Internal Error : lvlno out of range in GetLevelName",
                                                  "Internal Error : nlvl out of range in GetLevelSmoothed",
                                                  "Internal Error : nlvl out of range in GetXsheetData",
                                                  "Internal Error : nfrm out of range in GetXsheetData"}));
        cursor.SetCursorX(level);
        cursor.SetCursorY(frame);
        cursor.SetSelStartX(level);
        cursor.SetSelEndX(level);
        cursor.SetSelStartY(frame);
        cursor.SetSelEndY(frame);
        cursor.SetLevelCanMove(level);
        EXPECT_EQ(prompter.TakeMessages().size(), 7U);
    }
    EXPECT_EQ(model.selection, (CXSheetSelection{0, 0, 3, 5}));
    EXPECT_EQ(hints, Hints{});
}

TEST_F(CXSheetOperationsTest, CursorComposesThePictureOnlyForAnotherFrame) {
    cursor.SetCursorY(7);
    cursor.SetCursorY(7);
    model.cursorFrame = 9; // as the line check does
    cursor.SetCursorY(7);
    cursor.SetCursorX(0);
    EXPECT_EQ(model.cursorFrame, 7);
    EXPECT_EQ(hints, (Hints{8, 260, 8, 8, 4}));
}

TEST_F(CXSheetOperationsTest, NewLevelStandsInFrontAndKeepsTheFlag) {
    Put(0, 2, "1");
    cursor.SetLevelCanMove(0);
    hints.clear();
    prompter.Answer(std::string("Sky"));
    sheet.AddLevel();
    EXPECT_EQ(cursor.GetLevelName(0) + cursor.GetLevelName(1), "SkyDefault");
    EXPECT_EQ(cursor.GetXsheetData(0, 2) + cursor.GetXsheetData(1, 2), "Man1");
    EXPECT_TRUE(cursor.GetLevelSmoothed(0));
    EXPECT_TRUE(cursor.GetLevelSmoothed(1));
    EXPECT_EQ(TakeHints(), Hints{136});

    cursor.SetCursorX(1);
    cursor.SetSelEndX(1);
    Undo();
    EXPECT_EQ(scene.xsheet.LevelCount(), 1);
    EXPECT_EQ(model.cursorLevel, 0);
    EXPECT_EQ(model.selection.lastLevel, 0);
}

TEST_F(CXSheetOperationsTest, RefusesTheFiftiethLevelAfterItsName) {
    for (const int levels : {49, 50}) {
        SetLevels(levels);
        prompter.Answer(std::string("One more"));
        sheet.AddLevel();
        EXPECT_TRUE(prompter.AllAnswersTaken());
        EXPECT_EQ(prompter.TakeMessages(),
                  Texts{"Sorry, Maximum level number is reached, can not add another level."});
        EXPECT_EQ(scene.xsheet.LevelCount(), levels);
        EXPECT_FALSE(CanUndo(model));
    }
}

TEST_F(CXSheetOperationsTest, DeletesALevelAfterConfirmationAndBringsItBack) {
    SetLevels(3);
    const CXSheetCell cell = Put(1, 4, "1");
    model.cursorLevel = 2;
    model.selection = {1, 2, 0, 0};
    model.moveSelection.ToggleLevel(1, 3);
    prompter.confirmations = {false};
    prompter.Answer(1);
    sheet.DeleteLevel();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Are you sure you want to delete level\n \" 1 \" ?"});
    EXPECT_EQ(prompter.lastConsequence, Consequence::Undoable);
    EXPECT_EQ(scene.xsheet.LevelCount(), 3);
    EXPECT_FALSE(CanUndo(model));

    prompter.Answer(1);
    sheet.DeleteLevel();
    EXPECT_EQ(scene.xsheet.LevelCount(), 2);
    EXPECT_EQ(model.cursorLevel, 1);
    EXPECT_EQ(model.selection, (CXSheetSelection{1, 1, 0, 0}));
    EXPECT_EQ(TakeHints(), Hints{396});

    Undo();
    EXPECT_EQ(cursor.GetLevelName(1), "1");
    EXPECT_EQ(scene.xsheet.Cell(1, 4), cell);
    EXPECT_FALSE(cursor.GetLevelSmoothed(1));
    EXPECT_TRUE(model.moveSelection.IsCameraSelected()) << "the only level that moved is gone";
    EXPECT_EQ(TakeHints(), Hints{511});
    EXPECT_FALSE(CanUndo(model));
    Redo();
    EXPECT_EQ(scene.xsheet.LevelCount(), 2);
    EXPECT_EQ(TakeHints(), Hints{511});
}

TEST_F(CXSheetOperationsTest, RenamesAndSwapsLevels) {
    SetLevels(2);
    Put(0, 0, "1");
    cursor.SetLevelCanMove(0);
    prompter.Answer(1);
    prompter.Cancel(); // the name
    sheet.RenameLevel();
    EXPECT_FALSE(CanUndo(model));
    prompter.Answer(1);
    prompter.Answer(std::string("Hand"));
    sheet.RenameLevel();
    prompter.Answer(std::pair(0, 1));
    sheet.SwapLevels();
    EXPECT_EQ(TakeHints(), (Hints{12, 136, 268}));
    EXPECT_EQ(cursor.GetLevelName(0), "Hand");
    EXPECT_EQ(Row(1, 1), "1");
    EXPECT_TRUE(cursor.GetLevelSmoothed(1));
}

TEST_F(CXSheetOperationsTest, LevelNamesAreThoseThatTheFileCanHold) {
    for (const char* name : {"\xe7\x8b\x90", "Caf\xc3\xa9 \xe2\x82\xac?"})
        prompter.Answer(std::string(name));
    sheet.AddLevel();
    EXPECT_EQ(cursor.GetLevelName(0), "Caf\xc3\xa9 \xe2\x82\xac?");
    prompter.Answer(0);
    prompter.Answer(std::string("\xe7\x8b\x90"));
    prompter.Answer(std::string("Fox"));
    sheet.RenameLevel();
    EXPECT_EQ(cursor.GetLevelName(0), "Fox");
    EXPECT_EQ(prompter.TakeMessages(), Texts(2, "The name holds characters that can not be stored.\n"
                                                "Use Western European letters, digits and signs."));
}

TEST_F(CXSheetOperationsTest, FramesStayWithinLimits) {
    Put(0, 49, "1");
    // A refused count keeps the dialog open for the next one.
    for (const int answer : {0, -5, 5001, 5000})
        prompter.Answer(answer);
    sheet.AddFrames();
    EXPECT_EQ(prompter.TakeMessages(),
              std::vector<std::string>(3, "The number of frames must be a whole number from 1 to 5000"));
    EXPECT_EQ(scene.xsheet.FrameCount(), 1999);
    ASSERT_TRUE(model.soundBuffer.has_value());
    EXPECT_EQ(model.soundBuffer->size(), 1999U * 882);
    EXPECT_EQ(TakeHints(), Hints{136});

    cursor.SetCursorY(80);
    cursor.SetSelStartY(49);
    cursor.SetSelEndY(1998);
    hints.clear();
    prompter.Answer(1949);
    sheet.DeleteFrames();
    EXPECT_EQ(model.cursorFrame, 49);
    EXPECT_EQ(model.selection, (CXSheetSelection{0, 0, 49, 49}));
    EXPECT_EQ(cursor.GetXsheetData(0, 49), "Man1");
    EXPECT_EQ(model.soundBuffer->size(), 50U * 882);
    EXPECT_EQ(TakeHints(), Hints{396});
    prompter.Answer(5000);
    sheet.DeleteFrames();
    EXPECT_EQ(scene.xsheet.FrameCount(), 1);
    Undo();
    EXPECT_EQ(model.soundBuffer->size(), 50U * 882);
}

TEST_F(CXSheetOperationsTest, EditsTheSelectedCells) {
    for (int frame = 0; frame < 4; ++frame)
        Put(0, frame, std::to_string(frame / 2));
    sheet.Reverse(); // one frame is no range
    sheet.Paste();   // nothing copied
    EXPECT_EQ(TakeHints(), Hints{});
    model.selection = {0, 0, 0, 3};
    sheet.Reverse();
    sheet.Expand();
    EXPECT_EQ(Row(0, 7), "111000.");
    sheet.Condense();
    EXPECT_EQ(TakeHints(), (Hints{8, 8, 8}));
    model.selection.lastFrame = 1;
    sheet.Copy();
    model.cursorFrame = 5;
    sheet.Paste();
    EXPECT_EQ(Row(0, 8), "1100011.");
    sheet.Cut();
    EXPECT_EQ(TakeHints(), (Hints{268, 268}));
    EXPECT_EQ(Row(0, 3), "..0");
    model.selection = {0, 0, 3, 2}; // the wrong way round
    sheet.Copy();
    EXPECT_EQ(model.clipboard.height, 2);
    Undo();
    EXPECT_EQ(Row(0, 3), "110");
    for (const char* row : {"11000...", "111000..", "1100....", "0011...."}) {
        Undo();
        EXPECT_EQ(Row(0, 8), row) << "one step after the other";
    }
    EXPECT_FALSE(CanUndo(model));
}

TEST_F(CXSheetOperationsTest, PastedCellsTakeTheSizesThatTheirDrawingsHaveNow) {
    static_cast<void>(CreateFolder(model.Paths().CelFolder("Man")));
    const Path drawing = model.Paths().CelFile("Man", "1");
    WriteBytes(drawing, CelHeader(30, 20));
    WriteBytes(model.Paths().CelFile("Man", "2"), std::vector<std::uint8_t>{1, 2, 3});
    for (int frame = 0; frame < 20; ++frame)
        Put(0, frame, std::to_string(1 + frame % 3)); // the second is damaged, the third is missing
    scene.xsheet.MutableCell(0, 4).SetSize({7, 8});
    const CXSheet copied = scene.xsheet;
    model.selection = {0, 0, 0, 19};
    sheet.Copy();
    model.cursorFrame = 40;
    const int watch = ::inotify_init1(IN_NONBLOCK);
    ASSERT_GE(::inotify_add_watch(watch, drawing.c_str(), IN_OPEN), 0);
    sheet.Paste();
    for (int frame = 0; frame < 20; ++frame) {
        CXSheetCell expected = copied.Cell(0, frame);
        if (frame % 3 == 0)
            expected.SetSize({30, 20});
        EXPECT_EQ(scene.xsheet.Cell(0, 40 + frame), expected) << frame;
    }
    std::array<inotify_event, 8> opened{};
    EXPECT_EQ(::read(watch, opened.data(), sizeof opened), static_cast<ssize_t>(sizeof(inotify_event)))
        << "once for all cells";
    ::close(watch);
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
}

TEST_F(CXSheetOperationsTest, DropCelsChecksInOrder) {
    sheet.DropCels(9, 900, 1, false);
    model.folderName = "Man";
    sheet.DropCels(9, 900, 1, false);
    model.sourceSelection = {"1"};
    sheet.DropCels(9, 900, 1, false);
    sheet.DropCels(0, 100, 1, false);
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"Internal Error : DropCels called with no folder open",
                                              "Internal Error : DropCels called with cels selected",
                                              "Internal Error : Invalid level no in DropCels",
                                              "Internal Error : Invalid frame no in DropCels"}));
    EXPECT_EQ(hints, Hints{});
}

TEST_F(CXSheetOperationsTest, DropsAssetsInOrderAndStopsAtTheEnd) {
    SetLevels(1, 6);
    static_cast<void>(CreateFolder(model.Paths().CelFolder("Man")));
    WriteBytes(model.Paths().CelFile("Man", "1"), CelHeader(30, 20));
    WriteBytes(model.Paths().CelFile("Man", "2"), CelHeader(40, 20));
    Put(0, 1, "8");
    Put(0, 2, "9");
    model.folderName = "Man";
    model.sourceSelection = {"1", "2"};
    sheet.DropCels(0, 1, 2, true);
    EXPECT_EQ(Row(0, 6), ".11228");
    EXPECT_EQ(scene.xsheet.Cell(0, 2).Size(), (CSize{30, 20}));
    EXPECT_EQ(scene.xsheet.Cell(0, 4).Size(), (CSize{40, 20}));
    EXPECT_EQ(scene.xsheet.Cell(0, 4).PosX(), 384);
    EXPECT_EQ(scene.xsheet.Cell(0, 4).PosY(), 288);
    EXPECT_EQ(TakeHints(), (Hints{8, 260}));
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
    Undo();
    EXPECT_EQ(Row(0, 6), ".89...");
    sheet.DropCels(0, 1, 0, false);
    EXPECT_FALSE(CanUndo(model)) << "nothing was dropped";
    sheet.DropCels(0, 1, 2, true);

    model.sourceMode = SourceMode::Pictures;
    model.sourceSelection = {"4", "5"}; // without files: shown all the same, one message each
    sheet.DropCels(0, 3, 2, false);
    EXPECT_EQ(Row(0, 6), ".11445");
    EXPECT_TRUE(scene.xsheet.Cell(0, 5).IsPicture());
    EXPECT_EQ(prompter.TakeMessages().size(), 2U);
    sheet.DropCels(0, 0, std::numeric_limits<int>::max(), true);
    EXPECT_EQ(Row(0, 6), "444444");
}

TEST_F(CXSheetOperationsTest, WithoutASceneCommandsDoNothing) {
    model.sceneOpen = false;
    Put(0, 0, "1");
    Put(0, 1, "2");
    model.selection = {0, 0, 0, 1};
    model.clipboard = scene.xsheet.Copy(model.selection);
    const CXSheet before = scene.xsheet;
    for (const auto command :
         {&CXSheetOperations::AddLevel, &CXSheetOperations::DeleteLevel, &CXSheetOperations::RenameLevel,
          &CXSheetOperations::SwapLevels, &CXSheetOperations::AddFrames, &CXSheetOperations::DeleteFrames,
          &CXSheetOperations::Cut, &CXSheetOperations::Paste, &CXSheetOperations::Reverse,
          &CXSheetOperations::Condense, &CXSheetOperations::Expand}) {
        (sheet.*command)();
        EXPECT_EQ(scene.xsheet, before);
        EXPECT_FALSE(prompter.lastRequest.has_value()); // no dialog either
    }
    EXPECT_EQ(hints, Hints{});
    EXPECT_EQ(prompter.messages, Texts{});
}

} // namespace velmor::testing
