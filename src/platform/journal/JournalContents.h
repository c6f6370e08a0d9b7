#pragma once

#include "platform/journal/Journal.h"
#include "platform/journal/Sqlite.h"

#include <cstdint>

namespace velmor {

/// Reads all but the bodies, and returns the sum of the seals. Throws CJournalRefusal where one of them is wrong.
std::uint64_t ReadContents(const CSqlite& connection, CJournalContents& contents);

} // namespace velmor
