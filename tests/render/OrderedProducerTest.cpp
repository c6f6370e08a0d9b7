#include "render/OrderedProducer.h"

#include <gtest/gtest.h>
#include <system_error>

namespace velmor {
namespace {

/// What a producer hands over when the system gives it `threads` threads and no more.
std::vector<int> ItemsMadeBy(int threads, bool& failed) {
    COrderedProducer<int> producer(
        20, [](int index, int& item) { item = index * index; },
        [&threads](std::function<void()> work) {
            if (threads-- <= 0)
                throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
            return std::thread(std::move(work));
        });
    failed = producer.Failed();
    std::vector<int> items;
    while (const int* item = producer.Next())
        items.push_back(*item);
    return items;
}

TEST(OrderedProducer, ComesOutWithTheThreadsThatItGets) {
    std::vector<int> squares;
    for (int i = 0; i < 20; ++i)
        squares.push_back(i * i);
    bool failed = true;
    EXPECT_EQ(ItemsMadeBy(ProcessorCount(), failed), squares);
    EXPECT_FALSE(failed);
    EXPECT_EQ(ItemsMadeBy(1, failed), squares);
    EXPECT_FALSE(failed);
    EXPECT_TRUE(ItemsMadeBy(0, failed).empty());
    EXPECT_TRUE(failed);
}

} // namespace
} // namespace velmor
