#pragma once

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace velmor {

/// Owners of what FFmpeg's libraries hand out.
struct CFfmpegFree {
    void operator()(AVFormatContext* p) const { avformat_close_input(&p); }
    void operator()(AVCodecContext* p) const { avcodec_free_context(&p); }
    void operator()(AVPacket* p) const { av_packet_free(&p); }
    void operator()(AVFrame* p) const { av_frame_free(&p); }
    void operator()(SwsContext* p) const { sws_freeContext(p); }
    void operator()(SwrContext* p) const { swr_free(&p); }
};
template<class T>
using CFfmpegHandle = std::unique_ptr<T, CFfmpegFree>;

/// A file that is written is given back otherwise than one that is read.
struct CFfmpegFreeOutput {
    void operator()(AVFormatContext* p) const { avformat_free_context(p); }
};
using CFfmpegOutput = std::unique_ptr<AVFormatContext, CFfmpegFreeOutput>;

} // namespace velmor
