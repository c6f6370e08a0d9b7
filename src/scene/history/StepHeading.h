#pragma once

#include "scene/history/HistoryEntry.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

struct CStepChanges;

/// What is known of a step without its changes.
struct CStepHeading {
    std::int64_t time = 0; ///< milliseconds since 1970, UTC
    std::string name;      ///< "Stroke on Fox 7": what undo calls it
    std::string subjects;  ///< levels, cels and sounds, one a line
    HistoryEntryKind kind = HistoryEntryKind::Step;
    bool changesScene = false;
    std::string image;              ///< the file that was painted on, if one was
    std::vector<std::string> files; ///< of a deletion those that went; a folder's name ends with '/'
    bool changesFiles = false;
    bool canComeBack = false;
    int onlyFrame = -1; ///< the frame to which all belongs that changed, -1 for more than one
    std::optional<CXSheetSelection> cells;
    int levels = 0; ///< of the sheet afterwards
    int frames = 0;
    CHistoryPicture picture;
};

/// What a file of the scene is called: "Fox 7", a picture or sound by its name.
std::string TitleOfFile(const std::string& file);

/// Fills in what follows from the changes.
void Describe(CStepHeading& heading, const CStepChanges& changes, const CXSheet& sheet);

std::vector<std::uint8_t> WriteHeading(const CStepHeading& heading);
/// Nothing when the bytes are not those of a heading. Without `withPicture` the picture is passed over.
std::optional<CStepHeading> ReadHeading(std::span<const std::uint8_t> bytes, bool withPicture);

} // namespace velmor
