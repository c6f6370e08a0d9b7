#include "scene/RenderOperations.h"

#include "platform/files/AtomicFile.h"
#include "render/Compressors.h"
#include "scene/DialogRequests.h"
#include "scene/EditedImage.h"
#include "scene/SceneSound.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr const char* usualDirectory = "Renders"; // in the database folder

// The files that a render writes.
std::vector<Path> FilesOf(const CRenderSettings& settings) {
    if (IsMovie(settings.format))
        return {settings.target};
    std::vector<Path> files;
    for (const int frame : settings.frames)
        files.push_back(RenderFrameFile(settings, frame));
    return files;
}

RenderFormat FormatOf(int remembered) {
    return static_cast<RenderFormat>(std::clamp(remembered, 0, static_cast<int>(RenderFormat::Mp4)));
}

// Another machine's settings may name what this one does not have.
std::string CompressorOf(const std::string& remembered) {
    const CCompressor* compressor = FindCompressor(remembered);
    return std::string(compressor != nullptr ? compressor->name : defaultCompressor);
}

} // namespace

CRenderSetup CRenderOperations::RememberedSetup() const {
    const CSceneModel& model = m_context.model;
    const CProfile& profile = m_context.profile;
    CRenderSetup setup;
    setup.levels = AllLevels(model.Scene().xsheet);
    setup.firstFrame = 1;
    setup.lastFrame = model.Scene().xsheet.FrameCount();
    setup.step = std::max(1, Get(profile, setting::lastRenderStep));
    setup.scaling = std::clamp(Get(profile, setting::lastRenderScaling), 1, 400);
    setup.antialias = Get(profile, setting::lastRenderAntialias) != 0;
    setup.format = FormatOf(Get(profile, setting::lastRenderFileFormat));
    setup.transparentBackground = Get(profile, setting::lastRenderTransparent) != 0;
    setup.compressor = CompressorOf(Get(profile, setting::lastRenderCompressor));
    setup.quality = std::clamp(Get(profile, setting::lastRenderQuality), 0, 100);
    setup.directory = Get(profile, setting::lastRenderDirectory);
    setup.name = Get(profile, setting::lastRenderName);
    if (setup.directory.empty())
        setup.directory = model.databaseFolder + usualDirectory;
    if (setup.name.empty())
        setup.name = model.sceneName;
    return setup;
}

void CRenderOperations::Remember(const CRenderSetup& setup) {
    Set(m_context.profile, setting::lastRenderScaling, setup.scaling);
    Set(m_context.profile, setting::lastRenderStep, setup.step);
    Set(m_context.profile, setting::lastRenderAntialias, setup.antialias ? 1 : 0);
    Set(m_context.profile, setting::lastRenderFileFormat, static_cast<int>(setup.format));
    Set(m_context.profile, setting::lastRenderTransparent, setup.transparentBackground ? 1 : 0);
    Set(m_context.profile, setting::lastRenderCompressor, setup.compressor);
    Set(m_context.profile, setting::lastRenderQuality, setup.quality);
    Set(m_context.profile, setting::lastRenderDirectory, setup.directory);
    Set(m_context.profile, setting::lastRenderName, setup.name);
}

void CRenderOperations::AskAndRender() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen)
        return;
    CRenderSetupRequest request{
        {}, model.Scene().xsheet.FrameCount(), model.Scene().geometry.Frame(), RememberedSetup(), {}, {}};
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level)
        request.levelNames.push_back(model.Scene().xsheet.LevelName(level));
    request.chooseCompressor = [this](const std::string& current) {
        return m_context.prompter.Ask(CCompressorRequest{AvailableCompressors(), current});
    };
    request.accept = [this](const CRenderSetup& setup) { return Accept(setup); };
    const std::optional<CRenderSetup> setup = m_context.prompter.Ask(request);
    if (!setup)
        return;
    Remember(*setup);
    if (!CEditedImage(m_context).SaveOrAsk())
        return;
    if (IsMovie(setup->format))
        static_cast<void>(CSoundOperations(m_context).PrepareMissingTrack()); // it names what is missing
    static_cast<void>(Render(*setup));                                        // it has said what went wrong
}

bool CRenderOperations::Accept(const CRenderSetup& setup) const {
    const CSceneModel& model = m_context.model;
    CStatus status = CheckRenderSetup(setup, model.Scene().xsheet.FrameCount(), model.Scene().geometry.Frame());
    if (status)
        status = CheckTarget(RenderSettingsOf(setup));
    if (!status)
        m_context.prompter.ShowVelmorMessage(status.Message());
    return status && MayOverwrite(RenderSettingsOf(setup));
}

CStatus CRenderOperations::CheckTarget(const CRenderSettings& settings) const {
    if (!settings.target.is_absolute())
        return CStatus::Failure("The directory of the rendered files should be given in full!");
    if (CStatus made = MakeRenderDirectory(settings); !made)
        return made;
    // Nothing tells better whether a file can be written than beginning to.
    const Path first = FilesOf(settings).front();
    return CAtomicFile::Create(first) ? CStatus() : CStatus::Failure("Could not write to " + Utf8Of(first));
}

bool CRenderOperations::MayOverwrite(const CRenderSettings& settings) const {
    if (settings.resume && !IsMovie(settings.format))
        return true;
    if (!std::ranges::any_of(FilesOf(settings), FileExists))
        return true;
    return m_context.prompter.AskYesNo(IsMovie(settings.format)
                                           ? "Movie Exists, Do you want to overwrite it ?"
                                           : "Rendered Frames Exist, Do you want to overwrite them ?");
}

bool CRenderOperations::Render(const CRenderSetup& setup) {
    const CSceneModel& model = m_context.model;
    CRenderJob job{{model.Scene(), model.Paths().SceneFolder(), setup.antialias}, RenderSettingsOf(setup), {}};
    if (model.soundBuffer)
        job.sound = *model.soundBuffer;
    if (job.sound && job.settings.format == RenderFormat::Mp4) {
        const std::shared_ptr<void> wait = m_context.prompter.BeginWait();
        if (!m_context.Report(MixSceneSound(model.Scene(), model.Paths(), job.mixed)))
            return false;
    }
    std::unique_ptr<IProgress> progress = m_context.prompter.BeginProgress("Rendering");
    const CRenderOutcome outcome = RenderToDisk(
        job, m_cache, *progress, [this] { return m_context.prompter.AskYesNo("Do you want to stop rendering?"); });
    progress.reset();
    if (!outcome.message.empty())
        m_context.Show(outcome.message);
    if (outcome.end == RenderEnd::Complete)
        Offer(job.settings);
    return outcome.end != RenderEnd::Failed;
}

void CRenderOperations::Offer(const CRenderSettings& settings) const {
    CRenderedRequest request{
        FilesOf(settings).front(), IsMovie(settings.format), static_cast<int>(settings.frames.size()), {}};
    if (settings.format == RenderFormat::Avi)
        request.play = [this, movie = request.file] { m_play(movie); };
    m_context.prompter.OfferRendered(request);
}

} // namespace velmor
