#pragma once

#include "render/FrameComposer.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace velmor {

/// A finished camera picture. After an error it holds the layers drawn before.
struct CCameraPicture {
    CFrameBuffer frame;
    std::string error; ///< empty when all went well
};

/// Composes camera pictures on a thread of the lowest priority. Every order replaces the one before: a picture that
/// is no longer wanted is dropped, whether it is waiting or being composed.
class CFrameWorker {
public:
    explicit CFrameWorker(CImageCache& cache) : m_cache(cache) {}
    CFrameWorker(const CFrameWorker&) = delete;
    CFrameWorker& operator=(const CFrameWorker&) = delete;
    ~CFrameWorker();

    /// Called on the worker's thread each time a picture is there. To be set before the first Start().
    void SetFinishedCallback(std::function<void()> finished) { m_finished = std::move(finished); }

    /// Gives up the picture there is and starts the next. False when no thread could be started.
    [[nodiscard]] bool Start(CFrameRequest request);
    /// Gives up the picture there is and what is being composed.
    void Cancel();
    /// Null while a picture is being composed, and before the first.
    std::shared_ptr<const CCameraPicture> Picture() const;

private:
    void Work();

    CImageCache& m_cache;
    std::function<void()> m_finished;
    mutable std::mutex m_mutex;
    std::condition_variable m_ordered;
    std::optional<CFrameRequest> m_order;
    unsigned m_orderNumber = 0;
    bool m_ending = false;
    std::shared_ptr<const CCameraPicture> m_picture;
    std::thread m_thread;
};

} // namespace velmor
