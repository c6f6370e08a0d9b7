#include "views/xsheet/XSheetSounds.h"

#include "sound/SoundFile.h"
#include "views/xsheet/XSheetWaves.h"

#include <algorithm>
#include <numeric>

namespace velmor {

std::vector<int> HeardSounds(const std::vector<CSoundPlacement>& placements, int frameCount, int framesPerSecond,
                             const SoundLength& lengthOf) {
    std::vector<int> heard(static_cast<std::size_t>(frameCount), -1);
    std::vector<int> order(placements.size());
    std::iota(order.begin(), order.end(), 0);
    const auto startOf = [&](int index) { return placements[static_cast<std::size_t>(index)].frame; };
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return startOf(a) < startOf(b); });

    const auto perFrame = static_cast<std::uint64_t>(std::max(1, SamplesPerFrame(std::max(1, framesPerSecond))));
    for (const int index : order) {
        const CSoundPlacement& sound = placements[static_cast<std::size_t>(index)];
        if (sound.frame < 0 || sound.frame >= frameCount)
            continue;
        const std::uint64_t frames = (HeardLength(lengthOf(sound.name), sound) + perFrame - 1) / perFrame;
        const auto left = static_cast<std::uint64_t>(frameCount - sound.frame);
        std::fill_n(heard.begin() + sound.frame, std::min(frames, left), index);
    }
    return heard;
}

void CXSheetSounds::Update(const CSceneModel& model, bool filesToo) {
    const int frameCount = model.sceneOpen ? model.Scene().xsheet.FrameCount() : 0;
    const std::string scene = model.databaseFolder + model.sceneName;
    if (!filesToo && m_placements == model.Scene().sounds.All() && m_frameCount == frameCount &&
        m_frameRate == model.Scene().geometry.frameRate && m_scene == scene)
        return;
    if (m_scene != scene)
        m_lengths.clear();
    m_scene = scene;
    m_frameCount = frameCount;
    m_frameRate = model.Scene().geometry.frameRate;
    m_placements = model.Scene().sounds.All();
    m_heard = HeardSounds(m_placements, frameCount, m_frameRate,
                          [&](const std::string& name) { return LengthOf(model, name); });
}

std::uint64_t CXSheetSounds::LengthOf(const CSceneModel& model, const std::string& name) {
    const Path path = model.Paths().SoundFile(name);
    const std::optional<CFileIdentity> file = IdentifyFile(path);
    const auto known = m_lengths.find(name);
    if (known != m_lengths.end() && known->second.file == file)
        return known->second.samples;
    std::vector<std::uint8_t> samples;
    if (file)
        static_cast<void>(LoadSoundFile(path, name, samples));
    m_lengths[name] = {path, file, samples.size()};
    return samples.size();
}

std::vector<CPeak> CXSheetSounds::WaveAt(int frame, int lines) const {
    const int heard = HeardAt(frame);
    if (m_waves == nullptr || heard < 0)
        return {};
    const CSoundPlacement& sound = m_placements[static_cast<std::size_t>(heard)];
    const auto known = m_lengths.find(sound.name);
    if (known == m_lengths.end() || !known->second.file)
        return {};
    const std::shared_ptr<const CSoundPeaks> peaks = m_waves->Find(known->second.path, *known->second.file);
    if (!peaks)
        return {};
    const auto perFrame = static_cast<std::uint64_t>(SamplesPerFrame(m_frameRate));
    const auto trimIn = static_cast<std::uint64_t>(sound.trimIn);
    const std::uint64_t end = trimIn + HeardLength(known->second.samples, sound);
    const std::uint64_t first = static_cast<std::uint64_t>(frame - sound.frame) * perFrame + trimIn;
    const double gain = GainOf(sound);
    std::vector<CPeak> wave;
    for (std::uint64_t line = 0, count = static_cast<std::uint64_t>(lines); line < count; ++line)
        wave.push_back(Louder(peaks->Between(std::min(end, first + perFrame * line / count),
                                             std::min(end, first + perFrame * (line + 1) / count)),
                              gain));
    return wave;
}

int CXSheetSounds::FramesOf(const CSoundPlacement& placement) const {
    const auto perFrame = static_cast<std::uint64_t>(std::max(1, SamplesPerFrame(m_frameRate)));
    const auto known = m_lengths.find(placement.name);
    const std::uint64_t samples = known == m_lengths.end() ? 0 : HeardLength(known->second.samples, placement);
    const std::uint64_t frames = std::max<std::uint64_t>(1, (samples + perFrame - 1) / perFrame);
    return static_cast<int>(
        std::min<std::uint64_t>(frames, static_cast<std::uint64_t>(std::max(1, m_frameCount - placement.frame))));
}

} // namespace velmor
