#pragma once

#include "image/paint/KeptTiles.h"
#include "scene/history/HistoryEntry.h"

#include <string>

namespace velmor {

struct CSceneModel;

/// The image under edit was painted on; `before` has what it was. Leaves a step in the history, if anything has
/// changed.
///
void LeavePaintingStep(CSceneModel& model, const std::string& name, const CKeptTiles& before);

/// A small picture of an image around a rectangle, on white paper.
CHistoryPicture MakePicture(const CCelImg& image, const CRect& around);

} // namespace velmor
