#include "app/cli/RenderPlan.h"

#include "render/Compressors.h"
#include "render/RenderSetup.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>

namespace velmor {

namespace {

// The command line takes no other names.
RenderFormat FormatNamed(const std::string& name) {
    constexpr std::array<const char*, 5> names = {"png", "tga", "bmp", "avi", "mp4"};
    return static_cast<RenderFormat>(std::ranges::find(names, name) - names.begin());
}

std::vector<int> ChosenFrames(const CRenderArguments& arguments, int frameCount) {
    const std::vector<int> all =
        IndicesOf(arguments.frames.value_or(std::vector<CNumberRange>{{1, frameCount, 1}}), frameCount);
    std::vector<int> frames;
    for (std::size_t i = 0; i < all.size(); i += static_cast<std::size_t>(arguments.step))
        frames.push_back(all[i]);
    return frames;
}

// How long the last frame stands: as long as those before it.
int StepOf(const CRenderArguments& arguments) {
    return arguments.step * (arguments.frames ? arguments.frames->back().step : 1);
}

CRenderSettings SettingsOf(const CRenderArguments& arguments, const CXSheet& xsheet) {
    CRenderSettings settings;
    settings.levels = ChosenLevels(arguments.levels, xsheet);
    settings.frames = ChosenFrames(arguments, xsheet.FrameCount());
    settings.step = StepOf(arguments);
    settings.scaling = arguments.scaling;
    settings.antialias = arguments.antialias;
    settings.format = FormatNamed(arguments.format);
    settings.compression = arguments.compression;
    settings.transparentBackground = arguments.transparent;
    settings.resume = settings.onlyWhole = arguments.keepWhole;
    settings.keepGoing = true;
    settings.asOfAvi = arguments.forAvi;
    settings.quality = arguments.quality * 100;
    settings.compressor = arguments.codec;
    return settings;
}

// A level's name as part of a file's.
std::string FileNameOf(std::string level) {
    std::ranges::replace_if(
        level, [](unsigned char c) { return c < 128 && std::isalnum(c) == 0 && c != '_' && c != '-'; }, '_');
    return level;
}

// What stands behind the name of the output for each level; a name that several have is told apart by the number.
std::vector<std::string> LevelSuffixes(const std::vector<int>& levels, const CXSheet& xsheet) {
    std::vector<std::string> suffixes;
    std::set<std::string> taken;
    for (const int level : levels) {
        const std::string name = FileNameOf(xsheet.LevelName(level));
        const std::string number = std::to_string(level + 1);
        std::string suffix("-");
        suffix.append(name.empty() ? number : name);
        if (!taken.insert(suffix).second)
            taken.insert(suffix.append("-").append(number));
        suffixes.push_back(suffix);
    }
    return suffixes;
}

} // namespace

std::vector<int> ChosenLevels(const std::optional<std::vector<CNumberRange>>& levels, const CXSheet& xsheet) {
    return levels ? IndicesOf(*levels, xsheet.LevelCount()) : AllLevels(xsheet);
}

std::vector<CRenderSettings> PlanRender(const CRenderArguments& arguments, const CSceneModel& scene,
                                        bool ownFolder) {
    CRenderSettings settings = SettingsOf(arguments, scene.Scene().xsheet);
    Path name = PathOf(arguments.output);
    if (ownFolder)
        name = name.parent_path() / PathOf(scene.sceneName) / name.filename();
    settings.target = RenderTargetOf(name, settings.format);
    if (!arguments.eachLevel || settings.levels.empty())
        return {settings};
    std::vector<CRenderSettings> plan;
    const std::vector<std::string> suffixes = LevelSuffixes(settings.levels, scene.Scene().xsheet);
    for (std::size_t i = 0; i < suffixes.size(); ++i) {
        plan.push_back(settings);
        plan.back().levels = {settings.levels[i]};
        const std::string end = IsMovie(settings.format) ? "" : "-"; // before a frame's number
        plan.back().target = RenderTargetOf(Path(name) += suffixes[i] + end, settings.format);
    }
    return plan;
}

std::string RefusalOf(const CRenderSettings& settings, CSize scene) {
    if (!settings.compressor.empty() && FindCompressor(settings.compressor) == nullptr)
        return "A suitable compressor cannot be found.";
    if (settings.frames.empty())
        return "Invalid start or end frame!";
    if (settings.levels.empty())
        return "There is no such level in the scene";
    return CheckRenderSize(settings.format, settings.scaling, scene).Message();
}

CRenderJob JobOf(const CRenderArguments& arguments, const CRenderSettings& settings, const CSceneModel& scene) {
    CRenderJob job{{scene.Scene(), scene.Paths().SceneFolder(), settings.antialias}, settings, {}};
    if (!arguments.from.empty())
        job.finished = {PathOf(arguments.from), FormatNamed(arguments.fromFormat)};
    return job;
}

std::vector<Path> MissingInputs(const CRenderJob& job, const CSceneModel& scene) {
    std::set<Path> files;
    for (const int frame : job.settings.frames) {
        if (job.finished) {
            files.insert(RenderFrameFile(job.finished->target, job.finished->format, frame));
            continue;
        }
        for (const int level : job.settings.levels)
            if (const CXSheetCell& cell = scene.Scene().xsheet.Cell(level, frame); cell.IsUsed())
                files.insert(AssetFilePath(job.shot.sceneFolder, cell.FolderName(), cell.CelName()));
    }
    if (IsMovie(job.settings.format))
        for (const CSoundPlacement& sound : scene.Scene().sounds.All())
            files.insert(scene.Paths().SoundFile(sound.name));
    std::vector<Path> missing;
    std::ranges::copy_if(files, std::back_inserter(missing), [](const Path& file) { return !FileExists(file); });
    return missing;
}

} // namespace velmor
