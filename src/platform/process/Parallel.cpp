#include "platform/process/Parallel.h"

#include "platform/process/Threads.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace velmor {

namespace {

// One job at a time, divided into parts that the kept threads and the caller take one after another.
class CThreadPool {
public:
    CThreadPool() {
        try {
            for (int i = 1; i < ProcessorCount(); ++i)
                m_threads.emplace_back([this] { Serve(); });
        } catch (const std::system_error&) {
            // With fewer threads the same work is done, later.
        }
    }
    CThreadPool(const CThreadPool&) = delete;
    CThreadPool& operator=(const CThreadPool&) = delete;
    ~CThreadPool() {
        {
            const std::lock_guard lock(m_mutex);
            m_stop = true;
        }
        m_partsWait.notify_all();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    // False, with nothing done, while another job is under way (which may be the one that asks).
    bool TryRun(int count, int parts, const std::function<void(int, int)>& work) {
        if (m_busy.exchange(true))
            return false;
        std::unique_lock lock(m_mutex);
        m_work = &work;
        m_count = count;
        m_parts = m_unfinished = parts;
        m_next = 0;
        m_partsWait.notify_all();
        while (m_next < m_parts)
            RunNextPart(lock);
        m_allFinished.wait(lock, [this] { return m_unfinished == 0; });
        lock.unlock();
        m_busy = false;
        return true;
    }

private:
    void Serve() {
        std::unique_lock lock(m_mutex);
        while (true) {
            m_partsWait.wait(lock, [this] { return m_stop || m_next < m_parts; });
            if (m_stop)
                return;
            RunNextPart(lock);
        }
    }

    void RunNextPart(std::unique_lock<std::mutex>& lock) {
        const std::int64_t part = m_next++;
        const auto begin = static_cast<int>(m_count * part / m_parts);
        const auto end = static_cast<int>(m_count * (part + 1) / m_parts);
        const std::function<void(int, int)>& work = *m_work;
        lock.unlock();
        work(begin, end);
        lock.lock();
        if (--m_unfinished == 0)
            m_allFinished.notify_one();
    }

    std::atomic<bool> m_busy{false};
    std::mutex m_mutex;
    std::condition_variable m_partsWait;
    std::condition_variable m_allFinished;
    const std::function<void(int, int)>* m_work = nullptr;
    std::int64_t m_count = 0;
    int m_parts = 0;
    int m_next = 0;
    int m_unfinished = 0;
    bool m_stop = false;
    std::vector<std::thread> m_threads;
};

std::atomic<int>& Processors() {
    static std::atomic<int> count{std::max(1, static_cast<int>(std::thread::hardware_concurrency()))};
    return count;
}

CThreadPool& UsualPool() {
    static CThreadPool pool;
    return pool;
}

CThreadPool& BackgroundPool() {
    static CThreadPool pool;
    return pool;
}

// Threads have the priority of the one that makes them. So work in the background makes and keeps its own, and what
// the user waits for is never done by threads that give way to everything else.
CThreadPool& PoolOfCaller() {
    return HasLowestPriority() ? BackgroundPool() : UsualPool();
}

} // namespace

int ProcessorCount() {
    return Processors().load(std::memory_order_relaxed);
}

void SetProcessorCount(int count) {
    Processors() = std::max(1, count);
}

void StartParallelThreads() {
    PoolOfCaller();
}

void ParallelFor(int count, int grain, const std::function<void(int begin, int end)>& work) {
    if (count <= 0)
        return;
    const int parts = std::min(ProcessorCount(), count / std::max(1, grain));
    if (parts <= 1 || !PoolOfCaller().TryRun(count, parts, work))
        work(0, count);
}

} // namespace velmor
