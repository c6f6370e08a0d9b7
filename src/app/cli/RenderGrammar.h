#pragma once

#include "app/cli/Grammar.h"

#include <utility>
#include <vector>

namespace velmor {

// Options that several subcommands have.

/// Frames, step and scaling.
void AddFrameChoices(CLI::App& command, CRenderArguments& render);
/// Levels, antialiasing, transparency and the compression of PNG.
void AddPictureChoices(CLI::App& command, CRenderArguments& render);
void AddFormat(CLI::App& command, CRenderArguments& render);

/// Codec and quality.
class CMovieChoices {
public:
    void AddTo(CLI::App& command, CRenderArguments& render);
    /// Adds what the help of the parsed subcommand lacks.
    void CompleteHelp();

private:
    std::vector<std::pair<CLI::App*, CLI::Option*>> m_codecs;
};

/// The subcommands that make the final output. Outlives the parsing and the run.
class CRenderGrammar {
public:
    /// Adds them to `app`; the one that is parsed stores what it is to do in `run`.
    void AddTo(CLI::App& app, CommandRun& run);
    void CompleteHelp() { m_movie.CompleteHelp(); }

private:
    void AddRender(CLI::App& app, CommandRun& run);
    void AddExisting(CLI::App& command);
    void AddJoin(CLI::App& app, CommandRun& run);
    /// Threads and log.
    void AddRunning(CLI::App& command);

    CRenderArguments m_render;
    CMovieChoices m_movie;
};

} // namespace velmor
