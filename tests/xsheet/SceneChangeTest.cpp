#include "xsheet/SceneChange.h"
#include "platform/files/Archive.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using namespace velmor;

namespace {

CXSheetCell CellOf(int number) {
    return CXSheetCell::FromFile(number % 7 == 0 ? "_Pictures_" : "Fox", std::to_string(number),
                                 {number * 0.5, -0.0, 1, 1, 0}, 0, 1, 1, {number, 10});
}

int Pick(std::mt19937& random, int count) {
    return static_cast<int>(random() % static_cast<unsigned>(count));
}

// One of everything that is done to a scene.
void EditAtRandom(CScene& scene, std::mt19937& random) {
    CXSheet& sheet = scene.xsheet;
    const int level = Pick(random, sheet.LevelCount());
    const int frame = Pick(random, sheet.FrameCount());
    const CXSheetSelection selection{level, std::min(level + Pick(random, 3), sheet.LevelCount() - 1), frame,
                                     std::min(frame + Pick(random, 20), sheet.FrameCount() - 1)};
    switch (Pick(random, 16)) {
    case 0:
        static_cast<void>(sheet.AddLevel("Level " + std::to_string(random() % 100)));
        break;
    case 1:
        if (sheet.LevelCount() > 1)
            sheet.DeleteLevel(level);
        break;
    case 2:
        sheet.SwapLevels(level, Pick(random, sheet.LevelCount()));
        break;
    case 3:
        sheet.SetFrameCount(1 + Pick(random, 120));
        break;
    case 4:
        sheet.Expand(selection);
        break;
    case 5:
        sheet.Reverse(selection);
        break;
    case 6:
        sheet.ClearCells(selection);
        break;
    case 7:
        sheet.SetLevelName(level, "Renamed");
        break;
    case 8:
        scene.camera.MutableAt(frame) = {1.0 * Pick(random, 50), -0.0, 0.5, 2};
        break;
    case 9:
        scene.geometry.width = 100 + Pick(random, 1000);
        break;
    case 10:
        static_cast<void>(scene.sounds.Place(frame, "bell"));
        break;
    case 11:
        sheet.MutableCell(level, frame).SetNote({SheetMark::Breakdown, NoteColor::Blue, "see\n3"});
        break;
    case 12:
        scene.frameNotes.Set(frame, {SheetMark::None, static_cast<NoteColor>(Pick(random, 7)), {}});
        break;
    case 13:
        if (std::vector<CSoundPlacement> sounds = scene.sounds.All(); !sounds.empty()) {
            sounds.back().trimIn = Pick(random, 2) * 300;
            sounds.back().level = Pick(random, 20) - 10;
            scene.sounds.Set(std::move(sounds));
        }
        break;
    case 14:
        static_cast<void>(scene.dialogue.Put({frame, frame + Pick(random, 9), "Fox", "Hello"}));
        break;
    default:
        for (int held = frame; held <= selection.lastFrame; ++held)
            sheet.MutableCell(level, held) = CellOf(Pick(random, 40));
    }
}

CSceneChange AsKept(const CSceneChange& change) {
    CArchiveWriter writer;
    change.Write(writer);
    CArchiveReader reader(writer.Bytes());
    const std::optional<CSceneChange> read = CSceneChange::Read(reader);
    EXPECT_TRUE(read && reader.Remaining() == 0);
    return read.value_or(CSceneChange());
}

} // namespace

TEST(CSceneChangeTest, LeadsThereAndBack) {
    std::mt19937 random(12);
    std::vector<CScene> states(1);
    std::vector<CSceneChange> changes;
    for (int edit = 0; edit < 600; ++edit) {
        CScene next = states.back();
        EditAtRandom(next, random);
        if (edit % 5 == 0)
            EditAtRandom(next, random); // two things at once
        changes.push_back(AsKept({states.back(), next}));
        EXPECT_TRUE(!changes.back().IsEmpty() || next == states.back());
        states.push_back(next);
    }
    CScene scene = states.back();
    for (std::size_t step = changes.size(); step-- > 0;) {
        ASSERT_TRUE(changes[step].Apply(scene, ChangeDirection::Back));
        ASSERT_EQ(scene, states[step]) << step;
    }
    for (std::size_t step = 0; step < changes.size(); ++step) {
        ASSERT_TRUE(changes[step].Apply(scene, ChangeDirection::Forward));
        ASSERT_EQ(scene, states[step + 1]) << step;
    }
}

TEST(CSceneChangeTest, NothingIsAChangeToo) {
    EXPECT_TRUE(AsKept(CSceneChange()).IsEmpty());
    CScene scene;
    EXPECT_TRUE(AsKept({scene, scene}).Apply(scene, ChangeDirection::Back));
}

