#include "platform/scanner/SourceManagerLibrary.h"

#include <cstdlib>
#include <dlfcn.h>

namespace velmor {

CSourceManagerLibrary::CSourceManagerLibrary() : CSourceManagerLibrary(Path("libtwaindsm.so")) {}

void* CSourceManagerLibrary::Load() {
    if (!m_handle)
        if (void* handle = ::dlopen(m_library.c_str(), RTLD_NOW | RTLD_LOCAL))
            m_handle.reset(handle, [](void* library) { ::dlclose(library); });
    void* entry = m_handle ? ::dlsym(m_handle.get(), "DSM_Entry") : nullptr;
    if (entry == nullptr)
        Unload();
    return entry;
}

// Here a handle is the address of memory of the C library, which nothing moves.
void* AllocateGlobal(std::size_t bytes) {
    return std::malloc(bytes);
}

void* LockGlobal(void* handle) {
    return handle;
}

void UnlockGlobal(void*) {}

void FreeGlobal(void* handle) {
    std::free(handle);
}

} // namespace velmor
