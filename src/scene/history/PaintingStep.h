#pragma once

#include "image/paint/KeptTiles.h"
#include "scene/history/HistoryEntry.h"

#include <string>

namespace velmor {

struct CSceneModel;

/// The image under edit was painted on; `before` has what it was. Leaves a step in the history, if anything has
/// changed. An alpha that the image's file would not keep goes with the step: what is open is then at all times
/// what can be read again, and the way back fits either.
void LeavePaintingStep(CSceneModel& model, const std::string& name, CKeptTiles& before);

/// A small picture of an image around a rectangle, on white paper.
CHistoryPicture MakePicture(const CCelImg& image, const CRect& around);

} // namespace velmor
