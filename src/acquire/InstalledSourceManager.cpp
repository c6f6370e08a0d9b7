#include "acquire/InstalledSourceManager.h"

namespace velmor {

twain::DsmEntry CInstalledSourceManager::Load() {
    if (void* entry = m_library.Load())
        return reinterpret_cast<twain::DsmEntryFunction*>(entry);
    return m_builtIn.Load();
}

void CInstalledSourceManager::Unload() {
    m_library.Unload();
    m_builtIn.Unload();
}

} // namespace velmor
