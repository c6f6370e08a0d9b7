#include "xsheet/XSheet.h"

#include "image/CelImg.h"

#include <algorithm>
#include <cstddef>

namespace velmor {

namespace {

constexpr std::string_view dittoMark = "\"";

// Every frame is looked at as it was before the first one went: what has gone shows the same as what stands before
// it, so the last kept cell serves for the comparison.
void CondenseCels(std::vector<CXSheetCel>& cels, std::size_t firstFrame, std::size_t lastFrame) {
    std::size_t kept = std::max<std::size_t>(firstFrame, 1); // frame 0 has nothing before it
    for (std::size_t frame = kept; frame < cels.size(); ++frame) {
        const bool endsHold = frame < lastFrame && cels[frame].ShowsSameAs(cels[kept - 1]) &&
                              !cels[frame].ShowsSameAs(cels[frame + 1]);
        if (endsHold)
            continue;
        if (kept != frame)
            cels[kept] = std::move(cels[frame]);
        ++kept;
    }
    for (; kept < cels.size(); ++kept)
        cels[kept] = cels[kept - 1];
}

void ExpandCels(std::vector<CXSheetCel>& cels, std::size_t firstFrame, std::size_t lastFrame) {
    std::vector<CXSheetCel> expanded;
    expanded.reserve(cels.size());
    for (std::size_t frame = 0; expanded.size() < cels.size(); ++frame) {
        const bool endsExposure = frame == lastFrame || (frame >= firstFrame && frame < lastFrame &&
                                                         !cels[frame].ShowsSameAs(cels[frame + 1]));
        if (endsExposure && expanded.size() + 1 < cels.size())
            expanded.push_back(cels[frame]);
        expanded.push_back(std::move(cels[frame]));
    }
    cels = std::move(expanded);
}

} // namespace

CXSheet::CXSheet() : CXSheet(1, defaultFrames) {
    SetLevelName(0, "Default");
}

CXSheet::CXSheet(int levels, int frames) : m_frameCount(frames) {
    CLevel empty;
    empty.cels.resize(static_cast<std::size_t>(frames));
    m_levels.assign(static_cast<std::size_t>(levels), CShared(std::move(empty)));
}

template<class Edit>
void CXSheet::EditLevel(int level, Edit edit) {
    CLevel& changed = m_levels[static_cast<std::size_t>(level)].Change();
    std::vector<CXSheetCel> cels = changed.cels.All();
    edit(cels);
    changed.cels.Assign(std::move(cels),
                        [](const CXSheetCel& a, const CXSheetCel& b) { return a.IsIdenticalTo(b); });
}

template<class Edit>
void CXSheet::EditLevels(const CXSheetSelection& selection, Edit edit) {
    for (int level = selection.firstLevel; level <= selection.lastLevel; ++level)
        EditLevel(level, edit);
}

std::string CXSheet::CelText(int level, int frame) const {
    const CXSheetCel& cel = Cel(level, frame);
    if (!cel.IsUsed())
        return {};
    if (frame > 0 && cel.ShowsSameAs(Cel(level, frame - 1)))
        return std::string(dittoMark);
    return cel.IsPicture() ? cel.CelName() : cel.FolderName() + cel.CelName();
}

bool CXSheet::AddLevel(std::string name) {
    if (LevelCount() >= mostLevels)
        return false;
    CLevel level{std::move(name), {}};
    level.cels.resize(static_cast<std::size_t>(m_frameCount));
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
        level.Change().cels.resize(static_cast<std::size_t>(frames));
    m_frameCount = frames;
}

CCelClipboard CXSheet::Copy(const CXSheetSelection& selection) const {
    CCelClipboard clipboard;
    clipboard.width = selection.lastLevel - selection.firstLevel + 1;
    clipboard.height = selection.lastFrame - selection.firstFrame + 1;
    clipboard.cels.reserve(static_cast<std::size_t>(clipboard.width) * static_cast<std::size_t>(clipboard.height));
    for (int frame = selection.firstFrame; frame <= selection.lastFrame; ++frame)
        for (int level = selection.firstLevel; level <= selection.lastLevel; ++level)
            clipboard.cels.push_back(Cel(level, frame));
    return clipboard;
}

void CXSheet::ClearCels(const CXSheetSelection& selection) {
    for (int level = selection.firstLevel; level <= selection.lastLevel; ++level)
        for (int frame = selection.firstFrame; frame <= selection.lastFrame; ++frame)
            MutableCel(level, frame).Clear();
}

void CXSheet::Paste(const CCelClipboard& clipboard, int level, int frame) {
    const int width = std::min(clipboard.width, LevelCount() - level);
    const int height = std::min(clipboard.height, FrameCount() - frame);
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column)
            MutableCel(level + column, frame + row) =
                clipboard.cels[static_cast<std::size_t>(row) * static_cast<std::size_t>(clipboard.width) +
                               static_cast<std::size_t>(column)];
}

