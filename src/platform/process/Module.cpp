#include "platform/process/Module.h"

#include <dlfcn.h>

namespace velmor {

// The loader looks in the folders that the build has written into the program.
void* CallModule(const char* file, const char* entry) {
    void* module = ::dlopen(file, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (module == nullptr)
        return nullptr;
    const auto call = reinterpret_cast<void* (*)()>(::dlsym(module, entry));
    return call != nullptr ? call() : nullptr;
}

} // namespace velmor
