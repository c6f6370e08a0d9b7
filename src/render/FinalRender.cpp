#include "render/FinalRender.h"

#include "platform/files/ClaimedFile.h"
#include "platform/movie/MovieWriter.h"
#include "platform/process/Parallel.h"
#include "render/Flipbook.h"
#include "render/FrameComposers.h"
#include "render/FrameReader.h"
#include "render/OrderedProducer.h"
#include "render/RenderMovie.h"
#include "sound/SoundFile.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace velmor {

namespace {

constexpr const char* unwritable = "Could not write the rendered frames: disk full or write protected?";

struct CMadeFrame {
    CFrameBuffer frame;
    CFrameBuffer overWhite;
    std::vector<std::uint8_t> encoded;
    std::optional<CFileIdentity> file; ///< of a numbered frame, as it was written
    bool isHeld = false;               ///< looks like the frame before, and is not made again
    CStatus status;
    RenderFault fault = RenderFault::None;

    void Fail(RenderFault of, std::string message) {
        fault = of;
        status = CStatus::Failure(std::move(message));
    }
};

std::span<const float> CutMix(const CMixedSound& mixed, int framesPerSecond, int firstFrame, int frames) {
    const std::span<const float> all(mixed.stereo);
    const std::size_t begin = std::min(MixedBefore(firstFrame, framesPerSecond) * mixChannels, all.size());
    const std::size_t end = std::min(MixedBefore(firstFrame + frames, framesPerSecond) * mixChannels, all.size());
    return all.subspan(begin, end - begin);
}

class CRenderRun {
public:
    CRenderRun(const CRenderJob& job, CImageCache& cache)
        : m_job(job),
          m_settings(job.settings),
          m_composers(cache),
          m_composersOverWhite(cache),
          m_geometry(RenderGeometryOf(job.settings, job.shot.scene.geometry.Frame())),
          m_frames(job.settings.frames) {
        if (!IsMovie(m_settings.format) && m_settings.resume)
            LeaveOutKept();
    }

    CRenderOutcome Run(IProgress& progress, const std::function<bool()>& askStop) {
        if (IsMovie(m_settings.format))
            if (const CStatus opened = OpenMovie(); !opened)
                return Failed(RenderFault::Output, opened.Message());
        WriteFrames(progress, askStop);
        if (m_movie && m_outcome.end != RenderEnd::Failed)
            if (const CStatus closed = m_movie->Close(m_length); !closed)
                return Failed(RenderFault::Output, closed.Message());
        return m_outcome;
    }

private:
    bool IsTransparent() const { return m_settings.transparentBackground && HasAlpha(m_settings.format); }

    const CRenderOutcome& Failed(RenderFault fault, std::string message) {
        m_outcome.end = RenderEnd::Failed;
        m_outcome.fault = std::max(m_outcome.fault, fault);
        m_outcome.message = std::move(message);
        return m_outcome;
    }

    void LeaveOutKept() {
        std::vector<char> kept(m_frames.size());
        const auto look = [&](int begin, int end) {
            for (auto i = static_cast<std::size_t>(begin); i < static_cast<std::size_t>(end); ++i)
                kept[i] = IsFrameKept(m_settings, m_geometry.scene, m_frames[i]);
        };
        ParallelFor(static_cast<int>(m_frames.size()), 1, look);
        m_outcome.framesKept = static_cast<int>(std::ranges::count(kept, char{1}));
        std::erase_if(m_frames, [&, i = std::size_t{0}](int) mutable { return kept[i++] != 0; });
    }

