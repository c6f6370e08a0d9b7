#include "render/FrameRequests.h"

#include <numeric>

namespace velmor {

std::vector<int> AllLevels(const CXSheet& xsheet) {
    std::vector<int> levels(static_cast<std::size_t>(xsheet.LevelCount()));
    std::iota(levels.begin(), levels.end(), 0);
    return levels;
}

CFrameRequest RequestFrame(const CShot& shot, std::span<const int> levels, int frame, const CCameraFrame& camera,
                           const COutputGeometry& output) {
    CFrameRequest request{
        output.output.width, output.output.width, output.output.height, shot.scene.geometry.background, {}};
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) { // the one in front comes last
        const CXSheetCell& cell = shot.scene.xsheet.Cell(*level, frame);
        if (cell.IsUsed())
            request.layers.push_back({AssetFilePath(shot.sceneFolder, cell.FolderName(), cell.CelName()),
                                      PlaceCell(cell, camera, output, shot.antialias)});
    }
    return request;
}

CFrameRequest RequestCameraPicture(const CShot& shot, int frame) {
    const CSize size = shot.scene.geometry.Frame();
    CFrameRequest request =
        RequestFrame(shot, AllLevels(shot.scene.xsheet), frame, shot.scene.camera.At(frame), {size, size, 1});
    request.bufferWidth = PaddedWidthOf(size.width);
    return request;
}

} // namespace velmor
