#include "sound/SoundPlayback.h"

#include "sound/SoundFile.h"

#include <utility>

namespace velmor {

namespace {

constexpr const char* notPlayed = "Could not write wave header";

} // namespace

CStatus CSoundPlayback::Open(const std::function<bool()>& open) {
    static_cast<void>(End());
    if (!m_output.CanPlay())
        return CStatus::Failure("There are no audio devices to play the sound!");
    if (!open())
        return CStatus::Failure("Could not open the audio device!");
    m_isOpen = true;
    m_output.Reset();
    return {};
}

CStatus CSoundPlayback::Start(std::span<const std::uint8_t> samples, const TellUser& tell) {
    CStatus status = Open([this] { return m_output.Open(); });
    if (!status)
        return status;
    m_rate = samplesPerSecond;
    if (m_output.Play(samples))
        m_length = samples.size();
    else
        tell(notPlayed);
    return {};
}

CStatus CSoundPlayback::StartStereo(std::vector<float> samples, int rate, const TellUser& tell) {
    CStatus status = Open([this, rate] { return m_output.OpenStereo(rate); });
    if (!status)
        return status;
    m_rate = rate;
    const std::size_t length = samples.size() / 2;
    if (m_output.PlayStereo(std::move(samples)))
        m_length = length;
    else
        tell(notPlayed);
    return {};
}

bool CSoundPlayback::IsPlaying() const {
    // The last two samples are not waited for: a device may never report them.
    return m_isOpen && m_output.Position() + 2 < m_length;
}

double CSoundPlayback::Seconds() const {
    return m_isOpen ? static_cast<double>(m_output.Position()) / m_rate : 0;
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
