#include "render/FinalRender.h"

#include "render/Flipbook.h"
#include "render/OrderedProducer.h"
#include "render/avi/AviWriter.h"
#include "render/avi/MsVideo1.h"

#include <algorithm>
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
        if (!IsMovie() && m_settings.resume)
            std::erase_if(m_frames, [this](int frame) { return FileExists(RenderFrameFile(m_settings, frame)); });
    }

    CRenderOutcome Run(IProgress& progress, const std::function<bool()>& askStop) {
        if (IsMovie())
            if (const CStatus opened = OpenMovie(); !opened)
                return Failed(opened, 0);
        const CRenderOutcome outcome = WriteFrames(progress, askStop);
        if (IsMovie() && outcome.end != RenderEnd::Failed)
            if (const CStatus closed = m_writer.Close(); !closed)
                return Failed(closed, outcome.framesWritten);
        return outcome;
    }

private:
    bool IsMovie() const { return m_settings.format == RenderFormat::Avi; }
    bool IsTransparent() const {
        return m_settings.transparentBackground &&
               (m_settings.format == RenderFormat::Png || m_settings.format == RenderFormat::Targa);
    }

    CStatus OpenMovie() {
        const CSceneGeometry& scene = m_job.shot.geometry;
        CStatus opened =
            m_writer.Open(m_settings.target, {m_settings.quality, scene.frameRate, m_geometry.output.width,
                                              m_geometry.output.height, scene.background});
        if (!opened || !m_job.sound || m_frames.empty())
            return opened;
        return m_writer.AddSound(
            CutSound(*m_job.sound, scene.frameRate, m_frames.front(), m_frames.back() - m_frames.front() + 1));
    }

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
        if (IsMovie()) {
            EncodeMsVideo1(made.frame.pixels, made.frame.width, made.frame.height, m_settings.quality, background,
                           made.encoded);
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
        int written = 0;
        for (const int frame : m_frames) {
            const CMadeFrame& item = *made.Next();
            if (!item.status)
                return Failed(item.status, written);
            if (IsMovie())
                if (const CStatus added = m_writer.WriteEncodedFrame(frame - m_frames.front(), item.encoded);
                    !added)
                    return Failed(added, written);
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
    CAviWriter m_writer;
};

} // namespace

COutputGeometry RenderGeometryOf(const CRenderSettings& settings, CSize scene) {
    int width = std::max(1, static_cast<int>(scene.width * settings.scaling * 0.01));
    if (settings.format == RenderFormat::Avi)
        width = (width + 3) / 4 * 4;
    const double factor = static_cast<double>(width) / scene.width;
    return {scene, {width, std::max(1, static_cast<int>(scene.height * factor))}, factor};
}

Path RenderFrameFile(const CRenderSettings& settings, int frame) {
    constexpr std::size_t digits = 4;
    std::string number = std::to_string(frame + 1);
    number.insert(0, digits - std::min(digits, number.size()), '0');
    return settings.target.parent_path() / (settings.target.filename().string() + number +
                                            std::string(ExtensionOf(static_cast<FrameFormat>(settings.format))));
}

CRenderOutcome RenderToDisk(const CRenderJob& job, CImageCache& cache, IProgress& progress,
                            const std::function<bool()>& askStop) {
    return CRenderRun(job, cache).Run(progress, askStop);
}

} // namespace velmor
