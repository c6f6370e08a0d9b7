#pragma once

#include "app/cli/Commands.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

// What the grammars of the subcommands share.

/// What a parsed command line is to do; returns the exit status.
using CommandRun = std::function<int()>;

// Validators: empty, or what is wrong.
std::string CheckNumber(const std::string& text);
std::string CheckNumberList(const std::string& text);
std::string CheckSingleRange(const std::string& text);

/// A subcommand of a database, and of one of its scenes.
CLI::App* AddCommand(CLI::App& parent, const char* name, const char* description, CSceneArguments& scene);
CLI::App* AddSceneCommand(CLI::App& parent, const char* name, const char* description, CSceneArguments& scene);

using NumberRanges = std::optional<std::vector<CNumberRange>>;
void AddLevels(CLI::App& command, NumberRanges& levels);
void AddFrames(CLI::App& command, NumberRanges& frames);

} // namespace velmor
