#pragma once

#include "app/cli/CleanGrammar.h"
#include "app/cli/Grammar.h"

namespace velmor {

/// "cels": what is done to the cels of a folder. Outlives the parsing and the run.
class CCelsGrammar {
public:
    /// Adds them to `app`; the one that is parsed stores what it is to do in `run`.
    void AddTo(CLI::App& app, CommandRun& run);

private:
    /// A command of the group, with scene, folder and cels.
    static CLI::App* AddCelsCommand(CLI::App& cels, const char* name, const char* description,
                                    CCelsArguments& arguments);
    void AddRecolor(CLI::App& cels, CommandRun& run);

    CRecolorArguments m_recolor;
    CCleanGrammar m_cleaning;
};

} // namespace velmor
