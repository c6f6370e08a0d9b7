#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"
#include "sound/SoundPlacement.h"
#include "xsheet/Dialogue.h"
#include "xsheet/XSheet.h"
#include "xsheet/exchange/ExchangeSheet.h"

#include <algorithm>
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

/// What becomes of a track.
struct CImportedTrack {
    std::string level; ///< that it goes into
    bool isNew = false;
    int changedCells = 0;
    std::set<std::string> drawings;     ///< that it shows and the scene has
    std::map<std::string, int> missing; ///< those that the scene lacks, with the cells that stay empty for them
    bool usesGivenFolder = false;       ///< nothing but CSceneAssets::folder tells where its drawings are
};

/// A sheet from outside brought into an xsheet, and what that changes.
struct CSheetImport {
    CXSheet xsheet;
    std::vector<CSoundPlacement> sounds;
    CDialogue dialogue;
    std::vector<CImportedTrack> tracks;
    int newLevels = 0;                ///< in front of those that were there
    std::vector<std::string> changes; ///< a line each; none when everything is as it was
    std::vector<std::string> losses;  ///< of the file, that have no place here
    // Those of them that belong to no track.
    std::vector<std::string> sheetChanges;
    std::vector<std::string> sheetLosses;

    bool UsesGivenFolder() const { return std::ranges::any_of(tracks, &CImportedTrack::usesGivenFolder); }
};

/// Brings the tracks into the levels of the same names, the first of a name into the first, and into new levels in
/// front where there is none; levels without a track stay. A cell whose drawing stays keeps its placement and
/// effects, one that shows another drawing takes those of the nearest cell of the level that shows it, or is
/// centred. A number names a drawing of the level's folder: the one that most of its exposures come from, else the
/// one called like the track, else `assets.folder`. Lines of dialogue that are called like a sound place it; the
/// others are what is spoken. Where a file has no lines of one kind, what there was of it stays. Fails when there
/// would be too many levels or frames; `import` is then unchanged.
CStatus ImportSheet(const CExchangeSheet& sheet, const CXSheet& xsheet, const std::vector<CSoundPlacement>& sounds,
                    const CDialogue& dialogue, const CSceneAssets& assets, CSheetImport& import);

} // namespace velmor
