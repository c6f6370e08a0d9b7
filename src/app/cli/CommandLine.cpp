#include "app/cli/CommandLine.h"

#include "app/cli/Commands.h"
#include "render/Compressors.h"

#include <CLI/CLI.hpp>
#include <exception>
#include <functional>
#include <iostream>

namespace velmor {

namespace {

enum ExitStatus { done = 0, failed = 1, wrongUsage = 2 };

std::string CheckNumber(const std::string& text) {
    return ParseNumber(text) ? std::string() : "not a number from 1 up: " + text;
}

std::string CheckNumberList(const std::string& text) {
    return ParseNumberList(text) ? std::string() : "not a list of numbers such as 1-3,5: " + text;
}

std::string CheckSingleRange(const std::string& text) {
    const auto ranges = ParseNumberList(text);
    return ranges && ranges->size() == 1 ? std::string() : "not a range of frames such as 1-48: " + text;
}

std::string CompressorNames() {
    std::string names;
    for (const CCompressor& compressor : AvailableCompressors())
        names += (names.empty() ? "" : ", ") + std::string(compressor.name);
    return names;
}

/// The command line's grammar. Every subcommand stores what it is to do in m_run.
class CGrammar {
public:
    CGrammar() {
        m_app.require_subcommand(1);
        m_app.set_version_flag("--version", "velmor-cli " VELMOR_VERSION, "Print the version and exit");
        AddReaders();
        AddCompose();
        AddFlipbook();
        AddRender();
        AddImport();
    }

    CLI::App& App() { return m_app; }
    bool Run() const { return m_run(); }

private:
    CLI::App* AddCommand(CLI::App& parent, const char* name, const char* description, CSceneArguments& scene) {
        CLI::App* command = parent.add_subcommand(name, description);
        command->add_option("--database", scene.database, "Folder of the scene database")->required();
        return command;
    }

    CLI::App* AddSceneCommand(CLI::App& parent, const char* name, const char* description, CSceneArguments& scene) {
        CLI::App* command = AddCommand(parent, name, description, scene);
        command->add_option("scene", scene.scene, "Name of the scene")->required();
        return command;
    }

    void AddReaders() {
        AddCommand(m_app, "scenes", "List the scenes", m_scene)->callback([this] {
            m_run = [this] { return RunScenes(m_scene); };
        });
        AddCommand(m_app, "demo", "Make a demonstration scene", m_scene)->callback([this] {
            m_run = [this] { return RunDemo(m_scene); };
        });
        CLI::App* check = AddCommand(m_app, "check", "Read every file and name the damaged ones", m_scene);
        check->add_option("scene", m_scene.scene, "Name of the scene; all scenes without it");
        check->callback([this] { m_run = [this] { return RunCheck(m_scene); }; });
        CLI::App* info = AddSceneCommand(m_app, "info", "Show what a scene holds", m_scene);
        info->add_flag("--json", m_json, "As JSON");
        info->callback([this] { m_run = [this] { return RunInfo(m_scene, m_json); }; });
    }

    void AddCompose() {
        CLI::App* command = AddSceneCommand(m_app, "compose", "Compose one frame as a PNG", m_compose.scene);
        command->add_option("--frame", m_compose.frame, "Frame, from 1")
            ->required()
            ->check(CheckNumber, "POSITIVE");
        command->add_flag("--antialias", m_compose.antialias, "Smooth edges");
        command->add_option("-o,--output", m_compose.output, "PNG to write")->required();
        command->callback([this] { m_run = [this] { return RunCompose(m_compose); }; });
    }

    void AddFlipbook() {
        CLI::App* command = AddSceneCommand(m_app, "flipbook", "Make a quick preview movie", m_flipbook.scene);
        AddLevels(*command, m_flipbook.levels);
        command
            ->add_option_function<std::string>(
                "--frames", [this](const std::string& text) { m_flipbook.frames = ParseNumberList(text)->front(); },
                "Range of frames, such as 1-48")
            ->check(CheckSingleRange);
        command->add_option("--step", m_flipbook.step, "Every how many frames")->check(CheckNumber, "POSITIVE");
        command->add_option("--scaling", m_flipbook.scaling, "Percent, 10 to 100")->check(CLI::Range(10, 100));
        command->add_option("--quality", m_flipbook.quality, "Percent, 10 to 100")->check(CLI::Range(10, 100));
        command->add_flag("--antialias", m_flipbook.antialias, "Smooth edges");
        command->add_option("--cursor", m_flipbook.cursor, "Frame whose camera pan and tilt are taken")
            ->check(CheckNumber, "POSITIVE");
        command->add_option("-o,--output", m_flipbook.output, "AVI to write");
        command->callback([this] { m_run = [this] { return RunFlipbook(m_flipbook); }; });
    }

