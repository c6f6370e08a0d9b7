#include "SheetPictures.h"
#include "TempFolder.h"
#include "image/CelImg.h"

#include <gtest/gtest.h>
#include <random>

using namespace velmor;
using namespace velmor::testing;

namespace {

using Edit = void (CXSheet::*)(const CXSheetSelection&);

std::string After(Edit edit, const std::string& level, int firstFrame, int lastFrame) {
    CXSheet xsheet = SheetOf({level});
    (xsheet.*edit)({0, 0, firstFrame, lastFrame});
    return RowsOf(xsheet).front();
}

// The rules as they are told: a scan that moves all cells behind each frame that goes or comes.
void CondensePlainly(CXSheet& xsheet, int start, int end) {
    const int last = xsheet.FrameCount() - 1;
    for (int f = start; f < end; ++f) {
        if (f == 0 || f == last || !xsheet.Cell(0, f).ShowsSameAs(xsheet.Cell(0, f - 1)) ||
            xsheet.Cell(0, f).ShowsSameAs(xsheet.Cell(0, f + 1)))
            continue;
        for (int i = f; i < last; ++i)
            xsheet.MutableCell(0, i) = xsheet.Cell(0, i + 1);
        --end;
    }
}

void ExpandPlainly(CXSheet& xsheet, int start, int end) {
    const int last = xsheet.FrameCount() - 1;
    for (int f = start; f <= end && f < last; ++f) {
        if (f != end && xsheet.Cell(0, f).ShowsSameAs(xsheet.Cell(0, f + 1)))
            continue;
        for (int i = last; i > f; --i)
            xsheet.MutableCell(0, i) = xsheet.Cell(0, i - 1);
        ++f;
        ++end;
    }
}

} // namespace

TEST(XSheet, LevelsAndFramesComeAndGo) {
    CXSheet xsheet = SheetOf({"AAB", "CCC"});
    xsheet.SetLevelName(0, "front");
    xsheet.SetLevelName(1, "back");
    EXPECT_TRUE(xsheet.AddLevel("new"));
    EXPECT_EQ(RowsOf(xsheet), (Rows{"...", "AAB", "CCC"}));
    xsheet.SwapLevels(0, 2);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"CCC", "AAB", "..."}));
    xsheet.DeleteLevel(1);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"CCC", "..."}));
    EXPECT_EQ(xsheet.LevelName(0), "back");
    EXPECT_EQ(xsheet.LevelName(1), "new");
    xsheet.SetFrameCount(5);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"CCC..", "....."}));
    xsheet.SetFrameCount(2);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"CC", ".."}));
    while (xsheet.LevelCount() < 49)
        EXPECT_TRUE(xsheet.AddLevel(""));
    EXPECT_FALSE(xsheet.AddLevel("one too many"));
    EXPECT_EQ(xsheet.LevelCount(), 49);
}

