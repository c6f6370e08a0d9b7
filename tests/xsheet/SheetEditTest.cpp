#include "xsheet/exposing/SheetEdit.h"
#include "SheetPictures.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace velmor::testing {
namespace {

using enum SheetEditKind;

// A cell by its letter and the frame that it stood at; a dot has no frame.
struct CPlainCell {
    char letter = '.';
    int frame = -1;

    bool operator==(const CPlainCell&) const = default;
};
using Plain = std::vector<CPlainCell>;

Plain PlainOf(const CXSheet& xsheet, int level) {
    Plain cells;
    for (int frame = 0; frame < xsheet.FrameCount(); ++frame) {
        const CXSheetCell& cell = xsheet.Cell(level, frame);
        cells.push_back(cell.IsUsed() ? CPlainCell{cell.CelName()[0], static_cast<int>(cell.PosX())}
                                      : CPlainCell{});
    }
    return cells;
}

std::string Row(const Plain& cells) {
    std::string row;
    for (const CPlainCell& cell : cells)
        row += cell.letter;
    return row;
}

Plain Slice(const Plain& cells, int first, int end) {
    return {cells.begin() + first, cells.begin() + end};
}

// The runs of equal letters.
std::vector<Plain> Runs(const Plain& cells) {
    std::vector<Plain> runs;
    for (const CPlainCell& cell : cells) {
        if (runs.empty() || runs.back().back().letter != cell.letter)
            runs.emplace_back();
        runs.back().push_back(cell);
    }
    return runs;
}

Plain Longer(Plain run, int length) {
    while (static_cast<int>(run.size()) < length)
        run.push_back(run.back());
    run.resize(static_cast<std::size_t>(length));
    return run;
}

Plain Joined(const std::vector<Plain>& runs) {
    Plain cells;
    for (const Plain& run : runs)
        cells.insert(cells.end(), run.begin(), run.end());
    return cells;
}

// What stands in place of the part, found by walking along.
Plain Made(const CSheetEdit& edit, const Plain& part) {
    const int length = static_cast<int>(part.size());
    Plain made;
    switch (edit.kind) {
    case Repeat:
        while (static_cast<int>(made.size()) < edit.count)
            made.push_back(part[made.size() % part.size()]);
        return made;
    case HoldOn:
    case SetExposure:
        return Longer(part, edit.count);
    case OnFrames: {
        std::vector<Plain> runs = Runs(part);
        for (Plain& run : runs)
            run = Longer(run, edit.count);
        return Joined(runs);
    }
    case Swing: {
        const std::vector<Plain> runs = Runs(part);
        made = part;
        for (std::size_t run = runs.size() - 1; run-- > 1;)
            made.insert(made.end(), runs[run].rbegin(), runs[run].rend());
        return made;
    }
    case Roll:
        for (int place = 0; place < length; ++place)
            made.push_back(part[static_cast<std::size_t>(((place - edit.count) % length + length) % length)]);
        return made;
    default: // Stretch
        for (int place = 0; place < edit.count; ++place)
            made.push_back(part[static_cast<std::size_t>(place * length / edit.count)]);
        return made;
    }
}

// Puts `made` in the place of a part and cuts or fills the level to its length.
Plain Put(const Plain& level, int first, int end, const Plain& made, Following following, CPlainCell gap = {}) {
    Plain cells = Slice(level, 0, first);
    cells.insert(cells.end(), made.begin(), made.end());
    if (following == Following::Push) {
        cells.insert(cells.end(), level.begin() + end, level.end());
        while (cells.size() < level.size())
            cells.push_back(level.back());
        cells.resize(level.size());
        return cells;
    }
    while (static_cast<int>(cells.size()) < end)
        cells.push_back(gap);
    for (std::size_t frame = cells.size(); frame < level.size(); ++frame)
        cells.push_back(level[frame]);
    cells.resize(level.size());
    return cells;
}

Plain Shifted(const Plain& level, int first, int end, int by, Following following) {
    const Plain part = Slice(level, first, end);
    if (by >= 0) {
        Plain moved(static_cast<std::size_t>(by));
        moved.insert(moved.end(), part.begin(), part.end());
        return Put(level, first, end, moved, following);
    }
    const int up = std::min(-by, first);
    return Put(level, first - up, end, part, following);
}

class SheetEditTest : public ::testing::Test {
protected:
    std::mt19937 random{7};

