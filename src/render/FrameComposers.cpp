#include "render/FrameComposers.h"

#include <utility>

namespace velmor {

CFrameComposer CFrameComposers::Borrow() {
    const std::lock_guard lock(m_mutex);
    if (m_idle.empty())
        return CFrameComposer(m_cache);
    CFrameComposer composer = std::move(m_idle.back());
    m_idle.pop_back();
    return composer;
}

CStatus CFrameComposers::Compose(const CFrameRequest& request, CFrameBuffer& frame) {
    CFrameComposer composer = Borrow();
    CStatus composed = composer.Compose(request, frame, false);
    const std::lock_guard lock(m_mutex);
    m_idle.push_back(std::move(composer));
    return composed;
}

} // namespace velmor
