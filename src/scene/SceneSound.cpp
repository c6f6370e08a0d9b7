#include "scene/SceneSound.h"

#include "scene/SceneModel.h"
#include "sound/SoundFile.h"

#include <algorithm>

namespace velmor {

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

} // namespace velmor
