#pragma once

#include "render/ImageCache.h"
#include "render/preview/PreviewPictures.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace velmor {

/// Composes the pictures of a preview ahead of their time, on threads of the lowest priority, and keeps them.
/// Called from one thread.
class CPreviewComposer {
public:
    /// `mostBytes` bounds the pictures that are kept. `cache` outlives the object.
    CPreviewComposer(CImageCache& cache, std::size_t mostBytes, int threads);
    CPreviewComposer(const CPreviewComposer&) = delete;
    CPreviewComposer& operator=(const CPreviewComposer&) = delete;
    ~CPreviewComposer();

    /// What is needed from now on, the most urgent first; it replaces what was wanted before and is not begun.
    /// False when the system has no thread to give.
    bool Want(std::vector<PreviewContent> contents);
    bool Has(const PreviewContent& content) const;
    /// Null while it is not composed.
    PreviewPicture Find(const PreviewContent& content);
    /// Forgets what is wanted and all pictures.
    void Clear();

    std::size_t ByteCount() const;
    bool IsEmpty() const { return ByteCount() == 0; }
    /// Pictures composed so far.
    std::int64_t Made() const;
    /// What composing a picture takes a thread, in milliseconds: the quickest of the latest, as the first of all
    /// have their images read. 0 before there are any.
    double MillisecondsOfOne() const;

private:
    using Clock = std::chrono::steady_clock;

    bool StartThreads();
    void Work();
    void NoteTime(Clock::duration taken);

    CImageCache& m_cache;
    const int m_threadCount;
    mutable std::mutex m_mutex;
    std::condition_variable m_wanted;
    CPreviewPictures m_pictures;
    std::deque<double> m_times; ///< of the latest pictures, in milliseconds
    std::int64_t m_made = 0;
    bool m_ending = false;
    std::vector<std::thread> m_threads; // last: they use everything above
};

} // namespace velmor
