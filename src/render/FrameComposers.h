#pragma once

#include "render/FrameComposer.h"

#include <mutex>
#include <vector>

namespace velmor {

/// Composers for frames in a row that several threads make: each borrows one for a frame, so that one of them sees
/// frames that are near to each other.
class CFrameComposers {
public:
    /// `cache` outlives the object.
    explicit CFrameComposers(CImageCache& cache) : m_cache(cache) {}

    /// As ComposeFrame(), by the calling thread alone. May throw std::bad_alloc.
    CStatus Compose(const CFrameRequest& request, CFrameBuffer& frame);

private:
    CFrameComposer Borrow();

    CImageCache& m_cache;
    std::mutex m_mutex;
    std::vector<CFrameComposer> m_idle; ///< the one used last at the end
};

} // namespace velmor
