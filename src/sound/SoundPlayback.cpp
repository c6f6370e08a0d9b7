#include "sound/SoundPlayback.h"

#include "sound/SoundFile.h"

namespace velmor {

CStatus CSoundPlayback::Start(std::span<const std::uint8_t> samples, const TellUser& tell) {
    static_cast<void>(End());
    if (!m_output.CanPlay())
        return CStatus::Failure("There are no audio devices to play the sound!");
    if (!m_output.Open())
        return CStatus::Failure("Could not open the audio device!");
    m_isOpen = true;
    m_output.Reset();
    if (m_output.Play(samples))
        m_length = samples.size();
    else
        tell("Could not write wave header");
    return {};
}

bool CSoundPlayback::IsPlaying() const {
    // The last two samples are not waited for: a device may never report them.
    return m_isOpen && m_output.Position() + 2 < m_length;
}

double CSoundPlayback::Seconds() const {
    return m_isOpen ? static_cast<double>(m_output.Position()) / samplesPerSecond : 0;
}

CStatus CSoundPlayback::End() {
    if (!m_isOpen)
        return {};
    m_isOpen = false;
    m_length = 0;
    m_output.Reset();
    return m_output.Close() ? CStatus() : CStatus::Failure("Error : could not close the wave out device!");
}

} // namespace velmor
