#include "app/cli/farm/FarmGrammar.h"

namespace velmor {

namespace {

constexpr int mostCpus = 256;

} // namespace

void CFarmGrammar::AddTo(CLI::App& app, CommandRun& run) {
    CLI::App* farm = app.add_subcommand("farm", "Write the job that renders a scene on many machines");
    farm->require_subcommand(1);
    CLI::App* slurm = AddEngine(*farm, "slurm", "For Slurm: an array of tasks, and a job that joins their frames",
                                FarmEngine::Slurm, run);
    slurm->add_option("--time", m_farm.time, "Limit of a task, such as 30 (minutes) or 1:30:00");
    slurm->add_option("--partition", m_farm.partition, "Partition; the default one without it");
    CLI::App* parallel = AddEngine(*farm, "parallel", "For GNU parallel: a script that can be started again",
                                   FarmEngine::Parallel, run);
    parallel->add_option("--jobs", m_farm.jobs, "Tasks at once on a machine; one a processor without it")
        ->check(CheckNumber, "POSITIVE");
    parallel->add_option("--nodes", m_farm.nodes,
                         "File of machines to log in to, a line each; this one without it");
}

CLI::App* CFarmGrammar::AddEngine(CLI::App& farm, const char* name, const char* description, FarmEngine engine,
                                  CommandRun& run) {
    CRenderArguments& render = m_farm.render;
    CLI::App* command = AddSceneCommand(farm, name, description, render.scene);
    AddPictureChoices(*command, render);
    AddFrameChoices(*command, render);
    AddFormat(*command, render);
    m_movie.AddTo(*command, render);
    command->add_option("-o,--output", render.output, "Directory and name of the output")->required();
    command->add_option("--job", m_farm.folder, "Folder for the job's files, which all machines see")->required();
    command->add_option("--chunk", m_farm.chunk, "Frames a task")->check(CheckNumber, "POSITIVE");
    command->add_option("--cpus", m_farm.cpus, "Processors a task")->check(CLI::Range(1, mostCpus));
    command->add_flag("--submit", m_farm.submit, "Submit the job at once");
    command->callback([this, engine, &run] {
        m_farm.engine = engine;
        run = [this] { return RunFarm(m_farm); };
    });
    return command;
}

} // namespace velmor
