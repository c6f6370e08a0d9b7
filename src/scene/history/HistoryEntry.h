#pragma once

#include "xsheet/XSheet.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

/// A small picture of what a step changed; empty for steps that a picture says nothing of.
struct CHistoryPicture {
    static constexpr int mostWidth = 64;
    static constexpr int mostHeight = 48;

    int width = 0; ///< pixels
    int height = 0;
    std::vector<std::uint8_t> rgb; ///< three bytes a pixel, top row first

    bool operator==(const CHistoryPicture&) const = default;
};

enum class HistoryEntryKind {
    Step,
    Deletion, ///< of assets: undo passes it by, what is deleted can be brought back
    Saved,    ///< all was saved here
    Break     ///< undo does not go past it: something else changed the files here, or a step could not be kept
};

/// What a list of the history shows of a step.
struct CHistoryEntry {
    std::int64_t id = 0;
    std::int64_t time = 0; ///< milliseconds since 1970, UTC
    std::string name;
    std::string subjects; ///< levels, cels and sounds, one a line: what is searched for
    HistoryEntryKind kind = HistoryEntryKind::Step;
    bool isDone = true;       ///< false when it was undone and can be done again
    bool canComeBack = false; ///< a deleted or overwritten asset lies in it
    CHistoryPicture picture;
    std::optional<CXSheetSelection> cells; ///< those that changed
    int levels = 0;                        ///< of the sheet then
    int frames = 0;
};

} // namespace velmor
