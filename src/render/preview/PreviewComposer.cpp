#include "render/preview/PreviewComposer.h"

#include "platform/process/Threads.h"
#include "render/FrameComposer.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace velmor {

namespace {

constexpr std::size_t timesKept = 4;

} // namespace

CPreviewComposer::CPreviewComposer(CImageCache& cache, std::size_t mostBytes, int threads)
    : m_cache(cache), m_threadCount(threads), m_pictures(mostBytes) {}

CPreviewComposer::~CPreviewComposer() {
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_wanted.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

bool CPreviewComposer::Want(std::vector<PreviewContent> contents) {
    {
        const std::lock_guard lock(m_mutex);
        m_pictures.Want(std::move(contents));
    }
    m_wanted.notify_all();
    return StartThreads();
}

bool CPreviewComposer::StartThreads() {
    try {
        while (static_cast<int>(m_threads.size()) < m_threadCount)
            m_threads.emplace_back([this] { Work(); });
    } catch (const std::exception&) {
        // With fewer threads the same pictures are made, later.
    }
    return !m_threads.empty();
}

bool CPreviewComposer::Has(const PreviewContent& content) const {
    const std::lock_guard lock(m_mutex);
    return m_pictures.Has(content);
}

PreviewPicture CPreviewComposer::Find(const PreviewContent& content) {
    const std::lock_guard lock(m_mutex);
    return m_pictures.Find(content);
}

void CPreviewComposer::Clear() {
    const std::lock_guard lock(m_mutex);
    m_pictures.Clear();
    m_times.clear();
}

std::size_t CPreviewComposer::ByteCount() const {
    const std::lock_guard lock(m_mutex);
    return m_pictures.ByteCount();
}

std::int64_t CPreviewComposer::Made() const {
    const std::lock_guard lock(m_mutex);
    return m_made;
}

double CPreviewComposer::MillisecondsOfOne() const {
    const std::lock_guard lock(m_mutex);
    return m_times.empty() ? 0 : *std::ranges::min_element(m_times);
}

void CPreviewComposer::NoteTime(Clock::duration taken) {
    m_times.push_back(std::chrono::duration<double, std::milli>(taken).count());
    if (m_times.size() > timesKept)
        m_times.pop_front();
}

void CPreviewComposer::Work() {
    LowerThreadPriority();
    CFrameComposer composer(m_cache);
    std::unique_lock lock(m_mutex);
    for (;;) {
        std::optional<CPreviewPictures::COrder> order;
        m_wanted.wait(lock, [&] { return m_ending || (order = m_pictures.Begin()).has_value(); });
        if (m_ending)
            return;
        lock.unlock();
        const auto begun = Clock::now();
        const auto picture = std::make_shared<CFrameBuffer>();
        // An image that cannot be read leaves what lies below it, as in the camera view.
        static_cast<void>(composer.Compose(order->content->Request(), *picture, order->isUrgent));
        const auto taken = Clock::now() - begun;
        lock.lock();
        NoteTime(taken);
        ++m_made;
        m_pictures.Take(order->content, picture);
        m_wanted.notify_all(); // there may be room now for one that waited for it
    }
}

} // namespace velmor
