#pragma once

#include "xsheet/Scene.h"

#include <optional>
#include <tuple>
#include <vector>

namespace velmor {

/// Where something is noted: at a cell, or at a frame if there is no level.
struct CNotedPlace {
    int frame = 0;
    std::optional<int> level;

    bool operator==(const CNotedPlace&) const = default;
    bool operator<(const CNotedPlace& other) const {
        return std::tie(frame, level) < std::tie(other.frame, other.level);
    }
};

/// All places of the sheet at which something is noted, by frames; what belongs to a frame itself comes before its
/// cells.
std::vector<CNotedPlace> NotedPlaces(const CScene& scene);

/// The note at a place of the sheet.
const CSheetNote& NoteAt(const CScene& scene, const CNotedPlace& place);

} // namespace velmor
