#pragma once

#include "platform/files/Files.h"

#include <array>
#include <atomic>
#include <mutex>
#include <string>

namespace velmor {

/// The temporary files that this process is writing. An interrupt has to remove them, so their names stand in slots
/// that a signal handler can read without taking a lock: a slot is filled before it is published and emptied before
/// its bytes change.
class CUnfinishedFiles {
public:
    /// When all slots are taken, an interrupt will not know of the file.
    void Add(const std::string& name);
    void Remove(const std::string& name);
    /// Deletes the files. Safe in a signal handler.
    void Discard() noexcept;

private:
    struct CSlot {
        std::atomic<bool> used{false};
        std::array<char, 4096> name{};
    };
    std::array<CSlot, 256>
        m_slots; ///< two a thread of a large machine; memory that is never touched is never taken
    std::mutex m_mutex;
};

/// Those of the process: a signal handler is handed nothing and can ask nobody else.
CUnfinishedFiles& UnfinishedFiles();

} // namespace velmor
