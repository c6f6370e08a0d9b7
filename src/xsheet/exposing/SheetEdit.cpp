#include "xsheet/exposing/SheetEdit.h"

#include "xsheet/exposing/SheetTime.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace velmor {

namespace {

// The frames that are filled, cut off at the sheet's end.
CXSheetSelection Filled(const CSheetEdit& edit, const CXSheet& xsheet) {
    CXSheetSelection filled = edit.cells;
    const int room = xsheet.FrameCount() - filled.firstFrame;
    filled.lastFrame = filled.firstFrame + std::clamp(edit.count, 0, room) - 1;
    return filled;
}

// A drawing lies where the one lies in whose place it comes, or the one above, if that is of its kind: a level that
// is moved goes on moving when another drawing is exposed on it.
CXSheetCell PlacedLike(const CXSheetCell& placed, const CXSheetCell& cell) {
    if (!placed.IsUsed() || placed.FolderName() != cell.FolderName() || placed.Size() != cell.Size())
        return cell;
    CXSheetCell like = placed;
    static_cast<void>(like.ChangeName(cell.CelName())); // which fails for empty cells alone
    return like;
}

void Expose(CXSheet& xsheet, const CXSheetSelection& cells, const CXSheetCell& cell) {
    for (int level = cells.firstLevel; level <= cells.lastLevel; ++level)
        for (int frame = cells.firstFrame; frame <= cells.lastFrame; ++frame) {
            const bool follows = frame > 0 && !xsheet.Cell(level, frame).IsUsed();
            const CXSheetCell placed = PlacedLike(xsheet.Cell(level, follows ? frame - 1 : frame), cell);
            xsheet.MutableCell(level, frame).Expose(placed);
        }
}

void Fill(CXSheet& xsheet, const CXSheetSelection& cells, const CXSheetCell& cell) {
    for (int level = cells.firstLevel; level <= cells.lastLevel; ++level)
        for (int frame = cells.firstFrame; frame <= cells.lastFrame; ++frame)
            xsheet.MutableCell(level, frame).Expose(cell);
}

void HoldAbove(CXSheet& xsheet, const CXSheetSelection& cells) {
    for (int level = cells.firstLevel; cells.firstFrame > 0 && level <= cells.lastLevel; ++level) {
        const CXSheetCell above = xsheet.Cell(level, cells.firstFrame - 1);
        Fill(xsheet, {level, level, cells.firstFrame, cells.lastFrame}, above);
    }
}

FrameOrder MadeOf(const CSheetEdit& edit, const CXSheet& xsheet, int level, CFrameSpan part) {
    switch (edit.kind) {
    case SheetEditKind::Repeat:
        return Repeated(part, edit.count);
    case SheetEditKind::HoldOn:
        return HeldOn(part, edit.count);
    case SheetEditKind::OnFrames:
        return OnFrames(ExposuresOf(xsheet, level, part), std::max(1, edit.count));
    case SheetEditKind::Swing:
        return ThereAndBack(ExposuresOf(xsheet, level, part));
    case SheetEditKind::Random:
        return Randomized(xsheet, level, part, edit.seed + static_cast<unsigned>(level));
    case SheetEditKind::Roll:
        return Rolled(part, edit.count);
    default:
        return Stretched(part, edit.count);
    }
}

FrameOrder OrderOf(const CSheetEdit& edit, const CXSheet& xsheet, int level) {
    const int frameCount = xsheet.FrameCount();
    const CFrameSpan part{edit.cells.firstFrame, edit.cells.lastFrame + 1};
    switch (edit.kind) {
    case SheetEditKind::Shift:
        return Shifting(frameCount, part, edit.count, edit.following);
    case SheetEditKind::SetExposure:
        return Sliding(frameCount, ExposureAt(xsheet, level, part.first), std::max(1, edit.count), edit.following);
    case SheetEditKind::Repeat:
    case SheetEditKind::HoldOn:
        return Replacing(frameCount, part, MadeOf(edit, xsheet, level, part), Following::Eat);
    default:
        return Replacing(frameCount, part, MadeOf(edit, xsheet, level, part), edit.following);
    }
}

// How many frames the longest level takes that is made.
int LengthMade(const CSheetEdit& edit, const CXSheet& xsheet) {
    std::ptrdiff_t length = 1;
    for (int level = edit.cells.firstLevel; level <= edit.cells.lastLevel; ++level)
        length = std::max(
            length, std::ssize(MadeOf(edit, xsheet, level, {edit.cells.firstFrame, edit.cells.lastFrame + 1})));
    return static_cast<int>(length);
}

} // namespace

void Apply(const CSheetEdit& edit, CScene& scene) {
    CXSheet& xsheet = scene.xsheet;
    switch (edit.kind) {
    case SheetEditKind::Expose:
        return Expose(xsheet, Filled(edit, xsheet), edit.cell);
    case SheetEditKind::Clear:
        return Fill(xsheet, Filled(edit, xsheet), {});
    case SheetEditKind::HoldAbove:
        return HoldAbove(xsheet, Filled(edit, xsheet));
    case SheetEditKind::InsertTime:
        return InsertTime(scene, edit.cells.firstFrame, edit.count);
    case SheetEditKind::DeleteTime:
        return DeleteTime(scene, edit.cells.firstFrame, edit.count);
    default:
        for (int level = edit.cells.firstLevel; level <= edit.cells.lastLevel; ++level)
            xsheet.TakeFrames(level, OrderOf(edit, xsheet, level));
    }
}

CXSheetSelection SelectedAfter(const CSheetEdit& edit, const CXSheet& xsheet) {
    CXSheetSelection selected = edit.cells;
    switch (edit.kind) {
    case SheetEditKind::Repeat:
    case SheetEditKind::HoldOn:
    case SheetEditKind::OnFrames:
    case SheetEditKind::Swing:
    case SheetEditKind::Stretch:
        selected.lastFrame = selected.firstFrame + LengthMade(edit, xsheet) - 1;
        break;
    case SheetEditKind::Shift:
        selected.firstFrame = std::clamp(selected.firstFrame + edit.count, 0, xsheet.FrameCount() - 1);
        selected.lastFrame = selected.firstFrame + edit.cells.lastFrame - edit.cells.firstFrame;
        break;
    default:
        break;
    }
    selected.lastFrame = std::min(selected.lastFrame, xsheet.FrameCount() - 1);
    return selected;
}

} // namespace velmor
