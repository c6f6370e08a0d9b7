// Playing in place in the window, against sound devices that make no sound and note what they were told. The
// figures are what was shown: frames a second, frames dropped, how far the picture was from the sound, how long the
// first frame took. What else the machine does counts in them.

#include "BenchImages.h"
#include "app/demo/DemoDatabase.h"
#include "app/demo/DemoScene.h"
#include "app/window/MainFrame.h"
#include "platform/sound/NoAudio.h"
#include "scene/CameraOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/SilentPrompter.h"
#include "scene/VelmorltDoc.h"
#include "scene/preview/ScenePreview.h"
#include "sound/SoundFile.h"
#include "xsheet/XSheetFile.h"

#include <QAction>
#include <QTest>
#include <benchmark/benchmark.h>
#include <chrono>
#include <numbers>

namespace velmor {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point begun) {
    return std::chrono::duration<double>(Clock::now() - begun).count();
}

/// Takes samples by the wall clock, in portions as a real device does.
class CTimedOutput final : public CNoOutput {
public:
    bool CanPlay() override { return true; }
    bool Open() override { return true; }
    bool Play(std::span<const std::uint8_t> samples) override {
        m_length = samples.size();
        m_begun = Clock::now();
        return true;
    }
    std::size_t Position() const override {
        return std::min(static_cast<std::size_t>(Heard() / 512) * 512, m_length);
    }
    void Reset() override { m_length = 0; }
    /// Samples, exactly.
    double Heard() const {
        return m_length > 0 ? std::min(SecondsSince(m_begun) * samplesPerSecond, static_cast<double>(m_length)) : 0;
    }

private:
    Clock::time_point m_begun;
    std::size_t m_length = 0;
};

class CQuietPrompter final : public CSilentPrompter {
public:
    void ShowMessage(const std::string&) override {}
};

/// The window on a scene, and what it shows while it plays.
class CPlayed final : private IDocView {
public:
    CPlayed(const Path& database, const std::string& scene) {
        Set(m_profile, setting::databaseDir, WithSeparator(Utf8Of(database)));
        auto audio = std::make_unique<CAudioPair<CTimedOutput>>();
        m_output = &audio->output;
        m_doc = std::make_unique<CVelmorltDoc>(m_prompter, m_profile, CDocumentFolders{database, database},
                                               std::move(audio));
        m_frame = std::make_unique<CMainFrame>(*m_doc, m_prompter, m_profile);
        m_frame->resize(1920, 1130);
        static_cast<void>(m_doc->Scenes().OpenScene(scene));
        m_frame->UpdateCommands();
        if (!m_doc->Model().cameraAntialias)
            m_frame->Action(CommandId::CameraAntialias)->trigger();
        m_doc->Views().Add(*this);
        m_frame->show();
        static_cast<void>(QTest::qWaitForWindowExposed(m_frame.get()));
        QTest::qWait(500); // the camera picture is there
    }
    ~CPlayed() override { m_doc->Views().Remove(*this); }

    CScenePreview& Preview() { return m_doc->Preview(); }
    void SetFullSize(bool full) {
        CPreviewChoices choices = Preview().Choices();
        choices.fullSize = full;
        Preview().SetChoices(choices);
    }
    /// Plays for a while, of which `state` is told.
    void Play(benchmark::State& state, double seconds) {
        m_shown = 0;
        m_worst = 0;
        m_first.reset();
        m_frame->UpdateCommands();
        m_begun = Clock::now();
        m_frame->Action(CommandId::PreviewPlay)->trigger();
        QTest::qWait(static_cast<int>(seconds * 1000));
        const double taken = SecondsSince(m_begun) - m_first.value_or(0);
        state.counters["shown/s"] = static_cast<double>(m_shown) / taken;
        state.counters["dropped"] = static_cast<double>(Preview().Dropped());
        state.counters["first ms"] = m_first.value_or(0) * 1000;
        state.counters["off ms"] = m_worst * 1000;
        Preview().GoBack();
    }

private:
    void OnUpdate(UpdateHint hint) override {
        if (hint != UpdateHint::Preview || !Preview().Frame() || Preview().Frame() == m_last)
            return;
        m_last = Preview().Frame();
        if (!m_first)
            m_first = SecondsSince(m_begun);
        ++m_shown;
        const double rate = m_doc->Model().Scene().geometry.frameRate;
        const double heard = m_output->Heard() / SamplesPerFrame(static_cast<int>(rate));
        const double count = Preview().Range().Count();
        if (m_shown > 1 && m_output->Heard() > 0) // when a frame appears the sound is at its beginning
            m_worst = std::max(m_worst,
                               std::abs(std::remainder(heard - *m_last + Preview().Range().first, count)) / rate);
    }

