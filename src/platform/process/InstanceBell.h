#pragma once

#include "platform/files/Files.h"

#include <string>
#include <vector>

namespace velmor {

/// How another start of the program asks the one that runs to show itself: a socket beside the instance guard's
/// lock.
class CInstanceBell {
public:
    /// Listens in `folder`, in place of whoever did before: the caller holds the guard. Where no socket can be had,
    /// the bell stays silent.
    explicit CInstanceBell(const Path& folder);
    CInstanceBell(const CInstanceBell&) = delete;
    CInstanceBell& operator=(const CInstanceBell&) = delete;
    ~CInstanceBell();

    /// Readable once somebody has rung; -1 for a silent bell.
    int Descriptor() const { return m_descriptor; }
    /// What was said with each ring since the last call; nothing when nobody has rung.
    std::vector<std::string> TakeRings();

    /// Rings the bell in `folder` and says something, without waiting for anything; false when nobody listens, or
    /// not to so long a text.
    static bool Ring(const Path& folder, const std::string& message = {});

private:
    int m_descriptor = -1;
    Path m_file; ///< the socket's
};

} // namespace velmor
