#pragma once

#include <string>

namespace velmor {

/// A sound that starts at a frame of the xsheet.
struct CSoundPlacement {
    int frame = 0; ///< 0-based
    std::string name;

    bool operator==(const CSoundPlacement&) const = default;
};

} // namespace velmor
