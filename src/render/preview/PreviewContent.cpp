#include "render/preview/PreviewContent.h"

#include <functional>
#include <utility>

namespace velmor {

namespace {

template<class Value>
void Mix(std::size_t& hash, const Value& value) {
    constexpr std::size_t scattered = 0x9e3779b97f4a7c15;
    hash ^= std::hash<Value>()(value) + scattered + (hash << 6U) + (hash >> 2U);
}

} // namespace

CPreviewContent::CPreviewContent(CFrameRequest request, std::vector<std::optional<CFileIdentity>> files)
    : m_request(std::move(request)), m_files(std::move(files)) {
    Mix(m_hash, m_request.bufferWidth);
    Mix(m_hash, m_request.height);
    Mix(m_hash, m_request.background);
    for (const CFrameLayer& layer : m_request.layers) {
        Mix(m_hash, layer.path.native());
        for (const double value : {layer.placement.centreX, layer.placement.centreY, layer.placement.angle,
                                   layer.placement.scaleX, layer.placement.scaleY, layer.placement.transparency})
            Mix(m_hash, value);
    }
    for (const std::optional<CFileIdentity>& file : m_files)
        Mix(m_hash, file ? file->modifiedNanoseconds : 0);
}

} // namespace velmor
