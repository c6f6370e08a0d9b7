#include "render/RenderMovie.h"

#include "platform/movie/MovieWriter.h"
#include "render/Compressors.h"
#include "render/FrameComposer.h"
#include "render/avi/AviWriter.h"
#include "render/avi/MsVideo1.h"

#include <utility>

namespace velmor {

namespace {

// What an AVI's own text leaves open.
CStatus Unwritable(const CStatus& status) {
    return CStatus::Failure((status.Message().empty() ? "" : status.Message() + "\n") +
                            "Could not write the rendered movie: disk full, write protected or too large?");
}

CStatus StatusOf(MovieWriteError error, bool isMp4) {
    switch (error) {
    case MovieWriteError::None:
        return {};
    case MovieWriteError::NoEncoder:
        return CStatus::Failure("The system does not support the required compression");
    case MovieWriteError::NoMemory:
        return CStatus::Failure(isMp4 ? "There is not enough memory to create the movie."
                                      : "There is not enough memory to create the avi file.");
    case MovieWriteError::FileOpen:
        return CStatus::Failure(isMp4 ? "A disk error occurred while opening the movie."
                                      : "A disk error occurred while opening the avi file.");
    case MovieWriteError::FileWrite:
        break;
    }
    return Unwritable(CStatus::Failure(isMp4 ? "" : "An unknown error has occured with avi file."));
}

/// Microsoft Video 1, whose frames do not depend on one another and are encoded where they are composed.
class COurMovie final : public IRenderMovie {
public:
    explicit COurMovie(const CRenderMovieSettings& settings) : m_settings(settings) {}

    CStatus Open(const Path& path, const CMovieSoundTrack& sound) {
        CStatus opened = m_writer.Open(path, {m_settings.quality, m_settings.rate, m_settings.size.width,
                                              m_settings.size.height, m_settings.background});
        return opened ? m_writer.AddSound(sound.samples) : opened;
    }
    void Encode(CFrameBuffer& frame, std::vector<std::uint8_t>& encoded) const override {
        EncodeMsVideo1(frame.pixels, frame.width, frame.height, m_settings.quality, m_settings.background, encoded);
    }
    CStatus Write(int position, std::span<const std::uint8_t> encoded) override {
        const CStatus written = m_writer.WriteEncodedFrame(position, encoded);
        return written ? written : Unwritable(written);
    }
    CStatus Close(int) override {
        const CStatus closed = m_writer.Close();
        return closed ? closed : Unwritable(closed);
    }

private:
    CRenderMovieSettings m_settings;
    CAviWriter m_writer;
};

/// Everything else: encoders that remember what came before take the frames in their order.
class CForeignMovie final : public IRenderMovie {
public:
    explicit CForeignMovie(bool isMp4) : m_isMp4(isMp4) {}

    CStatus Open(const Path& path, const CMovieFormat& format, const CMovieSoundTrack& sound) {
        return StatusOf(m_writer.Open(path, format, sound), m_isMp4);
    }
    void Encode(CFrameBuffer& frame, std::vector<std::uint8_t>& encoded) const override {
        std::swap(frame.pixels, encoded);
    }
    CStatus Write(int position, std::span<const std::uint8_t> pixels) override {
        return StatusOf(m_writer.WriteFrame(position, pixels), m_isMp4);
    }
    CStatus Close(int length) override { return StatusOf(m_writer.Close(length), m_isMp4); }

private:
    bool m_isMp4;
    CMovieWriter m_writer;
};

CMovieFormat FormatOf(const CRenderMovieSettings& settings, std::string_view encoder) {
    return {settings.isMp4 ? MovieContainer::Mp4 : MovieContainer::Avi,
            std::string(encoder),
            settings.size.width,
            settings.size.height,
            settings.rate,
            settings.quality,
            {BlueOf(settings.background), GreenOf(settings.background), RedOf(settings.background)}};
}

template<class Movie, class... Arguments>
CStatus OpenAs(std::unique_ptr<IRenderMovie>& movie, Movie made, const Arguments&... arguments) {
    auto opening = std::make_unique<Movie>(std::move(made));
    CStatus opened = opening->Open(arguments...);
    if (opened)
        movie = std::move(opening);
    return opened;
}

} // namespace

CStatus OpenRenderMovie(const Path& path, const CRenderMovieSettings& settings, const CMovieSoundTrack& sound,
                        std::unique_ptr<IRenderMovie>& movie) {
    if (settings.isMp4)
        return OpenAs(movie, CForeignMovie(true), path, FormatOf(settings, {}), sound);
    const CCompressor* compressor =
        FindCompressor(settings.compressor.empty() ? defaultCompressor : settings.compressor);
    if (compressor == nullptr)
        return CStatus::Failure("A suitable compressor cannot be found.");
    if (compressor->isOurs)
        return OpenAs(movie, COurMovie(settings), path, sound);
    return OpenAs(movie, CForeignMovie(false), path, FormatOf(settings, compressor->encoder), sound);
}

} // namespace velmor