    CStatus OpenMovie() {
        const CSceneGeometry& scene = m_job.shot.scene.geometry;
        std::vector<std::uint8_t> sound;
        CMovieSoundTrack track;
        const int length = m_frames.empty() ? 0 : PositionOf(m_frames.back()) + LastStands();
        if (m_settings.format == RenderFormat::Mp4 && m_job.mixed && length > 0)
            track = {{}, mixRate, CutMix(*m_job.mixed, scene.frameRate, m_frames.front(), length)};
        else if (m_job.sound && length > 0)
            track = {sound = CutSound(*m_job.sound, scene.frameRate, m_frames.front(), length), samplesPerSecond};
        return OpenRenderMovie(m_settings.target,
                               {m_settings.format == RenderFormat::Mp4, m_settings.compressor, m_settings.quality,
                                scene.frameRate, m_geometry.output, scene.background},
                               track, m_movie);
    }

    int PositionOf(int frame) const { return frame - m_frames.front(); }
    // An AVI ends with its last frame.
    int LastStands() const { return m_settings.format == RenderFormat::Mp4 ? m_settings.step : 1; }

    CFrameRequest RequestOf(int frame) const {
        return RequestFrame(m_job.shot, m_settings.levels, frame, m_job.shot.scene.camera.At(frame), m_geometry);
    }

    CStatus Compose(int frame, ColorRef background, CFrameComposers& composers, CFrameBuffer& buffer) {
        CFrameRequest request = RequestOf(frame);
        request.background = background;
        return composers.Compose(request, buffer);
    }

    // The frame to be encoded or written, from its layers or, finished, from its file.
    [[nodiscard]] bool MakePixels(int frame, CMadeFrame& made) {
        made.status = m_job.finished
                          ? ReadFinished(frame, made.frame)
                          : Compose(frame, IsTransparent() ? ColorRef{0} : m_job.shot.scene.geometry.background,
                                    m_composers, made.frame);
        if (made.status && IsTransparent())
            made.status = Compose(frame, MakeColorRef(255, 255, 255), m_composersOverWhite, made.overWhite);
        if (!made.status)
            made.fault = IsInputMissing(frame) ? RenderFault::Input : RenderFault::Frame;
        return static_cast<bool>(made.status);
    }

    CStatus ReadFinished(int frame, CFrameBuffer& buffer) const {
        return ReadFrameFile(RenderFrameFile(m_job.finished->target, m_job.finished->format, frame),
                             static_cast<FrameFormat>(m_job.finished->format), m_geometry.output, false, buffer);
    }

    bool IsInputMissing(int frame) const {
        if (m_job.finished)
            return !FileExists(RenderFrameFile(m_job.finished->target, m_job.finished->format, frame));
        const CFrameRequest request = RequestOf(frame);
        return !std::ranges::all_of(request.layers, FileExists, &CFrameLayer::path);
    }

    // Whether a frame looks like the one before; what cannot be told is made.
    bool IsHeld(std::size_t index) const noexcept {
        try {
            return !m_job.finished && index > 0 && RequestOf(m_frames[index]) == RequestOf(m_frames[index - 1]);
        } catch (const std::exception&) {
            return false;
        }
    }

    // A frame becomes a file here, on the producing thread: numbered files do not depend on one another.
    void MakeFrame(int frame, CMadeFrame& made) noexcept {
        try {
            made.fault = RenderFault::None;
            if (MakePixels(frame, made))
                FinishFrame(frame, made);
        } catch (const std::exception&) {
            made.Fail(RenderFault::Machine, "There is not enough memory to render a frame.");
        }
    }

    void FinishFrame(int frame, CMadeFrame& made) {
        if (m_movie) {
            m_movie->Encode(made.frame, made.encoded);
            return;
        }
        AlphaPlane alpha;
        if (IsTransparent())
            alpha = SeparateBackground(made.frame, made.overWhite);
        const Path path = RenderFrameFile(m_settings, frame);
        if (!WriteFrameFile(path, static_cast<FrameFormat>(m_settings.format), made.frame, alpha,
                            m_settings.compression))
            made.Fail(RenderFault::Output, unwritable);
        made.file = IdentifyFile(path);
    }

