#pragma once

#include "platform/process/Parallel.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace velmor {

/// Starts a thread that does the work; throws when the system has none to give.
using ThreadMaker = std::function<std::thread(std::function<void()> work)>;

/// What to tell of a producer that Failed().
inline constexpr const char* noRenderThread = "The system did not start a new background process for rendering!";

/// Makes numbered items on all processors and hands them over in order. At most two items a processor are made
/// ahead, in memory that is used again and again. Destroying the producer abandons what has not been taken.
template<class Item>
class COrderedProducer {
public:
    /// `make(index, item)` is called for the indices 0 to count - 1 on several threads at once; it finds in `item`
    /// what an earlier call left there. It must not throw.
    COrderedProducer(
        int count, std::function<void(int, Item&)> make,
        const ThreadMaker& start = [](const std::function<void()>& work) { return std::thread(work); })
        : m_count(count), m_make(std::move(make)), m_slots(static_cast<std::size_t>(2 * ProcessorCount())) {
        const int threads = std::min(ProcessorCount(), count);
        try {
            m_threads.reserve(static_cast<std::size_t>(std::max(threads, 0)));
            for (int i = 0; i < threads; ++i)
                m_threads.push_back(start([this] { Work(); }));
        } catch (const std::exception&) {
            // With fewer threads the same items are made, later; without any Failed() says so.
        }
    }
    COrderedProducer(const COrderedProducer&) = delete;
    COrderedProducer& operator=(const COrderedProducer&) = delete;
    ~COrderedProducer() {
        {
            const std::lock_guard lock(m_mutex);
            m_abandoned = true;
        }
        m_changed.notify_all();
        for (std::thread& thread : m_threads)
            thread.join();
    }

    /// Whether there are items to make and no thread could be had to make them.
    bool Failed() const { return m_count > 0 && m_threads.empty(); }

    /// The next item in order, valid until the next call; null after the last, and when the producer Failed().
    /// Waits until it is made.
    Item* Next() {
        if (Failed())
            return nullptr;
        std::unique_lock lock(m_mutex);
        if (m_lent) {
            SlotOf(m_nextToHand++).state = State::Free;
            m_lent = false;
            m_changed.notify_all();
        }
        if (m_nextToHand >= m_count)
            return nullptr;
        CSlot& slot = SlotOf(m_nextToHand);
        m_changed.wait(lock, [&] { return slot.state == State::Made; });
        m_lent = true;
        return &slot.item;
    }

private:
    enum class State { Free, Making, Made };
    struct CSlot {
        State state = State::Free;
        Item item;
    };

    CSlot& SlotOf(int index) { return m_slots[static_cast<std::size_t>(index) % m_slots.size()]; }

    // The index to make next, once its slot is free; nothing when there is no more to do.
    std::optional<int> TakeIndex() {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] {
            return m_abandoned || m_nextToMake >= m_count || SlotOf(m_nextToMake).state == State::Free;
        });
        if (m_abandoned || m_nextToMake >= m_count)
            return std::nullopt;
        SlotOf(m_nextToMake).state = State::Making;
        return m_nextToMake++;
    }

    void Work() {
        while (const std::optional<int> index = TakeIndex()) {
            CSlot& slot = SlotOf(*index);
            m_make(*index, slot.item);
            {
                const std::lock_guard lock(m_mutex);
                slot.state = State::Made;
            }
            m_changed.notify_all();
        }
    }

    const int m_count;
    const std::function<void(int, Item&)> m_make;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<CSlot> m_slots;
    int m_nextToMake = 0;
    int m_nextToHand = 0;
    bool m_lent = false;
    bool m_abandoned = false;
    std::vector<std::thread> m_threads; // last: they use everything above
};

} // namespace velmor
