#include "app/cli/reference/CommandReference.h"

#include <functional>

namespace velmor {

namespace {

// The long name of an option, by which it is completed.
std::string LongName(const CReferenceOption& option) {
    const std::size_t begin = option.name.find("--");
    return begin == std::string::npos ? option.name
                                      : option.name.substr(begin, option.name.find(',', begin) - begin);
}

void Visit(const CCommandReference& command, const std::function<void(const CCommandReference&)>& visit) {
    visit(command);
    for (const CCommandReference& below : command.commands)
        Visit(below, visit);
}

std::string LastWord(const std::string& name) {
    return name.substr(name.rfind(' ') + 1);
}

// What can follow a command: those below it, or its options.
std::string WordsAfter(const CCommandReference& command) {
    std::string words;
    for (const CCommandReference& below : command.commands)
        words.append(words.empty() ? "" : " ").append(LastWord(below.name));
    for (const CReferenceOption& option : command.options)
        if (!option.isPositional)
            words.append(words.empty() ? "" : " ").append(LongName(option));
    return words;
}

// Lines of a case over the names of commands.
std::string WordCases(const CCommandReference& program) {
    std::string cases;
    Visit(program, [&cases](const CCommandReference& command) {
        cases.append("        '" + command.name + "') words='" + WordsAfter(command) + "' ;;\n");
    });
    return cases;
}

// The same over names and options with a choice of values.
std::string ChoiceCases(const CCommandReference& program) {
    std::string cases;
    Visit(program, [&cases](const CCommandReference& command) {
        for (const CReferenceOption& option : command.options) {
            if (option.choices.empty() || option.isPositional)
                continue;
            cases.append("        '" + command.name + " " + LongName(option) + "') words='");
            for (const std::string& choice : option.choices)
                cases.append(choice).append(" ");
            cases.append("' ;;\n");
        }
    });
    return cases;
}

// Those that have others below them, so that the word behind them is a command.
std::string Parents(const CCommandReference& program) {
    std::string parents;
    Visit(program, [&parents](const CCommandReference& command) {
        if (!command.commands.empty())
            parents.append(parents.empty() ? "" : "|").append("'" + command.name + "'");
    });
    return parents;
}

std::string Body(const CCommandReference& program) {
    return "    case \"$command $previous\" in\n" + ChoiceCases(program) +
           "    esac\n"
           "    if [[ -z $words && $previous != -* || $current == -* ]]; then\n"
           "        case $command in\n" +
           WordCases(program) +
           "        esac\n"
           "    fi\n";
}

} // namespace

std::string BashCompletionOf(const CCommandReference& program) {
    return "# bash completion for velmor-cli\n"
           "_velmor_cli() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    local command=velmor-cli words= i\n"
           "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "        case $command in\n"
           "        " +
           Parents(program) +
           ") [[ ${COMP_WORDS[i]} == -* ]] || command+=\" ${COMP_WORDS[i]}\" ;;\n"
           "        esac\n"
           "    done\n" +
           Body(program) +
           "    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$current\")\n"
           "}\n"
           "complete -o default -F _velmor_cli velmor-cli\n";
}

std::string ZshCompletionOf(const CCommandReference& program) {
    return "#compdef velmor-cli\n"
           "_velmor_cli() {\n"
           "    local current=${words[CURRENT]} previous=${words[CURRENT-1]} command=velmor-cli i\n"
           "    local -a typed=(\"${words[@]}\")\n"
           "    local words=\n"
           "    for ((i = 2; i < CURRENT; i++)); do\n"
           "        case $command in\n"
           "        " +
           Parents(program) +
           ") [[ ${typed[i]} == -* ]] || command+=\" ${typed[i]}\" ;;\n"
           "        esac\n"
           "    done\n" +
           Body(program) +
           "    if [[ -n $words ]]; then\n"
           "        compadd -- ${=words}\n"
           "    else\n"
           "        _files\n"
           "    fi\n"
           "}\n"
           "_velmor_cli \"$@\"\n";
}

} // namespace velmor
