#pragma once

#include <string>
#include <vector>

namespace velmor {

/// An option, or what stands without one, as --help tells of it.
struct CReferenceOption {
    std::string name;                 ///< "-o,--output"; of a positional one its name
    std::string value;                ///< "TEXT"; empty for a flag
    std::vector<std::string> choices; ///< the values there are, where only some are taken
    std::string description;
    bool isPositional = false;
    bool isRequired = false;
};

/// A command, as --help tells of it.
struct CCommandReference {
    std::string name; ///< with the names of those above it: "velmor-cli import cel"
    std::string description;
    std::vector<CReferenceOption> options;
    std::vector<CCommandReference> commands;
};

/// The whole command line, from the same table that parses it.
CCommandReference ReferenceOfCommandLine();

/// As a page of the manual, in the language of man.
std::string ManPageOf(const CCommandReference& program, const std::string& version);
/// What bash and zsh complete.
std::string BashCompletionOf(const CCommandReference& program);
std::string ZshCompletionOf(const CCommandReference& program);

} // namespace velmor
