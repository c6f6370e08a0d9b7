#include "scene/preview/ScenePreview.h"

#include "platform/process/Parallel.h"
#include "render/OrderedProducer.h"
#include "render/preview/PreviewStretch.h"
#include "scene/EditedImage.h"
#include "scene/SceneSound.h"
#include "scene/Settings.h"
#include "scene/XSheetCursor.h"
#include "sound/SoundFile.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace velmor {

namespace {

constexpr int mostAhead = 300;    ///< frames that are ordered at a time
constexpr int mostDescribed = 40; ///< of them, what is found out in one pass
constexpr int mostMegabytes = 1 << 20;

/// What can change what a frame shows.
constexpr UpdateHint contentHints = UpdateHint::AssetLists | cellsAndPictureHint | UpdateHint::Levels;

std::size_t BytesToKeep(const CProfile& profile) {
    const int megabytes = std::clamp(Get(profile, setting::previewMegabytes), 0, mostMegabytes);
    return static_cast<std::size_t>(megabytes) << 20U;
}

} // namespace

CScenePreview::CScenePreview(CSceneContext context, CXSheetCursor& cursor, CImageCache& cache, IAudioOutput& output)
    : m_context(context),
      m_cursor(cursor),
      m_sound(output),
      m_choices(CPreviewChoices::Remembered(context.profile)),
      m_contents(context.model),
      m_composer(cache, BytesToKeep(context.profile), ProcessorCount()) {
    m_context.views.Add(*this);
}

CScenePreview::~CScenePreview() {
    m_context.views.Remove(*this);
}

CPreviewRange CScenePreview::Range() const {
    const CSceneModel& model = m_context.model;
    return m_run ? m_run->range : RangeToPlay(model.selection, m_set, model.Scene().xsheet.FrameCount());
}

CScenePreview::CRun CScenePreview::RunFrom(int frame) const {
    const int frameRate = std::max(1, m_context.model.Scene().geometry.frameRate);
    const int last = m_context.model.Scene().xsheet.FrameCount() - 1;
    const CPreviewRange range{std::min(Range().first, last), std::min(Range().last, last)};
    const int start = std::clamp(frame, range.first, range.last);
    return {.range = range,
            .player = {range, start, m_choices.loops},
            .rate = frameRate * m_choices.speed / 100.0,
            .clock = {},
            .shown = {},
            .picture = {},
            .again = {}};
}

void CScenePreview::Play() {
    const CSceneModel& model = m_context.model;
    if (m_run || !model.sceneOpen || model.Scene().xsheet.FrameCount() == 0)
        return;
    static_cast<void>(CEditedImage(m_context).Save()); // it has said why not; then the file as it is is played
    m_contents.Forget();
    const int cameraFrame = model.cursorFrame;
    m_contents.SetView(
        {m_contents.View().factor, m_choices.followsCamera ? std::nullopt : std::optional(cameraFrame)});
    LookAgain();
    m_dropped = 0;
    m_heard = HeardNow();
    m_mix.Want(model);
    m_run = RunFrom(StartIn(Range(), model.cursorFrame));
    TellState("Playing");
    m_context.Update(UpdateHint::Preview);
    if (m_run)
        Order();
}

void CScenePreview::Stop() {
    if (!m_run)
        return;
    const std::optional<int> frame = m_run->shown;
    End();
    if (frame)
        MoveCursor(*frame);
}

void CScenePreview::MoveCursor(int frame) {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen || !model.Scene().xsheet.HasFrame(frame) || frame == model.cursorFrame)
        return;
    // Frames that are selected to be played stay selected, to be played again.
    const CPreviewRange selected{model.selection.firstFrame, model.selection.lastFrame};
    if (selected.Count() > 1 && selected.Holds(frame))
        m_cursor.SetCursorY(frame);
    else
        m_cursor.GoTo({model.cursorLevel, frame});
}

void CScenePreview::GoToFirst() {
    const int frame = Range().first;
    GoBack();
    MoveCursor(frame);
}

void CScenePreview::GoToLast() {
    const int frame = Range().last;
    GoBack();
    MoveCursor(frame);
}

void CScenePreview::Step(int frames) {
    Stop();
    MoveCursor(m_context.model.cursorFrame + frames);
}

void CScenePreview::GoBack() {
    if (m_run)
        End();
}

