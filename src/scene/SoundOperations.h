#pragma once

#include "scene/SceneContext.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

struct COriginalSource;
struct CSoundForm;
struct CSoundPlacement;
struct CSoundShape;

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
    /// Has the sound that starts at a frame start at another one. False when nothing has changed.
    bool MoveSound(int from, int to);
    /// What of the sound that starts at `from` is heard, and from which frame on: `placed` is it as it will be.
    /// False when nothing has changed.
    bool ShapeSound(int from, const CSoundPlacement& placed);
    /// Asks what of the sound at the cursor is heard.
    void AskSoundShape();
    /// Samples that the file of a placed sound has; 0 when it cannot be read.
    std::size_t LengthOf(const std::string& name) const;
    /// Where the sound starts that is the last to start up to the cursor; nothing when none does.
    std::optional<int> SoundAtCursor() const;
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
    /// Asks before a sound of another form is converted.
    void AskAndImportSound();
    /// The import without its file and name dialogs; an existing sound of that name is replaced. False when it
    /// failed. A sound of another form is refused unless `convert`; its original is then kept beside it.
    [[nodiscard]] bool ImportSound(const Path& file, const std::string& name, bool convert = false);

    /// The rule of the name dialog of a new sound: naming rule, and the question before one is overwritten.
    [[nodiscard]] bool AcceptSoundName(const std::string& name) const;
    /// Nothing when the dialog was cancelled.
    std::optional<std::string> AskSoundName() const;
    /// Writes a sound of any rate (samples per second) as an asset of the scene, replacing one of that name with
    /// its original. `original`: what it was converted from, to be kept beside it. False when the sound could not
    /// be written.
    [[nodiscard]] bool StoreSound(const std::string& name, int rate, std::span<const std::uint8_t> samples,
                                  const COriginalSource* original = nullptr);

private:
    struct CReadSound;
    /// Whether a sound of another form is to be converted.
    using AcceptForm = std::function<bool(const CSoundForm& form)>;

    bool CanDropSound(int frame) const;
    /// False, after the message, when a sound starts at the frame.
    bool CanStartAt(int frame) const;
    bool AcceptShape(const CSoundShape& shape, double frames) const;
    bool ReadSound(const Path& file, const AcceptForm& accept, CReadSound& sound) const;
    bool StoreRead(const std::string& name, const CReadSound& sound);
    void StoreOriginal(const std::string& name, std::span<const std::uint8_t> samples,
                       const COriginalSource* original);

    CSceneContext m_context;
    std::function<bool()> m_canPlay;
};

} // namespace velmor
