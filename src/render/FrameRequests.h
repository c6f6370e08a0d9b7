#pragma once

#include "render/FrameComposer.h"
#include "xsheet/Scene.h"

#include <span>
#include <vector>

namespace velmor {

/// The scene of which frames are asked. A view: the scene belongs to the caller.
struct CShot {
    const CScene& scene;
    Path sceneFolder;
    bool antialias = false;
};

/// All levels of an xsheet, 0 first.
std::vector<int> AllLevels(const CXSheet& xsheet);

/// What composing one frame needs: the used cells of `levels` (in list order, the first ends on top) seen through
/// `camera`, `output.output` pixels large, every column filled with the background.
CFrameRequest RequestFrame(const CShot& shot, std::span<const int> levels, int frame, const CCameraFrame& camera,
                           const COutputGeometry& output);

/// The frame as the camera view shows it: all levels, the scene's own size, in a buffer of the padded width whose
/// columns beyond the scene's width are not filled.
CFrameRequest RequestCameraPicture(const CShot& shot, int frame);

} // namespace velmor
