#include "platform/files/DamagedFile.h"

#include <string>

namespace velmor {

Path FreeNameForDamaged(const Path& damaged) {
    Path name = damaged;
    name += ".damaged";
    const Path first = name;
    for (int number = 2; FileExists(name) || FolderExists(name); ++number) {
        name = first;
        name += std::to_string(number);
    }
    return name;
}

} // namespace velmor
