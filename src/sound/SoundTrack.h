#pragma once

#include "platform/Shared.h"
#include "platform/Status.h"
#include "sound/SoundPlacement.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmor {

/// The sounds placed on an xsheet, in the order of their placing (and of the file), no two at the same frame.
class CSoundPlacements {
public:
    static constexpr int mostPlacements = 1999;

    int Count() const { return static_cast<int>(All().size()); }
    bool IsFull() const { return Count() >= mostPlacements; }
    const std::vector<CSoundPlacement>& All() const { return *m_placements; }
    void Set(std::vector<CSoundPlacement> placements) { m_placements = Placements(std::move(placements)); }
    /// Name of the sound that starts at `frame`; null when none does. Valid until the next change.
    const std::string* NameAt(int frame) const;
    /// False when full or when a sound already starts at the frame.
    [[nodiscard]] bool Place(int frame, std::string name) { return Place(CSoundPlacement{frame, std::move(name)}); }
    [[nodiscard]] bool Place(CSoundPlacement placement);
    /// The sound that starts at `frame`; null when none does. Valid until the next change.
    const CSoundPlacement* At(int frame) const;
    /// Has the sound that starts at `from` be placed so instead. False when there is none, or another one starts
    /// there.
    bool Replace(int from, CSoundPlacement placement);
    /// Has the sound that starts at `from` start at `to`. False when there is none, or another one starts there.
    bool Move(int from, int to);
    /// False when no sound starts at the frame.
    bool RemoveAt(int frame);
    /// Removes every placement of a sound; returns how many there were.
    int RemoveNamed(const std::string& name);
    /// Gives every placement of one sound another name.
    int Rename(const std::string& oldName, const std::string& newName);
    void Clear() { *this = CSoundPlacements(); }

    bool operator==(const CSoundPlacements&) const = default;

private:
    int CountNamed(const std::string& name) const;

    using Placements = CShared<std::vector<CSoundPlacement>>;

    Placements m_placements;
};

/// Samples in one frame (integer division); `framesPerSecond` at least 1.
int SamplesPerFrame(int framesPerSecond);

/// Loads a sound by name; on failure the status carries the message.
using SoundLoader = std::function<CStatus(const std::string& name, std::vector<std::uint8_t>& samples)>;

/// The prepared track of a whole xsheet: frameCount x SamplesPerFrame() bytes of silence into which the placed
/// sounds are copied as they are heard, in the order of their start frames, a later one over an earlier one. The
/// last byte is never written. A level that would cut off a sound is lowered for it. On failure (the first sound
/// that cannot be loaded) `track` is empty.
CStatus PrepareTrack(const std::vector<CSoundPlacement>& placements, int frameCount, int framesPerSecond,
                     const SoundLoader& load, std::optional<std::vector<std::uint8_t>>& track);

} // namespace velmor
