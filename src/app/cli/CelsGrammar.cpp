#include "app/cli/CelsGrammar.h"

#include "app/cli/ExitStatus.h"

#include <algorithm>
#include <cctype>

namespace velmor {

namespace {

std::string CheckColor(const std::string& text) {
    const bool isColor = text.size() == 6 &&
                         std::ranges::all_of(text, [](unsigned char digit) { return std::isxdigit(digit) != 0; });
    return isColor ? std::string() : "not a color such as ff8000: " + text;
}

} // namespace

void CCelsGrammar::AddTo(CLI::App& app, CommandRun& run) {
    CLI::App* cels = app.add_subcommand("cels", "Change the cels of a folder");
    cels->require_subcommand(1);
    AddRecolor(*cels, run);
    m_cleaning.AddTo(
        [cels](const char* name, const char* description, CCelsArguments& arguments) {
            return AddCelsCommand(*cels, name, description, arguments);
        },
        run);
}

CLI::App* CCelsGrammar::AddCelsCommand(CLI::App& cels, const char* name, const char* description,
                                       CCelsArguments& arguments) {
    CLI::App* command = AddSceneCommand(cels, name, description, arguments.scene);
    command->add_option("folder", arguments.folder, "Cel folder")->required();
    command->add_option("--cels", arguments.cels, "Names of cels, such as 1,2,2a; all without it")->delimiter(',');
    return command;
}

void CCelsGrammar::AddRecolor(CLI::App& cels, CommandRun& run) {
    CLI::App* command = AddCelsCommand(cels, "recolor", "Put one color in the place of another", m_recolor.cels);
    command->add_option("--from", m_recolor.from, "Color, as red, green and blue in hexadecimal")
        ->required()
        ->check(CheckColor, "RRGGBB");
    command->add_option("--to", m_recolor.to, "Color that it becomes")->required()->check(CheckColor, "RRGGBB");
    command->add_option("--tolerance", m_recolor.tolerance, "How far red, green and blue may be from the color")
        ->check(CLI::Range(0, 255));
    CLI::Option* lines = command->add_flag("--lines", m_recolor.lines, "Only lines");
    command->add_flag("--paint", m_recolor.paint, "Only paint")->excludes(lines);
    command->callback([this, &run] { run = [this] { return RunRecolor(m_recolor) ? statusDone : statusFailed; }; });
}

} // namespace velmor
