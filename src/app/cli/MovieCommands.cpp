#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/RenderPlan.h"
#include "app/cli/SceneReader.h"
#include "render/FlipbookSettings.h"
#include "render/FrameFiles.h"
#include "render/FrameRequests.h"
#include "scene/FlipbookOperations.h"
#include "scene/SoundOperations.h"

#include <algorithm>

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

} // namespace

bool RunCompose(const CComposeArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments.scene.database, arguments.scene.scene, prompter);
    if (!scene)
        return false;
    const CSceneModel& model = scene->model;
    const int frame = arguments.frame - 1;
    if (!model.Scene().xsheet.HasFrame(frame)) {
        prompter.ShowMessage("There is no frame " + std::to_string(arguments.frame) + " in the scene");
        return false;
    }
    CImageCache cache(0);
    CFrameBuffer picture;
    const CShot shot{model.Scene(), model.Paths().SceneFolder(), arguments.antialias};
    const CFrameRequest request = RequestCameraPicture(shot, frame);
    if (!scene->context.Report(ComposeFrame(request, cache, picture, true)))
        return false;
    if (WriteFrameFile(PathOf(arguments.output), FrameFormat::Png, CropWidth(picture, model.Scene().geometry.width),
                       {}))
        return true;
    prompter.ShowMessage("Could not write " + arguments.output);
    return false;
}

bool RunFlipbook(const CFlipbookArguments& arguments) {
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments.scene.database, arguments.scene.scene, prompter);
    if (!scene)
        return false;
    const CSceneModel& model = scene->model;
    const CNumberRange range = arguments.frames.value_or(CNumberRange{1, model.Scene().xsheet.FrameCount()});
    CFlipbookSettings settings;
    settings.levels = ChosenLevels(arguments.levels, model.Scene().xsheet);
    settings.firstFrame = range.first;
    settings.lastFrame = std::min(range.last, model.Scene().xsheet.FrameCount());
    settings.step = arguments.step;
    settings.scaling = arguments.scaling;
    settings.quality = arguments.quality;
    settings.antialias = arguments.antialias;
    if (!scene->context.Report(CheckFlipbookSettings(settings, model.Scene().xsheet.FrameCount())))
        return false;
    if (!model.Scene().xsheet.HasFrame(arguments.cursor - 1)) {
        prompter.ShowMessage("There is no frame " + std::to_string(arguments.cursor) + " in the scene");
        return false;
    }
    CSoundOperations(scene->context).PrepareSoundBuffer();
    CImageCache cache(CImageCache::usualBytes);
    CFlipbookOperations flipbooks(scene->context, cache);
    return flipbooks.Generate(settings,
                              arguments.output.empty() ? flipbooks.LastFlipbook() : PathOf(arguments.output),
                              arguments.cursor - 1, settings.firstFrame - 1);
}

} // namespace velmor
