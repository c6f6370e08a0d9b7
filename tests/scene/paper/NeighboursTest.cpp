#include "scene/paper/Neighbours.h"
#include "scene/paper/NewDrawing.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

/// A level: a letter is a cel of that name in folder "F", a dot an empty cell. The x position of every cell is its
/// frame number.
CXSheet SheetOf(const std::string& row) {
    CXSheet sheet(1, static_cast<int>(row.size()));
    for (int frame = 0; frame < sheet.FrameCount(); ++frame)
        if (const char letter = row[static_cast<std::size_t>(frame)]; letter != '.')
            sheet.MutableCell(0, frame) = CXSheetCell::FromFile(
                "F", std::string(1, letter), {static_cast<double>(frame), 0, 1, 1, 0}, 0, 1, 1, {10, 10});
    return sheet;
}

std::string RowOf(const CXSheet& sheet) {
    std::string row;
    for (int frame = 0; frame < sheet.FrameCount(); ++frame)
        row += sheet.Cell(0, frame).IsUsed() ? sheet.Cell(0, frame).CelName() : ".";
    return row;
}

// "B1A0 C4": before and after, the nearest first, each with its frame.
std::string TextOf(const CNeighbours& neighbours) {
    std::string text;
    for (const CNeighbour& one : neighbours.before)
        text += one.drawing.name + (one.frame < 0 ? "" : std::to_string(one.frame));
    text += " ";
    for (const CNeighbour& one : neighbours.after)
        text += one.drawing.name + (one.frame < 0 ? "" : std::to_string(one.frame));
    return text;
}

std::string InLevel(const std::string& row, int cursor, const std::string& drawing, int most = 5) {
    return TextOf(NeighboursInLevel(SheetOf(row), {0, cursor}, {"F", drawing}, most));
}

std::string AfterExposing(const std::string& row, int cursor, const std::string& after, int hold) {
    CXSheet sheet = SheetOf(row);
    const std::optional<CNewExposure> exposure = ExposureAfter(sheet, {0, cursor}, {"F", after}, hold);
    if (!exposure)
        return "full";
    Expose(sheet, *exposure, CXSheetCell::FromFile("F", "x", {}, 0, 1, 1, {10, 10}));
    return RowOf(sheet);
}

} // namespace

TEST(NeighboursTest, ByTheExposuresOfTheLevel) {
    EXPECT_EQ(InLevel("AABBCCDD", 4, "C"), "B3A1 D6") << "holds count once";
    EXPECT_EQ(InLevel("AABBCCDD", 4, "C", 1), "B3 D6");
    EXPECT_EQ(InLevel("A..B.C...D", 3, "B"), "A0 C5D9") << "empty cells are passed";
    EXPECT_EQ(InLevel("ABABCB", 2, "A"), "B1 B3C4") << "what comes again counts once each way";
    EXPECT_EQ(InLevel("AAA", 1, "A"), " ");
    EXPECT_EQ(InLevel("...", 1, "A"), " ");
}

TEST(NeighboursTest, FromTheExposureThatIsNearestToTheCursor) {
    EXPECT_EQ(InLevel("ABCDE", 0, "D"), "C2B1A0 E4") << "the cursor is elsewhere";
    EXPECT_EQ(InLevel("DABCDE", 1, "D"), " A1B2C3E5");
    EXPECT_EQ(InLevel("DA.BDE", 2, "D"), "B3A1 E5") << "the later of two that are as near";
    EXPECT_EQ(InLevel("AABBCC", 2, "X"), "B2A1 C4") << "not exposed: behind what is at the cursor";
    EXPECT_EQ(InLevel("AAB...", 4, "X"), "B2A1 ") << "not exposed, on an empty cell";
    EXPECT_EQ(InLevel("AAB...", 4, ""), "B2A1 ") << "no drawing at all";
}

TEST(NeighboursTest, ByTheFolder) {
    const std::vector<std::string> titles{"1", "2", "2a", "10"};
    EXPECT_EQ(TextOf(NeighboursInFolder(titles, {"F", "2"}, 5)), "1 2a10");
    EXPECT_EQ(TextOf(NeighboursInFolder(titles, {"F", "10"}, 2)), "2a2 ");
    EXPECT_EQ(TextOf(NeighboursInFolder(titles, {"F", "7"}, 2)), " ");
}

TEST(NeighboursTest, WhatIsPlayedIsTheRunOfUsedCells) {
    const auto played = [](const std::string& row, int frame) {
        const std::optional<CHold> run = RunAround(SheetOf(row), {0, frame});
        return run ? std::to_string(run->firstFrame) + "-" + std::to_string(run->endFrame) : "none";
    };
    EXPECT_EQ(played(".AABB.CC", 2), "1-5");
    EXPECT_EQ(played(".AABB.CC", 7), "6-8");
    EXPECT_EQ(played(".AABB.CC", 5), "1-5") << "the one that has just ended";
    EXPECT_EQ(played("..A", 0), "2-3");
    EXPECT_EQ(played("...", 1), "none");
}

TEST(NewDrawingTest, IsNamedAfterTheOneBeforeIt) {
    using Titles = std::vector<std::string>;
    EXPECT_EQ(NameAfter("7", Titles{"7"}), "8");
    EXPECT_EQ(NameAfter("7", Titles{"7", "9"}), "8");
    EXPECT_EQ(NameAfter("7", Titles{"7", "8"}), "7a");
    EXPECT_EQ(NameAfter("7", Titles{"7", "7A", "8"}), "7b") << "A and a would look alike on some disks";
    EXPECT_EQ(NameAfter("7a", Titles{"7", "7a", "7b", "8"}), "7c");
    EXPECT_EQ(NameAfter("7a", Titles{"7", "7a"}), "8");
    EXPECT_EQ(NameAfter("7", Titles{"7", "7b"}), "7a") << "8 would come behind 7b";
    EXPECT_EQ(NameAfter("7", Titles{"007", "008"}), "7a");
    EXPECT_EQ(NameAfter("7z", Titles{"7z", "8"}), std::nullopt);
    EXPECT_EQ(NameAfter("sky", Titles{"sky"}), std::nullopt);
    EXPECT_EQ(NameAfter("2147483647", Titles{"2147483647"}), std::nullopt);
}

TEST(NewDrawingTest, IsExposedBehindTheHoldAndPushesWhatStandsThere) {
    EXPECT_EQ(AfterExposing("......", 0, "", 2), "xx....") << "an empty level";
    EXPECT_EQ(AfterExposing("AA....", 0, "A", 2), "AAxx..");
    EXPECT_EQ(AfterExposing("AA..B.", 0, "A", 2), "AAxxB.");
    EXPECT_EQ(AfterExposing("AA.B..", 1, "A", 3), "AAxxxB")
        << "no cell is lost, the sheet grows no more than it has to";
    EXPECT_EQ(AfterExposing("AABB", 1, "A", 1), "AAxBB");
    EXPECT_EQ(AfterExposing("AABB", 3, "B", 3), "AABBxxx") << "the sheet grows";
    EXPECT_EQ(AfterExposing("AABB...", 0, "B", 1), "AABBx..") << "where the drawing stands, not the cursor";
    EXPECT_EQ(AfterExposing("AABB...", 6, "B", 1), "AABB..x") << "an empty cell that was chosen";
    EXPECT_EQ(AfterExposing("AABB..", 0, "X", 1), "AAxBB.");
    EXPECT_EQ(AfterExposing(std::string(CXSheet::mostFrames, 'A'), 0, "A", 1), "full");
}

} // namespace velmor::testing
