#pragma once

#include "app/cli/Commands.h"

#include <string>

namespace velmor {

enum class FarmEngine { Slurm, Parallel };

/// A job that is written for the engine of a farm.
struct CFarmArguments {
    FarmEngine engine = FarmEngine::Slurm;
    CRenderArguments render;
    std::string folder;    ///< of the job's files, on a disk that all nodes see
    int chunk = 10;        ///< frames a task
    int cpus = 1;          ///< a task
    std::string time;      ///< Slurm: limit of a task; empty for the partition's
    std::string partition; ///< Slurm: empty for the default
    int jobs = 0;          ///< parallel: tasks at once on a machine; 0 for one a processor
    std::string nodes;     ///< parallel: a file of machines to log in to; empty for this one
    bool submit = false;
};

/// Writes the job's files, and submits it if asked to. Returns the exit status.
[[nodiscard]] int RunFarm(const CFarmArguments& arguments);

} // namespace velmor