    int Number(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    CScene SceneOf(const Rows& rows) {
        CScene scene;
        scene.xsheet = SheetOf(rows);
        return scene;
    }
    std::string AnyRow(int frames) {
        std::string row;
        while (static_cast<int>(row.size()) < frames)
            row += std::string(static_cast<std::size_t>(1 + Number(4)), "ABC."[Number(4)]);
        row.resize(static_cast<std::size_t>(frames));
        return row;
    }
    Rows After(CSheetEdit edit, const Rows& rows) {
        CScene scene = SceneOf(rows);
        Apply(edit, scene);
        return RowsOf(scene.xsheet);
    }
    Plain Expected(const CSheetEdit& edit, const Plain& level) {
        const int first = edit.cells.firstFrame;
        const int end = edit.cells.lastFrame + 1;
        if (edit.kind == Shift)
            return Shifted(level, first, end, edit.count, edit.following);
        if (edit.kind != SetExposure)
            return Put(level, first, end, Made(edit, Slice(level, first, end)),
                       edit.kind == Repeat || edit.kind == HoldOn ? Following::Eat : edit.following);
        int begin = first;
        int behind = first;
        while (begin > 0 &&
               level[static_cast<std::size_t>(begin) - 1].letter == level[static_cast<std::size_t>(first)].letter)
            --begin;
        while (behind < static_cast<int>(level.size()) &&
               level[static_cast<std::size_t>(behind)].letter == level[static_cast<std::size_t>(first)].letter)
            ++behind;
        const CPlainCell gap =
            behind < static_cast<int>(level.size()) ? level[static_cast<std::size_t>(behind)] : CPlainCell{};
        return Put(level, begin, behind, Made(edit, Slice(level, begin, behind)), edit.following, gap);
    }
};

TEST_F(SheetEditTest, EveryEditIsThatOfAPlainLoop) {
    for (int round = 0; round < 6000; ++round) {
        const int frames = 1 + Number(24);
        const Rows rows{AnyRow(frames), AnyRow(frames), AnyRow(frames)};
        CScene scene = SceneOf(rows);
        const CScene before = scene;
        CSheetEdit edit;
        edit.kind =
            std::array{Repeat, HoldOn, OnFrames, Swing, Shift, Roll, Stretch, SetExposure}[static_cast<std::size_t>(
                Number(8))];
        const int first = Number(frames);
        edit.cells = {Number(2), 1, first, first + Number(frames - first)};
        const bool canBeNegative = edit.kind == Shift || edit.kind == Roll;
        edit.count = canBeNegative ? Number(41) - 20 : 1 + Number(20);
        edit.following = Number(2) == 0 ? Following::Push : Following::Eat;
        Apply(edit, scene);
        for (int level = 0; level < 3; ++level) {
            const Plain was = PlainOf(before.xsheet, level);
            const Plain expected =
                level < edit.cells.firstLevel || level > edit.cells.lastLevel ? was : Expected(edit, was);
            ASSERT_EQ(PlainOf(scene.xsheet, level), expected)
                << "kind " << static_cast<int>(edit.kind) << " of " << Row(was) << " frames "
                << edit.cells.firstFrame << " to " << edit.cells.lastFrame << " by " << edit.count << " eats "
                << (edit.following == Following::Eat) << ": "
                << RowsOf(scene.xsheet)[static_cast<std::size_t>(level)];
        }
        EXPECT_EQ(scene.camera, before.camera);
    }
}

TEST_F(SheetEditTest, RandomKeepsTheRhythmAndNeverShowsADrawingTwiceInARow) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        const Rows rows{AnyRow(30)};
        CScene scene = SceneOf(rows);
        Apply({Random, {0, 0, 4, 29}, 0, Following::Push, seed}, scene);
        const Plain was = PlainOf(SheetOf(rows), 0);
        const Plain now = PlainOf(scene.xsheet, 0);
        EXPECT_EQ(Slice(now, 0, 4), Slice(was, 0, 4));
        const std::vector<Plain> places = Runs(Slice(was, 4, 30));
        std::set<char> drawings;
        for (const Plain& place : places)
            drawings.insert(place.front().letter);
        drawings.erase('.');
        char before = was[3].letter == '.' ? '-' : was[3].letter;
        std::size_t frame = 4;
        for (const Plain& place : places) {
            const CPlainCell first = now[frame];
            EXPECT_EQ(first.letter == '.', place.front().letter == '.') << "pauses stay";
            for (std::size_t i = 0; i < place.size(); ++i, ++frame) {
                EXPECT_EQ(now[frame].letter, first.letter) << "the drawing stands as long as the one before";
                if (first.letter != '.') {
                    EXPECT_EQ(was[static_cast<std::size_t>(now[frame].frame)].letter, now[frame].letter)
                        << "every cell keeps its place";
                }
            }
            if (first.letter == '.')
                continue;
            EXPECT_TRUE(first.letter != before || drawings.size() == 1) << Row(was) << " " << Row(now);
            before = first.letter;
        }
    }
    const CSheetEdit edit{Random, {0, 0, 0, 9}, 0, Following::Push, 3};
    EXPECT_EQ(After(edit, {"ABCABCABCA"}), After(edit, {"ABCABCABCA"}));
    CSheetEdit other = edit;
    other.seed = 4;
    EXPECT_NE(After(edit, {"ABCABCABCA"}), After(other, {"ABCABCABCA"}));
}

