#pragma once

#include "app/cli/Grammar.h"

#include <functional>

namespace velmor {

/// The commands that clean up scanned cels. Outlives the parsing and the run.
class CCleanGrammar {
public:
    /// Makes a command with scene, folder and cels.
    using AddCels = std::function<CLI::App*(const char* name, const char* description, CCelsArguments& arguments)>;

    void AddTo(const AddCels& addCels, CommandRun& run);

private:
    CLI::App* AddCommand(const char* name, const char* description);
    void AddWeight(const char* name, const char* description, int sign);
    void AddRegister();
    void AddCleanup();
    void AddPlace(CLI::App& command, CLI::Option* needed);

    AddCels m_addCels;
    CommandRun* m_run = nullptr;
    CCleanArguments m_clean;
};

} // namespace velmor
