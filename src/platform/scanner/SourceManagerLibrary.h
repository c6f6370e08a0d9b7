#pragma once

#include "platform/files/Files.h"

#include <cstddef>
#include <memory>

namespace velmor {

/// The scanner library of this machine, loaded at run time, if one is installed.
class CSourceManagerLibrary {
public:
    /// The system's own library.
    CSourceManagerLibrary();
    explicit CSourceManagerLibrary(Path library) : m_library(std::move(library)) {}

    /// The address of its entry point "DSM_Entry". Null, with nothing loaded, when library or entry is missing.
    void* Load();
    void Unload() { m_handle.reset(); }

private:
    Path m_library;
    std::shared_ptr<void> m_handle;
};

// The memory in which a source hands images over: a handle is locked to read it and freed by who received it. A
// null handle has no memory.

/// Null when there is not enough.
void* AllocateGlobal(std::size_t bytes);
void* LockGlobal(void* handle);
void UnlockGlobal(void* handle);
void FreeGlobal(void* handle);

} // namespace velmor
