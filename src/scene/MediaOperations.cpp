#include "scene/MediaOperations.h"

#include "platform/sound/Audio.h"
#include "render/Movie.h"
#include "scene/FlipbookOperations.h"
#include "scene/SoundOperations.h"
#include "sound/SoundFile.h"
#include "sound/SoundPlayback.h"
#include "sound/SoundRecorder.h"

#include <algorithm>

namespace velmor {

void CMediaOperations::Play(std::span<const std::uint8_t> samples) {
    TellBefore();
    CSoundPlayback playback(m_devices.Output());
    if (!m_context.Report(playback.Start(samples, [this](const std::string& text) { m_context.Show(text); })))
        return;
    m_context.prompter.WaitWhilePlaying("Playing Sound...     Press any key to stop",
                                        [&playback] { return playback.IsPlaying(); });
    static_cast<void>(m_context.Report(playback.End()));
    m_context.prompter.ShowStatus("Stopped.");
}

void CMediaOperations::PlayXSheetSound() {
    if (!m_sounds.PrepareMissingTrack())
        return;
    if (const std::optional<std::span<const std::uint8_t>> track = m_sounds.GetSoundBuffer())
        Play(*track);
}

void CMediaOperations::PlaySelectedSound() {
    const CSceneModel& model = m_context.model;
    if (!m_sounds.PrepareMissingTrack())
        return;
    const std::optional<std::span<const std::uint8_t>> track = m_sounds.GetSoundBuffer();
    if (!track)
        return;
    const auto frameSamples = static_cast<std::size_t>(SamplesPerFrame(m_sounds.GetFPS()));
    const auto first = static_cast<std::size_t>(std::max(model.selection.firstFrame, 0));
    const auto end = static_cast<std::size_t>(std::max(model.selection.lastFrame, 0)) + 1;
    // The track of a sheet that has just been set up is longer than its frames; one of few frames may be shorter.
    const std::size_t from = std::min(first * frameSamples, track->size());
    const std::size_t to = std::clamp(end * frameSamples, from, track->size());
    Play(track->subspan(from, to - from));
}

void CMediaOperations::PlaySoundAssets() {
    const CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error: Scene not open at CVelmorltDoc::OnAssetsPlaysound") ||
        !m_context.Require(model.sourceMode == SourceMode::Sounds,
                           "Internal Error: Not showing sound sources at CVelmorltDoc::OnAssetsPlaysound") ||
        model.sourceSelection.empty())
        return;
    PlaySoundAsset(model.sourceSelection.front());
}

void CMediaOperations::PlaySoundAsset(const std::string& name) {
    std::vector<std::uint8_t> samples;
    if (m_context.model.sceneOpen && m_sounds.LoadSound(name, samples))
        Play(samples);
}

void CMediaOperations::RecordSound() {
    if (!m_context.model.sceneOpen)
        return;
    TellBefore();
    CSoundRecorder recorder(m_devices);
    if (!m_context.Report(recorder.CheckDevice()) || !m_context.prompter.RunRecorder(recorder))
        return;
    recorder.Stop();
    if (recorder.Samples().empty())
        return;
    do {
        const std::optional<std::string> name = m_sounds.AskSoundName();
        if (name && m_sounds.StoreSound(*name, samplesPerSecond, recorder.Samples()))
            return;
    } while (!m_context.prompter.AskYesNo("Do you want to discard the recording ?"));
}

void CMediaOperations::MakeFlipbook() {
    if (m_flipbooks.MakeFlipbook())
        PlayLastFlipbook();
}

void CMediaOperations::PlayLastFlipbook() {
    if (const std::optional<Path> flipbook = m_flipbooks.LastFlipbookToPlay())
        PlayMovie(*flipbook);
}

void CMediaOperations::PlayMovie(const Path& file) {
    TellBefore();
    CMovie movie(m_devices.Output());
    if (m_context.Report(movie.Open(file, [this](const std::string& text) { m_context.Show(text); })))
        m_context.prompter.PlayMovie(movie);
}

} // namespace velmor
