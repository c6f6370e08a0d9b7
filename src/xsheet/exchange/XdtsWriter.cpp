#include "xsheet/exchange/Xdts.h"
#include "xsheet/exchange/XdtsText.h"

#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>
#include <utility>

namespace velmor {

namespace {

using Json = nlohmann::ordered_json;

Json Entry(int frame, Json values) {
    return {{"frame", frame}, {"data", Json::array({{{"id", 0}, {"values", std::move(values)}}})}};
}

// A value stands until the next one, so only changes are written; a mark changes nothing.
Json CellFrames(const CExchangeTrack& track) {
    const std::vector<std::string>& cells = track.cells;
    Json frames = Json::array();
    std::string shown;
    for (std::size_t frame = 0; frame < cells.size(); ++frame) {
        if (cells[frame] == shown) {
            if (track.inbetweens.contains(static_cast<int>(frame)))
                frames.push_back(Entry(static_cast<int>(frame), {std::string(xdts::inbetween)}));
            continue;
        }
        shown = cells[frame];
        frames.push_back(Entry(static_cast<int>(frame), {shown.empty() ? std::string(xdts::noCell) : shown}));
    }
    return frames;
}

Json CellField(const CExchangeSheet& sheet) {
    Json tracks = Json::array();
    for (std::size_t track = 0; track < sheet.tracks.size(); ++track) // the bottom one is number 0
        tracks.push_back(
            {{"trackNo", track}, {"frames", CellFrames(sheet.tracks[sheet.tracks.size() - 1 - track])}});
    return {{"fieldId", xdts::cellField}, {"tracks", std::move(tracks)}};
}

Json LineFrames(const std::vector<CExchangeLine>& lines, int frameCount) {
    Json frames = Json::array();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const CExchangeLine& line = lines[i];
        frames.push_back(Entry(line.frame, {line.speaker, line.text}));
        const bool cutOff = i + 1 < lines.size() && lines[i + 1].frame <= line.endFrame;
        if (!cutOff && line.endFrame < frameCount)
            frames.push_back(Entry(line.endFrame, {std::string(xdts::noCell)}));
    }
    return frames;
}

// What is spoken has a track of its own behind that of the sounds.
void AddDialogue(const CExchangeSheet& sheet, Json& headers, Json& fields) {
    Json names = Json::array();
    Json tracks = Json::array();
    for (const auto& [lines, name] :
         {std::pair(&sheet.lines, std::string_view("Dialogue")), std::pair(&sheet.spoken, xdts::spokenTrack)})
        if (!lines->empty()) {
            tracks.push_back({{"trackNo", tracks.size()}, {"frames", LineFrames(*lines, sheet.frameCount)}});
            names.push_back(name);
        }
    if (tracks.empty())
        return;
    headers.push_back({{"fieldId", xdts::dialogueField}, {"names", std::move(names)}});
    fields.push_back({{"fieldId", xdts::dialogueField}, {"tracks", std::move(tracks)}});
}

Json Names(const CExchangeSheet& sheet) {
    Json names = Json::array();
    for (auto track = sheet.tracks.rbegin(); track != sheet.tracks.rend(); ++track)
        names.push_back(track->name);
    return names;
}

// A cut is known by a number of up to four digits: the first one of the name.
std::string CutNumber(const std::string& name) {
    const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
    const auto begin = std::ranges::find_if(name, isDigit);
    const std::string digits(begin, std::find_if_not(begin, name.end(), isDigit));
    return digits.empty() ? "1" : digits.substr(0, 4);
}

} // namespace

std::string WriteXdts(const CExchangeSheet& sheet) {
    Json headers = Json::array({{{"fieldId", xdts::cellField}, {"names", Names(sheet)}}});
    Json fields = Json::array({CellField(sheet)});
    AddDialogue(sheet, headers, fields);
    Json table = {{"name", sheet.name},
                  {"duration", sheet.frameCount},
                  {"timeTableHeaders", std::move(headers)},
                  {"fields", std::move(fields)}};
    const Json file = {{"timeTables", Json::array({std::move(table)})},
                       {"version", xdts::version},
                       {"header", {{"cut", CutNumber(sheet.name)}, {"scene", "1"}}}};
    return std::string(xdts::firstLine) + "\n" + file.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace velmor
