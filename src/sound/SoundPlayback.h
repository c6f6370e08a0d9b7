#pragma once

#include "platform/Status.h"
#include "platform/sound/Audio.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// Shows a text to the user and goes on.
using TellUser = std::function<void(const std::string&)>;

/// One stretch of sound being played: started, asked again and again whether it still plays, ended. Has no loop of
/// its own.
class CSoundPlayback {
public:
    explicit CSoundPlayback(IAudioOutput& output) : m_output(output) {}
    CSoundPlayback(const CSoundPlayback&) = delete;
    CSoundPlayback& operator=(const CSoundPlayback&) = delete;
    ~CSoundPlayback() { static_cast<void>(End()); }

    /// Opens the device and plays. A status without success says why there is no sound at all; samples that the
    /// device does not take are told, and then nothing plays.
    CStatus Start(std::span<const std::uint8_t> samples, const TellUser& tell);
    /// The same in full quality: left and right in turn, `rate` samples of a channel per second.
    CStatus StartStereo(std::vector<float> samples, int rate, const TellUser& tell);
    bool IsPlaying() const;
    /// Seconds of the stretch that have been heard.
    double Seconds() const;
    /// Stops and closes the device; fails when it cannot be closed.
    CStatus End();

private:
    CStatus Open(const std::function<bool()>& open);

    IAudioOutput& m_output;
    int m_rate = 1;           ///< of what plays, samples per second
    std::size_t m_length = 0; ///< in samples of a channel
    bool m_isOpen = false;
};

} // namespace velmor
