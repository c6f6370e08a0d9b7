#pragma once

#include "image/Geometry.h"
#include "sound/SoundPlacement.h"
#include "xsheet/CameraTrack.h"
#include "xsheet/Dialogue.h"
#include "xsheet/XSheet.h"
#include "xsheet/exchange/ExchangeSheet.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

/// How many frames a sound lasts, at least 1.
using SoundLength = std::function<int(const std::string& name)>;

/// What an xsheet says in the terms of other programs. A level is a track; a drawing of the level's folder is its
/// number, any other is "Folder/name". Placed sounds are lines of dialogue.
CExchangeSheet ExportSheet(const std::string& scene, const CXSheet& xsheet,
                           const std::vector<CSoundPlacement>& sounds, const SoundLength& length);

/// Adds what is spoken in the sheet's frames. Texts that are longer than those of a sheet can be are cut off.
void AddDialogue(const CDialogue& dialogue, CExchangeSheet& sheet);

/// What of a sheet for frames of a size such a file does not hold, or other programs may not understand, a line
/// each.
std::vector<std::string> LossesOfExport(const CXSheet& xsheet, const CCameraTrack& camera, CSize frame);

/// The folder that most of a level's exposures come from, pictures apart; nothing for a level without drawings.
std::optional<std::string> FolderOfLevel(const CXSheet& xsheet, int level);

/// A cell as it is called in a level whose folder is `folder`.
std::string ExchangeName(const CXSheetCell& cell, const std::string& folder);

} // namespace velmor
