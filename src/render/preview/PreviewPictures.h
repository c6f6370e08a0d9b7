#pragma once

#include "render/preview/PreviewContent.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

namespace velmor {

using PreviewPicture = std::shared_ptr<const CFrameBuffer>;

/// Which pictures of a preview are kept, and which one is composed next, without threads. Frames of equal content
/// share one picture. Pictures that are kept or being composed are bounded in bytes: the one that is needed last
/// goes first, and none is composed that would take the place of another that is needed before it. One picture is
/// always allowed.
class CPreviewPictures {
public:
    struct COrder {
        PreviewContent content;
        bool isUrgent = false; ///< it is waited for, and nothing else is being composed
    };

    explicit CPreviewPictures(std::size_t mostBytes) : m_mostBytes(mostBytes) {}

    /// What is needed, the most urgent first. All else counts as needed last.
    void Want(std::vector<PreviewContent> contents);
    /// The next to be composed, which then counts as begun; nothing when there is nothing to do or no room for it.
    std::optional<COrder> Begin();
    /// One that was begun is there.
    void Take(const PreviewContent& content, PreviewPicture picture);

    bool Has(const PreviewContent& content) const { return m_kept.contains(content); }
    /// Null when it is not there.
    PreviewPicture Find(const PreviewContent& content);
    void Clear();
    /// Of what is kept and what is being composed.
    std::size_t ByteCount() const { return m_byteCount; }

private:
    struct CKept {
        PreviewPicture picture;
        std::uint64_t lastUse = 0;
    };
    using Kept = std::unordered_map<PreviewContent, CKept, CContentHash, CContentEqual>;

    std::size_t PlaceOf(const PreviewContent& content) const;
    bool MakeRoom(std::size_t bytes, std::size_t place);
    Kept::iterator NeededLast();

    std::size_t m_mostBytes;
    std::size_t m_byteCount = 0;
    std::uint64_t m_uses = 0;
    std::vector<PreviewContent> m_wanted;
    std::size_t m_next = 0; ///< all that is wanted before is kept or begun
    std::unordered_map<PreviewContent, std::size_t, CContentHash, CContentEqual> m_places; ///< in m_wanted
    Kept m_kept;
    std::unordered_set<PreviewContent, CContentHash, CContentEqual> m_begun;
};

} // namespace velmor
