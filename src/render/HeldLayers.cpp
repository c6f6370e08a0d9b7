#include "render/HeldLayers.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace velmor {

namespace {

bool HaveSameGround(const CFrameRequest& a, const CFrameRequest& b) {
    return a.bufferWidth == b.bufferWidth && a.height == b.height && a.backgroundWidth == b.backgroundWidth &&
           a.background == b.background;
}

} // namespace

std::size_t CHeldLayers::SameAsBefore(const CFrameRequest& request, const FileIdentities& files) const {
    if (!HaveSameGround(request, m_before))
        return 0;
    const std::size_t count = std::min(request.layers.size(), m_before.layers.size());
    std::size_t same = 0;
    while (same < count && files[same] && files[same] == m_filesBefore[same] &&
           request.layers[same] == m_before.layers[same])
        ++same;
    return same;
}

std::size_t CHeldLayers::Begin(const CFrameRequest& request) {
    FileIdentities files;
    files.reserve(request.layers.size());
    for (const CFrameLayer& layer : request.layers)
        files.push_back(IdentifyFile(layer.path));
    const std::size_t same = SameAsBefore(request, files);
    if (same < m_keptLayers)
        m_keptLayers = 0;
    // The topmost layer changes next, if any: keeping it as well would only mean to begin anew.
    const std::size_t below = request.layers.empty() ? 0 : request.layers.size() - 1;
    m_worthKeeping = std::max(std::min({same, m_sameBefore, below}), m_keptLayers);
    m_sameBefore = same;
    m_before = request;
    m_filesBefore = std::move(files);
    return m_keptLayers;
}

void CHeldLayers::Keep(const CFrameBuffer& frame, std::size_t layers) {
    m_keptLayers = 0;
    try {
        m_kept = frame;
        m_keptLayers = layers;
    } catch (const std::exception&) {
        // Without memory for it everything is composed each time.
        m_kept = CFrameBuffer{};
    }
}

} // namespace velmor
