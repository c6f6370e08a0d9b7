#include "xsheet/exchange/SheetImport.h"

#include "platform/files/TextEncoding.h"
#include "xsheet/DialogueText.h"
#include "xsheet/exchange/SheetExport.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace velmor {

namespace {

static_assert(mostExchangeTracks == CXSheet::mostLevelsInFile && mostExchangeFrames == CXSheet::mostFramesInFile);

// A track's name as a level can have it: what our files lack is a question mark there.
std::string LevelNameOf(const std::string& track) {
    std::string name = Windows1252ToUtf8(Utf8ToWindows1252(track));
    std::erase_if(name, [](unsigned char c) { return c < ' '; });
    name.erase(0, name.find_first_not_of(' '));
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

std::string WithoutZeros(const std::string& number) {
    const std::size_t begin = number.find_first_not_of('0');
    if (begin == std::string::npos || std::isdigit(static_cast<unsigned char>(number[begin])) == 0)
        return number;
    return number.substr(begin);
}

std::string Counted(int count, const char* one, const char* more) {
    return std::to_string(count) + " " + (count == 1 ? one : more);
}

void Change(CSheetImport& import, const std::string& text) {
    import.changes.push_back(text);
    import.sheetChanges.push_back(text);
}

void Lose(CSheetImport& import, const std::string& text) {
    import.losses.push_back(text);
    import.sheetLosses.push_back(text);
}

/// Brings one track into a level.
class CTrackImport {
public:
    CTrackImport(const CExchangeTrack& track, const CXSheet& before, std::optional<int> levelBefore,
                 const CSceneAssets& assets, CSheetImport& import)
        : m_track(track), m_before(before), m_levelBefore(levelBefore), m_assets(assets), m_import(import) {
        if (levelBefore)
            m_folder = FolderOfLevel(before, *levelBefore).value_or(std::string());
        if (m_folder.empty() && assets.images.contains(LevelNameOf(track.name)))
            m_folder = LevelNameOf(track.name);
        m_isFolderGiven = m_folder.empty();
        if (m_isFolderGiven)
            m_folder = assets.folder;
    }

    void Into(int level) {
        m_result.level = m_import.xsheet.LevelName(level);
        m_result.isNew = !m_levelBefore;
        const int frames = std::min(m_import.xsheet.FrameCount(), static_cast<int>(m_track.cells.size()));
        for (int frame = 0; frame < frames; ++frame) {
            CXSheetCell cell = CellFor(m_track.cells[static_cast<std::size_t>(frame)], frame).WithoutNote();
            if (cell.IsIdenticalTo(m_import.xsheet.Cell(level, frame).WithoutNote()))
                continue;
            m_import.xsheet.MutableCell(level, frame).Expose(cell);
            ++m_result.changedCells;
        }
        for (const int frame : m_track.inbetweens)
            if (frame < frames && m_import.xsheet.Cell(level, frame).Note().mark == SheetMark::None)
                MarkInbetween(m_import.xsheet.MutableCell(level, frame));
        Tell();
    }

private:
    void MarkInbetween(CXSheetCell& cell) {
        CSheetNote note = cell.Note();
        note.mark = SheetMark::Inbetween;
        cell.SetNote(std::move(note));
        ++m_result.changedCells;
    }

    void Tell() {
        const std::string level = "Level \"" + m_result.level + "\": ";
        if (m_result.changedCells > 0)
            m_import.changes.push_back(level + Counted(m_result.changedCells, "cell changes", "cells change"));
        for (const auto& [name, count] : m_result.missing)
            m_import.losses.push_back(std::string(level)
                                          .append("there is no drawing ")
                                          .append(name)
                                          .append(", ")
                                          .append(Counted(count, "cell stays", "cells stay"))
                                          .append(" empty"));
        m_import.tracks.push_back(std::move(m_result));
    }

    // Folder and name of the drawing that a value means; nothing when the scene has none such.
    std::optional<std::pair<std::string, std::string>> Resolve(const std::string& value) const {
        const std::size_t slash = value.rfind('/');
        const std::string folder = slash == std::string::npos ? m_folder : value.substr(0, slash);
        const std::string name = slash == std::string::npos ? value : value.substr(slash + 1);
        const auto images = m_assets.images.find(folder);
        if (images == m_assets.images.end())
            return std::nullopt;
        for (const std::string& known : {name, WithoutZeros(name)})
            if (images->second.contains(known))
                return std::pair(folder, known);
        return std::nullopt;
    }

    CXSheetCell CellFor(const std::string& value, int frame) {
        if (value.empty())
            return {};
        m_result.usesGivenFolder |= m_isFolderGiven && value.find('/') == std::string::npos;
        m_result.drawings.insert(value);
        if (m_levelBefore && m_before.HasFrame(frame) &&
            ExchangeName(m_before.Cell(*m_levelBefore, frame), m_folder) == value)
            return m_before.Cell(*m_levelBefore, frame);
        const auto drawing = Resolve(value);
        if (!drawing) {
            m_result.drawings.erase(value);
            ++m_result.missing[value];
            return {};
        }
        if (const CXSheetCell* nearest = NearestOf(drawing->first, drawing->second, frame))
            return *nearest;
        CXSheetCell& fresh = m_fresh[*drawing]; // its size is read once
        if (!fresh.IsUsed())
            static_cast<void>(fresh.Set(m_assets.sceneFolder, drawing->first, drawing->second, m_assets.frame));
        return fresh;
    }

    const CXSheetCell* NearestOf(const std::string& folder, const std::string& name, int frame) const {
        if (!m_levelBefore)
            return nullptr;
        const CXSheetCell* nearest = nullptr;
        int distance = 0;
        for (int other = 0; other < m_before.FrameCount(); ++other) {
            const CXSheetCell& cell = m_before.Cell(*m_levelBefore, other);
            if (cell.Shows(folder, name) && (nearest == nullptr || std::abs(other - frame) < distance)) {
                nearest = &cell;
                distance = std::abs(other - frame);
            }
        }
        return nearest;
    }

    const CExchangeTrack& m_track;
    const CXSheet& m_before;
    std::optional<int> m_levelBefore;
    const CSceneAssets& m_assets;
    CSheetImport& m_import;
    std::string m_folder;
    bool m_isFolderGiven = false;
    CImportedTrack m_result;
    std::map<std::pair<std::string, std::string>, CXSheetCell> m_fresh;
};

// The level that each track goes into; nothing for a new one. Tracks of one name take the levels of that name in
// their order.
std::vector<std::optional<int>> MatchTracks(const std::vector<CExchangeTrack>& tracks, const CXSheet& xsheet) {
    std::vector<std::optional<int>> levels;
    std::set<int> taken;
    for (const CExchangeTrack& track : tracks) {
        std::optional<int>& match = levels.emplace_back();
        for (int level = 0; level < xsheet.LevelCount() && !match; ++level)
            if (!taken.contains(level) && LevelNameOf(xsheet.LevelName(level)) == LevelNameOf(track.name))
                match = level;
        if (match)
            taken.insert(*match);
    }
    return levels;
}

void ImportTracks(const CExchangeSheet& sheet, const CXSheet& before, const CSceneAssets& assets,
                  CSheetImport& import) {
    const std::vector<std::optional<int>> matches = MatchTracks(sheet.tracks, before);
    const auto added = static_cast<int>(std::ranges::count(matches, std::optional<int>()));
    for (std::size_t i = sheet.tracks.size(); i-- > 0;) // each goes in front of those before it
        if (!matches[i]) {
            static_cast<void>(import.xsheet.AddLevel(LevelNameOf(sheet.tracks[i].name))); // there is room
            import.changes.push_back("New level \"" + LevelNameOf(sheet.tracks[i].name) + "\"");
        }
    int next = 0;
    for (std::size_t i = 0; i < sheet.tracks.size(); ++i)
        CTrackImport(sheet.tracks[i], before, matches[i], assets, import)
            .Into(matches[i] ? *matches[i] + added : next++);
}

// Places the sounds that lines are called like, heard as they are where they were placed before; the other lines.
std::vector<CExchangeLine> ImportSounds(const CExchangeSheet& sheet, const std::vector<CSoundPlacement>& before,
                                        const CSceneAssets& assets, CSheetImport& import) {
    std::vector<CExchangeLine> spoken = sheet.spoken;
    std::vector<CSoundPlacement> placed;
    for (const CExchangeLine& line : sheet.lines) {
        const bool isFree = placed.empty() || placed.back().frame != line.frame;
        const std::string& name = assets.sounds.contains(line.text) ? line.text : line.speaker;
        if (!isFree || !assets.sounds.contains(name)) {
            spoken.push_back(line);
            continue;
        }
        const auto known = std::ranges::find_if(
            before, [&](const CSoundPlacement& sound) { return sound.frame == line.frame && sound.name == name; });
        placed.push_back(known != before.end() ? *known : CSoundPlacement{line.frame, name});
    }
    if (placed.empty() && !spoken.empty())
        return spoken;
    std::vector<CSoundPlacement> sorted = before;
    std::ranges::stable_sort(sorted, {}, &CSoundPlacement::frame);
    import.sounds = before; // in the order of their placing
    if (sorted != placed) {
        import.sounds = std::move(placed);
        Change(import, "Sounds: " + std::to_string(before.size()) + " placed before, " +
                           std::to_string(import.sounds.size()) + " after");
    }
    return spoken;
}

void ImportDialogue(const std::vector<CExchangeLine>& spoken, const CDialogue& before, CSheetImport& import) {
    if (spoken.empty())
        return;
    CDialogue dialogue;
    for (const CExchangeLine& line : spoken)
        if (!dialogue.Put({line.frame, line.endFrame - 1, SpokenText(line.speaker), SpokenText(line.text)}))
            Lose(import, "Frame " + std::to_string(line.frame + 1) + ": a line of dialogue has no text");
    if (const auto lines = dialogue.Lines().size(); lines < spoken.size())
        Lose(import, "Of " + Counted(static_cast<int>(spoken.size()), "line", "lines") + " of dialogue " +
                         std::to_string(lines) + " can be taken, since only one is spoken at a time");
    if (dialogue == before)
        return;
    Change(import, "Dialogue: " + Counted(static_cast<int>(before.Lines().size()), "line", "lines") + " before, " +
                       std::to_string(dialogue.Lines().size()) + " after");
    import.dialogue = std::move(dialogue);
}

} // namespace

CStatus ImportSheet(const CExchangeSheet& sheet, const CXSheet& xsheet, const std::vector<CSoundPlacement>& sounds,
                    const CDialogue& dialogue, const CSceneAssets& assets, CSheetImport& import) {
    const auto matches = MatchTracks(sheet.tracks, xsheet);
    const auto added = static_cast<int>(std::ranges::count(matches, std::optional<int>()));
    const int mostFrames = std::max(CXSheet::mostFrames, xsheet.FrameCount());
    if (sheet.frameCount < 1 || sheet.frameCount > mostFrames ||
        (added > 0 && xsheet.LevelCount() + added > CXSheet::mostLevels))
        return CStatus::Failure("The sheet has more levels or frames than an xsheet can have");
    CSheetImport made;
    made.xsheet = xsheet;
    made.sounds = sounds;
    made.dialogue = dialogue;
    made.newLevels = added;
    if (sheet.frameCount != xsheet.FrameCount()) {
        Change(made, "Length: " + std::to_string(xsheet.FrameCount()) + " frames before, " +
                         std::to_string(sheet.frameCount) + " after");
        made.xsheet.SetFrameCount(sheet.frameCount);
        std::erase_if(made.sounds, [&](const CSoundPlacement& sound) { return sound.frame >= sheet.frameCount; });
    }
    ImportTracks(sheet, xsheet, assets, made);
    if (sheet.hasDialogue)
        ImportDialogue(ImportSounds(sheet, sounds, assets, made), dialogue, made);
    if (sheet.hasCamera)
        Lose(made, "The camera work of the file is not taken");
    import = std::move(made);
    return {};
}

} // namespace velmor
