#include "scene/SoundOperations.h"

#include "scene/DialogRequests.h"
#include "scene/NamingRules.h"
#include "scene/SceneEdit.h"
#include "scene/SceneSound.h"
#include "sound/SoundFile.h"
#include "sound/WaveFile.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int frameRateOfNoScene = 25;
constexpr const char* importWithoutScene = "Internal Error : OnSourcesImportsound called with no scene open";

} // namespace

bool CSoundOperations::LoadSound(const std::string& name, std::vector<std::uint8_t>& samples) const {
    return m_context.Report(LoadSoundFile(m_context.model.Paths().SoundFile(name), name, samples));
}

std::optional<std::string> CSoundOperations::GetSoundName(int frame) const {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error : GetSoundName called with no scene open") ||
        !m_context.Require(model.Scene().xsheet.HasFrame(frame),
                           "Internal Error : Invalid frame no in GetSoundName"))
        return std::nullopt;
    const std::string* name = model.Scene().sounds.NameAt(frame);
    return name != nullptr ? std::optional(*name) : std::nullopt;
}

bool CSoundOperations::CanDropSound(int frame) const {
    const CSceneModel& model = m_context.model;
    const bool soundChosen = model.sourceMode == SourceMode::Sounds && !model.sourceSelection.empty();
    if (!m_context.Require(model.sceneOpen, "Internal Error : DropSound called with no scene open") ||
        !m_context.Require(soundChosen, "Internal Error : DropSound called with cels selected") ||
        !m_context.Require(model.Scene().xsheet.HasFrame(frame),
                           "Internal Error : Invalid frame no in DropSound") ||
        !m_context.Require(!model.Scene().sounds.IsFull(), "Too many sounds on xsheet!"))
        return false;
    if (model.sourceSelection.size() > 1) {
        m_context.prompter.ShowVelmorMessage("Only one sound can be put on xsheet at one time.");
        return false;
    }
    if (model.Scene().sounds.NameAt(frame) != nullptr) {
        m_context.prompter.ShowVelmorMessage(
            "A sound already exists at that frame. \nPlease delete it from xsheet first");
        return false;
    }
    return true;
}

void CSoundOperations::DropSound(int frame) {
    if (!CanDropSound(frame))
        return;
    CSceneEdit edit(m_context, "Drop Sound", UpdateHint::Cells);
    if (!edit.Sounds().Place(frame, m_context.model.sourceSelection.front()))
        edit.CallOff();
}

void CSoundOperations::RemoveSelectedSounds() {
    const CSceneModel& model = m_context.model;
    CSoundPlacements left = model.Scene().sounds;
    bool removed = false;
    for (int frame = model.selection.firstFrame; frame <= model.selection.lastFrame; ++frame)
        removed |= left.RemoveAt(frame);
    if (!removed) {
        m_context.prompter.ShowVelmorMessage("There are no sound starting at the selected frames for deleting.");
        return;
    }
    CSceneEdit edit(m_context, "Remove Sound", UpdateHint::Cells);
    edit.Sounds() = std::move(left);
}

void CSoundOperations::PrepareSoundBuffer() {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error : Scene not open at PrepareSoundBuffer"))
        return;
    static_cast<void>(m_context.Report(PrepareSoundTrack(m_context.model))); // without a track there is silence
}

bool CSoundOperations::PrepareMissingTrack() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || model.soundBuffer)
        return model.sceneOpen;
    Path resisting;
    const CStatus status = PrepareSoundTrack(m_context.model, &resisting);
    if (status)
        return true;
    std::string text = status.Message();
    if (!resisting.empty())
        text.append("\n").append(Utf8Of(resisting));
    m_context.Show(text);
    return false;
}

void CSoundOperations::ResetSoundBuffer() {
    CSceneModel& model = m_context.model;
    const auto frames = static_cast<std::size_t>(model.Scene().xsheet.FrameCount());
    model.soundBuffer.emplace(frames * samplesPerSecond, silentSample);
}

std::optional<std::span<const std::uint8_t>> CSoundOperations::GetSoundBuffer() const {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error : Scene not open at GetSoundBuffer") ||
        !model.soundBuffer)
        return std::nullopt;
    return std::span<const std::uint8_t>(*model.soundBuffer);
}

int CSoundOperations::GetFPS() const {
    const CSceneModel& model = m_context.model;
    return m_context.Require(model.sceneOpen, "Internal Error : Scene not open at GetFPS")
               ? model.Scene().geometry.frameRate
               : frameRateOfNoScene;
}

void CSoundOperations::AskAndImportSound() {
    if (!m_context.Require(m_context.model.sceneOpen, importWithoutScene))
        return;
    const std::vector<Path> files = m_context.prompter.Ask(
        COpenFilesRequest{{"Select an audio file", "Audio Files (*.wav) |*.wav|", ".wav", "", false}});
    if (files.empty())
        return;
    CWaveSound wave;
    if (!m_context.Report(ReadWaveFile(files.front(), wave)) ||
        !m_context.Require(!m_canPlay || m_canPlay(), "There are no audio devices to play this sound!"))
        return;
    if (const std::optional<std::string> name = AskSoundName())
        static_cast<void>(StoreSound(*name, wave.rate, wave.samples)); // it has said why not
}

bool CSoundOperations::ImportSound(const Path& file, const std::string& name) {
    CWaveSound wave;
    return m_context.Require(m_context.model.sceneOpen, importWithoutScene) &&
           m_context.Report(ReadWaveFile(file, wave)) &&
           m_context.Require(static_cast<bool>(CheckSoundName(name)), brokenPictureName) &&
           StoreSound(name, wave.rate, wave.samples);
}

bool CSoundOperations::AcceptSoundName(const std::string& name) const {
    return m_context.Report(CheckSoundName(name)) &&
           (!FileExists(m_context.model.Paths().SoundFile(name)) ||
            m_context.prompter.AskYesNo("Sound Exists, Do you want to overwrite it ?"));
}

std::optional<std::string> CSoundOperations::AskSoundName() const {
    return m_context.prompter.Ask(
        CNameRequest{NameKind::Sound, "", [this](const std::string& name) { return AcceptSoundName(name); }});
}

bool CSoundOperations::StoreSound(const std::string& name, int rate, std::span<const std::uint8_t> samples) {
    const CSceneModel& model = m_context.model;
    static_cast<void>(CreateFolder(model.Paths().SoundsFolder())); // or writing fails, and says so
    CSceneEdit edit(m_context, "Sound " + name, UpdateHint::AssetLists);
    edit.KeepFile(model.Paths().SoundFile(name));
    const CSoundWriteResult result = WriteSound(model.Paths().SoundFile(name), rate, samples);
    if (!result.message.empty())
        m_context.Show(result.message);
    if (!result.done) {
        edit.CallOff();
        return false;
    }
    const auto& placed = model.Scene().sounds.All();
    if (std::ranges::any_of(placed, [&](const CSoundPlacement& sound) { return sound.name == name; }))
        edit.PrepareSound();
    return result.message.empty();
}

} // namespace velmor