TEST_F(SheetEditTest, TypedExposuresFillAndStopAtTheEnd) {
    CSheetEdit edit{Expose, {0, 0, 2, 2}, 3};
    edit.cell = CXSheetCell::FromFile("F", "X", {}, 0, 1, 1, {1, 1});
    EXPECT_EQ(After(edit, {"AABBCC"}), Rows{"AAXXXC"});
    edit.cells.firstFrame = 5;
    EXPECT_EQ(After(edit, {"AABBCC"}), Rows{"AABBCX"});
    CScene scene = SceneOf({"AA..BB"});
    edit = {Expose, {0, 0, 1, 1}, 4};
    edit.cell = CXSheetCell::FromFile("F", "X", {99, 0, 1, 1, 0}, 0, 1, 1, {10, 10});
    Apply(edit, scene);
    EXPECT_EQ(PlainOf(scene.xsheet, 0), (Plain{{'A', 0}, {'X', 1}, {'X', 1}, {'X', 1}, {'X', 4}, {'B', 5}}))
        << "placed like what stood there, or above";
    scene = SceneOf({"A.A"});
    for (int frame = 0; frame < 3; ++frame)
        scene.xsheet.MutableCell(0, frame).SetNote({SheetMark::Key, NoteColor::None, std::to_string(frame)});
    edit.cell.SetSize({20, 10});
    Apply(edit, scene);
    EXPECT_EQ(scene.xsheet.Cell(0, 1).PosX(), 99) << "of another size";
    for (int frame = 0; frame < 3; ++frame)
        EXPECT_EQ(scene.xsheet.Cell(0, frame).Note().comment, std::to_string(frame)) << "belongs to its place";
    edit.cell.SetSize({10, 10});
    edit.cells = {0, 0, 1, 1};
    scene.xsheet.MutableCell(0, 1).ClearAsset();
    Apply(edit, scene);
    EXPECT_EQ(scene.xsheet.Cell(0, 1).PosX(), 0) << "placed like the one above";
    EXPECT_EQ(scene.xsheet.Cell(0, 1).Note().comment, "1");
    EXPECT_EQ(After({Clear, {0, 1, 1, 1}, 2}, {"AAAA", "BBBB"}), (Rows{"A..A", "B..B"}));
    EXPECT_EQ(After({HoldAbove, {0, 0, 1, 1}, 2}, {"ABCD"}), Rows{"AAAD"});
    EXPECT_EQ(After({HoldAbove, {0, 0, 0, 0}, 2}, {"ABCD"}), Rows{"ABCD"}) << "there is nothing above";
}

