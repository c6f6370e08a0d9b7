#include "scene/paper/Neighbours.h"

#include "scene/SceneModel.h"

#include <algorithm>
#include <cstdlib>

namespace velmor {

namespace {

bool Shows(const CXSheetCell& cell, const CDrawing& drawing) {
    return cell.IsUsed() && cell.Shows(drawing.folder, drawing.name);
}

// Goes from `frame` on in steps of 1 or -1 to the end of the level.
std::vector<CNeighbour> Collect(const CXSheet& sheet, CSheetCell from, int step, const CDrawing& drawing,
                                int most) {
    std::vector<CNeighbour> found;
    for (int frame = from.frame; sheet.HasFrame(frame) && std::ssize(found) < most; frame += step) {
        const CXSheetCell& cell = sheet.Cell(from.level, frame);
        const bool isKnown = std::ranges::any_of(
            found, [&cell](const CNeighbour& neighbour) { return Shows(cell, neighbour.drawing); });
        if (cell.IsUsed() && !isKnown && !Shows(cell, drawing))
            found.push_back({DrawingOf(cell), frame});
    }
    return found;
}

bool IsBlank(const CXSheet& sheet, int level) {
    for (int frame = 0; frame < sheet.FrameCount(); ++frame)
        if (sheet.Cell(level, frame).IsUsed())
            return false;
    return true;
}

} // namespace

int StandingFrame(const CXSheet& sheet, CSheetCell cursor, const CDrawing& drawing) {
    for (int distance = 0; distance < sheet.FrameCount(); ++distance)
        for (const int frame : {cursor.frame + distance, cursor.frame - distance})
            if (sheet.HasFrame(frame) && Shows(sheet.Cell(cursor.level, frame), drawing))
                return frame;
    return cursor.frame;
}

CHold HoldAround(const CXSheet& sheet, CSheetCell cell) {
    const CXSheetCell& shown = sheet.Cell(cell.level, cell.frame);
    CHold hold{cell.frame, cell.frame + 1};
    while (hold.firstFrame > 0 && sheet.Cell(cell.level, hold.firstFrame - 1).ShowsSameAs(shown))
        --hold.firstFrame;
    while (sheet.HasFrame(hold.endFrame) && sheet.Cell(cell.level, hold.endFrame).ShowsSameAs(shown))
        ++hold.endFrame;
    return hold;
}

std::optional<CHold> RunAround(const CXSheet& sheet, CSheetCell cell) {
    const auto isUsed = [&](int frame) { return sheet.HasFrame(frame) && sheet.Cell(cell.level, frame).IsUsed(); };
    int frame = cell.frame;
    while (frame >= 0 && !isUsed(frame))
        --frame;
    for (int after = cell.frame; frame < 0 && sheet.HasFrame(after); ++after)
        if (isUsed(after))
            frame = after;
    if (frame < 0)
        return std::nullopt;
    CHold run{frame, frame + 1};
    while (isUsed(run.firstFrame - 1))
        --run.firstFrame;
    while (isUsed(run.endFrame))
        ++run.endFrame;
    return run;
}

CNeighbours NeighboursInLevel(const CXSheet& sheet, CSheetCell cursor, const CDrawing& drawing, int most) {
    const CSheetCell place{cursor.level, StandingFrame(sheet, cursor, drawing)};
    const CHold hold = HoldAround(sheet, place);
    return {Collect(sheet, place, -1, drawing, most),
            Collect(sheet, {place.level, hold.endFrame}, 1, drawing, most)};
}

CNeighbours NeighboursInFolder(std::span<const std::string> titles, const CDrawing& drawing, int most) {
    CNeighbours neighbours;
    const auto here = std::ranges::find(titles, drawing.name);
    if (here == titles.end())
        return neighbours;
    for (auto title = here; title != titles.begin() && std::ssize(neighbours.before) < most;)
        neighbours.before.push_back({{drawing.folder, *--title}, -1});
    for (auto title = here + 1; title != titles.end() && std::ssize(neighbours.after) < most; ++title)
        neighbours.after.push_back({{drawing.folder, *title}, -1});
    return neighbours;
}

CNeighbours NeighboursOfEdited(const CSceneModel& model, DrawingOrder order, int most) {
    const CDrawing drawing = EditedDrawing(model);
    const CXSheet& sheet = model.Scene().xsheet;
    const CSheetCell cursor = model.CursorCell();
    if (!model.sceneOpen || most <= 0)
        return {};
    const bool hasCursor = sheet.HasLevel(cursor.level) && sheet.HasFrame(cursor.frame);
    if (order == DrawingOrder::Sheet && hasCursor && !IsBlank(sheet, cursor.level))
        return NeighboursInLevel(sheet, cursor, drawing, most);
    if (drawing.IsEmpty())
        return {};
    return NeighboursInFolder(drawing.IsPicture() ? ListPictures(model.Paths())
                                                  : ListCelTitles(model.Paths(), drawing.folder),
                              drawing, most);
}

} // namespace velmor