// As versions before the notes have written it into journals that may still be there.
TEST(CSceneChangeTest, OlderOnesAreRead) {
    CArchiveWriter writer;
    for (const int value : {1, 1, 3, 3, 0, 0, 0, 0, 1, 0, 1, 2}) // counts, no levels or names, one run of cells
        writer.WriteInt(value);
    writer.WriteByte(0);
    writer.WriteByte(1);
    writer.WriteText("Fox");
    writer.WriteText("7");
    for (const double value : {3.5, -0.0, 1.0, 1.0, 0.0, 0.0, 1.0, 1.0})
        writer.WriteDouble(value);
    writer.WriteInt(7);
    writer.WriteInt(10);
    writer.WriteInt(0); // no camera
    writer.WriteByte(0);
    writer.WriteByte(1);
    for (const int count : {0, 1})
        writer.WriteInt(count);
    writer.WriteInt(2);
    writer.WriteText("bell");
    CArchiveReader reader(writer.Bytes());
    const std::optional<CSceneChange> change = CSceneChange::Read(reader);
    ASSERT_TRUE(change && reader.Remaining() == 0);
    CScene scene;
    scene.xsheet = CXSheet(1, 3);
    CScene after = scene;
    for (const int frame : {1, 2})
        after.xsheet.MutableCell(0, frame) =
            CXSheetCell::FromFile("Fox", "7", {3.5, -0.0, 1, 1, 0}, 0, 1, 1, {7, 10});
    after.sounds.Set({{2, "bell"}});
    CArchiveWriter now;
    CSceneChange(scene, after).Write(now);
    EXPECT_TRUE(std::ranges::equal(now.Bytes(), writer.Bytes())) << "without notes they are written so still";
    ASSERT_TRUE(change->Apply(scene, ChangeDirection::Forward));
    EXPECT_EQ(scene, after);
}

TEST(CSceneChangeTest, IsAsSmallAsTheDifference) {
    CScene before;
    before.xsheet = CXSheet(49, 1999);
    for (int level = 0; level < 49; ++level)
        for (int frame = 0; frame < 1999; ++frame)
            before.xsheet.MutableCell(level, frame) = CellOf(frame);
    const auto bytes = [&before](auto edit) {
        CScene after = before;
        edit(after.xsheet);
        CArchiveWriter writer;
        CSceneChange(before, after).Write(writer);
        return writer.Bytes().size();
    };
    EXPECT_LT(bytes([](CXSheet& sheet) { sheet.MutableCell(20, 1000).Clear(); }), 300U);
    EXPECT_LT(bytes([](CXSheet& sheet) { sheet.SwapLevels(3, 40); }), 400U);
    EXPECT_LT(bytes([](CXSheet& sheet) { sheet.DeleteLevel(0); }), 1999U * 120U);
    const auto hold = [](CXSheet& sheet) {
        for (int frame = 0; frame < 1999; ++frame)
            sheet.MutableCell(0, frame) = CellOf(1);
    };
    hold(before.xsheet);
    EXPECT_LT(bytes([](CXSheet& sheet) { sheet.ClearCells({0, 0, 10, 1990}); }), 300U);
}

TEST(CSceneChangeTest, TellsWhatItTouches) {
    CScene before;
    before.xsheet = CXSheet(3, 50);
    CScene after = before;
    after.xsheet.MutableCell(1, 8) = CellOf(3);
    EXPECT_TRUE(CSceneChange(before, after).IsWithinFrame(8));
    after.xsheet.MutableCell(2, 9) = CellOf(7);
    after.camera.MutableAt(8).zoom = 2;
    const CSceneChange change(before, after);
    EXPECT_EQ(change.ChangedCells(), (CXSheetSelection{0, 2, 8, 9}));
    EXPECT_EQ(change.AssetNames(), (std::set<std::string>{"7", "Fox 3"}));
    EXPECT_FALSE(change.IsWithinFrame(8));
    EXPECT_FALSE(CSceneChange(before, before).ChangedCells());
}

TEST(CSceneChangeTest, FramesThatComeBackBringTheCamera) {
    CScene longer;
    longer.xsheet.SetFrameCount(20);
    longer.camera.MutableAt(15).zoom = 3;
    CScene shorter = longer;
    shorter.xsheet.SetFrameCount(10);
    const CSceneChange change(shorter, longer);
    CScene read = shorter; // as from a file, which ends with the sheet
    read.camera.Reset();
    ASSERT_TRUE(change.Apply(read, ChangeDirection::Forward));
    EXPECT_EQ(read, longer);
}

TEST(CSceneChangeTest, RefusesWhatItDoesNotFit) {
    CScene before;
    before.xsheet = CXSheet(3, 50);
    CScene after = before;
    after.xsheet.DeleteLevel(1);
    CScene other = after;
    EXPECT_FALSE(CSceneChange(before, after).Apply(other, ChangeDirection::Forward));
    EXPECT_EQ(other, after);
}

TEST(CSceneChangeTest, SurvivesAnyBytes) {
    std::mt19937 random(4);
    CScene before;
    before.xsheet = CXSheet(3, 40);
    CScene after = before;
    for (int edit = 0; edit < 30; ++edit)
        EditAtRandom(after, random);
    CArchiveWriter writer;
    CSceneChange(before, after).Write(writer);
    const std::vector<std::uint8_t> good(writer.Bytes().begin(), writer.Bytes().end());
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::uint8_t> bytes = good;
        for (int flips = 1 + round % 4; flips > 0; --flips)
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        if (round % 3 == 0)
            bytes.resize(random() % bytes.size());
        CArchiveReader reader(bytes);
        const std::optional<CSceneChange> change = CSceneChange::Read(reader);
        for (const CScene& start : {before, after}) {
            CScene scene = start;
            const ChangeDirection direction = round % 2 == 0 ? ChangeDirection::Forward : ChangeDirection::Back;
            if (change && !change->Apply(scene, direction)) {
                EXPECT_EQ(scene, start);
            }
        }
    }
}
