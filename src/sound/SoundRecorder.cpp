#include "sound/SoundRecorder.h"

#include "sound/SoundFile.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace velmor {

namespace {

constexpr const char* noDevice = "Sorry there are no sound devices capable of recording in the desired format";
constexpr float secondsPerSample = 4.5351473e-5F;
constexpr int fullLevel = 128;

std::string Formatted(const char* format, float seconds) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, static_cast<double>(seconds));
    return text.data();
}

} // namespace

CStatus CSoundRecorder::CheckDevice() const {
    return m_input.CanRecord() ? CStatus() : CStatus::Failure(noDevice);
}

CStatus CSoundRecorder::Record() {
    if (!CanRecord())
        return {};
    if (!m_input.Open())
        return CStatus::Failure(noDevice);
    if (!m_input.Start(capacity)) {
        m_input.Close();
        return CStatus::Failure(noDevice);
    }
    m_position = 0;
    m_state = State::Recording;
    return {};
}

CStatus CSoundRecorder::Play(const TellUser& tell) {
    if (!CanUseRecording())
        return {};
    if (CStatus started = m_playback.Start(m_samples, tell); !started)
        return started;
    m_position = 0;
    m_state = State::Playing;
    return {};
}

void CSoundRecorder::Stop() {
    if (m_state == State::Recording) {
        m_samples = m_input.Stop();
        m_input.Close();
    } else if (m_state == State::Playing) {
        static_cast<void>(m_playback.End());
    } else {
        return;
    }
    m_position = m_samples.size();
    m_state = m_samples.empty() ? State::Idle : State::Recorded;
}

void CSoundRecorder::Poll() {
    if (m_state == State::Recording) {
        m_position = m_input.Position();
        if (m_position >= capacity)
            Stop();
    } else if (m_state == State::Playing) {
        if (m_playback.IsPlaying())
            m_position = static_cast<std::size_t>(m_playback.Seconds() * samplesPerSecond + 0.5);
        else
            Stop();
    }
}

float CSoundRecorder::Seconds() const {
    return static_cast<float>(m_position) * secondsPerSample;
}

std::string CSoundRecorder::StatusText() const {
    switch (m_state) {
    case State::Idle:
        return "Idle";
    case State::Recording:
        return Formatted("Recording... at %4.2f seconds", Seconds());
    case State::Recorded:
        return Formatted("Recorded... at %4.2f seconds, idle", Seconds());
    case State::Playing:
        return Formatted("Playing... at %4.2f seconds", Seconds());
    }
    return "";
}

int CSoundRecorder::ProgressSeconds() const {
    return std::clamp(static_cast<int>(Seconds()), 0, mostSeconds);
}

int CSoundRecorder::LevelPercent() const {
    return m_state == State::Recording ? std::min(m_input.Level() * 100 / fullLevel, 100) : 0;
}

} // namespace velmor
