#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"
#include "xsheet/Scene.h"

#include <cstdint>
#include <span>
#include <vector>

namespace velmor {

/// Most sounds that a file may hold.
inline constexpr int mostSoundsInFile = 2000;

/// The camera is written for the xsheet's frames.
std::vector<std::uint8_t> EncodeXSheet(const CScene& scene);
/// Refuses a wrong signature, an early end and counts, frame sizes (1 to 32767) or a frame rate (from 1) beyond the
/// limits with "Invalid or corrupted xsheet data file"; `scene` is then unchanged. Whatever else the file holds is
/// taken as it stands, and bytes after its end are ignored.
CStatus DecodeXSheet(std::span<const std::uint8_t> bytes, CScene& scene);

/// The whole file at once, written atomically. On failure the old file, or `scene`, is unchanged.
CStatus SaveXSheet(const Path& path, const CScene& scene);
CStatus LoadXSheet(const Path& path, CScene& scene);

} // namespace velmor