    // A numbered frame that looks like the last is a copy of its file, unless somebody has taken or changed that
    // since.
    [[nodiscard]] bool CopyShown(int frame) const {
        const Path from = RenderFrameFile(m_settings, m_shownFrame);
        const std::optional<CFileBytes> bytes = ReadWholeFile(from);
        return bytes && m_shown.file && IdentifyFile(from) == m_shown.file &&
               WriteFileAtomically(RenderFrameFile(m_settings, frame), bytes->Span());
    }

    // The frame as it was made, or as the one before it that it looks like.
    const CMadeFrame& Show(int frame, CMadeFrame& made) {
        if (made.isHeld && (m_movie || !m_shown.status || CopyShown(frame)))
            return m_shown;
        if (made.isHeld)
            MakeFrame(frame, made);
        std::swap(m_shown, made);
        m_shownFrame = frame;
        return m_shown;
    }

    void WriteFrames(IProgress& progress, const std::function<bool()>& askStop) {
        const int count = static_cast<int>(m_frames.size());
        COrderedProducer<CMadeFrame> made(count, [this](int number, CMadeFrame& item) {
            const auto index = static_cast<std::size_t>(number);
            item.isHeld = IsHeld(index);
            if (!item.isHeld)
                MakeFrame(m_frames[index], item);
        });
        if (made.Failed()) {
            Failed(RenderFault::Machine, noRenderThread);
            return;
        }
        for (int done = 0; done < count; ++done) {
            const int frame = m_frames[static_cast<std::size_t>(done)];
            const CMadeFrame& item = Show(frame, *made.Next());
            if (!(item.status ? Take(frame, item) : GoOnWithout(frame, item, progress)))
                return;
            progress.Report((done + 1) * 100 / count, "Preparing Frame : " + std::to_string(frame + 1));
            if (item.status)
                progress.FrameDone(frame + 1);
            if (done + 1 < count && progress.TakeStopRequest() && askStop()) {
                m_outcome.end = RenderEnd::Stopped;
                m_outcome.message = "Stopped after Frame : " + std::to_string(frame + 1);
                return;
            }
        }
        if (m_outcome.framesFailed > 0)
            Failed(m_outcome.fault, std::to_string(m_outcome.framesFailed) + " of " + std::to_string(count) +
                                        " frames could not be rendered");
    }

    // Both are false when the render ends with this frame.
    [[nodiscard]] bool Take(int frame, const CMadeFrame& made) {
        if (m_movie)
            if (const CStatus added = m_movie->Write(PositionOf(frame), made.encoded); !added) {
                Failed(RenderFault::Output, added.Message());
                return false;
            }
        m_length = PositionOf(frame) + LastStands();
        ++m_outcome.framesWritten;
        return true;
    }

    [[nodiscard]] bool GoOnWithout(int frame, const CMadeFrame& made, IProgress& progress) {
        const bool isOfThisFrame = made.fault == RenderFault::Frame || made.fault == RenderFault::Input;
        if (!m_settings.keepGoing || m_movie || !isOfThisFrame) {
            Failed(made.fault, made.status.Message());
            return false;
        }
        m_outcome.fault = std::max(m_outcome.fault, made.fault);
        ++m_outcome.framesFailed;
        progress.FrameFailed(frame + 1, made.status.Message());
        return true;
    }

    const CRenderJob& m_job;
    const CRenderSettings& m_settings;
    CFrameComposers m_composers;
    CFrameComposers m_composersOverWhite; ///< of transparent frames, which are composed twice
    const COutputGeometry m_geometry;
    std::vector<int> m_frames;
    std::unique_ptr<IRenderMovie> m_movie; ///< null for numbered frames
    CMadeFrame m_shown;                    ///< the last one that was made
    int m_shownFrame = 0;
    int m_length = 0; ///< of the movie so far, frames
    CRenderOutcome m_outcome;
};

} // namespace

CRenderOutcome RenderToDisk(const CRenderJob& job, CImageCache& cache, IProgress& progress,
                            const std::function<bool()>& askStop) {
    RemoveAbandoned(FolderOf(job.settings.target));
    return CRenderRun(job, cache).Run(progress, askStop);
}

} // namespace velmor
