#include "xsheet/LevelOrder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

std::string Moved(const std::string& levels, int first, int last, int before) {
    std::string moved;
    for (const int level : MovedLevels(static_cast<int>(levels.size()), first, last, before))
        moved += levels[static_cast<std::size_t>(level)];
    return moved;
}

TEST(LevelOrderTest, LevelsStandWhereTheyWerePut) {
    EXPECT_EQ(Moved("ABCD", 0, 1, 3), "CABD");
    EXPECT_EQ(Moved("ABCD", 2, 3, 0), "CDAB");
    EXPECT_EQ(Moved("ABCD", 0, 0, 4), "BCDA");
    EXPECT_EQ(Moved("ABCD", 1, 1, 0), "BACD");
    for (const int before : {1, 2, 3})
        EXPECT_EQ(Moved("ABCD", 1, 2, before), "ABCD") << "they stand there";
}

} // namespace
} // namespace velmor::testing