void CScenePreview::End() {
    m_run.reset();
    static_cast<void>(m_sound.End());
    static_cast<void>(m_composer.Want({}));
    TellState("Stopped.");
    m_context.Update(UpdateHint::Preview);
}

void CScenePreview::Pass(Milliseconds now) {
    if (!m_run)
        return;
    if (m_run->again) {
        CRun run = RunFrom(*m_run->again);
        run.shown = m_run->shown;
        run.picture = m_run->picture;
        run.droppedBefore = m_dropped;
        m_run = std::move(run);
    }
    if (!m_run->clock && !BeginClock(now))
        return;
    FollowSound(now);
    const CPreviewPlayer::CPass pass = m_run->player.Pass(
        m_run->clock->Played(now), [this](int frame) { return m_composer.Has(m_contents.Of(frame)); });
    if (const std::int64_t dropped = m_run->droppedBefore + m_run->player.Dropped();
        std::exchange(m_dropped, dropped) != dropped)
        TellState("Playing");
    if (pass.hasEnded) {
        Stop();
        return;
    }
    if (m_run->orderedAt != m_run->player.Frame())
        Order();
    if (m_run && pass.show)
        Show(*pass.show);
}

// The first picture is waited for; what goes on after a change does not stand still for it. The sound always is.
bool CScenePreview::BeginClock(Milliseconds now) {
    if (!m_run->shown && !m_composer.Has(m_contents.Of(m_run->player.Frame()))) {
        if (m_run->orderedAt != m_run->player.Frame())
            Order();
        return false;
    }
    if (!m_mix.IsReady())
        return false;
    BeginSound();
    m_run->clock.emplace(m_run->rate, now, m_run->hasSound);
    m_run->orderedAt = -1;
    return true;
}

void CScenePreview::BeginSound() {
    CSceneModel& model = m_context.model;
    static_cast<void>(m_sound.End());
    m_soundFault.clear();
    if (model.Scene().sounds.Count() == 0)
        return;
    CStatus status = model.soundBuffer ? CStatus() : PrepareSoundTrack(model);
    if (status)
        status = StartSound();
    m_run->hasSound = status && m_sound.IsPlaying();
    if (!status)
        m_soundFault = status.Message();
    if (!m_soundFault.empty())
        TellState("Playing");
}

CStatus CScenePreview::StartSound() {
    const int rate = std::max(1, m_context.model.Scene().geometry.frameRate);
    const CPreviewPlay play{m_run->range, m_run->player.Frame(), m_choices.loops, m_choices.speed / 100.0};
    const auto tell = [this](const std::string& text) { m_soundFault = text; };
    try {
        if (const std::shared_ptr<const CMixedSound> mixed = m_mix.Mixed()) {
            CMixStretch stretch = StretchOf(*mixed, rate, play);
            m_run->framesPerSecond = stretch.framesPerSample * mixRate;
            return m_sound.StartStereo(std::move(stretch.stereo), mixRate, tell);
        }
        const CPreviewStretch stretch = StretchOf(*m_context.model.soundBuffer, SamplesPerFrame(rate), play);
        m_run->framesPerSecond = stretch.framesPerSample * samplesPerSecond;
        return m_sound.Start(stretch.samples, tell);
    } catch (const std::bad_alloc&) {
        return CStatus::Failure("There is not enough memory for the sound of the xsheet.");
    }
}

std::shared_ptr<const CMixedSound> CScenePreview::Mixed() {
    m_mix.Want(m_context.model);
    return m_mix.Mixed();
}

void CScenePreview::FollowSound(Milliseconds now) {
    if (!m_run->hasSound)
        return;
    if (m_sound.IsPlaying()) {
        m_run->clock->Follow(now, m_sound.Seconds() * m_run->framesPerSecond);
        return;
    }
    m_run->hasSound = false;
    m_run->clock->EndSound();
    if (m_choices.loops)
        GoOnFrom(m_run->range.first); // it has been heard some minutes long, whole rounds
}

void CScenePreview::GoOnFrom(int frame) {
    if (m_run)
        m_run->again = frame;
}

