#include "app/cli/RenderGrammar.h"

#include "platform/process/Parallel.h"
#include "render/Compressors.h"

namespace velmor {

namespace {

constexpr int mostThreads = 256;

std::string CompressorNames() {
    std::string names;
    for (const CCompressor& compressor : AvailableCompressors())
        names += (names.empty() ? "" : ", ") + std::string(compressor.name);
    return names;
}

// The command line takes no other names.
PngCompression CompressionNamed(const std::string& name) {
    if (name == "fast")
        return PngCompression::Fast;
    return name == "best" ? PngCompression::Best : PngCompression::Normal;
}

} // namespace

void AddFrameChoices(CLI::App& command, CRenderArguments& render) {
    AddFrames(command, render.frames);
    command.add_option("--step", render.step, "Every how many frames")->check(CheckNumber, "POSITIVE");
    command.add_option("--scaling", render.scaling, "Percent, 1 to 400")->check(CLI::Range(1, 400));
}

void AddPictureChoices(CLI::App& command, CRenderArguments& render) {
    AddLevels(command, render.levels);
    command.add_flag("--antialias", render.antialias, "Smooth edges");
    command.add_flag("--transparent", render.transparent, "Alpha in place of the background (png, tga)");
    command
        .add_option_function<std::string>(
            "--compression", [&render](const std::string& text) { render.compression = CompressionNamed(text); },
            "Of a PNG: fast, normal, or best, which takes ten times as long; the pixels are the same")
        ->check(CLI::IsMember({"fast", "normal", "best"}));
}

void AddFormat(CLI::App& command, CRenderArguments& render) {
    command.add_option("--format", render.format, "png, tga, bmp, avi or mp4")
        ->check(CLI::IsMember({"png", "tga", "bmp", "avi", "mp4"}));
}

void CMovieChoices::AddTo(CLI::App& command, CRenderArguments& render) {
    m_codecs.emplace_back(&command, command.add_option("--codec", render.codec, "Compressor of an AVI"));
    command.add_option("--quality", render.quality, "Percent, 0 to 100, of a movie that is not lossless")
        ->check(CLI::Range(0, 100));
}

// To know what compressors there are takes a while, so only who reads of them waits for it.
void CMovieChoices::CompleteHelp() {
    for (const auto& [command, codec] : m_codecs)
        if (command->parsed())
            codec->description(codec->get_description() + ": " + CompressorNames());
}

void CRenderGrammar::AddTo(CLI::App& app, CommandRun& run) {
    AddRender(app, run);
    AddJoin(app, run);
}

void CRenderGrammar::AddRender(CLI::App& app, CommandRun& run) {
    CLI::App* command = AddCommand(app, "render", "Render the final output", m_render.scene);
    CLI::Option* scene = command->add_option("scene", m_render.scene.scene, "Name of the scene");
    command->add_option("--scenes", m_render.scenes, "Several scenes, or all; each into a folder of its name")
        ->delimiter(',')
        ->excludes(scene);
    AddPictureChoices(*command, m_render);
    AddFrameChoices(*command, m_render);
    AddFormat(*command, m_render);
    m_movie.AddTo(*command, m_render);
    AddExisting(*command);
    command->add_flag("--each-level", m_render.eachLevel,
                      "An output for each level, its name behind that of the output");
    command
        ->add_option_function<std::string>(
            "--for", [this](const std::string& text) { m_render.forAvi = text == "avi"; },
            "Movie that the frames will be joined to (avi widens them to a multiple of 4)")
        ->check(CLI::IsMember({"avi", "mp4"}));
    command->add_flag("--dry-run", m_render.dryRun, "Say what would be made and what is missing, and make nothing");
    AddRunning(*command);
    command->add_option("-o,--output", m_render.output, "Directory and name of the output")->required();
    command->callback([this, &run] {
        if (m_render.scene.scene.empty() && m_render.scenes.empty())
            throw CLI::RequiredError("scene or --scenes");
        run = [this] { return RunRender(m_render); };
    });
}

void CRenderGrammar::AddExisting(CLI::App& command) {
    command
        .add_option_function<std::string>(
            "--existing", [this](const std::string& text) { m_render.keepWhole = text == "skip"; },
            "Numbered frames that are there: skip those that are whole, or overwrite")
        ->check(CLI::IsMember({"skip", "overwrite"}));
    command.add_flag("--resume", m_render.keepWhole, "The same as --existing skip");
}

void CRenderGrammar::AddJoin(CLI::App& app, CommandRun& run) {
    CLI::App* command =
        AddSceneCommand(app, "join", "Join rendered frames and the scene's sound to a movie", m_render.scene);
    command->add_option("--from", m_render.from, "Directory and name of the frames, as render was given them")
        ->required();
    command->add_option("--from-format", m_render.fromFormat, "png, tga or bmp")
        ->check(CLI::IsMember({"png", "tga", "bmp"}));
    AddFrameChoices(*command, m_render);
    command->add_option("--format", m_render.format, "avi or mp4")
        ->required()
        ->check(CLI::IsMember({"avi", "mp4"}));
    m_movie.AddTo(*command, m_render);
    AddRunning(*command);
    command->add_option("-o,--output", m_render.output, "Movie to write")->required();
    command->callback([this, &run] { run = [this] { return RunRender(m_render); }; });
}

void CRenderGrammar::AddRunning(CLI::App& command) {
    command
        .add_option_function<int>(
            "--threads", [](int threads) { SetProcessorCount(threads); },
            "Processors to work on; without it what Slurm has given the task, or all")
        ->check(CLI::Range(1, mostThreads))
        ->envname("SLURM_CPUS_PER_TASK");
    command
        .add_option_function<std::string>(
            "--log",
            [this](const std::string& text) { m_render.log = text == "json" ? LogFormat::Json : LogFormat::Text; },
            "text, or json: each line of the standard error output is an object")
        ->check(CLI::IsMember({"text", "json"}));
}

} // namespace velmor
