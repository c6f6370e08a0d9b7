#include "views/xsheet/XSheetLook.h"

#include "scene/SceneModel.h"
#include "views/xsheet/XSheetSounds.h"
#include "xsheet/DialogueText.h"

#include <algorithm>

namespace velmor {

namespace {

bool IsBlurred(const CXSheetCell& cell) {
    return cell.IsUsed() && (cell.BlurX() > 1 || cell.BlurY() > 1);
}

bool IsTransparent(const CXSheetCell& cell) {
    return cell.IsUsed() && cell.Transparency() > 0;
}

bool IsSelected(const CXSheetSelection& selection, int level, int frame) {
    return level >= selection.firstLevel && level <= selection.lastLevel && frame >= selection.firstFrame &&
           frame <= selection.lastFrame;
}

CellFill FillOf(const CSceneModel& model, int level, int frame, int cursorFrame) {
    if (level == model.cursorLevel && frame == cursorFrame)
        return CellFill::Cursor;
    return IsSelected(model.selection, level, frame) ? CellFill::Selected : CellFill::Plain;
}

bool IsChanged(const CXSheet& before, const CXSheet& after, int level, int frame) {
    return !before.HasLevel(level) || !before.HasFrame(frame) ||
           !before.Cell(level, frame).IsIdenticalTo(after.Cell(level, frame));
}

CCellLook CellLook(const CSceneModel& model, const CScene& shown, int level, int frame, int cursorFrame) {
    const CXSheetCell& cell = shown.xsheet.Cell(level, frame);
    CCellLook look;
    look.fill = FillOf(model, level, frame, cursorFrame);
    look.outcome = &shown != &model.Scene() && IsChanged(model.Scene().xsheet, shown.xsheet, level, frame);
    look.note = CNoteLook::Of(cell.Note());
    if (!cell.IsUsed())
        return look;
    look.text = shown.xsheet.CellText(level, frame);
    look.held = frame > 0 && cell.ShowsSameAs(shown.xsheet.Cell(level, frame - 1));
    look.missing = cell.Size() == CSize{};
    look.blurred = IsBlurred(cell);
    look.transparent = IsTransparent(cell);
    return look;
}

CLevelLook LevelLook(const CSceneModel& model, int level, int cursorFrame) {
    CLevelLook look;
    look.name = model.Scene().xsheet.LevelName(level);
    look.current = level == model.cursorLevel;
    look.moves = model.moveSelection.IsLevelSelected(level);
    if (!model.Scene().xsheet.HasFrame(cursorFrame))
        return look;
    const CXSheetCell& cell = model.Scene().xsheet.Cell(level, cursorFrame);
    look.used = cell.IsUsed();
    look.blurred = IsBlurred(cell);
    look.transparent = IsTransparent(cell);
    return look;
}

CFrameLook FrameLook(const CSceneModel& model, const CScene& shown, const CXSheetSounds& sounds, int frame,
                     int cursorFrame, int rowHeight) {
    CFrameLook look;
    look.note = CNoteLook::Of(shown.frameNotes.At(frame));
    look.current = frame == cursorFrame;
    look.selected = frame >= model.selection.firstFrame && frame <= model.selection.lastFrame;
    look.camera = shown.camera.At(frame);
    look.cameraHeld = frame > 0 && look.camera == shown.camera.At(frame - 1);
    const int heard = sounds.HeardAt(frame);
    look.sounding = heard >= 0;
    look.soundGoesOn = look.sounding && sounds.HeardAt(frame - 1) == heard;
    look.soundContinues = look.sounding && sounds.HeardAt(frame + 1) == heard;
    look.wave = sounds.WaveAt(frame, rowHeight);
    if (const std::string* name = shown.sounds.NameAt(frame))
        look.sound = *name;
    if (const CSpokenLine* line = shown.dialogue.At(frame)) {
        look.isSpoken = true;
        look.spoken = SpokenAt(*line, frame);
        look.speechContinues = line->lastFrame > frame;
    }
    return look;
}

} // namespace

CXSheetLook LookAt(const CSceneModel& model, const CXSheetSounds& sounds, const CXSheetGeometry& geometry,
                   const CPointerLook& pointer, const CPlayLook& play, const CScene* outcome) {
    const int cursorFrame = play.frame.value_or(model.cursorFrame);
    CXSheetLook look;
    look.sceneOpen = model.sceneOpen;
    look.geometry = geometry;
    if (!model.sceneOpen)
        return look;
    const CScene& shown = outcome != nullptr ? *outcome : model.Scene();
    if (outcome != nullptr) // there is nothing behind its end
        look.geometry.frameCount = std::min(geometry.frameCount, shown.xsheet.FrameCount());
    look.frameRate = model.Scene().geometry.frameRate;
    look.pointer = pointer;
    look.cameraMoves = model.moveSelection.IsCameraSelected();
    // The sheet may have shrunk without the views having been told yet.
    const int endLevel = std::min(geometry.EndLevel(), shown.xsheet.LevelCount());
    const int endFrame = std::min(look.geometry.EndFrame(), shown.xsheet.FrameCount());
    for (int level = geometry.firstLevel; level < endLevel; ++level)
        look.levels.push_back(LevelLook(model, level, cursorFrame));
    for (int frame = geometry.firstFrame; frame < endFrame; ++frame) {
        look.frames.push_back(FrameLook(model, shown, sounds, frame, cursorFrame, look.geometry.rowHeight));
        look.frames.back().ready = play.ready && play.ready(frame);
        for (int level = geometry.firstLevel; level < endLevel; ++level)
            look.cells.push_back(CellLook(model, shown, level, frame, cursorFrame));
    }
    return look;
}

QRect TargetRect(const CXSheetGeometry& geometry, int level) {
    constexpr int width = 4;
    const int x = std::clamp(geometry.ColumnX(level) - width / 2, geometry.GridArea().left(),
                             std::max(geometry.GridArea().left(), geometry.GridArea().right() + 1 - width));
    return {x, 0, width, geometry.client.height()};
}

QRect RectOf(const CXSheetGeometry& geometry, const CDropMark& mark) {
    const int bottom = geometry.RowY(mark.start.frame + mark.frames) - 1;
    QRect rect = mark.sound ? geometry.SoundRect(mark.start.frame) : geometry.CellRect(mark.start);
    rect.setBottom(bottom);
    return rect & (mark.sound ? geometry.CameraColumn() : geometry.GridArea());
}

namespace {

QRegion ChangedPointer(const CXSheetGeometry& geometry, const CPointerLook& before, const CPointerLook& after) {
    QRegion changed;
    if (before.hot != after.hot || before.pressed != after.pressed) {
        for (const std::optional<CHeaderHit>& hit : {before.hot, after.hot})
            if (hit)
                changed += geometry.ButtonRect(*hit);
    }
    if (before.drop != after.drop) {
        for (const std::optional<CDropMark>& mark : {before.drop, after.drop})
            if (mark)
                changed += RectOf(geometry, *mark);
    }
    if (before.grip != after.grip) {
        for (const std::optional<CGripLook>& grip : {before.grip, after.grip})
            if (grip)
                changed += grip->rect;
    }
    return changed;
}

QRegion ChangedTarget(const CXSheetGeometry& geometry, const CPointerLook& before, const CPointerLook& after) {
    QRegion changed;
    if (before.levelTarget == after.levelTarget)
        return changed;
    for (const std::optional<int>& level : {before.levelTarget, after.levelTarget})
        if (level)
            changed += TargetRect(geometry, *level);
    return changed;
}

QRegion ChangedEntry(const CXSheetGeometry& geometry, const std::optional<CEntryLook>& before,
                     const std::optional<CEntryLook>& after) {
    QRegion changed;
    if (before == after)
        return changed;
    for (const std::optional<CEntryLook>& entry : {before, after})
        if (entry)
            changed += geometry.CellRect(entry->cell) & geometry.GridArea();
    return changed;
}

QRegion ChangedHeader(const CXSheetLook& before, const CXSheetLook& after) {
    const CXSheetGeometry& geometry = after.geometry;
    const QRect header(0, 0, geometry.client.width(), geometry.headerHeight);
    QRegion changed;
    if (before.cameraMoves != after.cameraMoves)
        changed += geometry.CameraColumn() & header;
    for (std::size_t column = 0; column < after.levels.size(); ++column) {
        if (before.levels[column] != after.levels[column])
            changed += geometry.LevelHeaderRect(geometry.firstLevel + static_cast<int>(column)) & header;
    }
    return changed;
}

QRegion ChangedRows(const CXSheetLook& before, const CXSheetLook& after) {
    const CXSheetGeometry& geometry = after.geometry;
    QRegion changed;
    for (std::size_t row = 0; row < after.frames.size(); ++row) {
        const int frame = geometry.firstFrame + static_cast<int>(row);
        if (before.frames[row] != after.frames[row]) {
            changed += geometry.FrameNumberRect(frame);
            changed += geometry.CameraRect(frame) | geometry.SoundRect(frame);
        }
        for (std::size_t column = 0; column < after.levels.size(); ++column) {
            const bool framed =
                before.focused != after.focused && after.CellAt(row, column).fill == CellFill::Cursor;
            if (framed || before.CellAt(row, column) != after.CellAt(row, column))
                changed += geometry.CellRect({geometry.firstLevel + static_cast<int>(column), frame}) &
                           geometry.GridArea();
        }
    }
    return changed;
}

} // namespace

QRegion Difference(const CXSheetLook& before, const CXSheetLook& after) {
    if (before.sceneOpen != after.sceneOpen || before.geometry != after.geometry ||
        before.frameRate != after.frameRate || before.levels.size() != after.levels.size() ||
        before.frames.size() != after.frames.size())
        return QRect({0, 0}, after.geometry.client);
    return ChangedHeader(before, after) + ChangedRows(before, after) +
           ChangedPointer(after.geometry, before.pointer, after.pointer) +
           ChangedTarget(after.geometry, before.pointer, after.pointer) +
           ChangedEntry(after.geometry, before.entry, after.entry);
}

} // namespace velmor