    void AddRender() {
        CLI::App* command = AddSceneCommand(m_app, "render", "Render the final output", m_render.scene);
        AddLevels(*command, m_render.levels);
        command
            ->add_option_function<std::string>(
                "--frames", [this](const std::string& text) { m_render.frames = ParseNumberList(text); },
                "Frames, such as 1-48,60")
            ->check(CheckNumberList);
        command->add_option("--step", m_render.step, "Every how many frames")->check(CheckNumber, "POSITIVE");
        command->add_option("--scaling", m_render.scaling, "Percent, 1 to 400")->check(CLI::Range(1, 400));
        command->add_flag("--antialias", m_render.antialias, "Smooth edges");
        command->add_option("--format", m_render.format, "png, tga, bmp, avi or mp4")
            ->check(CLI::IsMember({"png", "tga", "bmp", "avi", "mp4"}));
        command->add_option("--codec", m_render.codec, "Compressor of an AVI: " + CompressorNames());
        command->add_option("--quality", m_render.quality, "Percent, 0 to 100, of a movie that is not lossless")
            ->check(CLI::Range(0, 100));
        command->add_flag("--transparent", m_render.transparent, "Alpha in place of the background (png, tga)");
        command->add_flag("--resume", m_render.resume, "Keep the numbered frames that are there");
        command->add_option("-o,--output", m_render.output, "Directory and name of the output")->required();
        command->callback([this] { m_run = [this] { return RunRender(m_render); }; });
    }

    void AddImport() {
        CLI::App* import = m_app.add_subcommand("import", "Import drawings, pictures and sounds");
        import->require_subcommand(1);
        CLI::App* cel = AddSceneCommand(*import, "cel", "Drawings into a cel folder", m_import.scene);
        cel->add_option("--folder", m_import.folder, "Cel folder")->required();
        cel->add_option("--name", m_import.name, "Number of the cel (one file only)");
        cel->add_option("--threshold", m_import.threshold, "Grey level below which lines begin")
            ->check(CLI::Range(0, 255));
        AddFiles(*cel, ImportKind::Cel, -1);
        CLI::App* picture = AddSceneCommand(*import, "picture", "A picture", m_import.scene);
        picture->add_option("--name", m_import.name, "Name of the picture")->required();
        AddFiles(*picture, ImportKind::Picture, 1);
        CLI::App* sound = AddSceneCommand(*import, "sound", "A sound", m_import.scene);
        sound->add_option("--name", m_import.name, "Name of the sound")->required();
        AddFiles(*sound, ImportKind::Sound, 1);
    }

    void AddFiles(CLI::App& command, ImportKind kind, int count) {
        command.add_option("file", m_import.files, "File to import")->required()->expected(count);
        command.callback([this, kind] {
            if (!m_import.name.empty() && m_import.files.size() > 1)
                throw CLI::ValidationError("--name", "names one file only");
            m_import.kind = kind;
            m_run = [this] { return RunImport(m_import); };
        });
    }

    static void AddLevels(CLI::App& command, std::optional<std::vector<CNumberRange>>& levels) {
        command
            .add_option_function<std::string>(
                "--levels", [&levels](const std::string& text) { levels = ParseNumberList(text); },
                "Levels, 1 on top, such as 1-3,5")
            ->check(CheckNumberList);
    }

    CLI::App m_app{"Makes pictures and movies from a database of animation scenes.", "velmor-cli"};
    std::function<bool()> m_run;
    CSceneArguments m_scene;
    bool m_json = false;
    CComposeArguments m_compose;
    CFlipbookArguments m_flipbook;
    CRenderArguments m_render;
    CImportArguments m_import;
};

} // namespace

int RunCommandLine(int argc, char** argv) {
    CGrammar grammar;
    try {
        grammar.App().parse(argc, argv);
    } catch (const CLI::Success& asked) { // for help or the version
        return grammar.App().exit(asked);
    } catch (const CLI::ParseError& error) {
        std::cerr << error.what()
                  << "\nUsage: velmor-cli SUBCOMMAND --database DIR [OPTIONS]; see velmor-cli --help" << std::endl;
        return wrongUsage;
    }
    try {
        return grammar.Run() ? done : failed;
    } catch (const std::exception& error) {
        std::cerr << "Out of memory or other trouble of the system: " << error.what() << std::endl;
        return failed;
    }
}

} // namespace velmor