// Nearest due first. A picture that would come too late is left for the next round.
void CScenePreview::Order() {
    const double ahead = m_run->clock ? m_composer.MillisecondsOfOne() * m_run->rate / 1000 : 0;
    std::vector<PreviewContent> contents;
    int described = 0;
    m_run->orderedAt = m_run->player.Frame();
    for (const int frame : m_run->player.ToCome(static_cast<int>(std::lround(ahead)), mostAhead)) {
        if (!m_contents.Knows(frame) && ++described > mostDescribed) {
            m_run->orderedAt = -1;
            break;
        }
        contents.push_back(m_contents.Of(frame));
    }
    if (m_composer.Want(std::move(contents)))
        return;
    GoBack();
    m_context.Show(noRenderThread);
}

void CScenePreview::Show(int frame) {
    m_run->shown = frame;
    m_run->picture = m_composer.Find(m_contents.Of(frame));
    m_context.Update(UpdateHint::Preview);
}

void CScenePreview::TellState(const char* state) const {
    std::string text = state;
    if (m_run)
        text +=
            " frames " + std::to_string(m_run->range.first + 1) + " to " + std::to_string(m_run->range.last + 1);
    text += "     Dropped frames: " + std::to_string(m_dropped);
    if (!m_soundFault.empty())
        text += "     Without sound: " + m_soundFault;
    m_context.prompter.ShowStatus(text);
}

bool CScenePreview::IsReady(int frame) {
    return HoldsFrames() && m_context.model.Scene().xsheet.HasFrame(frame) && m_composer.Has(m_contents.Of(frame));
}

void CScenePreview::Free() {
    GoBack();
    m_composer.Clear();
    m_context.Update(UpdateHint::Preview);
}

void CScenePreview::SetChoices(const CPreviewChoices& choices) {
    if (m_choices == choices)
        return;
    m_choices = choices;
    m_choices.Remember(m_context.profile);
    LookAgain();
    if (m_run)
        GoOnFrom(m_run->player.Frame());
    m_context.Update(UpdateHint::Preview);
}

void CScenePreview::SetViewFactor(double factor) {
    m_viewFactor = std::min(factor, 1.0);
    LookAgain();
}

void CScenePreview::LookAgain() {
    CPreviewView view = m_contents.View();
    view.factor = m_choices.fullSize ? 1 : m_viewFactor;
    if (m_choices.followsCamera)
        view.cameraFrame.reset();
    else if (!view.cameraFrame)
        view.cameraFrame = m_context.model.cursorFrame;
    if (view == m_contents.View())
        return;
    m_contents.SetView(view);
    if (m_run)
        m_run->orderedAt = -1;
}

void CScenePreview::SetIn() {
    const int frame = Frame().value_or(m_context.model.selection.firstFrame);
    PlayRange(CPreviewRange{frame, std::max(frame, Range().last)});
}

void CScenePreview::SetOut() {
    const int frame = Frame().value_or(m_context.model.selection.lastFrame);
    PlayRange(CPreviewRange{std::min(frame, Range().first), frame});
}

void CScenePreview::ClearRange() {
    PlayRange(std::nullopt);
}

void CScenePreview::PlayRange(const std::optional<CPreviewRange>& range) {
    m_set = range;
    if (m_run) {
        m_run->range = range.value_or(CPreviewRange{0, m_context.model.Scene().xsheet.FrameCount() - 1});
        GoOnFrom(m_run->player.Frame());
    }
    m_context.Update(UpdateHint::Preview);
}

CScenePreview::CHeard CScenePreview::HeardNow() const {
    const CScene& scene = m_context.model.Scene();
    return {scene.sounds, scene.xsheet.FrameCount(), scene.geometry.frameRate};
}

void CScenePreview::OnUpdate(UpdateHint hint) {
    if (!Holds(hint, contentHints))
        return;
    const CSceneModel& model = m_context.model;
    m_contents.Forget();
    const std::string scene = model.sceneOpen ? model.databaseFolder + model.sceneName : std::string();
    if (std::exchange(m_scene, scene) != scene) {
        GoBack();
        m_set.reset();
        m_composer.Clear();
        m_mix.Forget();
        return;
    }
    if (!m_run)
        return;
    m_run->orderedAt = -1;
    const CHeard heard = HeardNow();
    if (heard.frameCount == 0)
        GoBack();
    else if (std::exchange(m_heard, heard) != heard) {
        m_mix.Want(model);
        GoOnFrom(m_run->player.Frame());
    }
}

} // namespace velmor
