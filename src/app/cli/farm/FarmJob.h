#pragma once

#include "app/cli/farm/FarmArguments.h"
#include "platform/files/Files.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmor {

/// A job as text: what its scripts hold. All paths are absolute, so that it runs from any folder of any machine.
class CFarmJob {
public:
    /// `tool` is the command-line tool as the nodes find it, `chunks` the frames of each task.
    CFarmJob(CFarmArguments arguments, Path tool, std::vector<std::string> chunks);

    const Path& Folder() const { return m_folder; }
    bool IsMovie() const { return m_isMovie; }
    /// Where the frames of a movie stand until they are joined.
    Path FramesFolder() const { return m_folder / "frames"; }

    /// The frames of each task, one task a line.
    std::string Chunks() const;
    /// Renders the chunk of the task that Slurm has started, or the one that it is given.
    std::string FramesScript() const;
    /// Joins the frames to the movie.
    std::string JoinScript() const;
    /// Starts all of it.
    std::string SubmitScript() const;

private:
    std::string RenderCommand(std::string_view frames) const;
    std::string SlurmHeader(std::string_view name, std::string_view log) const;
    std::string SlurmFrames() const;
    std::string SlurmSubmit() const;
    std::string ParallelSubmit() const;
    std::string Choices() const;
    std::string MovieChoices() const;

    CFarmArguments m_arguments;
    Path m_tool;
    Path m_folder;
    Path m_output;
    std::vector<std::string> m_chunks;
    bool m_isMovie = false;
};

/// A word as a shell reads it back: as it stands, or in quotation marks.
std::string ShellWord(std::string_view text);

} // namespace velmor
