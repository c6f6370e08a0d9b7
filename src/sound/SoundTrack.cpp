#include "sound/SoundTrack.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>
#include <span>

namespace velmor {

namespace {

// Copies as much of a sound as stands before the track's last byte.
void CopySound(std::span<const std::uint8_t> samples, std::int64_t offset, std::vector<std::uint8_t>& track) {
    const auto room = static_cast<std::int64_t>(track.size()) - offset - 1;
    const auto length = std::min(static_cast<std::int64_t>(samples.size()), room);
    if (offset >= 0 && length > 0)
        std::copy_n(samples.begin(), length, track.begin() + offset);
}

// A sound whose loudest samples are cut off is no louder, but distorted.
void MakeLouder(std::span<std::uint8_t> samples, double gain) {
    int peak = 1;
    for (const std::uint8_t sample : samples)
        peak = std::max(peak, std::abs(sample - silentSample));
    gain = std::min(gain, std::max(1.0, 127.0 / peak));
    for (std::uint8_t& sample : samples)
        sample = static_cast<std::uint8_t>(
            std::clamp(std::lround((sample - silentSample) * gain) + silentSample, 0L, 255L));
}

CStatus FillTrack(const std::vector<CSoundPlacement>& sorted, int samplesInFrame, const SoundLoader& load,
                  std::vector<std::uint8_t>& track) {
    std::vector<std::uint8_t> samples;
    for (const CSoundPlacement& placement : sorted) {
        if (CStatus status = load(placement.name, samples); !status)
            return status;
        const std::span heard = HeardOf(std::span(samples), static_cast<std::size_t>(placement.trimIn),
                                        static_cast<std::size_t>(placement.trimOut));
        if (placement.level != 0)
            MakeLouder(heard, GainOf(placement));
        CopySound(heard, std::int64_t{placement.frame} * samplesInFrame, track);
    }
    return {};
}

} // namespace

const CSoundPlacement* CSoundPlacements::At(int frame) const {
    const auto found = std::ranges::find(All(), frame, &CSoundPlacement::frame);
    return found == All().end() ? nullptr : &*found;
}

const std::string* CSoundPlacements::NameAt(int frame) const {
    const CSoundPlacement* placement = At(frame);
    return placement != nullptr ? &placement->name : nullptr;
}

bool CSoundPlacements::Place(CSoundPlacement placement) {
    if (IsFull() || At(placement.frame) != nullptr)
        return false;
    m_placements.Change().push_back(std::move(placement));
    return true;
}

bool CSoundPlacements::Replace(int from, CSoundPlacement placement) {
    const CSoundPlacement* old = At(from);
    if (old == nullptr || (placement.frame != from && At(placement.frame) != nullptr))
        return false;
    const auto at = static_cast<std::size_t>(old - All().data());
    if (*old != placement)
        m_placements.Change()[at] = std::move(placement);
    return true;
}

bool CSoundPlacements::Move(int from, int to) {
    const CSoundPlacement* old = At(from);
    if (old == nullptr)
        return false;
    CSoundPlacement moved = *old;
    moved.frame = to;
    return Replace(from, std::move(moved));
}

bool CSoundPlacements::RemoveAt(int frame) {
    if (NameAt(frame) == nullptr)
        return false;
    std::erase_if(m_placements.Change(),
                  [&](const CSoundPlacement& placement) { return placement.frame == frame; });
    return true;
}

int CSoundPlacements::CountNamed(const std::string& name) const {
    return static_cast<int>(std::ranges::count(All(), name, &CSoundPlacement::name));
}

int CSoundPlacements::RemoveNamed(const std::string& name) {
    const int count = CountNamed(name);
    if (count > 0)
        std::erase_if(m_placements.Change(),
                      [&](const CSoundPlacement& placement) { return placement.name == name; });
    return count;
}

int CSoundPlacements::Rename(const std::string& oldName, const std::string& newName) {
    const int count = CountNamed(oldName);
    if (count > 0)
        for (CSoundPlacement& placement : m_placements.Change())
            if (placement.name == oldName)
                placement.name = newName;
    return count;
}

int SamplesPerFrame(int framesPerSecond) {
    return samplesPerSecond / std::max(framesPerSecond, 1);
}

CStatus PrepareTrack(const std::vector<CSoundPlacement>& placements, int frameCount, int framesPerSecond,
                     const SoundLoader& load, std::optional<std::vector<std::uint8_t>>& track) {
    track.reset();
    try {
        const int samplesInFrame = SamplesPerFrame(framesPerSecond);
        const auto size =
            static_cast<std::size_t>(std::max(frameCount, 0)) * static_cast<std::size_t>(samplesInFrame);
        std::vector<std::uint8_t> bytes(size, silentSample);
        std::vector<CSoundPlacement> sorted = placements;
        std::ranges::stable_sort(sorted, {}, &CSoundPlacement::frame);
        if (CStatus status = FillTrack(sorted, samplesInFrame, load, bytes); !status)
            return status;
        track = std::move(bytes);
        return {};
    } catch (const std::bad_alloc&) {
        return CStatus::Failure("There is not enough memory for the sound of the xsheet.");
    }
}

} // namespace velmor
