#pragma once

#include "platform/camera/CaptureInput.h"
#include "platform/ffmpeg/Ffmpeg.h"

namespace velmor {

class CFfmpegCapture final : public ICaptureInput {
public:
    /// Null when the source cannot be opened.
    static std::unique_ptr<ICaptureInput> Open(const CCaptureSource& source, const CCaptureFormat& wanted);

    CCaptureFormat Format() const override { return m_frameFormat; }
    Result Read(CCaptureFrame& frame) override;
    Clock::duration TimeOfFrame() const override { return m_time; }

private:
    CFfmpegCapture() = default;
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
