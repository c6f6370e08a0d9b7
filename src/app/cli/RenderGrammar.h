#pragma once

#include "app/cli/Grammar.h"

#include <utility>
#include <vector>

namespace velmor {

/// The subcommands that make the final output. Outlives the parsing and the run.
class CRenderGrammar {
public:
    /// Adds them to `app`; the one that is parsed stores what it is to do in `run`.
    void AddTo(CLI::App& app, CommandRun& run);
    /// Adds what the help of the parsed subcommand lacks.
    void CompleteHelp();

private:
    void AddRender(CLI::App& app, CommandRun& run);
    void AddJoin(CLI::App& app, CommandRun& run);
    /// What is rendered and how; both subcommands and whoever prepares them take it.
    void AddChoices(CLI::App& command);
    void AddMovieChoices(CLI::App& command);
    void AddLog(CLI::App& command);

    CRenderArguments m_render;
    std::vector<std::pair<CLI::App*, CLI::Option*>> m_codecs;
};

} // namespace velmor
