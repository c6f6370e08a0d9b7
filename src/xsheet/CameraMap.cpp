#include "xsheet/CameraMap.h"

#include <cmath>

namespace velmor {

namespace {

bool CanBeSeenThrough(const CCameraFrame& camera) {
    return std::isfinite(camera.panX) && std::isfinite(camera.panY) && std::isfinite(camera.rotation) &&
           std::isfinite(camera.zoom) && camera.zoom != 0;
}

} // namespace

CRealPoint Turned(CRealPoint vector, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {vector.x * c - vector.y * s, vector.y * c + vector.x * s};
}

CCameraMap::CCameraMap(const CCameraFrame& camera, CSize frame)
    : m_camera(CanBeSeenThrough(camera) ? camera : CCameraFrame{}),
      m_centre{static_cast<double>(frame.width / 2), static_cast<double>(frame.height / 2)} {}

CRealPoint CCameraMap::ToView(CRealPoint stage) const {
    const CRealPoint turned =
        Turned({stage.x + m_camera.panX - m_centre.x, stage.y + m_camera.panY - m_centre.y}, -m_camera.rotation);
    return {turned.x * m_camera.zoom + m_centre.x, turned.y * m_camera.zoom + m_centre.y};
}

CRealPoint CCameraMap::ToStage(CRealPoint view) const {
    const CRealPoint turned =
        Turned({(view.x - m_centre.x) / m_camera.zoom, (view.y - m_centre.y) / m_camera.zoom}, m_camera.rotation);
    return {turned.x + m_centre.x - m_camera.panX, turned.y + m_centre.y - m_camera.panY};
}

} // namespace velmor