// In these rows the cells with notes alone are seen: each by the frame where its note was made.
TEST(XSheet, NotesFollowTheirCells) {
    const auto noted = [](const std::string& row, std::initializer_list<int> frames) {
        CXSheet xsheet = SheetOf({row});
        for (const int frame : frames)
            xsheet.MutableCell(0, frame).SetNote({SheetMark::Key, NoteColor::None, std::to_string(frame)});
        return xsheet;
    };
    const auto notesOf = [](const CXSheet& xsheet) {
        std::string row;
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame) {
            const CSheetNote& note = xsheet.Cell(0, frame).Note();
            row += note.IsEmpty() ? "." : note.comment;
        }
        return row;
    };
    const auto after = [&](Edit edit, CXSheet xsheet, int firstFrame, int lastFrame) {
        (xsheet.*edit)({0, 0, firstFrame, lastFrame});
        return RowsOf(xsheet).front() + " " + notesOf(xsheet);
    };
    EXPECT_EQ(after(&CXSheet::Expand, noted("ABB.C.", {0, 1, 3}), 0, 3), "AABBB. 0.1..3");
    EXPECT_EQ(after(&CXSheet::Condense, noted("AABBCC", {0, 2, 5}), 0, 5), "ABCCCC 02.5..");
    EXPECT_EQ(after(&CXSheet::Reverse, noted("AAB.", {0, 3}), 0, 3), ".BAA 3..0");
    EXPECT_EQ(after(&CXSheet::ClearCells, noted("AAB.", {1, 3}), 0, 1), "..B. ...3");
    CXSheet xsheet = noted("AB..", {0, 2});
    xsheet.InsertFrames(0, 1, 1);
    EXPECT_EQ(notesOf(xsheet), "0..2");
    EXPECT_EQ(xsheet.CellText(0, 0), "FA");
    EXPECT_EQ(xsheet.ClearReferences("F", "A"), 1);
    EXPECT_EQ(notesOf(xsheet), "0..2") << "of what is deleted the note stays";
    xsheet = noted("AA....", {0, 3, 5});
    xsheet.Paste(xsheet.Copy({0, 0, 0, 1}), 0, 2);
    EXPECT_EQ(RowsOf(xsheet).front() + " " + notesOf(xsheet), "AAAA.. 0.03.5") << "one that was there before it";
    xsheet.Paste(noted("BB", {}).Copy({0, 0, 0, 1}), 0, 2);
    EXPECT_EQ(RowsOf(xsheet).front() + " " + notesOf(xsheet), "AABB.. 0....5");
    EXPECT_EQ(noted("AA", {1}).CellText(0, 1), "\"") << "a hold stays one";
}

TEST(XSheet, CopiesClearsAndPastesBlocks) {
    CXSheet xsheet = SheetOf({"ABC.", "DEF.", "GHI."});
    const CCellClipboard block = xsheet.Copy({0, 1, 1, 2});
    EXPECT_EQ(block.width, 2);
    EXPECT_EQ(block.height, 2);
    EXPECT_EQ(block.cells[1].CelName(), "E"); // rows are frames
    xsheet.ClearCells({0, 1, 1, 2});
    EXPECT_EQ(RowsOf(xsheet), (Rows{"A...", "D...", "GHI."}));
    xsheet.Paste(block, 1, 0);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"A...", "BC..", "EFI."}));
    xsheet.Paste(block, 2, 3); // only its corner fits
    EXPECT_EQ(RowsOf(xsheet), (Rows{"A...", "BC..", "EFIB"}));
}

TEST(XSheet, ReversesTheSelectedFrames) {
    EXPECT_EQ(After(&CXSheet::Reverse, "ABCDEF", 0, 4), "EDCBAF");
    EXPECT_EQ(After(&CXSheet::Reverse, "ABCDEF", 2, 5), "ABFEDC");
    EXPECT_EQ(After(&CXSheet::Reverse, "AA.B", 0, 3), "B.AA");
}

TEST(XSheet, CondensesHolds) {
    EXPECT_EQ(After(&CXSheet::Condense, "AABB", 0, 3), "ABBB");
    EXPECT_EQ(After(&CXSheet::Condense, "AAB..CD", 1, 5), "AB.CDDD");
    EXPECT_EQ(After(&CXSheet::Condense, "ABCD", 0, 3), "ABCD");
    EXPECT_EQ(After(&CXSheet::Condense, "AAABBB", 3, 5), "AAABBB"); // the hold goes on behind the selection
    EXPECT_EQ(After(&CXSheet::Condense, "A", 0, 0), "A");
}

TEST(XSheet, ExpandHoldsEveryExposureOnceLonger) {
    EXPECT_EQ(After(&CXSheet::Expand, "ABC...", 0, 2), "AABBCC");
    EXPECT_EQ(After(&CXSheet::Expand, "ABBCD..", 0, 2), "AABBBCD");
    EXPECT_EQ(After(&CXSheet::Expand, "A.BXYZ", 0, 2), "AA..BB");
    EXPECT_EQ(After(&CXSheet::Expand, "ABAXYZ..", 1, 2), "ABBAAXYZ");
    EXPECT_EQ(After(&CXSheet::Expand, "AABBBX", 1, 3), "AAABBB"); // runs that reach out of the selection
    EXPECT_EQ(After(&CXSheet::Expand, "AABB", 0, 3), "AAAB");
    EXPECT_EQ(After(&CXSheet::Expand, "ABC", 2, 2), "ABC");
}

