#pragma once

#include "app/cli/RenderGrammar.h"
#include "app/cli/farm/FarmArguments.h"

namespace velmor {

/// The subcommands that prepare a render for a farm. Outlives the parsing and the run.
class CFarmGrammar {
public:
    void AddTo(CLI::App& app, CommandRun& run);
    void CompleteHelp() { m_movie.CompleteHelp(); }

private:
    CLI::App* AddEngine(CLI::App& farm, const char* name, const char* description, FarmEngine engine,
                        CommandRun& run);

    CFarmArguments m_farm;
    CMovieChoices m_movie;
};

} // namespace velmor
