#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"
#include "xsheet/Scene.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

// A scene's sheet is two files: the xsheet, whose format is fixed, and beside it what that has no place for, the
// notes, as long as there are any. Whoever changes an xsheet and knows nothing of the notes leaves those that still
// find their cells.

/// Most sounds that a file may hold.
inline constexpr int mostSoundsInFile = 2000;

/// The camera is written for the xsheet's frames.
std::vector<std::uint8_t> EncodeXSheet(const CScene& scene);
/// Refuses a wrong signature, an early end and counts, frame sizes (1 to 32767) or a frame rate (from 1) beyond the
/// limits with "Invalid or corrupted xsheet data file"; `scene` is then unchanged. Whatever else the file holds is
/// taken as it stands, and bytes after its end are ignored.
CStatus DecodeXSheet(std::span<const std::uint8_t> bytes, CScene& scene);

/// The files of a scene's sheet, byte by byte.
struct CSheetBytes {
    std::vector<std::uint8_t> xsheet;
    std::vector<std::uint8_t> notes; ///< what a file of them holds, even if there is nothing to be noted
    bool hasNotes = false;           ///< whether such a file stays
};
CSheetBytes EncodeSheet(const CScene& scene);

/// Both files, the xsheet's and its notes', in the place of those that are there: whenever the program ends,
/// reading gives all that was there before or all that is to be. On failure the old files are unchanged.
CStatus SaveXSheet(const Path& path, const CScene& scene);
/// On failure `scene` is unchanged. An xsheet whose notes cannot be read is read without them; `notes` then has the
/// reason.
CStatus LoadXSheet(const Path& path, CScene& scene, CStatus* notes = nullptr);

} // namespace velmor
