#pragma once

#include "views/xsheet/XSheetGeometry.h"

#include <QPixmap>
#include <QString>

namespace velmor {

struct CSceneModel;
class CSoundDrag;
class CXSheetSounds;

/// What the asset of a cell is, where it stands and how it is placed, and what is noted there, as rich text; empty
/// where there is neither. `thumbnail` may be null.
QString CellToolTip(const CSceneModel& model, CSheetCell place, const QPixmap& thumbnail);
QString ButtonToolTip(const CSceneModel& model, const CHeaderHit& hit);
/// What is noted at a frame; empty for nothing.
QString FrameToolTip(const CSceneModel& model, int frame);
/// What is noted at the cursor and its frame, in one line; empty for nothing.
std::string NoteStatus(const CSceneModel& model);
/// Which level it is, and how it is opened.
QString FoldedToolTip(const CSceneModel& model, int level);
/// The camera's values of a frame.
QString CameraToolTip(const CSceneModel& model, int frame);
/// The sound that is heard at a frame, or starts there, and what is spoken; empty when there is neither.
QString SoundToolTip(const CSceneModel& model, const CXSheetSounds& sounds, int frame);
/// What letting a sound go would do.
QString SoundDragText(const CSoundDrag& drag);

} // namespace velmor
