#pragma once

#include "views/xsheet/XSheetGeometry.h"

#include <QPixmap>
#include <QString>

namespace velmor {

struct CSceneModel;

/// What the asset of a used cell is, where it stands and how it is placed, as rich text. `thumbnail` may be null.
QString CellToolTip(const CSceneModel& model, CSheetCell place, const QPixmap& thumbnail);
QString ButtonToolTip(const CSceneModel& model, const CHeaderHit& hit);
/// The camera's values of a frame.
QString CameraToolTip(const CSceneModel& model, int frame);

} // namespace velmor
