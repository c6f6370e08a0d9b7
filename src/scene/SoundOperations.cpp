#include "scene/SoundOperations.h"

#include "scene/DialogRequests.h"
#include "scene/NamingRules.h"
#include "scene/SceneEdit.h"
#include "scene/SceneSound.h"
#include "sound/OriginalSound.h"
#include "sound/SoundFile.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

constexpr int frameRateOfNoScene = 25;
constexpr const char* occupiedFrame = "A sound already exists at that frame. \nPlease delete it from xsheet first";

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
    return CanStartAt(frame);
}

void CSoundOperations::DropSound(int frame) {
    if (!CanDropSound(frame))
        return;
    CSceneEdit edit(m_context, "Drop Sound", UpdateHint::Cells);
    if (!edit.Sounds().Place(frame, m_context.model.sourceSelection.front()))
        edit.CallOff();
}

bool CSoundOperations::CanStartAt(int frame) const {
    if (m_context.model.Scene().sounds.NameAt(frame) == nullptr)
        return true;
    m_context.prompter.ShowVelmorMessage(occupiedFrame);
    return false;
}

bool CSoundOperations::MoveSound(int from, int to) {
    const CSceneModel& model = m_context.model;
    const std::string* name = model.sceneOpen ? model.Scene().sounds.NameAt(from) : nullptr;
    if (name == nullptr || from == to || !model.Scene().xsheet.HasFrame(to))
        return false;
    if (!CanStartAt(to))
        return false;
    CSceneEdit edit(m_context, "Move Sound " + *name, UpdateHint::Cells);
    return edit.Sounds().Move(from, to);
}

std::optional<int> CSoundOperations::SoundAtCursor() const {
    const CSceneModel& model = m_context.model;
    std::optional<int> start;
    if (model.sceneOpen)
        for (const CSoundPlacement& sound : model.Scene().sounds.All())
            if (sound.frame <= model.cursorFrame && sound.frame >= start.value_or(0))
                start = sound.frame;
    return start;
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

bool CSoundOperations::AcceptSoundName(const std::string& name) const {
    return m_context.Report(CheckSoundName(name)) &&
           (!FileExists(m_context.model.Paths().SoundFile(name)) ||
            m_context.prompter.AskYesNo("Sound Exists, Do you want to overwrite it ?"));
}

std::optional<std::string> CSoundOperations::AskSoundName() const {
    return m_context.prompter.Ask(
        CNameRequest{NameKind::Sound, "", [this](const std::string& name) { return AcceptSoundName(name); }});
}

void CSoundOperations::StoreOriginal(const std::string& name, std::span<const std::uint8_t> samples,
                                     const COriginalSource* original) {
    const Path file = m_context.model.Paths().OriginalFile(name);
    // What is left of a sound that was replaced is not the new one's.
    if (FileExists(file) && !RemoveFile(file))
        return;
    if (original != nullptr)
        static_cast<void>(m_context.Report(WriteOriginal(file, *original, samples)));
}

bool CSoundOperations::StoreSound(const std::string& name, int rate, std::span<const std::uint8_t> samples,
                                  const COriginalSource* original) {
    const CSceneModel& model = m_context.model;
    static_cast<void>(CreateFolder(model.Paths().SoundsFolder())); // or writing fails, and says so
    CSceneEdit edit(m_context, "Sound " + name, UpdateHint::AssetLists);
    edit.KeepFiles(std::array{model.Paths().SoundFile(name), model.Paths().OriginalFile(name)});
    const CSoundWriteResult result = WriteSound(model.Paths().SoundFile(name), rate, samples);
    if (!result.message.empty())
        m_context.Show(result.message);
    if (!result.done) {
        edit.CallOff();
        return false;
    }
    if (result.message.empty())
        StoreOriginal(name, samples, original);
    const auto& placed = model.Scene().sounds.All();
    if (std::ranges::any_of(placed, [&](const CSoundPlacement& sound) { return sound.name == name; }))
        edit.PrepareSound();
    return result.message.empty();
}

} // namespace velmor
