#pragma once

#include "views/xsheet/XSheetGeometry.h"

#include <QPixmap>
#include <QString>

namespace velmor {

struct CSceneModel;
class CAssetThumbnails;
class CSoundDrag;
class CXSheetSounds;

/// Of whatever is at a point of the client area: the button, level, frame or cell, with the asset that is in it.
/// Empty where there is nothing to be said.
QString SheetToolTip(const CSceneModel& model, const CXSheetGeometry& geometry, const CXSheetSounds& sounds,
                     CAssetThumbnails& thumbnails, QPoint point);
/// What the asset of a cell is, where it stands and how it is placed, and what is noted there, as rich text; empty
/// where there is neither. `thumbnail` may be null.
QString CellToolTip(const CSceneModel& model, CSheetCell place, const QPixmap& thumbnail);
/// What is noted at the cursor and its frame, in one line; empty for nothing.
std::string NoteStatus(const CSceneModel& model);
/// What letting a sound go would do.
QString SoundDragText(const CSoundDrag& drag);

} // namespace velmor