void CXSheet::Reverse(const CXSheetSelection& selection) {
    EditLevels(selection, [&](std::vector<CXSheetCel>& cels) {
        std::reverse(cels.begin() + selection.firstFrame, cels.begin() + selection.lastFrame + 1);
    });
}

void CXSheet::Condense(const CXSheetSelection& selection) {
    EditLevels(selection, [&](std::vector<CXSheetCel>& cels) {
        CondenseCels(cels, static_cast<std::size_t>(selection.firstFrame),
                     static_cast<std::size_t>(selection.lastFrame));
    });
}

void CXSheet::Expand(const CXSheetSelection& selection) {
    EditLevels(selection, [&](std::vector<CXSheetCel>& cels) {
        ExpandCels(cels, static_cast<std::size_t>(selection.firstFrame),
                   static_cast<std::size_t>(selection.lastFrame));
    });
}

void CXSheet::InsertFrames(int level, int frame, int count) {
    EditLevel(level, [&](std::vector<CXSheetCel>& cels) {
        const auto from = cels.begin() + frame;
        const int inserted = std::min(count, m_frameCount - frame);
        std::move_backward(from, cels.end() - inserted, cels.end());
        std::for_each(from, from + inserted, [](CXSheetCel& cel) { cel.Clear(); });
    });
}

template<class Matches, class Change>
int CXSheet::ChangeCels(Matches matches, Change change) {
    int count = 0;
    for (int level = 0; level < LevelCount(); ++level)
        for (int frame = 0; frame < m_frameCount; ++frame)
            if (Cel(level, frame).IsUsed() && matches(Cel(level, frame))) {
                change(MutableCel(level, frame));
                ++count;
            }
    return count;
}

int CXSheet::ClearReferences(std::string_view folder, std::string_view name) {
    return ChangeCels([&](const CXSheetCel& cel) { return cel.Shows(folder, name); },
                      [](CXSheetCel& cel) { cel.Clear(); });
}

int CXSheet::ClearFolderReferences(std::string_view folder) {
    return ChangeCels([&](const CXSheetCel& cel) { return cel.FolderName() == folder; },
                      [](CXSheetCel& cel) { cel.Clear(); });
}

int CXSheet::RenameReferences(std::string_view folder, std::string_view oldName, const std::string& newName) {
    return ChangeCels([&](const CXSheetCel& cel) { return cel.Shows(folder, oldName); },
                      [&](CXSheetCel& cel) { static_cast<void>(cel.ChangeName(newName)); });
}

int CXSheet::ResizeReferences(std::string_view folder, std::string_view name, const Path& sceneFolder) {
    CSize size;
    if (!CCelImg::GetDimensions(AssetFilePath(sceneFolder, folder, name), size))
        return 0;
    return ChangeCels([&](const CXSheetCel& cel) { return cel.Shows(folder, name); },
                      [&](CXSheetCel& cel) { cel.SetSize(size); });
}

} // namespace velmor
