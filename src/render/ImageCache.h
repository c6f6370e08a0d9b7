#pragma once

#include "image/render/RenderSource.h"
#include "platform/Status.h"
#include "platform/files/Files.h"

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>

namespace velmor {

/// Images made ready to be drawn, kept between frames. An entry is used only while its file is the same (time of
/// change, size, inode), so the picture is always the one that loading from disk would give. Bounded in bytes, the
/// longest unused entries go first; a bound of 0 keeps nothing. Safe to use from several threads.
class CImageCache {
public:
    /// What a program gives it: an HD flipbook, with all that it needs besides, stays well under 200 MB.
    static constexpr std::size_t usualBytes = std::size_t{96} << 20;

    explicit CImageCache(std::size_t mostBytes) : m_mostBytes(mostBytes) {}

    /// The image of a file prepared for a placement. On failure the status is the loader's and `source` is empty.
    CStatus Get(const Path& path, const CPlacement& placement, std::shared_ptr<const CRenderSource>& source);

    void Clear();
    std::size_t ByteCount() const;

private:
    struct CEntry {
        Path path;
        CFileIdentity identity;
        CRenderPreparation preparation;
        std::shared_ptr<const CRenderSource> source;
    };

    /// The kept image, if it is of that state of the file; images of other states are dropped.
    std::shared_ptr<const CRenderSource> Find(const Path& path, const CFileIdentity& identity,
                                              const CPlacement& placement);
    void Keep(CEntry entry);

    std::size_t m_mostBytes;
    mutable std::mutex m_mutex;
    std::list<CEntry> m_entries; ///< most recently used first
    std::size_t m_byteCount = 0;
};

} // namespace velmor
