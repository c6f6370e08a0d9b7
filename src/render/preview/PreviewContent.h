#pragma once

#include "render/FrameLayers.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace velmor {

/// What a frame shows: how it is composed, and of which states of the images' files. Frames of equal content are
/// the same picture.
class CPreviewContent {
public:
    /// A file for each layer; nothing for one that is not there.
    CPreviewContent(CFrameRequest request, std::vector<std::optional<CFileIdentity>> files);

    const CFrameRequest& Request() const { return m_request; }
    std::size_t Hash() const { return m_hash; }
    /// Of the composed frame.
    std::size_t ByteCount() const {
        return static_cast<std::size_t>(m_request.bufferWidth) * static_cast<std::size_t>(m_request.height) * 3;
    }

    bool operator==(const CPreviewContent& other) const {
        return m_hash == other.m_hash && m_files == other.m_files && m_request == other.m_request;
    }

private:
    CFrameRequest m_request;
    std::vector<std::optional<CFileIdentity>> m_files;
    std::size_t m_hash = 0;
};

using PreviewContent = std::shared_ptr<const CPreviewContent>;

/// For tables that find pictures by what they show.
struct CContentHash {
    std::size_t operator()(const PreviewContent& content) const { return content->Hash(); }
};
struct CContentEqual {
    bool operator()(const PreviewContent& a, const PreviewContent& b) const { return a == b || *a == *b; }
};

} // namespace velmor