TEST_F(SheetEditTest, TimeIsInsertedAndTakenOutOnAllLevelsWithCameraAndSounds) {
    for (int round = 0; round < 500; ++round) {
        const int frames = 2 + Number(20);
        CScene scene = SceneOf({AnyRow(frames), AnyRow(frames)});
        std::vector<CSoundPlacement> sounds;
        for (int frame = 0; frame < frames + 5; ++frame) {
            scene.camera.MutableAt(frame).panX = frame;
            if (Number(3) == 0)
                sounds.push_back({frame, std::to_string(frame)});
        }
        scene.sounds.Set(sounds);
        const CScene before = scene;
        const int at = Number(frames);
        const int count = 1 + Number(10);
        Apply({InsertTime, {0, 0, at, at}, count}, scene);
        ASSERT_EQ(scene.xsheet.FrameCount(), frames + count);
        for (int level = 0; level < 2; ++level) {
            const Plain was = PlainOf(before.xsheet, level);
            Plain expected = Slice(was, 0, at);
            const bool cut =
                at > 0 && was[static_cast<std::size_t>(at)].letter == was[static_cast<std::size_t>(at) - 1].letter;
            for (int i = 0; i < count; ++i)
                expected.push_back(cut ? was[static_cast<std::size_t>(at) - 1] : CPlainCell{});
            expected.insert(expected.end(), was.begin() + at, was.end());
            ASSERT_EQ(PlainOf(scene.xsheet, level), expected) << Row(was) << " at " << at;
        }
        for (int frame = 0; frame < frames + count + 5; ++frame)
            EXPECT_EQ(scene.camera.At(frame).panX, frame < at           ? frame
                                                   : frame < at + count ? std::max(0, at - 1)
                                                                        : frame - count);
        for (CSoundPlacement& sound : sounds)
            sound.frame += sound.frame >= at ? count : 0;
        EXPECT_EQ(scene.sounds.All(), sounds);

        Apply({DeleteTime, {0, 0, at, at}, count}, scene);
        EXPECT_EQ(scene, before) << "what was put in is taken out again";

        Apply({DeleteTime, {0, 0, at, at}, count}, scene);
        const int taken = std::min({count, frames - at, frames - 1});
        ASSERT_EQ(scene.xsheet.FrameCount(), frames - taken);
        for (int frame = 0; frame < frames - taken; ++frame) {
            const int from = frame < at ? frame : frame + taken;
            EXPECT_TRUE(scene.xsheet.Cell(1, frame) == before.xsheet.Cell(1, from));
            EXPECT_EQ(scene.camera.At(frame).panX, from);
        }
        for (const CSoundPlacement& sound : before.sounds.All()) {
            const bool stays = sound.frame < at || sound.frame >= at + taken;
            const std::string* name = scene.sounds.NameAt(sound.frame < at ? sound.frame : sound.frame - taken);
            EXPECT_EQ(stays, name != nullptr && *name == sound.name) << sound.frame;
        }
    }
}

