#pragma once

#include "render/FrameLayers.h"
#include "render/ImageCache.h"

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
    unsigned number = 0; ///< as it was ordered
    CFrameBuffer frame;
    std::string error; ///< empty when all went well
};

/// Composes camera pictures on a thread of the lowest priority. An order replaces one that is not begun yet; by its
/// number the caller tells whether the picture that comes is the one that it waits for.
class CFrameWorker {
public:
    explicit CFrameWorker(CImageCache& cache) : m_cache(cache) {}
    CFrameWorker(const CFrameWorker&) = delete;
    CFrameWorker& operator=(const CFrameWorker&) = delete;
    ~CFrameWorker();

    /// Called on the worker's thread each time a picture is there. To be set before the first Start().
    void SetFinishedCallback(std::function<void()> finished) { m_finished = std::move(finished); }

    /// Gives up the picture there is and starts the next. False when no thread could be started.
    [[nodiscard]] bool Start(CFrameRequest request, unsigned number);
    /// The last one that has come since; null while there is none.
    std::shared_ptr<const CCameraPicture> Picture() const;

private:
    void Work();

    struct COrder {
        CFrameRequest request;
        unsigned number = 0;
    };

    CImageCache& m_cache;
    std::function<void()> m_finished;
    mutable std::mutex m_mutex;
    std::condition_variable m_ordered;
    std::optional<COrder> m_order;
    bool m_ending = false;
    std::shared_ptr<const CCameraPicture> m_picture;
    std::thread m_thread;
};

} // namespace velmor
