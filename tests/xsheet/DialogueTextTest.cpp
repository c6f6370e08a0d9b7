#include "xsheet/DialogueText.h"

#include <gtest/gtest.h>
#include <random>

namespace velmor {
namespace {

using Lines = std::vector<CSpokenLine>;

Lines Read(const std::string& text, int firstFrame = 0, int lastFrame = 99) {
    CDialogue dialogue;
    const CStatus read = ReadDialogueText(text, firstFrame, lastFrame, dialogue);
    EXPECT_TRUE(read) << read.Message();
    return dialogue.Lines();
}

TEST(DialogueText, HasFramesSpeakersAndTexts) {
    const Lines lines{{0, 2, "", "Once"}, {3, 3, "Ann", "at: noon"}, {9, 20, "", "it was: late"}};
    CDialogue dialogue;
    dialogue.Set(lines);
    const std::string text = WriteDialogueText(dialogue);
    EXPECT_EQ(text, "1-3 Once\n4 Ann: at: noon\n10-21 : it was: late\n");
    EXPECT_EQ(Read(text), lines);
    EXPECT_EQ(Read("\xEF\xBB\xBF  1-3\tOnce \r\n\r\n4  Ann: at: noon\r\n10-21 : it was: late"), lines);
    EXPECT_EQ(Read("5 Caf\xE9\n").front().text, "Caf\xC3\xA9") << "of another encoding";
}

TEST(DialogueText, WithoutFramesItIsSpreadByItsLetters) {
    EXPECT_EQ(Read("Ann: abcd\nef\n\xC3\xA4\xC3\xB6\n", 10, 17),
              (Lines{{10, 13, "Ann", "abcd"}, {14, 15, "", "ef"}, {16, 17, "", "\xC3\xA4\xC3\xB6"}}));
    EXPECT_EQ(Read("a\nb\nc\nd\n", 5, 6).size(), 2U) << "for more lines there are no frames";
}

TEST(DialogueText, SaysWhichLineIsNoneAndTakesNothing) {
    CDialogue dialogue;
    dialogue.Set({{1, 2, "", "a"}});
    const CDialogue before = dialogue;
    for (const std::string text :
         {"1 a\nb\n", "a\n1 b\n", "1 a\n2-1 b\n", "1 a\n0 b", "1 a\n999999999999 b", "1 a\n2 ", "1 a\n2-"}) {
        const CStatus read = ReadDialogueText(text, 0, 9, dialogue);
        EXPECT_NE(read.Message().find("line 2"), std::string::npos) << text << read.Message();
        EXPECT_EQ(dialogue, before) << text;
    }
    std::mt19937 random(4);
    for (int i = 0; i < 5000; ++i) {
        std::string bytes(random() % 80, ' ');
        for (char& c : bytes)
            c = random() % 3 != 0 ? "19- \n:a\r"[random() % 8] : static_cast<char>(random());
        static_cast<void>(ReadDialogueText(bytes, 0, static_cast<int>(random() % 9), dialogue));
    }
}

TEST(DialogueText, TheFirstColonEndsTheSpeakerWhateverItsBlankIs) {
    CDialogue dialogue;
    ASSERT_TRUE(ReadDialogueText(std::string_view("1-4 An:\0n: it was\n", 18), 0, 9, dialogue));
    EXPECT_EQ(dialogue.Lines(), (std::vector<CSpokenLine>{{0, 3, "An", "n: it was"}}));
    CDialogue again;
    ASSERT_TRUE(ReadDialogueText(WriteDialogueText(dialogue), 0, 9, again));
    EXPECT_EQ(again, dialogue);
}

TEST(DialogueText, EachFrameHasItsLetters) {
    const auto spoken = [](const CSpokenLine& line) {
        std::string all;
        for (int frame = line.firstFrame; frame <= line.lastFrame; ++frame)
            all += SpokenAt(line, frame) + "|";
        return all;
    };
    EXPECT_EQ(spoken({3, 6, "", "abcdefgh"}), "ab|cd|ef|gh|");
    EXPECT_EQ(spoken({3, 7, "", "\xC3\xA4\xC3\xB6"}), "\xC3\xA4||\xC3\xB6|||");
    EXPECT_EQ(spoken({0, 0, "", "all of it"}), "all of it|");
    EXPECT_EQ(SpokenText("  a\tb\n" + std::string(400, 'c')).size(), CDialogue::mostText - 2);
    const std::string umlauts = "a" + std::string(CDialogue::mostText, '\xC3');
    EXPECT_EQ(SpokenText(umlauts), "a") << "no character is cut in two";
}

} // namespace
} // namespace velmor
