#include "sound/SoundTrack.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <new>

namespace velmor {

namespace {

// Copies as much of a sound as stands before the track's last byte.
void CopySound(const std::vector<std::uint8_t>& samples, std::int64_t offset, std::vector<std::uint8_t>& track) {
    const auto room = static_cast<std::int64_t>(track.size()) - offset - 1;
    const auto length = std::min(static_cast<std::int64_t>(samples.size()), room);
    if (offset >= 0 && length > 0)
        std::copy_n(samples.begin(), length, track.begin() + offset);
}

CStatus FillTrack(const std::vector<CSoundPlacement>& sorted, int samplesInFrame, const SoundLoader& load,
                  std::vector<std::uint8_t>& track) {
    std::vector<std::uint8_t> samples;
    for (const CSoundPlacement& placement : sorted) {
        if (CStatus status = load(placement.name, samples); !status)
            return status;
        CopySound(samples, std::int64_t{placement.frame} * samplesInFrame, track);
    }
    return {};
}

} // namespace

const std::string* CSoundPlacements::NameAt(int frame) const {
    const auto found = std::ranges::find(All(), frame, &CSoundPlacement::frame);
    return found == All().end() ? nullptr : &found->name;
}

bool CSoundPlacements::Place(int frame, std::string name) {
    if (IsFull() || NameAt(frame))
        return false;
    m_placements.Change().push_back({frame, std::move(name)});
    return true;
}

bool CSoundPlacements::Move(int from, int to) {
    const auto found = std::ranges::find(All(), from, &CSoundPlacement::frame);
    if (found == All().end() || (to != from && NameAt(to) != nullptr))
        return false;
    const auto at = static_cast<std::size_t>(found - All().begin());
    if (to != from)
        m_placements.Change()[at].frame = to;
    return true;
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
