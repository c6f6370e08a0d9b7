#include "app/cli/farm/FarmJob.h"

#include <algorithm>
#include <cctype>

namespace velmor {

namespace {

constexpr const char* shell = "#!/bin/sh\n";

Path Absolute(const std::string& text) {
    std::error_code error;
    return std::filesystem::absolute(PathOf(text), error).lexically_normal();
}

std::string Option(std::string_view name, std::string_view value) {
    std::string text(" ");
    return text.append(name).append(" ").append(ShellWord(value));
}

std::string Option(std::string_view name, int value) {
    return Option(name, std::to_string(value));
}

// In the names of Slurm's output files a percent sign begins a pattern.
std::string SlurmPath(const Path& path, std::string_view pattern) {
    std::string text;
    for (const char c : Utf8Of(path))
        text.append(c == '%' ? "%%" : std::string(1, c));
    return text.append("/").append(pattern);
}

} // namespace

std::string ShellWord(std::string_view text) {
    const auto isPlain = [](unsigned char c) {
        return std::isalnum(c) != 0 ||
               std::string_view("_-./,:=+@%").find(static_cast<char>(c)) != std::string_view::npos;
    };
    if (!text.empty() && std::ranges::all_of(text, isPlain))
        return std::string(text);
    std::string word = "'";
    for (const char c : text)
        word.append(c == '\'' ? "'\\''" : std::string(1, c));
    return word + "'";
}

CFarmJob::CFarmJob(CFarmArguments arguments, Path tool, std::vector<std::string> chunks)
    : m_arguments(std::move(arguments)),
      m_tool(std::move(tool)),
      m_folder(Absolute(m_arguments.folder)),
      m_output(Absolute(m_arguments.render.output)),
      m_chunks(std::move(chunks)),
      m_isMovie(m_arguments.render.format == "avi" || m_arguments.render.format == "mp4") {}

std::string CFarmJob::Chunks() const {
    std::string lines;
    for (const std::string& chunk : m_chunks)
        lines.append(chunk).append("\n");
    return lines;
}

std::string CFarmJob::Choices() const {
    return Option("--database", Utf8Of(Absolute(m_arguments.render.scene.database))) + " " +
           ShellWord(m_arguments.render.scene.scene) + Option("--scaling", m_arguments.render.scaling);
}

std::string CFarmJob::RenderCommand(std::string_view frames) const {
    const CRenderArguments& render = m_arguments.render;
    std::string command = ShellWord(Utf8Of(m_tool)) + " render" + Choices();
    if (render.levels)
        command += Option("--levels", TextOf(*render.levels));
    if (render.antialias)
        command += " --antialias";
    if (render.transparent && !m_isMovie)
        command += " --transparent";
    if (render.compression != PngCompression::Normal)
        command += Option("--compression", render.compression == PngCompression::Fast ? "fast" : "best");
    command += m_isMovie ? Option("--for", render.format) : Option("--format", render.format);
    command += Option("-o", Utf8Of(m_isMovie ? FramesFolder() / "f" : m_output));
    return command + " --threads " + std::to_string(m_arguments.cpus) + " --existing skip --frames " +
           std::string(frames);
}

std::string CFarmJob::MovieChoices() const {
    const CRenderArguments& render = m_arguments.render;
    std::string choices;
    if (render.frames)
        choices += Option("--frames", TextOf(*render.frames));
    choices += Option("--step", render.step) + Option("--format", render.format);
    if (!render.codec.empty())
        choices += Option("--codec", render.codec);
    return choices + Option("--quality", render.quality);
}

std::string CFarmJob::JoinScript() const {
    const std::string header =
        m_arguments.engine == FarmEngine::Slurm ? SlurmHeader("join", "join.log") : std::string(shell);
    return header + "exec " + ShellWord(Utf8Of(m_tool)) + " join" + Choices() +
           Option("--from", Utf8Of(FramesFolder() / "f")) + MovieChoices() + Option("-o", Utf8Of(m_output)) + "\n";
}

std::string CFarmJob::FramesScript() const {
    if (m_arguments.engine == FarmEngine::Slurm)
        return SlurmFrames();
    return shell + std::string("exec ") + RenderCommand("\"$1\"") + "\n";
}

std::string CFarmJob::SlurmHeader(std::string_view name, std::string_view log) const {
    std::string header = shell;
    const auto add = [&header](std::string_view option) { header.append("#SBATCH ").append(option).append("\n"); };
    add("--job-name=\"" + m_arguments.render.scene.scene + " " + std::string(name) + "\"");
    add("--output=\"" + SlurmPath(m_folder / "log", log) + "\"");
    add("--open-mode=append");
    add("--ntasks=1");
    add("--cpus-per-task=" + std::to_string(m_arguments.cpus));
    add("--requeue");
    if (!m_arguments.time.empty())
        add("--time=" + m_arguments.time);
    if (!m_arguments.partition.empty())
        add("--partition=" + m_arguments.partition);
    return header;
}

std::string CFarmJob::SlurmFrames() const {
    return SlurmHeader("frames", "frames-%a.log") + "#SBATCH --array=1-" + std::to_string(m_chunks.size()) +
           "\n"
           "chunk=$(sed -n \"${SLURM_ARRAY_TASK_ID}p\" " +
           ShellWord(Utf8Of(m_folder / "chunks")) + ")\n" + RenderCommand("\"$chunk\"") +
           "\n"
           "status=$?\n"
           "# Ended from outside, by an operator or for lack of memory: another try may fare better.\n"
           "if [ \"$status\" -eq 7 ] || [ \"$status\" -gt 128 ]; then\n"
           "    if [ \"${SLURM_RESTART_COUNT:-0}\" -lt 3 ]; then\n"
           "        scontrol requeue \"$SLURM_JOB_ID\" && sleep 60\n"
           "    fi\n"
           "fi\n"
           "exit \"$status\"\n";
}

std::string CFarmJob::SubmitScript() const {
    return m_arguments.engine == FarmEngine::Slurm ? SlurmSubmit() : ParallelSubmit();
}

std::string CFarmJob::SlurmSubmit() const {
    std::string script = shell;
    script += "# Frames that are whole already are not rendered again.\n"
              "set -e\n"
              "frames=$(sbatch --parsable " +
              ShellWord(Utf8Of(m_folder / "frames.sh")) +
              ")\n"
              "frames=${frames%%;*}\n"
              "echo \"frames: job $frames\"\n";
    if (m_isMovie)
        script += "join=$(sbatch --parsable --dependency=\"afterok:$frames\" --kill-on-invalid-dep=yes " +
                  ShellWord(Utf8Of(m_folder / "join.sh")) +
                  ")\n"
                  "echo \"join: job ${join%%;*}\"\n";
    return script;
}

std::string CFarmJob::ParallelSubmit() const {
    std::string script = shell;
    script += "# Started again it does what is left.\n"
              "set -e\n"
              "cd " +
              ShellWord(Utf8Of(m_folder)) +
              "\n"
              "parallel --workdir . --joblog joblog --resume-failed --retries 3";
    if (m_arguments.jobs > 0)
        script += Option("--jobs", m_arguments.jobs);
    if (!m_arguments.nodes.empty())
        script += Option("--sshloginfile", Utf8Of(Absolute(m_arguments.nodes)));
    script += " ./frames.sh :::: chunks\n";
    return m_isMovie ? script + "exec ./join.sh\n" : script;
}

} // namespace velmor
