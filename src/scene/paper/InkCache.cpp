#include "scene/paper/InkCache.h"

#include <algorithm>
#include <new>

namespace velmor {

std::shared_ptr<const CInk> CInkCache::Get(const Path& file, const CFileIdentity& identity, bool withPaint) {
    const auto entry = std::ranges::find_if(m_entries, [&](const CEntry& kept) {
        return kept.identity == identity && kept.withPaint == withPaint && kept.file.native() == file.native();
    });
    if (entry != m_entries.end()) {
        m_entries.splice(m_entries.begin(), m_entries, entry);
        return entry->ink;
    }
    try {
        CCelImg image;
        if (!image.Load(file))
            return nullptr;
        auto ink = std::make_shared<const CInk>(InkOf(image, withPaint));
        Keep({file, identity, withPaint, ink});
        return ink;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void CInkCache::Keep(CEntry entry) {
    // What the file was before is of no use any more.
    for (auto kept = m_entries.begin(); kept != m_entries.end();) {
        const bool isStale = kept->file.native() == entry.file.native() && kept->identity != entry.identity;
        m_byteCount -= isStale ? kept->ink->ByteCount() : 0;
        kept = isStale ? m_entries.erase(kept) : std::next(kept);
    }
    m_byteCount += entry.ink->ByteCount();
    m_entries.push_front(std::move(entry));
    while (m_byteCount > m_mostBytes && m_entries.size() > 1) {
        m_byteCount -= m_entries.back().ink->ByteCount();
        m_entries.pop_back();
    }
}

} // namespace velmor
