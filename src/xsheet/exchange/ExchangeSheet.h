#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace velmor {

/// The files in which sheets travel.
enum class ExchangeFormat { Xdts, Csv };

/// A track of a sheet on its way from or to another program.
struct CExchangeTrack {
    std::string name;
    std::vector<std::string> cells; ///< the drawing that shows at each frame, empty for none
    std::set<int> inbetweens = {};  ///< frames with an inbetween mark, where no drawing begins

    bool operator==(const CExchangeTrack&) const = default;
};

/// A line that is spoken.
struct CExchangeLine {
    int frame = 0;    ///< from 0
    int endFrame = 0; ///< the first one after it
    std::string speaker;
    std::string text;

    bool operator==(const CExchangeLine&) const = default;
};

/// What sheets of several programs have in common: which drawing shows when, and what is said.
struct CExchangeSheet {
    std::string name; ///< of the cut
    int frameCount = 0;
    std::vector<CExchangeTrack> tracks;  ///< the one in front first
    std::vector<CExchangeLine> lines;    ///< by frame; of a sheet of ours, where its sounds are
    bool hasDialogue = false;            ///< whether the file speaks of dialogue at all
    bool hasCamera = false;              ///< whether it holds camera work, which is not taken
    std::vector<CExchangeLine> spoken{}; ///< by frame; what is spoken where lines are what is heard

    bool operator==(const CExchangeSheet&) const = default;
};

/// Of a file to be read.
inline constexpr std::size_t mostExchangeBytes = std::size_t{16} << 20;
/// Of tracks, frames and the text of one cell or name.
inline constexpr int mostExchangeTracks = 50;
inline constexpr int mostExchangeFrames = 2000;
inline constexpr std::size_t mostExchangeText = 200;

} // namespace velmor
