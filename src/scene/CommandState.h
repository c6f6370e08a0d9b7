#pragma once

#include "scene/SceneModel.h"

#include <optional>

namespace velmor {

// When commands are enabled, as far as the document's values decide it.

bool HasSelectedAssets(const CSceneModel& model);
/// Delete, rename, duplicate: assets of any kind are selected, and cels have their folder.
bool CanChangeAssets(const CSceneModel& model);
/// Whether the shown list has images, whose commands need a folder when they are cels.
bool CanChangeImages(const CSceneModel& model);
/// The shown list is one of images.
bool CanCleanUp(const CSceneModel& model);
/// Pictures are selected.
bool CanColorKey(const CSceneModel& model);
bool CanDeleteLevel(const CSceneModel& model);
bool CanSwapLevels(const CSceneModel& model);
/// Condense, expand, reverse: the selection spans more than one frame.
bool CanEditRange(const CSceneModel& model);
/// The selected cells; nothing while there are none. The bounds are set one by one, so that start and end may stand
/// the wrong way round.
std::optional<CXSheetSelection> SelectedCells(const CSceneModel& model);
bool CanPaste(const CSceneModel& model);
bool CanUndo(const CSceneModel& model);
bool CanRedo(const CSceneModel& model);
/// All that a step changed are cells and camera of a frame, which its picture shows.
bool IsInPicture(const CHistory::CStep* step, int frame);
/// The cursor's cell is used.
bool CanEditCellData(const CSceneModel& model);
/// The selection spans at least three frames.
bool CanInbetween(const CSceneModel& model);
/// Sounds are shown and one is selected.
bool CanPlaySelectedSound(const CSceneModel& model);
/// A cel or picture is loaded in the cel editor.
bool HasEditedImage(const CSceneModel& model);
bool HasEditedPicture(const CSceneModel& model);
bool HasEditedCel(const CSceneModel& model);

} // namespace velmor
