#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "platform/PngFile.h"
#include "render/FinalRender.h"
#include "render/FlipbookSettings.h"
#include "render/FrameFiles.h"
#include "render/FrameRequests.h"
#include "scene/FlipbookOperations.h"
#include "scene/SoundOperations.h"

#include <algorithm>
#include <array>

namespace velmor {

namespace {

// Cuts the padding columns off.
CFrameBuffer CropWidth(const CFrameBuffer& frame, int width) {
    CFrameBuffer cropped{width, frame.height, {}};
    const auto from = static_cast<std::ptrdiff_t>(frame.width) * 3;
    cropped.pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(frame.height) * 3);
    for (int y = 0; y < frame.height; ++y) {
        const auto row = frame.pixels.begin() + y * from;
        cropped.pixels.insert(cropped.pixels.end(), row, row + static_cast<std::ptrdiff_t>(width) * 3);
    }
    return cropped;
}

std::vector<int> ChosenLevels(const std::optional<std::vector<CNumberRange>>& levels, const CXSheet& xsheet) {
    return levels ? IndicesOf(*levels, xsheet.LevelCount()) : AllLevels(xsheet);
}

bool PrepareSound(CReadScene& scene) {
    CSoundOperations(scene.context).PrepareSoundBuffer();
    return scene.model.soundBuffer.has_value();
}

std::optional<RenderFormat> FormatNamed(const std::string& name) {
    constexpr std::array<const char*, 4> names = {"png", "tga", "bmp", "avi"};
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end())
        return std::nullopt;
    return static_cast<RenderFormat>(found - names.begin());
}

// Why a render cannot be made as asked; empty when it can.
std::string RefusalOf(const CRenderArguments& arguments) {
    if (!FormatNamed(arguments.format))
        return "The system does not support the required compression";
    if (!arguments.codec.empty() && arguments.codec != "MSVC" && arguments.codec != "msvideo1")
        return "A suitable compressor cannot be found.";
    return {};
}

Path RenderTarget(const CRenderArguments& arguments) {
    Path target = PathOf(arguments.output);
    if (arguments.format == "avi" && target.extension() != ".avi")
        target += ".avi";
    return target;
}

} // namespace

bool RunCompose(const CComposeArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments.scene.database, arguments.scene.scene, prompter);
    if (!scene)
        return false;
    const CSceneModel& model = scene->model;
    const int frame = arguments.frame - 1;
    if (!model.xsheet.HasFrame(frame)) {
        prompter.ShowMessage("There is no frame " + std::to_string(arguments.frame) + " in the scene");
        return false;
    }
    CImageCache cache(0);
    CFrameBuffer picture;
    const CShot shot{model.xsheet, model.geometry, model.Paths().SceneFolder(), arguments.antialias};
    const CFrameRequest request = RequestCameraPicture(shot, frame, model.camera.At(frame));
    if (!scene->context.Report(ComposeFrame(request, cache, picture, true)))
        return false;
    if (WriteFrameFile(PathOf(arguments.output), FrameFormat::Png, CropWidth(picture, model.geometry.width), {}))
        return true;
    prompter.ShowMessage("Could not write " + arguments.output);
    return false;
}

bool RunFlipbook(const CFlipbookArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments.scene.database, arguments.scene.scene, prompter);
    if (!scene)
        return false;
    CSceneModel& model = scene->model;
    const CNumberRange range = arguments.frames.value_or(CNumberRange{1, model.xsheet.FrameCount()});
    CFlipbookSettings settings;
    settings.levels = ChosenLevels(arguments.levels, model.xsheet);
    settings.startFrame = range.first;
    settings.endFrame = std::min(range.last, model.xsheet.FrameCount());
    settings.step = arguments.step;
    settings.scaling = arguments.scaling;
    settings.quality = arguments.quality;
    settings.antialias = arguments.antialias;
    if (!scene->context.Report(CheckFlipbookSettings(settings, model.xsheet.FrameCount())))
        return false;
    if (!model.xsheet.HasFrame(arguments.cursor - 1)) {
        prompter.ShowMessage("There is no frame " + std::to_string(arguments.cursor) + " in the scene");
        return false;
    }
    model.cursorFrame = arguments.cursor - 1;
    model.selection.startFrame = settings.startFrame - 1; // where the sound starts
    PrepareSound(*scene);
    CImageCache cache(CImageCache::usualBytes);
    CFlipbookOperations flipbooks(scene->context, cache);
    return flipbooks.Generate(settings,
                              arguments.output.empty() ? flipbooks.LastFlipbook() : PathOf(arguments.output));
}

bool RunRender(const CRenderArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments.scene.database, arguments.scene.scene, prompter);
    if (!scene)
        return false;
    if (const std::string refusal = RefusalOf(arguments); !refusal.empty()) {
        prompter.ShowMessage(refusal);
        return false;
    }
    const CSceneModel& model = scene->model;
    CRenderJob job{
        {model.xsheet, model.geometry, model.Paths().SceneFolder(), arguments.antialias}, model.camera, {}, {}};
    job.settings.levels = ChosenLevels(arguments.levels, model.xsheet);
    const int frameCount = model.xsheet.FrameCount();
    const std::vector<int> frames =
        IndicesOf(arguments.frames.value_or(std::vector<CNumberRange>{{1, frameCount}}), frameCount);
    for (std::size_t i = 0; i < frames.size(); i += static_cast<std::size_t>(arguments.step))
        job.settings.frames.push_back(frames[i]);
    job.settings.scaling = arguments.scaling;
    job.settings.antialias = arguments.antialias;
    job.settings.format = *FormatNamed(arguments.format);
    job.settings.transparentBackground = arguments.transparent;
    job.settings.resume = arguments.resume;
    job.settings.target = RenderTarget(arguments);
    if (job.settings.frames.empty() || job.settings.levels.empty()) {
        prompter.ShowMessage(job.settings.frames.empty() ? "Invalid start or end frame!"
                                                         : "There is no such level in the scene");
        return false;
    }
    if (job.settings.format == RenderFormat::Avi && PrepareSound(*scene))
        job.sound = *model.soundBuffer;
    CImageCache cache(CImageCache::usualBytes);
    const std::unique_ptr<IProgress> progress = prompter.BeginProgress("Rendering");
    const CRenderOutcome outcome = RenderToDisk(job, cache, *progress, [] { return false; });
    if (!outcome.message.empty())
        prompter.ShowMessage(outcome.message);
    return outcome.end == RenderEnd::Complete;
}

} // namespace velmor
