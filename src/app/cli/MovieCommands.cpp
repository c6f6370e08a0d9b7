#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "render/Compressors.h"
#include "render/FinalRender.h"
#include "render/FlipbookSettings.h"
#include "render/FrameFiles.h"
#include "render/FrameRequests.h"
#include "render/RenderSetup.h"
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

// The command line takes no other names.
RenderFormat FormatNamed(const std::string& name) {
    constexpr std::array<const char*, 5> names = {"png", "tga", "bmp", "avi", "mp4"};
    return static_cast<RenderFormat>(std::ranges::find(names, name) - names.begin());
}

// What the arguments ask for, frames and levels cut to those that there are.
CRenderSettings RenderSettingsOf(const CRenderArguments& arguments, const CXSheet& xsheet) {
    CRenderSettings settings;
    settings.levels = ChosenLevels(arguments.levels, xsheet);
    const int frameCount = xsheet.FrameCount();
    const std::vector<int> frames =
        IndicesOf(arguments.frames.value_or(std::vector<CNumberRange>{{1, frameCount}}), frameCount);
    for (std::size_t i = 0; i < frames.size(); i += static_cast<std::size_t>(arguments.step))
        settings.frames.push_back(frames[i]);
    settings.step = arguments.step;
    settings.scaling = arguments.scaling;
    settings.antialias = arguments.antialias;
    settings.format = FormatNamed(arguments.format);
    settings.transparentBackground = arguments.transparent;
    settings.resume = arguments.resume;
    settings.quality = arguments.quality * 100;
    settings.compressor = arguments.codec;
    settings.target = RenderTargetOf(PathOf(arguments.output), settings.format);
    return settings;
}

// Why a render cannot be made as asked; empty when it can.
std::string RefusalOf(const CRenderSettings& settings, CSize scene) {
    if (!settings.compressor.empty() && FindCompressor(settings.compressor) == nullptr)
        return "A suitable compressor cannot be found.";
    if (settings.frames.empty())
        return "Invalid start or end frame!";
    if (settings.levels.empty())
        return "There is no such level in the scene";
    return CheckRenderSize(settings.format, settings.scaling, scene).Message();
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
    settings.firstFrame = range.first;
    settings.lastFrame = std::min(range.last, model.xsheet.FrameCount());
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
    model.selection.firstFrame = settings.firstFrame - 1; // where the sound starts
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
    const CSceneModel& model = scene->model;
    CRenderJob job{{model.xsheet, model.geometry, model.Paths().SceneFolder(), arguments.antialias},
                   model.camera,
                   RenderSettingsOf(arguments, model.xsheet),
                   {}};
    if (const std::string refusal = RefusalOf(job.settings, model.geometry.Frame()); !refusal.empty()) {
        prompter.ShowMessage(refusal);
        return false;
    }
    if (!scene->context.Report(MakeRenderDirectory(job.settings)))
        return false;
    if (IsMovie(job.settings.format) && PrepareSound(*scene))
        job.sound = *model.soundBuffer;
    CImageCache cache(CImageCache::usualBytes);
    const std::unique_ptr<IProgress> progress = prompter.BeginProgress("Rendering");
    const CRenderOutcome outcome = RenderToDisk(job, cache, *progress, [] { return false; });
    if (!outcome.message.empty())
        prompter.ShowMessage(outcome.message);
    return outcome.end == RenderEnd::Complete;
}

} // namespace velmor
