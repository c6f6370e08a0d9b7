#include "views/camera/FrameKeys.h"

#include "scene/SceneModel.h"

#include <QKeyEvent>
#include <algorithm>

namespace velmor {

namespace {

std::optional<int> FrameAfterKey(int key, int frame, int frameCount, int frameRate) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        frame -= 1;
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        frame += 1;
        break;
    case Qt::Key_PageUp:
        frame -= frameRate;
        break;
    case Qt::Key_PageDown:
        frame += frameRate;
        break;
    case Qt::Key_Home:
        frame = 0;
        break;
    case Qt::Key_End:
        frame = frameCount - 1;
        break;
    default:
        return std::nullopt;
    }
    return std::max(0, std::min(frame, frameCount - 1));
}

} // namespace

std::optional<int> FrameOfKey(const QKeyEvent& event, const CSceneModel& model) {
    const bool plain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (!plain || !model.sceneOpen)
        return std::nullopt;
    const CScene& scene = model.Scene();
    return FrameAfterKey(event.key(), model.cursorFrame, scene.xsheet.FrameCount(), scene.geometry.frameRate);
}

} // namespace velmor
