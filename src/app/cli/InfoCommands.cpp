#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/JsonWriter.h"
#include "app/cli/SceneReader.h"
#include "xsheet/NotedPlaces.h"
#include "xsheet/SheetNotesFile.h"

#include <array>
#include <cstdio>
#include <iostream>

namespace velmor {

namespace {

std::string HexOf(ColorRef color) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", RedOf(color), GreenOf(color), BlueOf(color));
    return text.data();
}

void DescribeCell(const CXSheetCell& cell, int frame, CJsonWriter& json) {
    json.BeginObject();
    json.Write("frame", frame + 1);
    json.Write("folder", cell.FolderName());
    json.Write("cel", cell.CelName());
    json.Write("posX", cell.PosX());
    json.Write("posY", cell.PosY());
    json.Write("scaleX", cell.ScaleX());
    json.Write("scaleY", cell.ScaleY());
    json.Write("rotation", cell.Rotation());
    json.Write("transparency", cell.Transparency());
    json.Write("blurX", cell.BlurX());
    json.Write("blurY", cell.BlurY());
    json.Write("width", cell.Size().width);
    json.Write("height", cell.Size().height);
    json.EndObject();
}

void DescribeLevel(const CXSheet& xsheet, int level, CJsonWriter& json) {
    json.BeginObject();
    json.Write("name", xsheet.LevelName(level));
    json.Key("cells").BeginArray();
    for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
        if (xsheet.Cell(level, frame).IsUsed())
            DescribeCell(xsheet.Cell(level, frame), frame, json);
    json.EndArray();
    json.EndObject();
}

void DescribeCamera(const CCameraFrame& camera, int frame, CJsonWriter& json) {
    json.BeginObject();
    json.Write("frame", frame + 1);
    json.Write("panX", camera.panX);
    json.Write("panY", camera.panY);
    json.Write("zoom", camera.zoom);
    json.Write("rotation", camera.rotation);
    json.EndObject();
}

void DescribeNote(const CNotedPlace& place, const CSheetNote& note, CJsonWriter& json) {
    json.BeginObject();
    json.Write("frame", place.frame + 1);
    if (place.level)
        json.Write("level", *place.level + 1);
    if (note.mark != SheetMark::None)
        json.Write("mark", std::string(WordOf(note.mark)));
    if (note.color != NoteColor::None)
        json.Write("color", std::string(WordOf(note.color)));
    if (!note.comment.empty())
        json.Write("comment", note.comment);
    json.EndObject();
}

// Only where something is noted: what reads the others has never seen it.
void DescribeNotes(const CScene& scene, CJsonWriter& json) {
    const std::vector<CNotedPlace> places = NotedPlaces(scene);
    if (places.empty())
        return;
    json.Key("notes").BeginArray();
    for (const CNotedPlace& place : places)
        DescribeNote(place, NoteAt(scene, place), json);
    json.EndArray();
}

void Describe(const CSceneModel& model, CJsonWriter&& json) {
    json.BeginObject();
    json.Write("scene", model.sceneName);
    json.Write("frameCount", model.Scene().xsheet.FrameCount());
    json.Write("width", model.Scene().geometry.width);
    json.Write("height", model.Scene().geometry.height);
    json.Write("frameRate", model.Scene().geometry.frameRate);
    json.Write("backgroundColor", HexOf(model.Scene().geometry.background));
    json.Key("levels").BeginArray();
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level)
        DescribeLevel(model.Scene().xsheet, level, json);
    json.EndArray();
    json.Key("camera").BeginArray();
    for (int frame = 0; frame < model.Scene().xsheet.FrameCount(); ++frame)
        DescribeCamera(model.Scene().camera.At(frame), frame, json);
    json.EndArray();
    json.Key("sounds").BeginArray();
    for (const CSoundPlacement& sound : model.Scene().sounds.All()) {
        json.BeginObject();
        json.Write("frame", sound.frame + 1);
        json.Write("name", sound.name);
        json.EndObject();
    }
    json.EndArray();
    DescribeNotes(model.Scene(), json);
    json.EndObject();
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
    if (json) {
        Describe(scene->model, CJsonWriter(std::cout));
        std::cout << '\n';
    } else {
        PrintSummary(scene->model);
    }
    return true;
}

} // namespace velmor
