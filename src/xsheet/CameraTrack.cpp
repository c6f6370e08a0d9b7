#include "xsheet/CameraTrack.h"

#include "xsheet/CameraMap.h"
#include "xsheet/CellGeometry.h"
#include "xsheet/Truncate.h"

#include <cmath>

namespace velmor {

namespace {

constexpr double degreesPerRadian = 57.29577951308232;
constexpr double radiansPerPixel = 0.006666666666666667; // one radian for 150 pixels

// The mean growth of width and height. A zoom of 0 stays: it has nothing to grow from.
void Zoom(double& zoom, int dx, int dy, int frameWidth, int frameHeight) {
    const double width = frameWidth * zoom;
    const double height = frameHeight * zoom;
    const double growth = ((dx + width) / width + (dy + height) / height) * 0.5;
    if (std::isfinite(growth))
        zoom = growth * zoom;
}

} // namespace

void CCameraTrack::SetFirstFrames(const CCameraTrack& other, int count) {
    for (int frame = 0; frame < count; ++frame)
        if (!At(frame).IsIdenticalTo(other.At(frame)))
            MutableAt(frame) = other.At(frame);
}

int RotationInDegrees(double radians) {
    return TruncateToInt(radians * degreesPerRadian);
}

void ApplyCameraInput(CCameraFrame& camera, InputMode mode, int dx, int dy, int frameWidth, int frameHeight) {
    switch (mode) {
    case InputMode::Move: {
        const CPoint moved = RotatePoint({dx, dy}, camera.rotation);
        camera.panX += moved.x;
        camera.panY += moved.y;
        break;
    }
    case InputMode::Rotate:
        camera.rotation += dx * radiansPerPixel;
        break;
    case InputMode::Zoom:
        Zoom(camera.zoom, dx, dy, frameWidth, frameHeight);
        break;
    }
}

void ApplyCameraInputOneToOne(CCameraFrame& camera, InputMode mode, int dx, int dy, CSize frame) {
    if (mode != InputMode::Move) {
        ApplyCameraInput(camera, mode, dx, dy, frame.width, frame.height);
        return;
    }
    const CRealPoint moved = Turned({dx / camera.zoom, dy / camera.zoom}, camera.rotation);
    if (!std::isfinite(moved.x) || !std::isfinite(moved.y))
        return;
    camera.panX += moved.x;
    camera.panY += moved.y;
}

} // namespace velmor
