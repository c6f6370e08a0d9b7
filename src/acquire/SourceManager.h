#pragma once

#include "acquire/Twain.h"

namespace velmor {

/// Where a source manager comes from. It stays loaded, once for the program, until it is unloaded.
class ISourceManager {
public:
    virtual ~ISourceManager() = default;
    /// The entry point; empty when there is none.
    virtual twain::DsmEntry Load() = 0;
    virtual void Unload() = 0;
};

} // namespace velmor
