#pragma once

#include "platform/files/Files.h"

#include <optional>

namespace velmor {

/// The single-instance guard: a locked file "personal_velmor". The system releases the lock when the process ends,
/// however it ends.
class CInstanceGuard {
public:
    /// Nothing when another process (or another guard of this one) holds the lock in `folder`. Where no lock can be
    /// had at all (a folder that cannot be written), the program is not kept from starting: the guard then guards
    /// nothing.
    static std::optional<CInstanceGuard> Acquire(const Path& folder);

    CInstanceGuard(CInstanceGuard&& other) noexcept;
    CInstanceGuard& operator=(CInstanceGuard&& other) noexcept;
    CInstanceGuard(const CInstanceGuard&) = delete;
    CInstanceGuard& operator=(const CInstanceGuard&) = delete;
    ~CInstanceGuard();

private:
    explicit CInstanceGuard(int descriptor) : m_descriptor(descriptor) {}

    int m_descriptor = -1;
};

} // namespace velmor
