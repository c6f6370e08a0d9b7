#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/ExitStatus.h"
#include "app/cli/JsonLog.h"
#include "app/cli/RenderPlan.h"
#include "app/cli/SceneReader.h"
#include "render/RenderSetup.h"
#include "scene/SceneSound.h"
#include "scene/SoundOperations.h"

#include <iostream>

namespace velmor {

namespace {

/// What has become of one scene.
struct CSceneReport {
    std::string scene;
    int status = statusDone;
    int written = 0;
    int kept = 0;
    int failed = 0;
};

int StatusOf(const CRenderOutcome& outcome) {
    if (outcome.end == RenderEnd::Complete)
        return statusDone;
    switch (outcome.fault) {
    case RenderFault::Frame:
        return statusFrameFailed;
    case RenderFault::Input:
        return statusInputMissing;
    case RenderFault::Output:
        return statusOutputUnwritable;
    case RenderFault::None:
    case RenderFault::Machine:
        break;
    }
    return statusFailed;
}

/// Renders one scene as the arguments say, or says what would be rendered. The scene is only read.
class CSceneRender {
public:
    CSceneRender(const CRenderArguments& arguments, const std::string& scene)
        : m_arguments(arguments), m_prompter(arguments.log) {
        m_report.scene = scene;
    }

    CSceneReport Run(bool ownFolder) {
        m_scene = ReadScene(m_arguments.scene.database, m_report.scene, m_prompter);
        if (m_scene == nullptr) {
            m_report.status = statusSceneUnreadable;
            return m_report;
        }
        for (const CRenderSettings& settings : PlanRender(m_arguments, m_scene->model, ownFolder)) {
            const int status = RunOne(settings);
            if (m_report.status == statusDone)
                m_report.status = status;
        }
        return m_report;
    }

private:
    int Refuse(int status, const std::string& text) {
        m_prompter.ShowMessage(text);
        return status;
    }

    int RunOne(const CRenderSettings& settings) {
        const CSceneModel& scene = m_scene->model;
        if (const std::string refusal = RefusalOf(settings, scene.Scene().geometry.Frame()); !refusal.empty())
            return Refuse(statusWrongUsage, refusal);
        CRenderJob job = JobOf(m_arguments, settings, scene);
        if (m_arguments.dryRun)
            return Announce(job);
        if (job.finished)
            if (const std::vector<Path> missing = MissingInputs(job, scene); !missing.empty())
                return Name(missing);
        if (const CStatus made = MakeRenderDirectory(settings); !made)
            return Refuse(statusOutputUnwritable, made.Message());
        if (IsMovie(settings.format)) {
            if (!CSoundOperations(m_scene->context).PrepareMissingTrack())
                return statusInputMissing;
            job.sound = *scene.soundBuffer;
            if (settings.format == RenderFormat::Mp4 &&
                !m_scene->context.Report(MixSceneSound(scene.Scene(), scene.Paths(), job.mixed)))
                return statusFailed;
        }
        return Render(job);
    }

    int Render(const CRenderJob& job) {
        CImageCache cache(CImageCache::usualBytes);
        const std::unique_ptr<IProgress> progress = m_prompter.BeginProgress("Rendering");
        const CRenderOutcome outcome = RenderToDisk(job, cache, *progress, [] { return false; });
        m_report.written += outcome.framesWritten;
        m_report.kept += outcome.framesKept;
        m_report.failed += outcome.framesFailed;
        if (!outcome.message.empty())
            m_prompter.ShowMessage(outcome.message);
        return StatusOf(outcome);
    }

    int Name(const std::vector<Path>& missing) {
        for (const Path& file : missing)
            m_prompter.ShowMessage(Utf8Of(file) + " is missing");
        return missing.empty() ? statusDone : statusInputMissing;
    }

    int Announce(const CRenderJob& job) {
        const CRenderSettings& settings = job.settings;
        if (IsMovie(settings.format)) {
            std::cout << "make " << Utf8Of(settings.target) << " of " << settings.frames.size() << " frames\n";
        } else {
            for (const int frame : settings.frames) {
                const bool kept =
                    settings.resume && IsFrameKept(settings, m_scene->model.Scene().geometry.Frame(), frame);
                std::cout << (kept ? "keep " : "make ") << Utf8Of(RenderFrameFile(settings, frame)) << '\n';
            }
        }
        return Name(MissingInputs(job, m_scene->model));
    }

    const CRenderArguments& m_arguments;
    CConsolePrompter m_prompter;
    std::unique_ptr<CReadScene> m_scene;
    CSceneReport m_report;
};

void Print(const CSceneReport& report) {
    std::cout << report.scene << ": ";
    if (report.status == statusSceneUnreadable)
        std::cout << "cannot be read";
    else
        std::cout << report.written << " frames written, " << report.kept << " kept, " << report.failed
                  << " failed";
    std::cout << ", status " << report.status << std::endl;
}

void Log(const CSceneReport& report) {
    LogJson({{"event", "end"},
             {"scene", report.scene},
             {"status", report.status},
             {"written", report.written},
             {"kept", report.kept},
             {"failed", report.failed}});
}

// Nothing when there are none.
std::vector<std::string> ScenesOf(const CRenderArguments& arguments) {
    if (arguments.scenes.empty())
        return {arguments.scene.scene};
    if (arguments.scenes != std::vector<std::string>{"all"})
        return arguments.scenes;
    return ListScenes(arguments.scene.database);
}

} // namespace

int RunRender(const CRenderArguments& arguments) {
    EndWithStatusOnTermination();
    CConsolePrompter prompter(arguments.log);
    if (!RequireDatabase(arguments.scene.database, prompter))
        return statusSceneUnreadable;
    int status = statusDone;
    for (const std::string& scene : ScenesOf(arguments)) {
        const bool isOneOfSeveral = !arguments.scenes.empty();
        const CSceneReport report = CSceneRender(arguments, scene).Run(isOneOfSeveral);
        if (status == statusDone)
            status = report.status;
        if (arguments.log == LogFormat::Json)
            Log(report);
        if (isOneOfSeveral && !arguments.dryRun)
            Print(report);
    }
    return status;
}

} // namespace velmor
