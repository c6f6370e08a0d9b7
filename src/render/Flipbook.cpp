#include "render/Flipbook.h"

#include "platform/files/ClaimedFile.h"
#include "render/FrameComposers.h"
#include "render/OrderedProducer.h"
#include "render/avi/AviWriter.h"
#include "render/avi/MsVideo1.h"
#include "sound/SoundFile.h"
#include "sound/SoundTrack.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace velmor {

namespace {

constexpr int qualityUnits = 100; // of the stream's 0 to 10000 a percent

struct CMadeFrame {
    CFrameBuffer frame;
    std::vector<std::uint8_t> encoded;
    bool isHeld = false; ///< looks like the frame before, and is not made again
    CStatus status;
};

CFlipbookOutcome Failed(std::vector<std::string> messages) {
    std::erase(messages, std::string());
    return {FlipbookEnd::Failed, std::move(messages)};
}

class CFlipbookRun {
public:
    CFlipbookRun(const CFlipbookJob& job, CImageCache& cache)
        : m_job(job),
          m_composers(cache),
          m_geometry(FlipbookGeometryOf(job.shot.scene.geometry.Frame(), job.settings.scaling)),
          m_first(job.settings.firstFrame - 1),
          m_last(job.settings.lastFrame - 1) {}

    CFlipbookOutcome Generate(IProgress& progress, const std::function<bool()>& askStop) {
        if (const CStatus opened = Open(); !opened)
            return Failed({opened.Message(), "Unable to create an avi flipbook file"});
        progress.Report(0, "Generating FlipBook...");
        CFlipbookOutcome outcome = WriteFrames(progress, askStop);
        if (outcome.end == FlipbookEnd::Failed)
            return outcome;
        if (const CStatus closed = m_writer.Close(); !closed)
            return Failed({closed.Message(), "Problem Writing flipbook to disk"});
        return outcome;
    }

private:
    CStatus Open() {
        const CSceneGeometry& scene = m_job.shot.scene.geometry;
        const CAviSettings settings{m_job.settings.quality * qualityUnits, scene.frameRate / m_job.settings.step,
                                    m_geometry.output.width, m_geometry.output.height, scene.background};
        if (CStatus opened = m_writer.Open(m_job.output, settings); !opened || !m_job.sound)
            return opened;
        return m_writer.AddSound(CutSound(*m_job.sound, scene.frameRate, m_job.soundFrame, m_last - m_first + 1));
    }

    void MakeFrame(int frame, CMadeFrame& made) noexcept {
        try {
            MakeFrameOrThrow(frame, made);
        } catch (const std::exception&) {
            made.status = CStatus::Failure("There is not enough memory to create the avi file.");
        }
    }

    void MakeFrameOrThrow(int frame, CMadeFrame& made) {
        const CFrameRequest request = RequestFlipbookFrame(m_job, frame);
        made.status = {};
        made.isHeld = frame > m_first && request == RequestFlipbookFrame(m_job, frame - m_job.settings.step);
        if (made.isHeld)
            return;
        made.status = m_composers.Compose(request, made.frame);
        if (made.status)
            EncodeMsVideo1(made.frame.pixels, made.frame.width, made.frame.height,
                           m_job.settings.quality * qualityUnits, m_job.shot.scene.geometry.background,
                           made.encoded);
    }

    CFlipbookOutcome WriteFrames(IProgress& progress, const std::function<bool()>& askStop) {
        const int step = m_job.settings.step;
        const int range = m_last - m_first + 1;
        COrderedProducer<CMadeFrame> frames((range + step - 1) / step, [&](int index, CMadeFrame& made) {
            MakeFrame(m_first + index * step, made);
        });
        if (frames.Failed())
            return Failed({noRenderThread});
        for (int frame = m_first; CMadeFrame* made = frames.Next(); frame += step) {
            const std::string number = std::to_string(frame + 1);
            progress.Report((frame - m_first + 1) * 100 / range, "Preparing Frame : " + number);
            if (!made->status)
                return Failed({made->status.Message()});
            if (!made->isHeld)
                std::swap(m_shown, made->encoded);
            if (const CStatus written = m_writer.WriteEncodedFrame(frame - m_first, m_shown); !written)
                return Failed({written.Message(), "Problem Writing flipbook to disk"});
            progress.FrameDone(frame + 1);
            if (progress.TakeStopRequest() && askStop())
                return {FlipbookEnd::Stopped, {"Stopped after Frame : " + number}};
        }
        return {};
    }

    const CFlipbookJob& m_job;
    CFrameComposers m_composers;
    const CFlipbookGeometry m_geometry;
    const int m_first;
    const int m_last;
    CAviWriter m_writer;
    std::vector<std::uint8_t> m_shown; ///< the frame written last
};

} // namespace

CFrameRequest RequestFlipbookFrame(const CFlipbookJob& job, int frame) {
    const CFlipbookGeometry geometry = FlipbookGeometryOf(job.shot.scene.geometry.Frame(), job.settings.scaling);
    // Filmed from where the camera stands at the cursor frame; only the zoom follows the movie.
    CCameraFrame camera = job.shot.scene.camera.At(job.cursorFrame);
    camera.zoom = job.shot.scene.camera.At(frame).zoom;
    std::span<const int> levels(job.settings.levels);
    levels = levels.first(std::min<std::size_t>(levels.size(), CFlipbookSettings::mostLevels));
    return RequestFrame(job.shot, levels, frame, camera,
                        {job.shot.scene.geometry.Frame(), geometry.output, geometry.factor});
}

CFlipbookOutcome GenerateFlipbook(const CFlipbookJob& job, CImageCache& cache, IProgress& progress,
                                  const std::function<bool()>& askStop) {
    RemoveAbandoned(FolderOf(job.output));
    return CFlipbookRun(job, cache).Generate(progress, askStop);
}

std::vector<std::uint8_t> CutSound(std::span<const std::uint8_t> track, int framesPerSecond, int firstFrame,
                                   int frames) {
    const auto samplesPerFrame = static_cast<std::size_t>(SamplesPerFrame(framesPerSecond));
    std::vector<std::uint8_t> cut(samplesPerFrame * static_cast<std::size_t>(frames), silentSample);
    const std::size_t begin = std::min(track.size(), samplesPerFrame * static_cast<std::size_t>(firstFrame));
    const std::span<const std::uint8_t> rest = track.subspan(begin);
    std::copy_n(rest.begin(), std::min(rest.size(), cut.size()), cut.begin());
    return cut;
}

} // namespace velmor
