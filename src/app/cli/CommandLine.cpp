#include "app/cli/CommandLine.h"

#include "app/cli/CelsGrammar.h"
#include "app/cli/Commands.h"
#include "app/cli/ExitStatus.h"
#include "app/cli/Grammar.h"
#include "app/cli/RenderGrammar.h"
#include "app/cli/farm/FarmGrammar.h"
#include "app/cli/reference/CommandReference.h"
#include "platform/process/Parallel.h"
#include "scene/ImportedImage.h"

#include <exception>
#include <iostream>
#include <utility>

namespace velmor {

namespace {

int StatusOf(bool done) {
    return done ? statusDone : statusFailed;
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
        m_rendering.AddTo(m_app, m_run);
        m_farming.AddTo(m_app, m_run);
        AddImport();
        AddSheet();
        AddDialogue();
        m_cels.AddTo(m_app, m_run);
        AddPrint();
    }

    CLI::App& App() { return m_app; }
    /// Prints what was asked for, help or the version.
    int Answer(const CLI::Success& asked) {
        m_rendering.CompleteHelp();
        m_farming.CompleteHelp();
        return m_app.exit(asked);
    }
    int Run() const { return m_run(); }

private:
    void AddReaders() {
        AddCommand(m_app, "scenes", "List the scenes", m_scene)->callback([this] {
            m_run = [this] { return StatusOf(RunScenes(m_scene)); };
        });
        AddCommand(m_app, "demo", "Make a demonstration scene", m_scene)->callback([this] {
            m_run = [this] { return StatusOf(RunDemo(m_scene)); };
        });
        AddCheck();
        AddRecover();
        CLI::App* info = AddSceneCommand(m_app, "info", "Show what a scene holds", m_scene);
        info->add_flag("--json", m_json, "As JSON");
        info->callback([this] { m_run = [this] { return StatusOf(RunInfo(m_scene, m_json)); }; });
    }

    void AddCheck() {
        CLI::App* check = AddCommand(m_app, "check", "Read every file and name the damaged ones", m_scene);
        CLI::Option* scene = check->add_option("scene", m_scene.scene, "Name of the scene; all scenes without it");
        check->add_option("--scenes", m_check.scenes, "Several scenes, or all, with a line of report for each")
            ->delimiter(',')
            ->excludes(scene);
        check->callback([this] {
            m_check.database = m_scene.database;
            m_check.report = !m_check.scenes.empty();
            if (!m_scene.scene.empty())
                m_check.scenes = {m_scene.scene};
            m_run = [this] { return StatusOf(RunCheck(m_check)); };
        });
    }

    void AddRecover() {
        CLI::App* recover =
            AddCommand(m_app, "recover", "Save work that was lost with the program", m_recover.scene);
        recover->add_option("scene", m_recover.scene.scene, "Name of the scene; all scenes without it");
        CLI::Option* list =
            recover->add_flag("--list", m_recover.list, "Say which scenes have such work, and change nothing");
        recover->add_flag("--discard", m_recover.discard, "Give it up: the scenes stay as they were saved")
            ->excludes(list);
        recover->add_option("--journals", m_recover.journals, "Folder of the journals, if not the user's own");
        recover->callback([this] { m_run = [this] { return StatusOf(RunRecover(m_recover)); }; });
    }

    void AddCompose() {
        CLI::App* command = AddSceneCommand(m_app, "compose", "Compose one frame as a PNG", m_compose.scene);
        command->add_option("--frame", m_compose.frame, "Frame, from 1")
            ->required()
            ->check(CheckNumber, "POSITIVE");
        command->add_flag("--antialias", m_compose.antialias, "Smooth edges");
        command->add_option("-o,--output", m_compose.output, "PNG to write")->required();
        command->callback([this] { m_run = [this] { return StatusOf(RunCompose(m_compose)); }; });
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
        command->callback([this] { m_run = [this] { return StatusOf(RunFlipbook(m_flipbook)); }; });
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
        sound->add_flag("--convert", m_import.convert,
                        "Convert a sound of another form, and keep what it was for movies");
        AddFiles(*sound, ImportKind::Sound, 1);
        AddSequence(*import);
    }

