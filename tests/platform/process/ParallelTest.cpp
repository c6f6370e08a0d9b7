#include "platform/process/Parallel.h"

#include "platform/process/Threads.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <mutex>
#include <set>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace velmor;

TEST(Parallel, EveryItemIsDoneOnceInPartsOfAtLeastTheGrain) {
    for (const int count : {0, 1, 2, 7, 63, 64, 65, 1000, 99991}) {
        for (const int grain : {0, 1, 10, 64, 5000}) {
            std::vector<std::atomic<int>> done(static_cast<std::size_t>(count));
            std::mutex mutex;
            std::vector<int> lengths;
            ParallelFor(count, grain, [&](int begin, int end) {
                for (int i = begin; i < end; ++i)
                    ++done[static_cast<std::size_t>(i)];
                const std::lock_guard lock(mutex);
                lengths.push_back(end - begin);
            });
            for (const std::atomic<int>& times : done)
                ASSERT_EQ(times.load(), 1);
            EXPECT_LE(static_cast<int>(lengths.size()), ProcessorCount());
            for (const int length : lengths)
                EXPECT_TRUE(length >= grain || lengths.size() == 1) << count << " " << grain << " " << length;
        }
    }
}

TEST(Parallel, CallsFromManyThreadsAndFromWithinAreRight) {
    std::atomic<int> wrong{0};
    const auto sumsUp = [&wrong] {
        for (int round = 0; round < 400; ++round) {
            std::atomic<long> sum{0};
            ParallelFor(64, 1, [&sum](int begin, int end) {
                for (int i = begin; i < end; ++i)
                    ParallelFor(10, 1,
                                [&sum, i](int first, int last) { sum += static_cast<long>(i) * (last - first); });
            });
            wrong += sum.load() != 10L * 63 * 64 / 2;
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 6; ++i)
        threads.emplace_back(sumsUp);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong.load(), 0);
}

namespace {

/// The nice values of the threads among which the work of the calling thread is divided.
std::set<int> PrioritiesOfWork() {
    std::set<int> priorities;
    std::mutex mutex;
    std::condition_variable changed;
    int begun = 0;
    ParallelFor(ProcessorCount(), 1, [&](int, int) {
        const auto thread = static_cast<id_t>(::syscall(SYS_gettid));
        std::unique_lock lock(mutex);
        priorities.insert(::getpriority(PRIO_PROCESS, thread));
        ++begun;
        changed.notify_all();
        // So that no thread takes two parts while another is still waking up.
        changed.wait_for(lock, std::chrono::seconds(10), [&] { return begun == ProcessorCount(); });
    });
    return priorities;
}

} // namespace

TEST(Parallel, WorkInTheBackgroundNeitherSlowsTheRestNorHurries) {
    std::set<int> background;
    std::thread([&background] {
        LowerThreadPriority();
        background = PrioritiesOfWork();
    }).join();
    EXPECT_EQ(background, std::set<int>{19});
    EXPECT_EQ(PrioritiesOfWork(), std::set<int>{::getpriority(PRIO_PROCESS, 0)});
}
