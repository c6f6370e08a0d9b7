#pragma once

#include "scene/SceneModel.h"
#include "sound/SoundPeaks.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

class CXSheetWaves;

/// Number of samples of a sound by its name; 0 when it cannot be read.
using SoundLength = std::function<std::uint64_t(const std::string& name)>;

/// Which placement is heard at each frame of the sheet, as an index into the placements, -1 for none. A sound that
/// starts later covers an earlier one, which goes on behind it when it is longer.
std::vector<int> HeardSounds(const std::vector<CSoundPlacement>& placements, int frameCount, int framesPerSecond,
                             const SoundLength& lengthOf);

/// The sounds of the open scene as the xsheet shows them. Their lengths are read from their files, and only again
/// when a file has changed.
class CXSheetSounds {
public:
    /// Brings the rows up to date with the placements and, when `filesToo`, with the files.
    void Update(const CSceneModel& model, bool filesToo);
    /// Index of the placement that is heard at a frame, -1 for none.
    int HeardAt(int frame) const {
        return frame >= 0 && frame < static_cast<int>(m_heard.size()) ? m_heard[static_cast<std::size_t>(frame)]
                                                                      : -1;
    }

    /// Takes what is heard at a frame from `waves`, which outlives this; null shows nothing of it.
    void ShowWaves(CXSheetWaves* waves) { m_waves = waves; }
    bool ShowsWaves() const { return m_waves != nullptr; }
    /// The extremes of what is heard at a frame, one for each of `lines`; empty while none are shown, or there.
    std::vector<CPeak> WaveAt(int frame, int lines) const;
    /// Frames from its start on that a placement lasts, at least 1; at most to the end of the sheet.
    int FramesOf(const CSoundPlacement& placement) const;
    int SamplesOfFrame() const { return std::max(1, SamplesPerFrame(m_frameRate)); }
    const std::vector<CSoundPlacement>& Placements() const { return m_placements; }

private:
    struct CLength {
        Path path;
        std::optional<CFileIdentity> file;
        std::uint64_t samples = 0;
    };
    std::uint64_t LengthOf(const CSceneModel& model, const std::string& name);

    std::vector<CSoundPlacement> m_placements;
    int m_frameCount = 0;
    int m_frameRate = 0;
    std::string m_scene;
    std::map<std::string, CLength> m_lengths;
    std::vector<int> m_heard;
    CXSheetWaves* m_waves = nullptr;
};

} // namespace velmor