    void AddSequence(CLI::App& import) {
        CLI::App* command = AddSceneCommand(import, "sequence", "Numbered files, under the numbers in their names",
                                            m_sequence.scene);
        CLI::Option* folder = command->add_option("--folder", m_sequence.folder, "Cel folder");
        CLI::Option* pictures =
            command->add_option("--pictures", m_sequence.pictures, "As pictures, whose names begin with this");
        folder->excludes(pictures);
        command->add_option("--threshold", m_sequence.threshold, "Grey level below which lines begin")
            ->check(CLI::Range(0, 255));
        command->add_option("--despeckle", m_sequence.specks, "Leave out specks of at most so many pixels")
            ->check(CLI::Range(0, CLineRules::mostSpecks))
            ->excludes(pictures);
        CLI::Option* level = command->add_option("--level", m_sequence.level,
                                                 "Name of the level to expose them on, made if missing");
        command->add_option("--at", m_sequence.at, "First frame")->check(CheckNumber, "POSITIVE")->needs(level);
        command->add_option("--hold", m_sequence.hold, "Frames each: 1 for on ones, 2 for on twos")
            ->check(CheckNumber, "POSITIVE")
            ->needs(level);
        command
            ->add_flag("--hold-gaps", m_sequence.holdsGaps,
                       "Hold a drawing over the numbers that are missing after it")
            ->needs(level);
        command->add_option("file", m_sequence.files, "Targa, bitmap, PNG or TIFF")->required()->expected(-1);
        command->callback([this] {
            if (m_sequence.folder.empty() && m_sequence.pictures.empty())
                throw CLI::RequiredError("--folder or --pictures");
            m_run = [this] { return StatusOf(RunSequenceImport(m_sequence)); };
        });
    }

    void AddPrint() {
        CLI::App* command = AddSceneCommand(m_app, "print", "Print the xsheet to a PDF", m_print.scene);
        command->add_option("--paper", m_print.paper, "a4, a3 or letter")
            ->check(CLI::IsMember({"a4", "a3", "letter"}));
        command->add_flag("--dialogue", m_print.dialogue, "What is spoken as well");
        command->add_option("-o,--output", m_print.output, "PDF to write")->required();
        command->callback([this] { m_run = [this] { return StatusOf(RunPrint(m_print)); }; });
    }

    void AddSheet() {
        CLI::App* sheet = m_app.add_subcommand("sheet", "Exchange xsheets with other programs");
        sheet->require_subcommand(1);
        CLI::App* out =
            AddSheetCommand(*sheet, "export", "Write the xsheet, and say what the file cannot hold", false);
        out->add_option("-o,--output", m_sheet.file, "File to write, .xdts or .csv")->required();
        CLI::App* in =
            AddSheetCommand(*sheet, "import", "Bring a file into the xsheet, and say what changes", true);
        in->add_option("file", m_sheet.file, "File to read, .xdts or .csv")->required();
        in->add_option("--folder", m_sheet.folder, "Cel folder of new levels that are not called like theirs");
        in->add_flag("--dry-run", m_sheet.dryRun, "Say what would change, and change nothing");
    }

    CLI::App* AddSheetCommand(CLI::App& sheet, const char* name, const char* description, bool isImport) {
        CLI::App* command = AddSceneCommand(sheet, name, description, m_sheet.scene);
        command->add_option("--format", m_sheet.format, "xdts or csv; by the file's name without it")
            ->check(CLI::IsMember({"xdts", "csv"}));
        command->callback([this, isImport] {
            m_sheet.isImport = isImport;
            m_run = [this] { return StatusOf(RunSheet(m_sheet)); };
        });
        return command;
    }

    void AddDialogue() {
        CLI::App* dialogue = m_app.add_subcommand("dialogue", "What is spoken along the frames");
        dialogue->require_subcommand(1);
        CLI::App* in = AddDialogueCommand(*dialogue, "import", "Take it from a text, \"12-25 Ann: Hello\" a line",
                                          RunDialogueImport);
        in->add_option("file", m_dialogue.file, "Text to read")->required();
        CLI::App* out = AddDialogueCommand(*dialogue, "export", "Write it to such a text", RunDialogueExport);
        out->add_option("-o,--output", m_dialogue.file, "Text to write")->required();
        CLI::App* mouths =
            AddDialogueCommand(*dialogue, "mouths", "Fill a level with the mouths that speak it", RunMouths);
        mouths->add_option("--chart", m_dialogue.file, "Text with the drawing of each sound, \"a i = 1\" a line")
            ->required();
        mouths->add_option("--level", m_dialogue.level, "Name of the level")->required();
        mouths->add_option("--folder", m_dialogue.folder, "Cel folder of the drawings")->required();
        mouths->add_option("--hold", m_dialogue.hold, "Frames that a mouth stands at least")
            ->check(CLI::Range(1, 4));
        mouths->add_flag("--dry-run", m_dialogue.dryRun, "Say what would change, and change nothing");
    }

