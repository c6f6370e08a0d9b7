#include "xsheet/SceneChange.h"

#include <algorithm>
#include <cstddef>

namespace velmor {

namespace {

template<class T>
const T& To(const std::pair<T, T>& values, ChangeDirection direction) {
    return direction == ChangeDirection::Forward ? values.second : values.first;
}

template<class T>
const T& From(const std::pair<T, T>& values, ChangeDirection direction) {
    return direction == ChangeDirection::Forward ? values.first : values.second;
}

bool AreIdentical(const CXSheetCell& a, const CXSheetCell& b) {
    return a.IsIdenticalTo(b);
}

// For each level afterwards the level that it was before. What is the same in memory is the same level wherever it
// stands; of the others those in the same order, when nothing but their cells can have changed.
std::vector<int> MatchLevels(const CXSheet& before, const CXSheet& after) {
    std::vector<int> sources(static_cast<std::size_t>(after.LevelCount()), -1);
    std::vector<bool> isTaken(static_cast<std::size_t>(before.LevelCount()));
    const auto take = [&](int to, int from) {
        sources[static_cast<std::size_t>(to)] = from;
        isTaken[static_cast<std::size_t>(from)] = true;
    };
    for (int to = 0; to < after.LevelCount(); ++to) // where it stood, before a level that looks the same
        if (before.HasLevel(to) && after.SharesLevel(to, before, to))
            take(to, to);
    for (int to = 0; to < after.LevelCount(); ++to)
        for (int from = 0; sources[static_cast<std::size_t>(to)] < 0 && from < before.LevelCount(); ++from)
            if (!isTaken[static_cast<std::size_t>(from)] && after.SharesLevel(to, before, from))
                take(to, from);
    if (before.LevelCount() != after.LevelCount())
        return sources;
    int from = 0;
    for (int to = 0; to < after.LevelCount(); ++to) {
        if (sources[static_cast<std::size_t>(to)] >= 0)
            continue;
        while (isTaken[static_cast<std::size_t>(from)])
            ++from;
        take(to, from);
    }
    return sources;
}

bool IsIdentity(const std::vector<int>& sources) {
    for (std::size_t level = 0; level < sources.size(); ++level)
        if (sources[level] != static_cast<int>(level))
            return false;
    return true;
}

} // namespace

CSceneChange::CSceneChange(const CScene& before, const CScene& after)
    : m_levelCounts(before.xsheet.LevelCount(), after.xsheet.LevelCount()),
      m_frameCounts(before.xsheet.FrameCount(), after.xsheet.FrameCount()) {
    CompareLevels(before.xsheet, after.xsheet);
    CompareFrames(before, after);
    if (before.geometry != after.geometry)
        m_geometry.emplace(before.geometry, after.geometry);
    if (before.sounds != after.sounds)
        m_sounds.emplace(before.sounds.All(), after.sounds.All());
    if (before.dialogue != after.dialogue)
        m_dialogue.emplace(before.dialogue.Lines(), after.dialogue.Lines());
}

void CSceneChange::CompareFrames(const CScene& before, const CScene& after) {
    const int fewer = std::min(m_frameCounts.first, m_frameCounts.second);
    const int more = std::max(m_frameCounts.first, m_frameCounts.second);
    std::set<int> cameras;
    std::set<int> notes;
    after.camera.ForEachDifference(before.camera, [&cameras](int frame) { cameras.insert(frame); });
    after.frameNotes.ForEachDifference(before.frameNotes, [&notes](int frame) { notes.insert(frame); });
    // Both go on behind the sheet's end, and a file does not: frames that come back bring them with them.
    for (int frame = fewer; frame < more; ++frame) {
        if (!after.camera.At(frame).IsIdenticalTo({}))
            cameras.insert(frame);
        if (!after.frameNotes.At(frame).IsEmpty())
            notes.insert(frame);
    }
    for (const int frame : cameras)
        m_camera.push_back({frame, {before.camera.At(frame), after.camera.At(frame)}});
    for (const int frame : notes)
        m_frameNotes.push_back({frame, {before.frameNotes.At(frame), after.frameNotes.At(frame)}});
}

void CSceneChange::CompareLevels(const CXSheet& before, const CXSheet& after) {
    m_sources = MatchLevels(before, after);
    for (int from = 0; from < before.LevelCount(); ++from)
        if (std::ranges::find(m_sources, from) == m_sources.end())
            m_gone.push_back(LoneLevel(before, from));
    for (int to = 0; to < after.LevelCount(); ++to) {
        const int from = m_sources[static_cast<std::size_t>(to)];
        if (from < 0) {
            m_made.push_back(LoneLevel(after, to));
            continue;
        }
        if (before.LevelName(from) != after.LevelName(to))
            m_names.push_back({to, {before.LevelName(from), after.LevelName(to)}});
        CompareCells(before, from, after, to);
    }
    if (before.LevelCount() == after.LevelCount() && IsIdentity(m_sources))
        m_sources.clear();
}

void CSceneChange::CompareCells(const CXSheet& before, int from, const CXSheet& after, int to) {
    after.ForEachDifference(to, before, from, [&](int frame) {
        AddCell(m_cells, to, frame, {before.Cell(from, frame), after.Cell(to, frame)});
    });
    // Behind the end of the shorter sheet there is nothing.
    for (int frame = after.FrameCount(); frame < before.FrameCount(); ++frame)
        AddCell(m_cells, to, frame, {before.Cell(from, frame), CXSheetCell()});
    for (int frame = before.FrameCount(); frame < after.FrameCount(); ++frame)
        AddCell(m_cells, to, frame, {CXSheetCell(), after.Cell(to, frame)});
}

void CSceneChange::AddCell(std::vector<CCellRun>& runs, int level, int frame,
                           CBeforeAndAfter<CXSheetCell> cells) const {
    if (AreIdentical(cells.first, cells.second))
        return;
    if (!runs.empty()) {
        CCellRun& last = runs.back();
        if (last.level == level && last.frame + last.count == frame &&
            AreIdentical(last.cells.first, cells.first) && AreIdentical(last.cells.second, cells.second)) {
            ++last.count;
            return;
        }
    }
    runs.push_back({level, frame, 1, std::move(cells)});
}

CSceneChange::CLoneLevel CSceneChange::LoneLevel(const CXSheet& sheet, int level) const {
    CLoneLevel lone{level, sheet.LevelName(level), {}};
    for (int frame = 0; frame < sheet.FrameCount(); ++frame)
        AddCell(lone.cells, level, frame, {CXSheetCell(), sheet.Cell(level, frame)});
    return lone;
}

bool CSceneChange::IsEmpty() const {
    return m_levelCounts.first == m_levelCounts.second && m_frameCounts.first == m_frameCounts.second &&
           m_sources.empty() && m_names.empty() && m_cells.empty() && m_camera.empty() && !m_geometry &&
           !m_sounds && m_frameNotes.empty() && !m_dialogue;
}

std::vector<int> CSceneChange::Sources(ChangeDirection direction) const {
    if (direction == ChangeDirection::Forward)
        return m_sources;
    std::vector<int> sources(static_cast<std::size_t>(m_levelCounts.first), -1);
    for (std::size_t to = 0; to < m_sources.size(); ++to)
        if (m_sources[to] >= 0)
            sources[static_cast<std::size_t>(m_sources[to])] = static_cast<int>(to);
    return sources;
}

void CSceneChange::ApplyLevels(CXSheet& sheet, ChangeDirection direction) const {
    if (!m_sources.empty())
        sheet.Arrange(Sources(direction));
    if (m_frameCounts.first != m_frameCounts.second)
        sheet.SetFrameCount(To(m_frameCounts, direction));
    const auto set = [&sheet](int level, const CCellRun& run, const CXSheetCell& cell) {
        const int end = std::min(run.frame + run.count, sheet.FrameCount());
        for (int frame = run.frame; frame < end; ++frame)
            sheet.MutableCell(level, frame) = cell;
    };
    for (const CLoneLevel& lone : direction == ChangeDirection::Forward ? m_made : m_gone) {
        sheet.SetLevelName(lone.level, lone.name);
        for (const CCellRun& run : lone.cells)
            set(lone.level, run, run.cells.second);
    }
    const auto place = [&](int level) {
        return direction == ChangeDirection::Forward || m_sources.empty()
                   ? level
                   : m_sources[static_cast<std::size_t>(level)];
    };
    for (const CLevelName& level : m_names)
        sheet.SetLevelName(place(level.level), To(level.names, direction));
    for (const CCellRun& run : m_cells)
        set(place(run.level), run, To(run.cells, direction));
}

bool CSceneChange::Apply(CScene& scene, ChangeDirection direction) const {
    if (IsEmpty())
        return true;
    if (scene.xsheet.LevelCount() != From(m_levelCounts, direction) ||
        scene.xsheet.FrameCount() != From(m_frameCounts, direction))
        return false;
    ApplyLevels(scene.xsheet, direction);
    for (const CCameraChange& change : m_camera)
        scene.camera.MutableAt(change.frame) = To(change.cameras, direction);
    if (m_geometry)
        scene.geometry = To(*m_geometry, direction);
    if (m_sounds)
        scene.sounds.Set(To(*m_sounds, direction));
    for (const CNoteChange& change : m_frameNotes)
        scene.frameNotes.Set(change.frame, To(change.notes, direction));
    if (m_dialogue)
        scene.dialogue.Set(To(*m_dialogue, direction));
    return true;
}

void CSceneChange::RestoreInto(CScene& scene) const {
    CXSheet& sheet = scene.xsheet;
    for (const CCellRun& run : m_cells)
        for (int frame = run.frame; frame < run.frame + run.count; ++frame)
            if (sheet.HasLevel(run.level) && sheet.HasFrame(frame) && !sheet.Cell(run.level, frame).IsUsed())
                sheet.MutableCell(run.level, frame).Expose(run.cells.first);
    if (!m_sounds)
        return;
    std::vector<CSoundPlacement> sounds = scene.sounds.All();
    for (const CSoundPlacement& sound : m_sounds->first)
        if (scene.sounds.NameAt(sound.frame) == nullptr && std::ssize(sounds) < CSoundPlacements::mostPlacements)
            sounds.push_back(sound); // not where another one starts now
    scene.sounds.Set(std::move(sounds));
}

std::optional<CXSheetSelection> CSceneChange::ChangedCells() const {
    std::optional<CXSheetSelection> box;
    const auto add = [&box](int level, int firstFrame, int lastFrame) {
        if (!box)
            box = {level, level, firstFrame, lastFrame};
        box = {std::min(box->firstLevel, level), std::max(box->lastLevel, level),
               std::min(box->firstFrame, firstFrame), std::max(box->lastFrame, lastFrame)};
    };
    const int lastFrame = m_frameCounts.second - 1;
    const int lastLevel = m_levelCounts.second - 1;
    for (const CCellRun& run : m_cells)
        add(run.level, std::min(run.frame, lastFrame), std::min(run.frame + run.count - 1, lastFrame));
    for (std::size_t level = 0; level < m_sources.size(); ++level)
        if (m_sources[level] != static_cast<int>(level))
            add(static_cast<int>(level), 0, lastFrame);
    for (const CLoneLevel& level : m_gone)
        add(std::clamp(lastLevel, 0, level.level), 0, lastFrame);
    for (const CLevelName& level : m_names)
        add(level.level, 0, lastFrame);
    for (const CCameraChange& change : m_camera)
        add(0, std::min(change.frame, lastFrame), std::min(change.frame, lastFrame));
    for (const CNoteChange& change : m_frameNotes)
        add(0, std::min(change.frame, lastFrame), std::min(change.frame, lastFrame));
    if (m_dialogue)
        for (const auto& lines : {m_dialogue->first, m_dialogue->second})
            for (const CSpokenLine& line : lines)
                if (line.firstFrame >= 0 && line.firstFrame <= std::min(line.lastFrame, lastFrame))
                    add(0, line.firstFrame, std::min(line.lastFrame, lastFrame));
    if (m_frameCounts.first != m_frameCounts.second)
        add(0, std::min(m_frameCounts.first, m_frameCounts.second) - 1, lastFrame);
    if (m_sounds)
        for (const auto& placements : {m_sounds->first, m_sounds->second})
            for (const CSoundPlacement& sound : placements)
                if (sound.frame >= 0 && sound.frame <= lastFrame)
                    add(0, sound.frame, sound.frame);
    return box;
}

std::set<std::string> CSceneChange::AssetNames() const {
    std::set<std::string> names;
    const auto add = [&names](const CXSheetCell& cell) {
        if (cell.IsUsed())
            names.insert(cell.IsPicture() ? cell.CelName() : cell.FolderName() + " " + cell.CelName());
    };
    for (const CCellRun& run : m_cells) {
        add(run.cells.first);
        add(run.cells.second);
    }
    for (const auto* levels : {&m_gone, &m_made})
        for (const CLoneLevel& level : *levels)
            for (const CCellRun& run : level.cells)
                add(run.cells.second);
    if (m_sounds)
        for (const auto& placements : {m_sounds->first, m_sounds->second})
            for (const CSoundPlacement& sound : placements)
                names.insert(sound.name);
    return names;
}

bool CSceneChange::IsWithinFrame(int frame) const {
    return m_levelCounts.first == m_levelCounts.second && m_frameCounts.first == m_frameCounts.second &&
           m_sources.empty() && m_names.empty() && !m_geometry && !m_sounds && !m_dialogue &&
           std::ranges::all_of(m_cells,
                               [&](const CCellRun& run) { return run.frame == frame && run.count == 1; }) &&
           std::ranges::all_of(m_camera, [&](const CCameraChange& change) { return change.frame == frame; }) &&
           std::ranges::all_of(m_frameNotes, [&](const CNoteChange& change) { return change.frame == frame; });
}

} // namespace velmor