// In these rows the notes alone are seen, each by the frame where it was made.
TEST_F(SheetEditTest, NotesGoWithTheirCellsAndAreNotRepeated) {
    const auto after = [](const CSheetEdit& edit) {
        CScene scene;
        scene.xsheet = SheetOf({"AAB..."});
        for (const int frame : {0, 2, 4}) {
            const CSheetNote note{SheetMark::Key, NoteColor::None, std::to_string(frame)};
            scene.xsheet.MutableCell(0, frame).SetNote(note);
            scene.frameNotes.Set(frame, note);
        }
        EXPECT_TRUE(scene.dialogue.Put({2, 4, "Fox", "Who?"}));
        Apply(edit, scene);
        std::string row;
        std::string frames;
        for (int frame = 0; frame < scene.xsheet.FrameCount(); ++frame) {
            const CSheetNote& note = scene.xsheet.Cell(0, frame).Note();
            row += note.IsEmpty() ? "." : note.comment;
            frames += scene.frameNotes.At(frame).IsEmpty() ? "." : scene.frameNotes.At(frame).comment;
        }
        const CSpokenLine& line = scene.dialogue.Lines().front();
        return row + " " + frames + " " + std::to_string(line.firstFrame) + std::to_string(line.lastFrame);
    };
    EXPECT_EQ(after({OnFrames, {0, 0, 0, 2}, 3}), "0..2.. 0.2.4. 24");
    EXPECT_EQ(after({Repeat, {0, 0, 0, 2}, 6}), "0.2... 0.2.4. 24");
    EXPECT_EQ(after({Shift, {0, 0, 0, 2}, 1}), ".0.2.4 0.2.4. 24");
    EXPECT_EQ(after({InsertTime, {0, 0, 1, 1}, 2}), "0...2.4. 0...2.4. 46");
    EXPECT_EQ(after({DeleteTime, {0, 0, 0, 0}, 2}), "2.4. 2.4. 02");
    const CXSheetCell cell = SheetOf({"C"}).Cell(0, 0);
    EXPECT_EQ(after({Expose, {0, 0, 1, 1}, 4, Following::Eat, 0, cell}), "0.2.4. 0.2.4. 24");
    EXPECT_EQ(after({Clear, {0, 0, 0, 0}, 4}), "0.2.4. 0.2.4. 24");
    EXPECT_EQ(after({HoldAbove, {0, 0, 3, 3}, 2}), "0.2.4. 0.2.4. 24");
}

TEST_F(SheetEditTest, LimitsHold) {
    CScene scene;
    scene.xsheet = CXSheet(1, CXSheet::mostFrames - 3);
    scene.xsheet.MutableCell(0, CXSheet::mostFrames - 4) = SheetOf({"A"}).Cell(0, 0);
    scene.sounds.Set({{1990, "Bell"}});
    Apply({InsertTime, {0, 0, 0, 0}, 1000000}, scene);
    EXPECT_EQ(scene.xsheet.FrameCount(), CXSheet::mostFrames);
    EXPECT_EQ(scene.xsheet, CXSheet(1, CXSheet::mostFrames)) << "what is pushed past the end is lost";
    EXPECT_EQ(scene.sounds.Count(), 0);
    Apply({DeleteTime, {0, 0, 0, 0}, 1000000}, scene);
    EXPECT_EQ(scene.xsheet.FrameCount(), 1);
    for (const SheetEditKind kind : {Repeat, HoldOn, OnFrames, Shift, Roll, Stretch, SetExposure}) {
        Apply({kind, {0, 0, 0, 0}, 2000000000}, scene);
        Apply({kind, {0, 0, 0, 0}, -2000000000}, scene);
        EXPECT_EQ(scene.xsheet.FrameCount(), 1);
    }
}

TEST_F(SheetEditTest, TheSelectionGoesWithItsCells) {
    const CXSheet xsheet = SheetOf({"AABBCC....", "ABCDEF...."});
    const CXSheetSelection cells{0, 1, 0, 5};
    const auto last = [&](SheetEditKind kind, int count) {
        return SelectedAfter({kind, cells, count}, xsheet).lastFrame;
    };
    EXPECT_EQ(last(OnFrames, 1), 5);
    EXPECT_EQ(last(OnFrames, 3), 9);
    EXPECT_EQ(last(Swing, 0), 9);
    EXPECT_EQ(last(Stretch, 3), 2);
    EXPECT_EQ(last(Repeat, 8), 7);
    EXPECT_EQ(SelectedAfter({Shift, cells, 3}, xsheet), (CXSheetSelection{0, 1, 3, 8}));
    EXPECT_EQ(SelectedAfter({Shift, cells, -3}, xsheet), cells);
    EXPECT_EQ(SelectedAfter({Random, cells, 3}, xsheet), cells);
}

} // namespace
} // namespace velmor::testing