    CQuietPrompter m_prompter;
    CProfile m_profile;
    CTimedOutput* m_output = nullptr;
    std::unique_ptr<CVelmorltDoc> m_doc;
    std::unique_ptr<CMainFrame> m_frame;
    Clock::time_point m_begun;
    std::optional<double> m_first;
    std::optional<int> m_last;
    std::int64_t m_shown = 0;
    double m_worst = 0;
};

/// The demonstration scene from a standstill: PAL, 8 levels, antialiased, 25 frames a second.
void PlayDemo(benchmark::State& state) {
    const CBenchFolder folder;
    CQuietPrompter prompter;
    if (!demo::MakeDemoDatabase(WithSeparator(Utf8Of(folder.Path())), prompter))
        state.SkipWithError("no demonstration scene");
    for ([[maybe_unused]] auto _ : state) {
        CPlayed played(folder.Path(), demo::demoScene);
        played.SetFullSize(state.range(0) != 0);
        played.Play(state, static_cast<double>(state.range(1)));
    }
}
BENCHMARK(PlayDemo)
    ->ArgNames({"full", "seconds"})
    ->ArgsProduct({{0, 1}, {1, 10}})
    ->Iterations(1)
    ->Unit(benchmark::kSecond)
    ->UseRealTime();

/// Five levels of characters over a picture at 1920 x 1080 and 24 frames a second, under a camera that moves.
void MakeHdScene(const Path& database) {
    const CScenePaths paths(WithSeparator(Utf8Of(database)), "HD");
    static_cast<void>(CreateFolder(paths.CelFolder("walk")));
    static_cast<void>(CreateFolder(paths.SceneFolder() / "_Pictures_"));
    CScene data;
    data.geometry = {1920, 1080, 24, 0};
    data.xsheet = CXSheet(6, 48);
    CCelImg picture;
    static_cast<void>(picture.CreatePicture(1920, 1080, paths.PictureFile("back")));
    PaintLandscape(picture);
    static_cast<void>(picture.Save());
    for (int number = 0; number < 10; ++number) {
        CCelImg cel;
        static_cast<void>(cel.CreateCel(1920, 1080, paths.CelFile("walk", std::to_string(number))));
        PaintCharacter(cel, number);
        static_cast<void>(cel.SaveCel());
    }
    for (int frame = 0; frame < 48; ++frame) {
        data.camera.MutableAt(frame) = {frame * 2.0, 0, 0, 1};
        for (int level = 0; level < 5; ++level)
            static_cast<void>(data.xsheet.MutableCell(level, frame)
                                  .Set(paths.SceneFolder(), "walk", std::to_string((frame / 2 + 2 * level) % 10),
                                       data.geometry.Frame()));
        static_cast<void>(data.xsheet.MutableCell(5, frame).Set(paths.SceneFolder(), "_Pictures_", "back",
                                                                data.geometry.Frame()));
    }
    static_cast<void>(SaveXSheet(paths.XSheetFile(), data));
}

/// The first round, and one when all frames are ready.
void PlayHd(benchmark::State& state) {
    const CBenchFolder folder;
    MakeHdScene(folder.Path());
    CPlayed played(folder.Path(), "HD");
    played.SetFullSize(state.range(0) != 0);
    if (state.range(1) != 0) {
        played.Play(state, 2);
        for (int tries = 0; tries < 60 && !played.Preview().IsReady(47); ++tries)
            played.Play(state, 2);
    }
    for ([[maybe_unused]] auto _ : state)
        played.Play(state, 4);
}
BENCHMARK(PlayHd)
    ->ArgNames({"full", "cached"})
    ->ArgsProduct({{0, 1}, {0, 1}})
    ->Iterations(1)
    ->Unit(benchmark::kSecond)
    ->UseRealTime();

} // namespace
} // namespace velmor
