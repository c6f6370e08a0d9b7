#pragma once

#include "platform/camera/CaptureDriver.h"
#include "platform/movie/Ffmpeg.h"

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
class CCaptureInput {
public:
    enum class Result {
        Frame,
        NotYet, ///< the device has none at the moment
        Bad,    ///< it had one, which is damaged or not of the promised size
        Ended   ///< there will be no more
    };
    using Clock = std::chrono::steady_clock;

    /// `wanted`: width 0 leaves the format to the device. Null when the source cannot be opened.
    static std::unique_ptr<CCaptureInput> Open(const CCaptureSource& source, const CCaptureFormat& wanted);

    const CCaptureFormat& Format() const { return m_frameFormat; }
    /// Sets size and bytes of `frame`, which are undefined unless the result is a frame.
    Result Read(CCaptureFrame& frame);
    /// Since the first frame, by the source's own time.
    Clock::duration TimeOfFrame() const { return m_time; }

private:
    CCaptureInput() = default;
    [[nodiscard]] bool OpenSource(const CCaptureSource& source, const CCaptureFormat& wanted);
    [[nodiscard]] bool OpenDecoder(const CCaptureSource& source);
    [[nodiscard]] bool Convert(CCaptureFrame& frame);
    void TakeTime();

    Clock::time_point m_deadline; ///< for FFmpeg, which asks while it waits
    CFfmpegHandle<AVFormatContext> m_format;
    CFfmpegHandle<AVCodecContext> m_codec;
    CFfmpegHandle<AVPacket> m_packet{av_packet_alloc()};
    CFfmpegHandle<AVFrame> m_picture{av_frame_alloc()};
    CFfmpegHandle<SwsContext> m_converter;
    CCaptureFormat m_frameFormat;
    int m_stream = -1;
    std::int64_t m_firstTime = AV_NOPTS_VALUE;
    Clock::duration m_time{};
};

} // namespace velmor
