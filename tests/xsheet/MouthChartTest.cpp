#include "xsheet/MouthChart.h"

#include <gtest/gtest.h>
#include <random>

namespace velmor {
namespace {

CMouthChart Chart(const std::string& text) {
    CMouthChart chart;
    const CStatus read = CMouthChart::Parse(text, chart);
    EXPECT_TRUE(read) << read.Message();
    return chart;
}

std::string Joined(const std::vector<std::string>& mouths) {
    std::string joined;
    for (const std::string& mouth : mouths)
        joined += mouth.empty() ? "." : mouth;
    return joined;
}

class MouthChart : public ::testing::Test {
protected:
    std::string Spoken(const std::string& text, int frames, int hold = 1) const {
        return Joined(chart.MouthsOf({10, 10 + frames - 1, "", text}, hold));
    }

    const CMouthChart chart = Chart("# my own\n"
                                    "a i = 1\n"
                                    "  E   =2\r\n"
                                    "o oo U = 3\n\n"
                                    "m b p = 4\n"
                                    "\xC3\xB6 = 5\n"
                                    "= = 6\n"
                                    "Rest = 9\n");
};

TEST_F(MouthChart, SpreadsTheSoundsEvenlyOverTheFrames) {
    EXPECT_EQ(Spoken("Mama", 4), "4141");
    EXPECT_EQ(Spoken("Mama", 8), "44114411");
    EXPECT_EQ(Spoken("ma", 5), "44111");
    EXPECT_EQ(Spoken("m-a, kk!", 2), "41") << "what the chart does not know takes no time";
    EXPECT_EQ(Spoken("boom", 3), "434") << "the longest that fits";
    EXPECT_EQ(Spoken("\xC3\x96=o", 3), "563");
    EXPECT_EQ(Spoken("mamama", 2), "14") << "more sounds than frames";
    EXPECT_EQ(Spoken("xyz", 3), "...");
}

TEST_F(MouthChart, HoldsEachMouthAsLongAsItIsTold) {
    EXPECT_EQ(Spoken("mae", 6, 2), "441122");
    EXPECT_EQ(Spoken("mae", 6, 3), "444222") << "of three sounds two have room";
    EXPECT_EQ(Spoken("ma", 5, 2), "44111") << "a sound begins where a hold may end";
}

TEST_F(MouthChart, FillsFramesWithRestBetweenTheLines) {
    CDialogue dialogue;
    dialogue.Set({{2, 3, "", "ma"}, {6, 8, "", "xx"}});
    EXPECT_EQ(Joined(MouthsOf(dialogue, chart, 0, 9, 1)), "994199...9");
    EXPECT_EQ(Joined(MouthsOf(dialogue, chart, 3, 4, 1)), "19") << "a part of it as it stands in the whole";
    EXPECT_EQ(Joined(MouthsOf(dialogue, Chart("m=4\na=1"), 0, 9, 1)), "..41......");
    EXPECT_EQ(Joined(MouthsOf(dialogue, chart, 5, 4, 1)), "");
}

TEST_F(MouthChart, SaysWhichLineIsNone) {
    CMouthChart read = chart;
    for (const std::string text : {"a = 1\nb c\n", "a=1\n= 2", "a=1\nb = ", "a=1\nb = 1 2"}) {
        const CStatus status = CMouthChart::Parse(text, read);
        EXPECT_NE(status.Message().find("line 2"), std::string::npos) << text << status.Message();
    }
    EXPECT_EQ(read.Rest(), "9") << "and the chart is as it was";
    EXPECT_FALSE(CMouthChart::Parse(std::string(1 << 20, 'a'), read));
    std::mt19937 random(9);
    for (int i = 0; i < 2000; ++i) {
        std::string bytes(random() % 60, ' ');
        for (char& c : bytes)
            c = random() % 2 == 0 ? "=# \nab\xC3\x84"[random() % 8] : static_cast<char>(random());
        static_cast<void>(CMouthChart::Parse(bytes, read));
        EXPECT_EQ(read.MouthsOf({0, 6, "", bytes}, 2).size(), 7U);
    }
}

} // namespace
} // namespace velmor
