#pragma once

#include "platform/files/Files.h"

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
    /// Whether somebody has rung since the last call.
    bool WasRung();

    /// Rings the bell in `folder`, without waiting for anything; false when nobody listens.
    static bool Ring(const Path& folder);

private:
    int m_descriptor = -1;
    Path m_file; ///< the socket's
};

} // namespace velmor
