#pragma once

#include "acquire/SourceManager.h"
#include "platform/scanner/SourceManagerLibrary.h"

namespace velmor {

/// The source manager that this machine has: its library where one is installed, otherwise the one built in.
class CInstalledSourceManager final : public ISourceManager {
public:
    /// Both outlive the object.
    CInstalledSourceManager(CSourceManagerLibrary& library, ISourceManager& builtIn)
        : m_library(library), m_builtIn(builtIn) {}

    twain::DsmEntry Load() override;
    void Unload() override;

private:
    CSourceManagerLibrary& m_library;
    ISourceManager& m_builtIn;
};

} // namespace velmor
