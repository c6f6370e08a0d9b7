#include "app/cli/NumberList.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

TEST(NumberList, TakesInclusiveRangesAndCutsThemAtTheEnd) {
    const auto ranges = ParseNumberList("1-3,60,2-5,100-200");
    ASSERT_TRUE(ranges);
    EXPECT_EQ(IndicesOf(*ranges, 120).size(), 5U + 1 + 21);
    EXPECT_EQ(IndicesOf(*ranges, 4), (std::vector{0, 1, 2, 3}));
    EXPECT_TRUE(IndicesOf(*ParseNumberList("7"), 4).empty());
    EXPECT_EQ(IndicesOf(*ParseNumberList("3-2147483647"), 4), (std::vector{2, 3}));
    EXPECT_EQ(IndicesOf(*ParseNumberList("2-9x3,4"), 20), (std::vector{1, 3, 4, 7}));
    EXPECT_EQ(IndicesOf(*ParseNumberList("2-2147483647x2147483647"), 2147483647), (std::vector{1}));
}

TEST(NumberList, RefusesWhatIsNoList) {
    for (const char* text : {"", "0", "0-3", "3-1", "-3", "1-", "1,,2", "1,", "a", "1 2", "1-2-3", "99999999999",
                             "1-9x0", "1-9x", "3x2", "1-9x2x2"})
        EXPECT_FALSE(ParseNumberList(text)) << text;
}

TEST(NumberList, IsWrittenAsFewRangesThatReadTheSame) {
    const auto written = [](std::vector<int> indices) {
        std::string text = TextOf(RangesOf(indices));
        EXPECT_EQ(IndicesOf(ParseNumberList(text).value_or(std::vector<CNumberRange>()), 1000), indices) << text;
        return text;
    };
    EXPECT_EQ(written({0, 1, 2, 5, 9, 11, 13, 15, 16}), "1-3,6,10-16x2,17");
    EXPECT_EQ(written({4, 8}), "5,9");
    EXPECT_EQ(written({7}), "8");
}

} // namespace
} // namespace velmor
