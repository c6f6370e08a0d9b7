#pragma once

#include "image/Color.h"
#include "platform/Status.h"
#include "platform/files/Files.h"
#include "sound/SoundPlacement.h"
#include "xsheet/CameraTrack.h"
#include "xsheet/XSheet.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// Most sounds that a file may hold.
inline constexpr int mostSoundsInFile = 2000;

/// What of a scene's settings stands in the xsheet file (the length is the xsheet's frame count).
struct CSceneGeometry {
    int width = 768; ///< pixels
    int height = 576;
    int frameRate = 25; ///< frames per second
    ColorRef background = 0;

    CSize Frame() const { return {width, height}; }
    bool operator==(const CSceneGeometry&) const = default;
};

/// Everything that an xsheet file holds.
struct CXSheetData {
    CSceneGeometry geometry;
    CXSheet xsheet;
    CCameraTrack camera;
    std::vector<CSoundPlacement> sounds; ///< in file order

    bool operator==(const CXSheetData&) const = default;
};

/// The camera is written for the xsheet's frames.
std::vector<std::uint8_t> EncodeXSheet(const CXSheetData& data);
/// Refuses a wrong signature, an early end and counts, frame sizes (1 to 32767) or a frame rate (from 1) beyond the
/// limits with "Invalid or corrupted xsheet data file"; `data` is then unchanged. Whatever else the file holds is
/// taken as it stands, and bytes after its end are ignored.
CStatus DecodeXSheet(std::span<const std::uint8_t> bytes, CXSheetData& data);

/// The whole file at once, written atomically. On failure the old file, or `data`, is unchanged.
CStatus SaveXSheet(const Path& path, const CXSheetData& data);
CStatus LoadXSheet(const Path& path, CXSheetData& data);

} // namespace velmor
