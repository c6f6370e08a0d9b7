#pragma once

#include "platform/files/Files.h"
#include "platform/journal/Journal.h"
#include "platform/journal/Sqlite.h"

#include <cstdint>

namespace velmor {

/// Opens a journal that is there, for this process alone, makes sure that it is one of this version, and reads all
/// but the bodies, with the sum of the seals. Throws CJournalRefusal or CSqliteFault; the file, and what stands
/// beside it, is then as it was.
CSqlite ConnectToJournal(const Path& file, CJournalContents& contents, std::uint64_t& seals);

} // namespace velmor
