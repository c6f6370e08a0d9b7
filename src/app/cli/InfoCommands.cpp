#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"

#include <array>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

namespace velmor {

namespace {

using nlohmann::ordered_json;

std::string HexOf(ColorRef color) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", RedOf(color), GreenOf(color), BlueOf(color));
    return text.data();
}

ordered_json DescribeCell(const CXSheetCell& cell, int frame) {
    return {{"frame", frame + 1},          {"folder", cell.FolderName()}, {"cel", cell.CelName()},
            {"posX", cell.PosX()},         {"posY", cell.PosY()},         {"scaleX", cell.ScaleX()},
            {"scaleY", cell.ScaleY()},     {"rotation", cell.Rotation()}, {"transparency", cell.Transparency()},
            {"blurX", cell.BlurX()},       {"blurY", cell.BlurY()},       {"width", cell.Size().width},
            {"height", cell.Size().height}};
}

ordered_json DescribeLevel(const CXSheet& xsheet, int level) {
    ordered_json cells = ordered_json::array();
    for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
        if (xsheet.Cell(level, frame).IsUsed())
            cells.push_back(DescribeCell(xsheet.Cell(level, frame), frame));
    return {{"name", xsheet.LevelName(level)}, {"cells", std::move(cells)}};
}

ordered_json Describe(const CSceneModel& model) {
    ordered_json scene = {{"scene", model.sceneName},
                          {"frameCount", model.Scene().xsheet.FrameCount()},
                          {"width", model.Scene().geometry.width},
                          {"height", model.Scene().geometry.height},
                          {"frameRate", model.Scene().geometry.frameRate},
                          {"backgroundColor", HexOf(model.Scene().geometry.background)},
                          {"levels", ordered_json::array()},
                          {"camera", ordered_json::array()},
                          {"sounds", ordered_json::array()}};
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level)
        scene["levels"].push_back(DescribeLevel(model.Scene().xsheet, level));
    for (int frame = 0; frame < model.Scene().xsheet.FrameCount(); ++frame) {
        const CCameraFrame& camera = model.Scene().camera.At(frame);
        scene["camera"].push_back({{"frame", frame + 1},
                                   {"panX", camera.panX},
                                   {"panY", camera.panY},
                                   {"zoom", camera.zoom},
                                   {"rotation", camera.rotation}});
    }
    for (const CSoundPlacement& sound : model.Scene().sounds.All())
        scene["sounds"].push_back({{"frame", sound.frame + 1}, {"name", sound.name}});
    return scene;
}

void PrintSummary(const CSceneModel& model) {
    std::cout << model.sceneName << ": " << model.Scene().xsheet.FrameCount() << " frames of "
              << model.Scene().geometry.width << " x " << model.Scene().geometry.height << " at "
              << model.Scene().geometry.frameRate << " a second, background "
              << HexOf(model.Scene().geometry.background) << '\n';
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level) {
        int used = 0;
        for (int frame = 0; frame < model.Scene().xsheet.FrameCount(); ++frame)
            used += model.Scene().xsheet.Cell(level, frame).IsUsed() ? 1 : 0;
        std::cout << "level " << level + 1 << " \"" << model.Scene().xsheet.LevelName(level) << "\": " << used
                  << " used cells\n";
    }
    for (const CSoundPlacement& sound : model.Scene().sounds.All())
        std::cout << "sound \"" << sound.name << "\" from frame " << sound.frame + 1 << '\n';
}

} // namespace

bool RunScenes(const CSceneArguments& arguments) {
    CConsolePrompter prompter;
    if (!RequireDatabase(arguments.database, prompter))
        return false;
    for (const std::string& scene : ListScenes(arguments.database))
        std::cout << scene << '\n';
    return true;
}

bool RunInfo(const CSceneArguments& arguments, bool json) {
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments.database, arguments.scene, prompter);
    if (!scene)
        return false;
    if (json)
        // Names from foreign files may hold anything; a report is better than none.
        std::cout << Describe(scene->model).dump(2, ' ', false, ordered_json::error_handler_t::replace) << '\n';
    else
        PrintSummary(scene->model);
    return true;
}

} // namespace velmor
