#pragma once

#include "platform/camera/CaptureDriver.h"

#include <chrono>
#include <string>

namespace velmor {

/// What FFmpeg is to open: one of its input devices and what that one calls the source.
struct CCaptureSource {
    std::string inputDevice;
    std::string name;
    bool hasClock = true; ///< false for a source that makes its frames as fast as they are read

    bool operator==(const CCaptureSource&) const = default;
};

/// An open source of frames. Reading never waits for the device.
class ICaptureInput {
public:
    enum class Result {
        Frame,
        NotYet, ///< the device has none at the moment
        Bad,    ///< it had one, which is damaged or not of the promised size
        Ended   ///< there will be no more
    };
    using Clock = std::chrono::steady_clock;

    virtual ~ICaptureInput() = default;
    virtual CCaptureFormat Format() const = 0;
    /// Sets size and bytes of `frame`, which are undefined unless the result is a frame.
    virtual Result Read(CCaptureFrame& frame) = 0;
    /// Since the first frame, by the source's own time.
    virtual Clock::duration TimeOfFrame() const = 0;
};

} // namespace velmor
