#pragma once

#include "image/paper/Ink.h"
#include "platform/files/Files.h"

#include <cstddef>
#include <list>
#include <memory>

namespace velmor {

/// The ink of drawings, kept so that going from one to the next reads no more than what has come. An entry is used
/// only while its file is the same. Bounded in bytes, the longest unused entries go first.
class CInkCache {
public:
    static constexpr std::size_t usualBytes = std::size_t{96} << 20;

    explicit CInkCache(std::size_t mostBytes = usualBytes) : m_mostBytes(mostBytes) {}

    /// The ink of a file in the state that `identity` tells of; null when it cannot be read.
    std::shared_ptr<const CInk> Get(const Path& file, const CFileIdentity& identity, bool withPaint);

private:
    struct CEntry {
        Path file;
        CFileIdentity identity;
        bool withPaint = false;
        std::shared_ptr<const CInk> ink;
    };

    void Keep(CEntry entry);

    std::size_t m_mostBytes;
    std::size_t m_byteCount = 0;
    std::list<CEntry> m_entries; ///< most recently used first
};

} // namespace velmor
