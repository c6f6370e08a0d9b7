#include "render/ImageCache.h"

#include "image/render/SourceReader.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

namespace velmor {

CStatus CImageCache::Get(const Path& path, const CPlacement& placement,
                         std::shared_ptr<const CRenderSource>& source) {
    // Taken before reading: a file that changes meanwhile is then found to be another one next time.
    const std::optional<CFileIdentity> identity = IdentifyFile(path);
    source = identity ? Find(path, *identity, placement) : nullptr;
    if (source)
        return {};
    CEntry entry;
    CStatus loaded = ReadRenderSource(path, placement, entry.preparation, source);
    if (loaded && identity) {
        entry.identity = *identity;
        entry.source = source;
        try {
            entry.path = path;
            Keep(std::move(entry));
        } catch (const std::exception&) {
            // Without memory for the entry the image is not kept; it is drawn all the same.
        }
    }
    return loaded;
}

std::shared_ptr<const CRenderSource> CImageCache::Find(const Path& path, const CFileIdentity& identity,
                                                       const CPlacement& placement) {
    const std::lock_guard lock(m_mutex);
    for (auto entry = m_entries.begin(); entry != m_entries.end();) {
        const bool isOfPath = entry->path.native() == path.native();
        if (isOfPath && entry->identity != identity) {
            m_byteCount -= entry->source->ByteCount();
            entry = m_entries.erase(entry);
            continue;
        }
        if (isOfPath && entry->preparation == PreparationFor(placement, entry->source->Kind())) {
            m_entries.splice(m_entries.begin(), m_entries, entry);
            return entry->source;
        }
        ++entry;
    }
    return nullptr;
}

void CImageCache::Keep(CEntry entry) {
    const std::size_t size = entry.source->ByteCount();
    if (size > m_mostBytes)
        return;
    const std::lock_guard lock(m_mutex);
    const bool isThere = std::ranges::any_of(m_entries, [&](const CEntry& other) {
        return other.path.native() == entry.path.native() && other.identity == entry.identity &&
               other.preparation == entry.preparation;
    });
    if (isThere)
        return;
    while (m_byteCount + size > m_mostBytes) {
        m_byteCount -= m_entries.back().source->ByteCount();
        m_entries.pop_back();
    }
    m_entries.push_front(std::move(entry));
    m_byteCount += size;
}

void CImageCache::Clear() {
    const std::lock_guard lock(m_mutex);
    m_entries.clear();
    m_byteCount = 0;
}

std::size_t CImageCache::ByteCount() const {
    const std::lock_guard lock(m_mutex);
    return m_byteCount;
}

} // namespace velmor
