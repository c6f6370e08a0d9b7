#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"
#include "sound/SoundPlacement.h"
#include "xsheet/XSheet.h"
#include "xsheet/exchange/ExchangeSheet.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace velmor {

/// What a scene has that a sheet from outside may speak of.
struct CSceneAssets {
    Path sceneFolder;
    CSize frame;                                         ///< in which new exposures are centred
    std::map<std::string, std::set<std::string>> images; ///< names by folder, the pictures' included
    std::set<std::string> sounds;
    std::string folder; ///< of cels, for levels whose folder nothing else tells; may be empty
};

/// A sheet from outside brought into an xsheet, and what that changes.
struct CSheetImport {
    CXSheet xsheet;
    std::vector<CSoundPlacement> sounds;
    std::vector<std::string> changes; ///< a line each; none when everything is as it was
    std::vector<std::string> losses;  ///< of the file, that have no place here
};

/// Brings the tracks into the levels of the same names, the first of a name into the first, and into new levels in
/// front where there is none; levels without a track stay. A cell whose drawing stays keeps its placement and
/// effects, one that shows another drawing takes those of the nearest cell of the level that shows it, or is
/// centred. A number names a drawing of the level's folder: the one that most of its exposures come from, else the
/// one called like the track, else `assets.folder`. Lines of dialogue that are called like a sound place it. Fails
/// when there would be too many levels or frames; `import` is then unchanged.
CStatus ImportSheet(const CExchangeSheet& sheet, const CXSheet& xsheet, const std::vector<CSoundPlacement>& sounds,
                    const CSceneAssets& assets, CSheetImport& import);

} // namespace velmor
