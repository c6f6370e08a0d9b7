#include "app/cli/ConsolePrompter.h"
#include "app/cli/ExitStatus.h"
#include "app/cli/RenderPlan.h"
#include "app/cli/SceneReader.h"
#include "app/cli/farm/FarmJob.h"
#include "platform/process/RunProgram.h"

#include <algorithm>
#include <iostream>
#include <span>

namespace velmor {

namespace {

/// Of an array, unless its administrator has set another number.
constexpr std::size_t mostSlurmTasks = 1000;

std::vector<std::string> ChunksOf(std::span<const int> frames, std::size_t length) {
    std::vector<std::string> chunks;
    for (std::size_t begin = 0; begin < frames.size(); begin += length)
        chunks.push_back(TextOf(RangesOf(frames.subspan(begin, std::min(length, frames.size() - begin)))));
    return chunks;
}

[[nodiscard]] bool WriteText(const Path& path, const std::string& text) {
    return WriteFileAtomically(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

[[nodiscard]] bool WriteScript(const Path& path, const std::string& text) {
    if (!WriteText(path, text))
        return false;
    std::error_code error;
    using std::filesystem::perms;
    std::filesystem::permissions(path, perms::owner_exec | perms::group_exec | perms::others_exec,
                                 std::filesystem::perm_options::add, error);
    return !error;
}

// What an earlier job has left in its folder would be taken for this one's.
[[nodiscard]] bool ClearJob(const CFarmJob& job) {
    const Path log = job.Folder() / "joblog";
    return (!FileExists(log) || RemoveFile(log)) &&
           (!FolderExists(job.FramesFolder()) || RemoveFilesIn(job.FramesFolder()));
}

[[nodiscard]] bool WriteJob(const CFarmJob& job) {
    const Path& folder = job.Folder();
    if (!ClearJob(job) || !CreateFolder(folder / "log") || !WriteText(folder / "chunks", job.Chunks()) ||
        !WriteScript(folder / "frames.sh", job.FramesScript()))
        return false;
    if (job.IsMovie() && !WriteScript(folder / "join.sh", job.JoinScript()))
        return false;
    return WriteScript(folder / "submit.sh", job.SubmitScript());
}

std::ptrdiff_t CountThere(const CRenderSettings& settings) {
    if (IsMovie(settings.format))
        return 0;
    return std::ranges::count_if(settings.frames,
                                 [&](int frame) { return FileExists(RenderFrameFile(settings, frame)); });
}

// Which words would end a script's line or a quoted name.
bool HasControlCharacter(const std::string& text) {
    return std::ranges::any_of(text, [](unsigned char c) { return c < ' ' || c == '"'; });
}

std::string RefusalOf(const CFarmArguments& arguments, std::size_t tasks) {
    for (const std::string* text : {&arguments.folder, &arguments.render.scene.scene, &arguments.time,
                                    &arguments.partition, &arguments.render.output})
        if (HasControlCharacter(*text))
            return "Quotation marks and line breaks cannot stand in a job: " + *text;
    if (arguments.engine == FarmEngine::Slurm && tasks > mostSlurmTasks)
        return "Slurm takes " + std::to_string(mostSlurmTasks) + " tasks, and there would be " +
               std::to_string(tasks) + ": choose a larger --chunk";
    return {};
}

} // namespace

int RunFarm(const CFarmArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments.render.scene.database, arguments.render.scene.scene, prompter);
    if (!scene)
        return statusFailed;
    const CRenderSettings settings = PlanRender(arguments.render, scene->model, false).front();
    const std::vector<std::string> chunks = ChunksOf(settings.frames, static_cast<std::size_t>(arguments.chunk));
    std::string refusal = RefusalOf(settings, scene->model.Scene().geometry.Frame());
    if (refusal.empty())
        refusal = RefusalOf(arguments, chunks.size());
    if (!refusal.empty()) {
        prompter.ShowMessage(refusal);
        return statusWrongUsage;
    }
    const CFarmJob job(arguments, ProgramFile(), chunks);
    if (!WriteJob(job)) {
        prompter.ShowMessage("Could not write the job to " + Utf8Of(job.Folder()));
        return statusFailed;
    }
    const Path submit = job.Folder() / "submit.sh";
    std::cout << settings.frames.size() << " frames in " << chunks.size() << " tasks: " << Utf8Of(submit)
              << std::endl;
    if (const auto kept = CountThere(settings); kept > 0)
        std::cout << kept << " frames are there already; those that are whole will stay" << std::endl;
    if (!arguments.submit)
        return statusDone;
    return RunProgram(submit, {}) == 0 ? statusDone : statusFailed;
}

} // namespace velmor