TEST(XSheet, CondenseAndExpandFollowThePlainScan) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string level(1 + random() % 12, '.');
        for (char& letter : level)
            letter = "AB."[random() % 3];
        const int end = static_cast<int>(random() % level.size());
        const int start = static_cast<int>(random() % static_cast<unsigned>(end + 1));
        const CXSheet xsheet = SheetOf({level});
        CXSheet condensed = xsheet, plainlyCondensed = xsheet, expanded = xsheet, plainlyExpanded = xsheet;
        condensed.Condense({0, 0, start, end});
        CondensePlainly(plainlyCondensed, start, end);
        EXPECT_EQ(condensed, plainlyCondensed) << level << ' ' << start << ' ' << end;
        expanded.Expand({0, 0, start, end});
        ExpandPlainly(plainlyExpanded, start, end);
        EXPECT_EQ(expanded, plainlyExpanded) << level << ' ' << start << ' ' << end;
    }
}

TEST(XSheet, EditsTouchTheSelectedLevelsOnly) {
    for (const Edit edit : {&CXSheet::Reverse, &CXSheet::Condense, &CXSheet::Expand}) {
        CXSheet xsheet = SheetOf({"AABC", "AABC", "AABC"});
        (xsheet.*edit)({1, 1, 0, 3});
        EXPECT_EQ(RowsOf(xsheet)[0], "AABC");
        EXPECT_NE(RowsOf(xsheet)[1], "AABC");
        EXPECT_EQ(RowsOf(xsheet)[2], "AABC");
    }
}

TEST(XSheet, InsertedFramesPushTheRestDown) {
    CXSheet xsheet = SheetOf({"ABCD", "EEEE"});
    xsheet.InsertFrames(0, 1, 2);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"A..B", "EEEE"}));
    xsheet.InsertFrames(1, 2, 1000);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"A..B", "EE.."}));
}

TEST(XSheet, TextOfCells) {
    CXSheet xsheet = SheetOf({"AAB..A"});
    xsheet.MutableCell(0, 5) = CXSheetCell::FromFile("_Pictures_", "sky", {}, 0, 1, 1, {});
    std::string text;
    for (int frame = 0; frame < 6; ++frame)
        text += xsheet.CellText(0, frame) + ",";
    EXPECT_EQ(text, "FA,\",FB,,,sky,");
    xsheet.MutableCell(0, 1) = CXSheetCell::FromFile("G", "A", {}, 0, 1, 1, {});
    EXPECT_EQ(xsheet.CellText(0, 1), "GA");
}

TEST(XSheet, ReferencesFollowTheirAssets) {
    CXSheet xsheet = SheetOf({"AAB.", "BACA"});
    xsheet.MutableCell(0, 3) = CXSheetCell::FromFile("G", "A", {}, 0, 1, 1, {});
    EXPECT_EQ(xsheet.ClearReferences("F", "A"), 4);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"..BA", "B.C."}));
    EXPECT_EQ(xsheet.Cell(0, 0), CXSheetCell()); // nothing of the cell is left
    EXPECT_EQ(xsheet.RenameReferences("F", "B", "D"), 2);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"..DA", "D.C."}));
    EXPECT_EQ(xsheet.Cell(0, 2).PosX(), 2);

    const CTempFolder scene;
    CCelImg image;
    static_cast<void>(CreateFolder(scene / "F"));
    EXPECT_EQ(xsheet.ResizeReferences("F", "D", scene.Path()), 0);
    EXPECT_EQ(xsheet.Cell(1, 0).Size(), (CSize{10, 10}));
    ASSERT_TRUE(image.CreateCel(33, 21, AssetFilePath(scene.Path(), "F", "D")) && image.Save());
    EXPECT_EQ(xsheet.ResizeReferences("F", "D", scene.Path()), 2);
    EXPECT_EQ(xsheet.Cell(1, 0).Size(), (CSize{33, 21}));
    EXPECT_EQ(xsheet.Cell(1, 2).Size(), (CSize{10, 10}));
    EXPECT_EQ(xsheet.ClearFolderReferences("F"), 3);
    EXPECT_EQ(RowsOf(xsheet), (Rows{"...A", "...."}));
}
