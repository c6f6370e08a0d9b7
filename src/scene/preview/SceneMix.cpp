#include "scene/preview/SceneMix.h"

#include "scene/SceneModel.h"
#include "scene/SceneSound.h"

#include <set>
#include <string>
#include <system_error>

namespace velmor {

CSceneMix::CSource CSceneMix::SourceOf(const CSceneModel& model) {
    const CScene& scene = model.Scene();
    CSource source{scene.sounds.All(), scene.xsheet.FrameCount(), scene.geometry.frameRate, {}, {}};
    std::set<std::string> names;
    for (const CSoundPlacement& sound : source.placements)
        names.insert(sound.name);
    const CScenePaths paths = model.Paths();
    for (const std::string& name : names)
        for (const Path& file : {paths.SoundFile(name), paths.OriginalFile(name)}) {
            source.files.push_back(file);
            source.states.push_back(IdentifyFile(file));
        }
    return source;
}

void CSceneMix::Want(const CSceneModel& model) {
    CSource source = SourceOf(model);
    if (m_source == source)
        return;
    Stop();
    m_source = std::move(source);
    if (!HasOriginals(model.Scene(), model.Paths()))
        return;
    m_done = false;
    try {
        m_thread = std::jthread([this, scene = model.Scene(), paths = model.Paths()](const std::stop_token& stop) {
            std::optional<CMixedSound> mixed;
            // What cannot be loaded is told with the track, which then is all that there is.
            if (MixSceneSound(scene, paths, mixed, stop) && mixed)
                m_mixed = std::make_shared<const CMixedSound>(*std::move(mixed));
            m_done = true;
        });
    } catch (const std::system_error&) {
        m_done = true;
    }
}

void CSceneMix::Stop() {
    m_thread = {}; // asks it to stop, and waits
    m_mixed.reset();
    m_done = true;
}

} // namespace velmor
