#include "scene/SceneSound.h"

#include "scene/SceneModel.h"
#include "sound/OriginalSound.h"
#include "sound/SoundFile.h"

#include <algorithm>

namespace velmor {

namespace {

// False when the file cannot be read to its end, or its sound.
bool DecodeOriginal(CSoundReader& reader, std::size_t most, std::vector<float>& stereo,
                    const std::stop_token& stop) {
    while (stereo.size() < most * mixChannels && !stop.stop_requested() &&
           reader.Read({mixRate, mixChannels}, stereo))
        continue;
    return reader.IsWhole() && !stereo.empty();
}

} // namespace

CStatus PrepareSoundTrack(CSceneModel& model, Path* resisting) {
    const CScene& scene = model.Scene();
    const auto load = [&](const std::string& name, std::vector<std::uint8_t>& samples) {
        const Path file = model.Paths().SoundFile(name);
        CStatus status = LoadSoundFile(file, name, samples);
        if (!status && resisting != nullptr)
            *resisting = file;
        return status;
    };
    return PrepareTrack(scene.sounds.All(), scene.xsheet.FrameCount(), std::max(1, scene.geometry.frameRate), load,
                        model.soundBuffer);
}

bool HasOriginals(const CScene& scene, const CScenePaths& paths) {
    return std::ranges::any_of(scene.sounds.All(), [&](const CSoundPlacement& sound) {
        return FileExists(paths.OriginalFile(sound.name));
    });
}

CStatus MixSceneSound(const CScene& scene, const CScenePaths& paths, std::optional<CMixedSound>& mixed,
                      const std::stop_token& stop) {
    mixed.reset();
    if (!HasOriginals(scene, paths))
        return {};
    bool hasOriginal = false;
    const auto load = [&](const std::string& name, std::size_t wanted, std::vector<float>& stereo) {
        if (stop.stop_requested())
            return CStatus::Failure("");
        std::vector<std::uint8_t> samples;
        CStatus status = LoadSoundFile(paths.SoundFile(name), name, samples);
        if (!status)
            return status;
        // An original is as long as its sound, whatever it says and however much of it is left out.
        const std::size_t most = std::min(wanted, samples.size() * mixRate / samplesPerSecond + mixRate);
        CSoundReader reader;
        if (OpenOriginal(paths.OriginalFile(name), samples, reader) && DecodeOriginal(reader, most, stereo, stop))
            hasOriginal = true;
        else
            stereo = StereoOf(samples, most);
        return CStatus();
    };
    CMixedSound made;
    const CStatus status =
        MixSounds(scene.sounds.All(), scene.xsheet.FrameCount(), std::max(1, scene.geometry.frameRate), load, made);
    if (status && hasOriginal)
        mixed = std::move(made);
    return status;
}

} // namespace velmor
