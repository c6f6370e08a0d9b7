#include "xsheet/XSheet.h"

#include "image/CelImg.h"

#include <algorithm>
#include <cstddef>

namespace velmor {

namespace {

constexpr std::string_view dittoMark = "\"";

// Every frame is looked at as it was before the first one went: what has gone shows the same as what stands before
// it, so the last kept cell serves for the comparison.
void CondenseCells(std::vector<CXSheetCell>& cells, std::size_t firstFrame, std::size_t lastFrame) {
    std::size_t kept = std::max<std::size_t>(firstFrame, 1); // frame 0 has nothing before it
    for (std::size_t frame = kept; frame < cells.size(); ++frame) {
        const bool endsHold = frame < lastFrame && cells[frame].ShowsSameAs(cells[kept - 1]) &&
                              !cells[frame].ShowsSameAs(cells[frame + 1]);
        if (endsHold)
            continue;
        if (kept != frame)
            cells[kept] = std::move(cells[frame]);
        ++kept;
    }
    for (; kept < cells.size(); ++kept)
        cells[kept] = cells[kept - 1].WithoutNote();
}

void ExpandCells(std::vector<CXSheetCell>& cells, std::size_t firstFrame, std::size_t lastFrame) {
    std::vector<CXSheetCell> expanded;
    expanded.reserve(cells.size());
    for (std::size_t frame = 0; expanded.size() < cells.size(); ++frame) {
        const bool endsExposure = frame == lastFrame || (frame >= firstFrame && frame < lastFrame &&
                                                         !cells[frame].ShowsSameAs(cells[frame + 1]));
        expanded.push_back(std::move(cells[frame]));
        if (endsExposure && expanded.size() < cells.size())
            expanded.push_back(expanded.back().WithoutNote());
    }
    cells = std::move(expanded);
}

} // namespace

CXSheet::CXSheet() : CXSheet(1, defaultFrames) {
    SetLevelName(0, "Default");
}

CXSheet::CXSheet(int levels, int frames) : m_frameCount(frames) {
    CLevel empty;
    empty.cells.resize(static_cast<std::size_t>(frames));
    m_levels.assign(static_cast<std::size_t>(levels), CShared(std::move(empty)));
}

template<class Edit>
void CXSheet::EditLevel(int level, Edit edit) {
    CLevel& changed = m_levels[static_cast<std::size_t>(level)].Change();
    std::vector<CXSheetCell> cells = changed.cells.All();
    edit(cells);
    changed.cells.Assign(std::move(cells),
                         [](const CXSheetCell& a, const CXSheetCell& b) { return a.IsIdenticalTo(b); });
}

template<class Edit>
void CXSheet::EditLevels(const CXSheetSelection& selection, Edit edit) {
    for (int level = selection.firstLevel; level <= selection.lastLevel; ++level)
        EditLevel(level, edit);
}

std::string CXSheet::CellText(int level, int frame) const {
    const CXSheetCell& cell = Cell(level, frame);
    if (!cell.IsUsed())
        return {};
    if (frame > 0 && cell.ShowsSameAs(Cell(level, frame - 1)))
        return std::string(dittoMark);
    return cell.IsPicture() ? cell.CelName() : cell.FolderName() + cell.CelName();
}

bool CXSheet::AddLevel(std::string name) {
    if (LevelCount() >= mostLevels)
        return false;
    CLevel level{std::move(name), {}};
    level.cells.resize(static_cast<std::size_t>(m_frameCount));
    m_levels.emplace(m_levels.begin(), std::move(level));
    return true;
}

void CXSheet::DeleteLevel(int level) {
    m_levels.erase(m_levels.begin() + level);
}

void CXSheet::SwapLevels(int a, int b) {
    std::swap(m_levels[static_cast<std::size_t>(a)], m_levels[static_cast<std::size_t>(b)]);
}

void CXSheet::SetFrameCount(int frames) {
    for (CShared<CLevel>& level : m_levels)
        level.Change().cells.resize(static_cast<std::size_t>(frames));
    m_frameCount = frames;
}

CCellClipboard CXSheet::Copy(const CXSheetSelection& selection) const {
    CCellClipboard clipboard;
    clipboard.width = selection.lastLevel - selection.firstLevel + 1;
    clipboard.height = selection.lastFrame - selection.firstFrame + 1;
    clipboard.cells.reserve(static_cast<std::size_t>(clipboard.width) * static_cast<std::size_t>(clipboard.height));
    for (int frame = selection.firstFrame; frame <= selection.lastFrame; ++frame)
        for (int level = selection.firstLevel; level <= selection.lastLevel; ++level)
            clipboard.cells.push_back(Cell(level, frame));
    return clipboard;
}

void CXSheet::ClearCells(const CXSheetSelection& selection) {
    for (int level = selection.firstLevel; level <= selection.lastLevel; ++level)
        for (int frame = selection.firstFrame; frame <= selection.lastFrame; ++frame)
            MutableCell(level, frame).Clear();
}

void CXSheet::Paste(const CCellClipboard& clipboard, int level, int frame) {
    const int width = std::min(clipboard.width, LevelCount() - level);
    const int height = std::min(clipboard.height, FrameCount() - frame);
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column) {
            const CXSheetCell& pasted =
                clipboard.cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(clipboard.width) +
                                static_cast<std::size_t>(column)];
            CXSheetCell& cell = MutableCell(level + column, frame + row);
            if (pasted.Note().IsEmpty() && !cell.IsUsed())
                cell.Expose(pasted);
            else
                cell = pasted;
        }
}

