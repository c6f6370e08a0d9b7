#include "platform/files/UnfinishedFiles.h"

#include <cstring>
#include <unistd.h>

namespace velmor {

void CUnfinishedFiles::Add(const std::string& name) {
    const std::lock_guard lock(m_mutex);
    for (CSlot& slot : m_slots) {
        if (slot.used.load() || name.size() >= slot.name.size())
            continue;
        std::memcpy(slot.name.data(), name.c_str(), name.size() + 1);
        slot.used.store(true);
        break;
    }
}

void CUnfinishedFiles::Remove(const std::string& name) {
    const std::lock_guard lock(m_mutex);
    for (CSlot& slot : m_slots)
        if (slot.used.load() && name == slot.name.data())
            slot.used.store(false);
}

void CUnfinishedFiles::Discard() noexcept {
    for (CSlot& slot : m_slots)
        if (slot.used.load())
            ::unlink(slot.name.data());
}

CUnfinishedFiles& UnfinishedFiles() {
    static CUnfinishedFiles files;
    return files;
}

void DiscardUnfinishedFiles() noexcept {
    UnfinishedFiles().Discard();
}

} // namespace velmor
