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
}

TEST(NumberList, RefusesWhatIsNoList) {
    for (const char* text : {"", "0", "0-3", "3-1", "-3", "1-", "1,,2", "1,", "a", "1 2", "1-2-3", "99999999999"})
        EXPECT_FALSE(ParseNumberList(text)) << text;
}

} // namespace
} // namespace velmor
