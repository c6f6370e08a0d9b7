#include "platform/Shared.h"

#include <gtest/gtest.h>
#include <numeric>

namespace velmor {
namespace {

using Numbers = CSharedVector<int, 4>;

Numbers Counted(std::size_t size) {
    std::vector<int> numbers(size);
    std::iota(numbers.begin(), numbers.end(), 1);
    Numbers shared;
    shared.Assign(numbers);
    return shared;
}

TEST(Shared, ACopyKeepsWhatItWasAndSharesWhatDidNotChange) {
    Numbers now = Counted(11);
    const Numbers before = now;
    EXPECT_EQ(&now[0], &before[0]);
    now.Change(5) = 60;
    EXPECT_EQ(before, Counted(11));
    EXPECT_EQ(now.All(), (std::vector<int>{1, 2, 3, 4, 5, 60, 7, 8, 9, 10, 11}));
    EXPECT_NE(now, before);
    EXPECT_EQ(&now[3], &before[3]);
    EXPECT_NE(&now[4], &before[4]);
    EXPECT_EQ(&now[8], &before[8]);
    // Alone again, it writes where it is.
    const int* place = &now[5];
    now.Change(5) = 6;
    EXPECT_EQ(&now[5], place);
    EXPECT_EQ(now, before);
}

TEST(Shared, WhatIsCutOffDoesNotComeBack) {
    Numbers numbers = Counted(11);
    const Numbers before = numbers;
    numbers.resize(6);
    EXPECT_EQ(numbers, Counted(6));
    numbers.resize(9);
    EXPECT_EQ(numbers.All(), (std::vector<int>{1, 2, 3, 4, 5, 6, 0, 0, 0}));
    numbers.resize(0);
    EXPECT_EQ(numbers, Numbers());
    EXPECT_EQ(before, Counted(11));
}

TEST(Shared, AssigningKeepsEqualPiecesShared) {
    Numbers numbers = Counted(9);
    const Numbers before = numbers;
    std::vector<int> elements = numbers.All();
    elements[8] = 0;
    elements.push_back(1);
    numbers.Assign(elements);
    EXPECT_EQ(numbers.All(), elements);
    EXPECT_EQ(&numbers[0], &before[0]);
    EXPECT_EQ(&numbers[7], &before[7]);
    EXPECT_EQ(before, Counted(9));
}

} // namespace
} // namespace velmor
