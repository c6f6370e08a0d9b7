#include "app/cli/reference/CommandReference.h"

namespace velmor {

namespace {

constexpr const char* exitStatus =
    ".SH EXIT STATUS\n"
    ".TP\n0\ndone\n.TP\n1\nsomething failed; the message is on the standard error output\n"
    ".TP\n2\nthe arguments make no sense\n"
    ".PP\nThe commands render and join tell more apart:\n"
    ".TP\n3\nthe scene cannot be read\n.TP\n4\na file is missing\n.TP\n5\nthe output cannot be written\n"
    ".TP\n6\na frame could not be made\n.TP\n7\ntold to end\n"
    ".SH ENVIRONMENT\n.TP\nSLURM_CPUS_PER_TASK\nprocessors to work on, where \\-\\-threads does not say\n";

// Neither a command of the page's language nor a typographer's dash.
std::string Escaped(const std::string& text) {
    std::string escaped(text.starts_with('.') || text.starts_with('\'') ? "\\&" : "");
    for (const char c : text) {
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c;
    }
    return escaped;
}

std::string Joined(const std::vector<std::string>& words, const char* between) {
    std::string text;
    for (const std::string& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

void AppendOption(std::string& page, const CReferenceOption& option) {
    std::string name = option.name;
    for (std::size_t comma = name.find(','); comma != std::string::npos; comma = name.find(',', comma + 2))
        name.insert(comma + 1, 1, ' ');
    page.append(".TP\n.B ").append(Escaped(name));
    const std::string value = option.choices.empty() ? option.value : Joined(option.choices, "|");
    if (!value.empty() && !option.isPositional)
        page.append(" ").append(Escaped(value));
    page.append("\n").append(Escaped(option.description));
    page.append(option.isRequired && !option.isPositional ? " (required)\n" : "\n");
}

void AppendCommand(std::string& page, const CCommandReference& command) {
    if (command.commands.empty()) {
        page.append(".SS ").append(Escaped(command.name)).append("\n");
        page.append(Escaped(command.description)).append(".\n");
        for (const CReferenceOption& option : command.options)
            AppendOption(page, option);
    }
    for (const CCommandReference& below : command.commands)
        AppendCommand(page, below);
}

} // namespace

std::string ManPageOf(const CCommandReference& program, const std::string& version) {
    std::string page = ".TH VELMOR\\-CLI 1 \"\" \"velmor\\-cli " + version + "\" \"User Commands\"\n";
    page += ".SH NAME\nvelmor\\-cli \\- make pictures and movies from a database of animation scenes\n";
    page += ".SH SYNOPSIS\n.B velmor\\-cli\n.I COMMAND\n\\-\\-database DIR [OPTIONS]\n";
    page +=
        ".SH DESCRIPTION\n" + Escaped(program.description) +
        "\nIt needs no display, no settings and no lock. Frames and levels count from 1; level 1 is the topmost.\n";
    page += ".SH OPTIONS\n";
    for (const CReferenceOption& option : program.options)
        AppendOption(page, option);
    page += ".SH COMMANDS\n";
    for (const CCommandReference& command : program.commands)
        AppendCommand(page, command);
    return page + exitStatus + ".SH SEE ALSO\n.BR personal\\-velmor (1)\n";
}

} // namespace velmor
