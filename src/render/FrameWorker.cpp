#include "render/FrameWorker.h"

#include "platform/process/Threads.h"
#include "render/FrameComposer.h"

#include <system_error>

namespace velmor {

CFrameWorker::~CFrameWorker() {
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_ordered.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

bool CFrameWorker::Start(CFrameRequest request, unsigned number) {
    const std::lock_guard lock(m_mutex);
    m_picture.reset();
    m_order = COrder{std::move(request), number};
    try {
        if (!m_thread.joinable())
            m_thread = std::thread([this] { Work(); });
    } catch (const std::system_error&) {
        return false;
    }
    m_ordered.notify_all();
    return true;
}

std::shared_ptr<const CCameraPicture> CFrameWorker::Picture() const {
    const std::lock_guard lock(m_mutex);
    return m_picture;
}

void CFrameWorker::Work() {
    LowerThreadPriority();
    CFrameComposer composer(m_cache);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_ordered.wait(lock, [this] { return m_ending || m_order; });
        if (m_ending)
            return;
        const COrder order = *std::exchange(m_order, std::nullopt);
        lock.unlock();
        const auto picture = std::make_shared<CCameraPicture>();
        const CStatus composed = composer.Compose(order.request, picture->frame, true);
        picture->number = order.number;
        picture->error = composed.Message();
        lock.lock();
        m_picture = picture;
        if (m_finished) {
            lock.unlock();
            m_finished();
            lock.lock();
        }
    }
}

} // namespace velmor