void CXSheet::Reverse(const CXSheetSelection& selection) {
    EditLevels(selection, [&](std::vector<CXSheetCell>& cells) {
        std::reverse(cells.begin() + selection.firstFrame, cells.begin() + selection.lastFrame + 1);
    });
}

void CXSheet::Condense(const CXSheetSelection& selection) {
    EditLevels(selection, [&](std::vector<CXSheetCell>& cells) {
        CondenseCells(cells, static_cast<std::size_t>(selection.firstFrame),
                      static_cast<std::size_t>(selection.lastFrame));
    });
}

void CXSheet::Expand(const CXSheetSelection& selection) {
    EditLevels(selection, [&](std::vector<CXSheetCell>& cells) {
        ExpandCells(cells, static_cast<std::size_t>(selection.firstFrame),
                    static_cast<std::size_t>(selection.lastFrame));
    });
}

void CXSheet::InsertFrames(int level, int frame, int count) {
    EditLevel(level, [&](std::vector<CXSheetCell>& cells) {
        const auto from = cells.begin() + frame;
        const int inserted = std::min(count, m_frameCount - frame);
        std::move_backward(from, cells.end() - inserted, cells.end());
        std::for_each(from, from + inserted, [](CXSheetCell& cell) { cell.Clear(); });
    });
}

void CXSheet::TakeFrames(int level, std::span<const int> sources) {
    const CShared<CLevel> before = m_levels[static_cast<std::size_t>(level)];
    std::vector<bool> isTaken(before->cells.size());
    for (std::size_t frame = 0; frame < sources.size(); ++frame) {
        CXSheetCell cell;
        if (sources[frame] >= 0) {
            const auto source = static_cast<std::size_t>(sources[frame]);
            cell = isTaken[source] ? before->cells[source].WithoutNote() : before->cells[source];
            isTaken[source] = true;
        }
        if (!cell.IsIdenticalTo(before->cells[frame]))
            MutableCell(level, static_cast<int>(frame)) = std::move(cell);
    }
}

template<class Matches, class Change>
int CXSheet::ChangeCells(Matches matches, Change change) {
    int count = 0;
    for (int level = 0; level < LevelCount(); ++level)
        for (int frame = 0; frame < m_frameCount; ++frame)
            if (Cell(level, frame).IsUsed() && matches(Cell(level, frame))) {
                change(MutableCell(level, frame));
                ++count;
            }
    return count;
}

int CXSheet::ClearReferences(std::string_view folder, std::string_view name) {
    return ChangeCells([&](const CXSheetCell& cell) { return cell.Shows(folder, name); },
                       [](CXSheetCell& cell) { cell.ClearAsset(); });
}

int CXSheet::ClearFolderReferences(std::string_view folder) {
    return ChangeCells([&](const CXSheetCell& cell) { return cell.FolderName() == folder; },
                       [](CXSheetCell& cell) { cell.ClearAsset(); });
}

int CXSheet::RenameReferences(std::string_view folder, std::string_view oldName, const std::string& newName) {
    return ChangeCells([&](const CXSheetCell& cell) { return cell.Shows(folder, oldName); },
                       [&](CXSheetCell& cell) { static_cast<void>(cell.ChangeName(newName)); });
}

int CXSheet::ResizeReferences(std::string_view folder, std::string_view name, const Path& sceneFolder) {
    CSize size;
    if (!CCelImg::GetDimensions(AssetFilePath(sceneFolder, folder, name), size))
        return 0;
    return ChangeCells([&](const CXSheetCell& cell) { return cell.Shows(folder, name); },
                       [&](CXSheetCell& cell) { cell.SetSize(size); });
}

void CXSheet::Arrange(std::span<const int> sources) {
    CLevel empty;
    empty.cells.resize(static_cast<std::size_t>(m_frameCount));
    const CShared made(std::move(empty));
    std::vector<CShared<CLevel>> arranged;
    arranged.reserve(sources.size());
    for (const int source : sources)
        arranged.push_back(source < 0 ? made : m_levels[static_cast<std::size_t>(source)]);
    m_levels = std::move(arranged);
}

} // namespace velmor
