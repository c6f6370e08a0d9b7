#pragma once

#include "views/xsheet/XSheetGeometry.h"

#include <QPixmap>
#include <QString>
#include <string>

namespace velmor {

struct CSceneModel;
class CXSheetSounds;

/// What the asset of a used cell is, where it stands and how it is placed, as rich text. `thumbnail` may be null.
QString CellToolTip(const CSceneModel& model, CSheetCell place, const QPixmap& thumbnail);
QString ButtonToolTip(const CSceneModel& model, const CHeaderHit& hit);
/// The camera's values of a frame.
QString CameraToolTip(const CSceneModel& model, int frame);
/// The sound that is heard at a frame, or starts there; empty when there is none.
QString SoundToolTip(const CXSheetSounds& sounds, int frame);
/// What letting a sound go would do that started at a frame (from 0) and is held at another.
QString SoundDragText(const std::string& name, int from, int to);

} // namespace velmor
