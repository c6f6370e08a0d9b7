#include "render/FinalRender.h"

#include "render/Flipbook.h"
#include "render/OrderedProducer.h"
#include "render/RenderMovie.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <exception>

namespace velmor {

namespace {

constexpr const char* unwritable = "Could not write the rendered frames: disk full or write protected?";

struct CMadeFrame {
    CFrameBuffer frame;
    CFrameBuffer overWhite;
    std::vector<std::uint8_t> encoded;
    CStatus status;
};

CRenderOutcome Failed(const CStatus& status, int framesWritten) {
    return {RenderEnd::Failed, status.Message(), framesWritten};
}

class CRenderRun {
public:
    CRenderRun(const CRenderJob& job, CImageCache& cache)
        : m_job(job),
          m_settings(job.settings),
          m_cache(cache),
          m_geometry(RenderGeometryOf(job.settings, job.shot.geometry.Frame())),
          m_frames(job.settings.frames) {
        if (!IsMovie(m_settings.format) && m_settings.resume)
            std::erase_if(m_frames, [this](int frame) { return FileExists(RenderFrameFile(m_settings, frame)); });
    }

    CRenderOutcome Run(IProgress& progress, const std::function<bool()>& askStop) {
        if (IsMovie(m_settings.format))
            if (const CStatus opened = OpenMovie(); !opened)
                return Failed(opened, 0);
        CRenderOutcome outcome = WriteFrames(progress, askStop);
        if (m_movie && outcome.end != RenderEnd::Failed)
            if (const CStatus closed = m_movie->Close(m_length); !closed)
                return Failed(closed, outcome.framesWritten);
        return outcome;
    }

private:
    bool IsTransparent() const { return m_settings.transparentBackground && HasAlpha(m_settings.format); }

    CStatus OpenMovie() {
        const CSceneGeometry& scene = m_job.shot.geometry;
        std::vector<std::uint8_t> sound;
        if (m_job.sound && !m_frames.empty())
            sound = CutSound(*m_job.sound, scene.frameRate, m_frames.front(),
                             PositionOf(m_frames.back()) + LastStands());
        return OpenRenderMovie(m_settings.target,
                               {m_settings.format == RenderFormat::Mp4, m_settings.compressor, m_settings.quality,
                                scene.frameRate, m_geometry.output, scene.background},
                               sound, m_movie);
    }

    int PositionOf(int frame) const { return frame - m_frames.front(); }
    // An AVI ends with its last frame.
    int LastStands() const { return m_settings.format == RenderFormat::Mp4 ? m_settings.step : 1; }

    CStatus Compose(int frame, ColorRef background, CFrameBuffer& buffer) {
        CFrameRequest request =
            RequestFrame(m_job.shot, m_settings.levels, frame, m_job.camera.At(frame), m_geometry);
        request.background = background;
        return ComposeFrame(request, m_cache, buffer, false);
    }

    // A frame becomes a file here, on the producing thread: numbered files do not depend on one another.
    void MakeFrame(int frame, CMadeFrame& made) noexcept {
        try {
            MakeFrameOrThrow(frame, made);
        } catch (const std::exception&) {
            made.status = CStatus::Failure("There is not enough memory to render a frame.");
        }
    }

    void MakeFrameOrThrow(int frame, CMadeFrame& made) {
        const ColorRef background = m_job.shot.geometry.background;
        made.status = Compose(frame, IsTransparent() ? ColorRef{0} : background, made.frame);
        if (!made.status)
            return;
        if (m_movie) {
            m_movie->Encode(made.frame, made.encoded);
            return;
        }
        AlphaPlane alpha;
        if (IsTransparent()) {
            made.status = Compose(frame, MakeColorRef(255, 255, 255), made.overWhite);
            if (!made.status)
                return;
            alpha = SeparateBackground(made.frame, made.overWhite);
        }
        if (!WriteFrameFile(RenderFrameFile(m_settings, frame), static_cast<FrameFormat>(m_settings.format),
                            made.frame, alpha))
            made.status = CStatus::Failure(unwritable);
    }

    CRenderOutcome WriteFrames(IProgress& progress, const std::function<bool()>& askStop) {
        const int count = static_cast<int>(m_frames.size());
        COrderedProducer<CMadeFrame> made(count, [this](int index, CMadeFrame& item) {
            MakeFrame(m_frames[static_cast<std::size_t>(index)], item);
        });
        if (made.Failed())
            return Failed(CStatus::Failure(noRenderThread), 0);
        int written = 0;
        for (const int frame : m_frames) {
            const CMadeFrame& item = *made.Next();
            if (!item.status)
                return Failed(item.status, written);
            if (m_movie)
                if (const CStatus added = m_movie->Write(PositionOf(frame), item.encoded); !added)
                    return Failed(added, written);
            m_length = PositionOf(frame) + LastStands();
            ++written;
            progress.Report(written * 100 / count, "Preparing Frame : " + std::to_string(frame + 1));
            progress.FrameDone(frame + 1);
            if (written < count && progress.TakeStopRequest() && askStop())
                return {RenderEnd::Stopped, "Stopped after Frame : " + std::to_string(frame + 1), written};
        }
        return {RenderEnd::Complete, {}, written};
    }

    const CRenderJob& m_job;
    const CRenderSettings& m_settings;
    CImageCache& m_cache;
    const COutputGeometry m_geometry;
    std::vector<int> m_frames;
    std::unique_ptr<IRenderMovie> m_movie; ///< null for numbered frames
    int m_length = 0;                      ///< of the movie so far, frames
};

} // namespace

COutputGeometry RenderGeometryOf(const CRenderSettings& settings, CSize scene) {
    int width = std::max(1, static_cast<int>(scene.width * settings.scaling * 0.01));
    if (settings.format == RenderFormat::Avi)
        width = (width + 3) / 4 * 4;
    const double factor = static_cast<double>(width) / scene.width;
    return {scene, {width, std::max(1, static_cast<int>(scene.height * factor))}, factor};
}

int MostPixelsOf(RenderFormat format) {
    switch (format) {
    case RenderFormat::Mp4:
        return 16384; // of H.264 encoders
    case RenderFormat::Avi:
        return 32764; // 16-bit numbers in its header, and a multiple of 4
    default:
        return 32767; // of the programs that read the pictures, ours among them
    }
}

std::string_view ExtensionOf(RenderFormat format) {
    constexpr std::array<std::string_view, 5> extensions = {".png", ".tga", ".bmp", ".avi", ".mp4"};
    return extensions[static_cast<std::size_t>(format)];
}

Path RenderTargetOf(const Path& name, RenderFormat format) {
    if (!IsMovie(format))
        return name;
    std::string extension = name.extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ExtensionOf(format) ? name : Path(name) += ExtensionOf(format);
}

Path RenderFrameFile(const CRenderSettings& settings, int frame) {
    constexpr std::size_t digits = 4;
    std::string number = std::to_string(frame + 1);
    number.insert(0, digits - std::min(digits, number.size()), '0');
    return settings.target.parent_path() /
           (settings.target.filename().string() + number + std::string(ExtensionOf(settings.format)));
}

CRenderOutcome RenderToDisk(const CRenderJob& job, CImageCache& cache, IProgress& progress,
                            const std::function<bool()>& askStop) {
    return CRenderRun(job, cache).Run(progress, askStop);
}

} // namespace velmor
