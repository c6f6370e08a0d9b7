#include "platform/ffmpeg/FfmpegCapture.h"
#include "platform/ffmpeg/MovieDecoder.h"
#include "platform/ffmpeg/MovieEncoder.h"
#include "platform/ffmpeg/MovieSound.h"
#include "platform/ffmpeg/SoundCopy.h"
#include "platform/ffmpeg/SoundDecoder.h"

namespace velmor {

namespace {

class CFfmpegLibrary final : public IMovieLibrary {
public:
    bool HasEncoder(const std::string& encoder) const override {
        const AVCodec* codec = avcodec_find_encoder_by_name(encoder.c_str());
        return codec != nullptr && codec->type == AVMEDIA_TYPE_VIDEO;
    }
    std::unique_ptr<IMovieEncoder> MakeEncoder() const override { return std::make_unique<CMovieEncoder>(); }
    std::unique_ptr<IMovieDecoder> MakeDecoder() const override { return std::make_unique<CMovieDecoder>(); }
    MovieError ReadSound(const std::string& file, int rate, std::vector<std::uint8_t>& samples) const override {
        return ReadMovieSound(file, rate, samples);
    }
    std::unique_ptr<ISoundDecoder> MakeSoundDecoder() const override { return std::make_unique<CSoundDecoder>(); }
    MovieError CopySound(const std::string& movie, IMovieBytes& to) const override {
        return CopySoundStream(movie, to);
    }
    std::unique_ptr<ICaptureInput> OpenCapture(const CCaptureSource& source,
                                               const CCaptureFormat& wanted) const override {
        return CFfmpegCapture::Open(source, wanted);
    }
};

} // namespace

} // namespace velmor

extern "C" void* VelmorMovieLibrary() {
    static const velmor::CFfmpegLibrary library;
    return const_cast<velmor::CFfmpegLibrary*>(&library);
}
