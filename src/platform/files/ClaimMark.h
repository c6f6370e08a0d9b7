#pragma once

#include "platform/files/Files.h"

namespace velmor {

// How claimed files and folders are named, and how they are locked.

inline constexpr const char* claimedFileEnding = ".tmp";

/// Stands for the maker in the name of a file that could not be locked. Nobody can tell whether it is abandoned.
inline constexpr const char* unknownMaker = "00000000";

/// This machine, as long as it runs: all its processes, in containers as well, see the same locks.
std::string ThisMaker();

/// A hidden name without its ending. Nothing when the system has no random numbers.
std::optional<std::string> NewClaim(const std::string& maker);

/// The folder of a claim, beside its file.
Path FolderOfClaim(const Path& file);

/// The names without ending of the claims whose files or folders are in `folder`, each once. Those of an unknown
/// maker are left out.
std::vector<std::string> ClaimsIn(const Path& folder);

/// Whether a claim's name says that it was made on this machine as it runs now.
bool IsOfThisMaker(const std::string& claim);

enum class ClaimLock {
    Taken,
    Held,   ///< by another
    Unknown ///< the file system has no locks
};

/// Tries to lock the file. The lock lasts until the descriptor is closed.
ClaimLock LockClaim(int descriptor);

} // namespace velmor
