#pragma once

#include "scene/SceneContext.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// Sound assets and the sounds placed on the xsheet. Every operation shows what is wrong.
class CSoundOperations {
public:
    explicit CSoundOperations(CSceneContext context) : m_context(context) {}
    /// Asked by the import command, which refuses a sound that nothing here can play. Without it all are taken.
    void SetCanPlay(std::function<bool()> canPlay) { m_canPlay = std::move(canPlay); }

    /// On failure `samples` is empty.
    [[nodiscard]] bool LoadSound(const std::string& name, std::vector<std::uint8_t>& samples) const;
    /// Name of the sound that starts at `frame`; nothing when none does.
    std::optional<std::string> GetSoundName(int frame) const;
    /// Places the selected sound asset.
    void DropSound(int frame);
    /// Removes the sounds that start in the selected frames.
    void RemoveSelectedSounds();
    /// Rebuilds the track of the whole xsheet.
    void PrepareSoundBuffer();
    /// For what plays or writes the track: rebuilds it if a placed sound was missing, whose file may be back. Shows
    /// which one resists, with its file; false then.
    [[nodiscard]] bool PrepareMissingTrack();
    /// A second of silence a frame, for an xsheet that has just been set up.
    void ResetSoundBuffer();
    /// Nothing without a scene or while a placed sound cannot be loaded. Valid until the next change.
    std::optional<std::span<const std::uint8_t>> GetSoundBuffer() const;
    int GetFPS() const;
    void AskAndImportSound();
    /// The import without its file and name dialogs; an existing sound of that name is replaced. False when it
    /// failed.
    [[nodiscard]] bool ImportSound(const Path& file, const std::string& name);

    /// The rule of the name dialog of a new sound: naming rule, and the question before one is overwritten.
    [[nodiscard]] bool AcceptSoundName(const std::string& name) const;
    /// Nothing when the dialog was cancelled.
    std::optional<std::string> AskSoundName() const;
    /// Writes a sound of any rate (samples per second) as an asset of the scene, replacing one of that name. False
    /// when it could not be written.
    [[nodiscard]] bool StoreSound(const std::string& name, int rate, std::span<const std::uint8_t> samples);

private:
    bool CanDropSound(int frame) const;

    CSceneContext m_context;
    std::function<bool()> m_canPlay;
};

} // namespace velmor
