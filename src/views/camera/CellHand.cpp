#include "views/camera/CellHand.h"

#include "scene/CellDragging.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"

#include <cmath>

namespace velmor {

bool CCellHand::Press(const CCameraHandPoint& at, const CViewMapping& mapping) {
    if (!TakeHold(at, mapping))
        return false;
    m_doc.CellDragging().Begin();
    return true;
}

void CCellHand::Release() {
    LetGo();
    m_doc.CellDragging().End();
}

void CCellHand::GiveUp() {
    LetGo();
    m_doc.CellDragging().GiveUp();
}

CCameraMap CCellHand::CameraAt(int frame) const {
    const CScene& scene = m_doc.Model().Scene();
    return {scene.camera.At(frame), scene.geometry.Frame()};
}

double CCellHand::Distance(CRealPoint a, CRealPoint b) {
    return std::hypot(b.x - a.x, b.y - a.y);
}

} // namespace velmor
