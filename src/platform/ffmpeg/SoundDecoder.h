#pragma once

#include "platform/ffmpeg/SoundFileInput.h"
#include "platform/movie/MovieLibrary.h"

namespace velmor {

/// The sound of a file, resampled and mixed to what is asked for.
class CSoundDecoder final : public ISoundDecoder {
public:
    MovieError Open(const std::string& file, std::uint64_t offset) override;
    const CSoundForm& Form() const override { return m_form; }
    bool Read(const CSoundOutput& output, std::vector<float>& samples) override;
    bool IsFileSound() const override { return m_file.IsSound(); }

private:
    MovieError OpenCodec();
    void Describe();
    /// Gives the decoder its next packet, or the end. False when it has had that.
    bool Feed();
    bool StartConversion(const CSoundOutput& output);
    bool IsConverting(const AVFrame& frame) const;
    /// Converts `frame`, or what the converter still holds back.
    bool Convert(const AVFrame* frame, std::vector<float>& samples);

    CSoundFileInput m_file;
    CSoundForm m_form;
    CFfmpegHandle<AVCodecContext> m_codec;
    CFfmpegHandle<SwrContext> m_converter;
    CFfmpegHandle<AVPacket> m_packet{av_packet_alloc()};
    CFfmpegHandle<AVFrame> m_frame{av_frame_alloc()};
    bool m_isDraining = false;
    // What the converter was made for: a file may change in its middle.
    int m_sourceRate = 0;
    int m_sourceFormat = -1;
    int m_sourceChannels = 0;
    int m_outputChannels = 2;
    bool m_doubles = false; ///< one channel is put on both
};

} // namespace velmor
