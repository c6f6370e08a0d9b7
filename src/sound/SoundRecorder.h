#pragma once

#include "sound/SoundPlayback.h"

#include <string>
#include <vector>

namespace velmor {

/// The work of the record dialog: records a sound of at most a minute, plays it back, keeps it for saving. The
/// dialog calls Poll() a few times a second, and each time shows the texts and numbers.
class CSoundRecorder {
public:
    static constexpr int mostSeconds = 60;
    static constexpr std::size_t capacity = 1323000; ///< mostSeconds at the rate of sounds

    enum class State { Idle, Recording, Recorded, Playing };

    explicit CSoundRecorder(IAudioDevices& devices) : m_input(devices.Input()), m_playback(devices.Output()) {}
    ~CSoundRecorder() { Stop(); }

    /// Fails, with the text, when nothing can record the format of sounds.
    CStatus CheckDevice() const;

    /// A new recording replaces the one there is. On failure what there was stays.
    CStatus Record();
    /// Plays the recording.
    CStatus Play(const TellUser& tell);
    /// Ends recording or playing.
    void Stop();
    /// Brings length and state up to date; a recording that is full and a playback that is over end here.
    void Poll();

    State CurrentState() const { return m_state; }
    bool CanRecord() const { return m_state == State::Idle || m_state == State::Recorded; }
    bool CanStop() const { return m_state == State::Recording || m_state == State::Playing; }
    /// Play and save: something has been recorded and nothing runs.
    bool CanUseRecording() const { return m_state == State::Recorded; }

    std::string StatusText() const;
    /// Whole seconds for the progress bar, 0 to mostSeconds.
    int ProgressSeconds() const;
    /// 0 to 100, while recording.
    int LevelPercent() const;
    const std::vector<std::uint8_t>& Samples() const { return m_samples; }

private:
    float Seconds() const;

    IAudioInput& m_input;
    CSoundPlayback m_playback;
    State m_state = State::Idle;
    std::vector<std::uint8_t> m_samples;
    std::size_t m_position = 0; ///< samples recorded or played so far
};

} // namespace velmor
