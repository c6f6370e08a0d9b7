#pragma once

#include "scene/SceneContext.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace velmor {

class CFlipbookOperations;
class CSoundOperations;
class IAudioDevices;

/// Playing and recording sound, and playing movies.
class CMediaOperations {
public:
    CMediaOperations(CSceneContext context, CSoundOperations& sounds, CFlipbookOperations& flipbooks,
                     IAudioDevices& devices)
        : m_context(context), m_sounds(sounds), m_flipbooks(flipbooks), m_devices(devices) {}

    /// Called before anything is played or recorded: what plays already is to stop.
    void SetBeforePlaying(std::function<void()> before) { m_before = std::move(before); }

    /// The whole track of the xsheet, and the part under the selected frames. Until the end of the sound or a key.
    void PlayXSheetSound();
    void PlaySelectedSound();
    /// The first selected sound asset.
    void PlaySoundAssets();
    void PlaySoundAsset(const std::string& name);
    /// Asks for a recording, and for a name until it is stored or the user gives it up.
    void RecordSound();
    /// Makes a flipbook and plays it.
    void MakeFlipbook();
    void PlayLastFlipbook();
    void PlayMovie(const Path& file);

private:
    void Play(std::span<const std::uint8_t> samples);
    void TellBefore() const {
        if (m_before)
            m_before();
    }

    CSceneContext m_context;
    CSoundOperations& m_sounds;
    CFlipbookOperations& m_flipbooks;
    IAudioDevices& m_devices;
    std::function<void()> m_before;
};

} // namespace velmor
