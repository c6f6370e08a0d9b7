#include "xsheet/exchange/SheetExport.h"

#include "xsheet/DialogueText.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace velmor {

namespace {

// Digits with at most one letter behind them: what every program takes for a drawing's number.
bool IsDrawingNumber(const std::string& name) {
    const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
    const auto end = std::ranges::find_if_not(name, isDigit);
    const auto rest = name.end() - end;
    return end != name.begin() && (rest == 0 || (rest == 1 && std::isalpha(static_cast<unsigned char>(*end)) != 0));
}

bool HasEffects(const CXSheetCell& cell) {
    return cell.Transparency() != 0 || cell.BlurX() != 1 || cell.BlurY() != 1;
}

// Whether a condition holds for a used cell of a level.
template<class Condition>
bool Any(const CXSheet& xsheet, int level, Condition condition) {
    for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
        if (xsheet.Cell(level, frame).IsUsed() && condition(xsheet.Cell(level, frame)))
            return true;
    return false;
}

// Where a drawing begins stands its number, and there is no place for a mark.
bool IsExchangedMark(const CXSheet& xsheet, int level, int frame) {
    const CXSheetCell& cell = xsheet.Cell(level, frame);
    const bool goesOn = frame > 0 ? cell.ShowsSameAs(xsheet.Cell(level, frame - 1)) : !cell.IsUsed();
    return cell.Note().mark == SheetMark::Inbetween && goesOn;
}

bool LosesNotes(const CXSheet& xsheet, int level) {
    for (int frame = 0; frame < xsheet.FrameCount(); ++frame) {
        CSheetNote note = xsheet.Cell(level, frame).Note();
        if (IsExchangedMark(xsheet, level, frame))
            note.mark = SheetMark::None;
        if (!note.IsEmpty())
            return true;
    }
    return false;
}

bool CameraMoves(const CXSheet& xsheet, const CCameraTrack& camera) {
    for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
        if (!(camera.At(frame) == CCameraFrame{}))
            return true;
    return false;
}

std::string LevelText(const CXSheet& xsheet, int level) {
    return "Level \"" + xsheet.LevelName(level) + "\": ";
}

} // namespace

std::optional<std::string> FolderOfLevel(const CXSheet& xsheet, int level) {
    std::map<std::string, int> exposures;
    for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
        if (const CXSheetCell& cell = xsheet.Cell(level, frame); cell.IsUsed() && !cell.IsPicture())
            ++exposures[cell.FolderName()];
    const auto most = std::ranges::max_element(exposures, {}, [](const auto& folder) { return folder.second; });
    return most == exposures.end() ? std::nullopt : std::optional(most->first);
}

std::string ExchangeName(const CXSheetCell& cell, const std::string& folder) {
    if (!cell.IsUsed())
        return {};
    if (cell.FolderName() == folder && IsDrawingNumber(cell.CelName()))
        return cell.CelName();
    return cell.FolderName() + "/" + cell.CelName();
}

CExchangeSheet ExportSheet(const std::string& scene, const CXSheet& xsheet,
                           const std::vector<CSoundPlacement>& sounds, const SoundLength& length) {
    CExchangeSheet sheet;
    sheet.name = scene;
    sheet.frameCount = xsheet.FrameCount();
    for (int level = 0; level < xsheet.LevelCount(); ++level) {
        const std::string folder = FolderOfLevel(xsheet, level).value_or(std::string());
        CExchangeTrack& track = sheet.tracks.emplace_back();
        track.name = xsheet.LevelName(level);
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame) {
            track.cells.push_back(ExchangeName(xsheet.Cell(level, frame), folder));
            if (IsExchangedMark(xsheet, level, frame))
                track.inbetweens.insert(frame);
        }
    }
    for (const CSoundPlacement& sound : sounds)
        sheet.lines.push_back({sound.frame,
                               std::min(sheet.frameCount, sound.frame + std::max(1, length(sound.name))),
                               {},
                               sound.name});
    std::ranges::stable_sort(sheet.lines, {}, &CExchangeLine::frame);
    for (std::size_t i = 1; i < sheet.lines.size(); ++i) // one speaks at a time
        sheet.lines[i - 1].endFrame = std::min(sheet.lines[i - 1].endFrame, sheet.lines[i].frame);
    sheet.hasDialogue = !sheet.lines.empty();
    return sheet;
}

void AddDialogue(const CDialogue& dialogue, CExchangeSheet& sheet) {
    // Together, with what a table has between them, they are a text of a sheet.
    constexpr std::size_t mostSpeaker = 50;
    constexpr std::size_t most = mostExchangeText - mostSpeaker - 2;
    for (const CSpokenLine& line : dialogue.Lines())
        if (line.firstFrame < sheet.frameCount)
            sheet.spoken.push_back({line.firstFrame, std::min(line.lastFrame + 1, sheet.frameCount),
                                    SpokenText(std::string_view(line.speaker).substr(0, mostSpeaker)),
                                    SpokenText(std::string_view(line.text).substr(0, most))});
    sheet.hasDialogue = sheet.hasDialogue || !sheet.spoken.empty();
}

std::vector<std::string> LossesOfExport(const CXSheet& xsheet, const CCameraTrack& camera, CSize frame) {
    const CPoint centre{frame.width / 2, frame.height / 2}; // where a new cell stands
    const CCellTransform fresh{static_cast<double>(centre.x), static_cast<double>(centre.y), 1, 1, 0};
    std::vector<std::string> losses;
    for (int level = 0; level < xsheet.LevelCount(); ++level) {
        const std::string folder = FolderOfLevel(xsheet, level).value_or(std::string());
        if (Any(xsheet, level, [&fresh](const CXSheetCell& cell) { return !(cell.Transform() == fresh); }))
            losses.push_back(LevelText(xsheet, level) + "positions, scales and rotations are not in the file");
        if (LosesNotes(xsheet, level))
            losses.push_back(LevelText(xsheet, level) +
                             "marks, their colors and comments are not in the file, but for "
                             "inbetweens in a digital time sheet");
        if (Any(xsheet, level, HasEffects))
            losses.push_back(LevelText(xsheet, level) + "transparency and blur are not in the file");
        if (Any(xsheet, level, [&folder](const CXSheetCell& cell) {
                return ExchangeName(cell, folder).find('/') != std::string::npos;
            }))
            losses.push_back(LevelText(xsheet, level) +
                             "pictures and drawings of other folders have names that other programs may not know");
    }
    if (CameraMoves(xsheet, camera))
        losses.emplace_back("The camera is not in the file");
    return losses;
}

} // namespace velmor