    CLI::App* AddDialogueCommand(CLI::App& dialogue, const char* name, const char* description,
                                 bool (*run)(const CDialogueArguments& arguments)) {
        CLI::App* command = AddSceneCommand(dialogue, name, description, m_dialogue.scene);
        command->callback([this, run] { m_run = [this, run] { return StatusOf(run(m_dialogue)); }; });
        return command;
    }

    void AddFiles(CLI::App& command, ImportKind kind, int count) {
        command.add_option("file", m_import.files, "File to import")->required()->expected(count);
        command.callback([this, kind] {
            if (!m_import.name.empty() && m_import.files.size() > 1)
                throw CLI::ValidationError("--name", "names one file only");
            m_import.kind = kind;
            m_run = [this] { return StatusOf(RunImport(m_import)); };
        });
    }

    CLI::App m_app{"Makes pictures and movies from a database of animation scenes.", "velmor-cli"};
    CommandRun m_run;
    CRenderGrammar m_rendering;
    CFarmGrammar m_farming;
    CCelsGrammar m_cels;
    CSceneArguments m_scene;
    bool m_json = false;
    CCheckArguments m_check;
    CRecoverArguments m_recover;
    CComposeArguments m_compose;
    CFlipbookArguments m_flipbook;
    CImportArguments m_import;
    CSequenceArguments m_sequence;
    CSheetArguments m_sheet;
    CDialogueArguments m_dialogue;
    CPrintArguments m_print;
};

// Text in braces names the only values that are taken.
std::vector<std::string> ChoicesOf(const std::string& type) {
    const std::size_t begin = type.find('{');
    const std::size_t end = type.find('}', begin);
    if (begin == std::string::npos || end == std::string::npos)
        return {};
    return CLI::detail::split(type.substr(begin + 1, end - begin - 1), ',');
}

CReferenceOption ReferenceOf(const CLI::Option& option) {
    CReferenceOption reference;
    reference.isPositional = option.get_positional();
    reference.name = reference.isPositional ? option.get_name(true) : option.get_name(false, true);
    reference.isRequired = option.get_required();
    reference.description = option.get_description();
    if (option.get_expected_max() > 0 && option.get_type_size() > 0) {
        reference.choices = ChoicesOf(option.get_type_name());
        reference.value = option.get_type_name().substr(0, option.get_type_name().find(':'));
    }
    return reference;
}

CCommandReference ReferenceOf(CLI::App& command, const std::string& above) {
    CCommandReference reference{above + command.get_name(), command.get_description(), {}, {}};
    for (const CLI::Option* option : std::as_const(command).get_options())
        reference.options.push_back(ReferenceOf(*option));
    for (CLI::App* below : command.get_subcommands([](CLI::App*) { return true; }))
        reference.commands.push_back(ReferenceOf(*below, reference.name + " "));
    return reference;
}

} // namespace

CCommandReference ReferenceOfCommandLine() {
    CGrammar grammar;
    return ReferenceOf(grammar.App(), {});
}

int RunCommandLine(int argc, char** argv) {
    CGrammar grammar;
    try {
        grammar.App().parse(argc, argv);
    } catch (const CLI::Success& asked) { // for help or the version
        return grammar.Answer(asked);
    } catch (const CLI::ParseError& error) {
        std::cerr << error.what()
                  << "\nUsage: velmor-cli SUBCOMMAND --database DIR [OPTIONS]; see velmor-cli --help" << std::endl;
        return statusWrongUsage;
    }
    try {
        StartParallelThreads();
        const int status = grammar.Run();
        if (std::cout.flush())
            return status;
        std::cerr << "Could not write the output" << std::endl;
        return status == statusDone ? statusFailed : status;
    } catch (const std::exception& error) {
        std::cerr << "Out of memory or other trouble of the system: " << error.what() << std::endl;
        return statusFailed;
    }
}

} // namespace velmor
