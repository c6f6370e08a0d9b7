#include "app/cli/Grammar.h"

namespace velmor {

std::string CheckNumber(const std::string& text) {
    return ParseNumber(text) ? std::string() : "not a number from 1 up: " + text;
}

std::string CheckNumberList(const std::string& text) {
    return ParseNumberList(text) ? std::string() : "not a list of numbers such as 1-3,5: " + text;
}

std::string CheckSingleRange(const std::string& text) {
    const auto ranges = ParseNumberList(text);
    return ranges && ranges->size() == 1 && ranges->front().step == 1
               ? std::string()
               : "not a range of frames such as 1-48: " + text;
}

CLI::App* AddCommand(CLI::App& parent, const char* name, const char* description, CSceneArguments& scene) {
    CLI::App* command = parent.add_subcommand(name, description);
    command->add_option("--database", scene.database, "Folder of the scene database")->required();
    return command;
}

CLI::App* AddSceneCommand(CLI::App& parent, const char* name, const char* description, CSceneArguments& scene) {
    CLI::App* command = AddCommand(parent, name, description, scene);
    command->add_option("scene", scene.scene, "Name of the scene")->required();
    return command;
}

void AddLevels(CLI::App& command, NumberRanges& levels) {
    command
        .add_option_function<std::string>(
            "--levels", [&levels](const std::string& text) { levels = ParseNumberList(text); },
            "Levels, 1 on top, such as 1-3,5")
        ->check(CheckNumberList);
}

void AddFrames(CLI::App& command, NumberRanges& frames) {
    command
        .add_option_function<std::string>(
            "--frames", [&frames](const std::string& text) { frames = ParseNumberList(text); },
            "Frames, such as 1-48,60,100-200x2")
        ->check(CheckNumberList);
}

} // namespace velmor
