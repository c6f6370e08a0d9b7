#pragma once

#include "scene/ScenePaths.h"
#include "xsheet/XSheet.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// Where the user was when a step was finished, so that recovered work comes back as it was left.
struct CHistorySession {
    std::string folder; ///< the current cel folder
    SourceMode sourceMode = SourceMode::Cels;
    std::string image; ///< the file under edit, from the scene's folder on; empty for none
    int cursorLevel = 0;
    int cursorFrame = 0;
    CXSheetSelection selection;

    bool operator==(const CHistorySession&) const = default;
};

std::vector<std::uint8_t> WriteSession(const CHistorySession& session);
/// The starting values for bytes that are not those of a session, or lead out of the scene's folder.
CHistorySession ReadSession(std::span<const std::uint8_t> bytes);

} // namespace velmor
