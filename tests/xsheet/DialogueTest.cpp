#include "xsheet/Dialogue.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>

namespace velmor {
namespace {

/// "ab.c": what is spoken at each of the first frames, by its first letter.
std::string Spoken(const CDialogue& dialogue, int frames) {
    std::string spoken;
    for (int frame = 0; frame < frames; ++frame) {
        const CSpokenLine* line = dialogue.At(frame);
        spoken.push_back(line != nullptr ? line->text.front() : '.');
    }
    return spoken;
}

CDialogue Lines(std::vector<CSpokenLine> lines) {
    CDialogue dialogue;
    dialogue.Set(std::move(lines));
    return dialogue;
}

TEST(Dialogue, LinesMakeRoomForOneAnother) {
    CDialogue dialogue = Lines({{6, 8, "", "b"}, {1, 4, "Ann", "a"}});
    EXPECT_EQ(Spoken(dialogue, 10), ".aaaa.bbb.");
    EXPECT_TRUE(dialogue.Put({4, 6, "", "c"}));
    EXPECT_EQ(Spoken(dialogue, 10), ".aaacccbb.");
    EXPECT_EQ(dialogue.Lines().size(), 3U);
    EXPECT_TRUE(dialogue.Put({2, 2, "", "d"}));
    EXPECT_EQ(Spoken(dialogue, 10), ".ad.cccbb.") << "a line that is cut in two keeps one part";
    dialogue.Clear(0, 5);
    EXPECT_EQ(Spoken(dialogue, 10), "......cbb.");
}

TEST(Dialogue, TakesNoLineThatIsNone) {
    CDialogue dialogue = Lines({{0, 3, "", "a"}});
    const CDialogue before = dialogue;
    EXPECT_FALSE(dialogue.Put({0, 3, "", ""}));
    EXPECT_FALSE(dialogue.Put({3, 2, "", "b"}));
    EXPECT_FALSE(dialogue.Put({-1, 2, "", "b"}));
    EXPECT_FALSE(dialogue.Put({0, CDialogue::mostFrame + 1, "", "b"}));
    EXPECT_FALSE(dialogue.Put({0, 1, "", std::string(CDialogue::mostText + 1, 'b')}));
    EXPECT_EQ(dialogue, before);
    for (int frame = 0; frame < CDialogue::mostLines + 10; ++frame)
        EXPECT_EQ(dialogue.Put({10 + frame, 10 + frame, "", "x"}), frame + 1 < CDialogue::mostLines) << frame;
}

TEST(Dialogue, FollowsFramesThatComeAndGo) {
    const CDialogue dialogue = Lines({{1, 3, "", "a"}, {4, 4, "", "b"}, {7, 9, "", "c"}});
    const auto inserted = [&](int at, int count) {
        CDialogue changed = dialogue;
        changed.InsertFrames(at, count);
        return Spoken(changed, 13);
    };
    EXPECT_EQ(inserted(0, 1), "..aaab..ccc..");
    EXPECT_EQ(inserted(2, 2), ".aaaaab..ccc.") << "within a line it goes on";
    EXPECT_EQ(inserted(4, 1), ".aaa.b..ccc..") << "between two lines there is silence";
    const auto deleted = [&](int at, int count) {
        CDialogue changed = dialogue;
        changed.DeleteFrames(at, count);
        return Spoken(changed, 10);
    };
    EXPECT_EQ(deleted(2, 1), ".aab..ccc.");
    EXPECT_EQ(deleted(3, 3), ".aa.ccc...");
    EXPECT_EQ(deleted(3, 5), ".aacc.....");
    EXPECT_EQ(deleted(0, INT_MAX), "..........");
}

TEST(Dialogue, StaysInOrderWhateverIsDone) {
    std::mt19937 random(3);
    const auto pick = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    CDialogue dialogue;
    for (int step = 0; step < 3000; ++step) {
        const int at = pick(60);
        switch (pick(4)) {
        case 0:
            dialogue.InsertFrames(at, pick(10) == 0 ? INT_MAX : pick(5));
            break;
        case 1:
            dialogue.DeleteFrames(at, pick(5));
            break;
        case 2:
            dialogue.Clear(at, at + pick(10));
            break;
        default:
            ASSERT_TRUE(dialogue.Put({at, at + pick(9), "", "x"}));
        }
        int end = 0;
        for (const CSpokenLine& line : dialogue.Lines()) {
            ASSERT_GE(line.firstFrame, end);
            ASSERT_GE(line.lastFrame, line.firstFrame);
            ASSERT_LE(line.lastFrame, CDialogue::mostFrame);
            end = line.lastFrame + 1;
        }
    }
}

} // namespace
} // namespace velmor
