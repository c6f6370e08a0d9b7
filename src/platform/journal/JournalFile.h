#pragma once

#include "platform/files/Files.h"

namespace velmor {

/// Makes a journal in which nothing stands, with the folders above it, where there is no file or an empty one. The
/// file is there whole or not at all, and only the user can read it. Throws CJournalRefusal or CSqliteFault.
void MakeJournalFile(const Path& file);

} // namespace velmor
