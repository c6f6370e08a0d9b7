#include "scene/FlipbookOperations.h"

#include "render/Flipbook.h"
#include "scene/DialogRequests.h"
#include "scene/EditedImage.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"

#include <algorithm>

namespace velmor {

Path CFlipbookOperations::LastFlipbook() const {
    return PathOf(m_context.model.databaseFolder) / "flipbook.avi";
}

bool CFlipbookOperations::HasLastFlipbook() const {
    return FileExists(LastFlipbook());
}

CFlipbookSettings CFlipbookOperations::RememberedSettings() const {
    const CSceneModel& model = m_context.model;
    CFlipbookSettings settings;
    for (int level = model.selection.firstLevel; level <= model.selection.lastLevel; ++level)
        settings.levels.push_back(level);
    settings.firstFrame = model.selection.firstFrame + 1;
    settings.lastFrame = model.selection.lastFrame + 1;
    settings.step = Get(m_context.profile, setting::lastFlipbookStep);
    settings.scaling = std::clamp(Get(m_context.profile, setting::lastFlipbookScaling), 10, 100);
    settings.quality = std::clamp(Get(m_context.profile, setting::lastFlipbookQuality), 10, 100);
    settings.antialias = Get(m_context.profile, setting::lastFlipbookAntialias) != 0;
    return settings;
}

void CFlipbookOperations::Remember(const CFlipbookSettings& settings) {
    Set(m_context.profile, setting::lastFlipbookStep, settings.step);
    Set(m_context.profile, setting::lastFlipbookScaling, settings.scaling);
    Set(m_context.profile, setting::lastFlipbookQuality, settings.quality);
    Set(m_context.profile, setting::lastFlipbookAntialias, settings.antialias ? 1 : 0);
}

bool CFlipbookOperations::MakeFlipbook() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return false;
    CFlipbookRequest request{{}, RememberedSettings(), {}, model.Scene().xsheet.FrameCount()};
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level)
        request.levelNames.push_back(model.Scene().xsheet.LevelName(level));
    request.accept = [this](const CFlipbookSettings& settings) {
        const CStatus status = CheckFlipbookSettings(settings, m_context.model.Scene().xsheet.FrameCount());
        if (!status)
            m_context.prompter.ShowVelmorMessage(status.Message());
        return static_cast<bool>(status);
    };
    const CFlipbookAnswer answer = m_context.prompter.Ask(request);
    Remember(answer.settings);
    if (!answer.confirmed || !CEditedImage(m_context).SaveOrAsk())
        return false;
    static_cast<void>(CSoundOperations(m_context)
                          .PrepareMissingTrack()); // it names what is missing; the pictures are made all the same
    return Generate(answer.settings, LastFlipbook(), model.cursorFrame, model.selection.firstFrame);
}

bool CFlipbookOperations::Generate(const CFlipbookSettings& settings, const Path& output, int cursorFrame,
                                   int soundFrame) {
    const CSceneModel& model = m_context.model;
    CFlipbookJob job{output,     {model.Scene(), model.Paths().SceneFolder(), settings.antialias},
                     settings,   cursorFrame,
                     soundFrame, {}};
    if (model.soundBuffer)
        job.sound = *model.soundBuffer;
    const std::unique_ptr<IProgress> progress = m_context.prompter.BeginProgress("Rendering");
    const CFlipbookOutcome outcome = GenerateFlipbook(job, m_cache, *progress, [this] {
        return m_context.prompter.AskYesNo("Do you want to stop generating flipbook?");
    });
    for (const std::string& message : outcome.messages)
        m_context.Show(message);
    return outcome.end != FlipbookEnd::Failed;
}

std::optional<Path> CFlipbookOperations::LastFlipbookToPlay() {
    if (!m_context.Require(HasLastFlipbook(), "There is no last flipbook!"))
        return std::nullopt;
    return LastFlipbook();
}

void CFlipbookOperations::SaveLastFlipbook() {
    const std::optional<Path> target = m_context.prompter.Ask(CSaveFileRequest{
        {"Select the flipbook filename to save", "Microsoft Movies (*.avi) |*.avi||", ".avi", "movie.avi", false}});
    if (!target)
        return;
    std::shared_ptr<void> wait = m_context.prompter.BeginWait();
    const bool copied = CopyFileIfAbsent(LastFlipbook(), *target);
    wait.reset();
    if (!copied)
        m_context.Show("Could not save preview, disk full or a file already exists with the same name!");
}

} // namespace velmor
