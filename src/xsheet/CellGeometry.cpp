#include "xsheet/CellGeometry.h"

#include "xsheet/Truncate.h"

#include <cmath>

namespace velmor {

namespace {

// A point of whole pixels. It is kept in doubles, where the integer steps come out the same and no value that a
// file may hold overflows.
struct CPixelPoint {
    double x = 0;
    double y = 0;
};

CPoint ToPoint(CPixelPoint point) {
    return {TruncateToInt(point.x), TruncateToInt(point.y)};
}

CPixelPoint Rotate(CPixelPoint point, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {std::trunc(point.x * c - point.y * s), std::trunc(point.y * c + point.x * s)};
}

// Where the camera shows a point of the panned frame.
CPoint ToCameraView(CPixelPoint point, const CCameraFrame& camera, CSize frame) {
    const int centreX = frame.width / 2;
    const int centreY = frame.height / 2;
    const CPixelPoint turned = Rotate({point.x - centreX, point.y - centreY}, -camera.rotation);
    return ToPoint({std::trunc(turned.x * camera.zoom) + centreX, std::trunc(turned.y * camera.zoom) + centreY});
}

} // namespace

CPoint RotatePoint(CPoint point, double angle) {
    return ToPoint(Rotate({static_cast<double>(point.x), static_cast<double>(point.y)}, angle));
}

std::array<CPoint, 4> CellCorners(const CXSheetCell& cell, const CCameraFrame& camera, CSize frame) {
    const double halfWidth = std::trunc(std::trunc(cell.ScaleX() * cell.Size().width) / 2);
    const double halfHeight = std::trunc(std::trunc(cell.ScaleY() * cell.Size().height) / 2);
    const double x = std::trunc(cell.PosX()) + std::trunc(camera.panX);
    const double y = std::trunc(cell.PosY()) + std::trunc(camera.panY);
    const auto place = [&](CPixelPoint corner) {
        if (cell.Rotation() != 0)
            corner = Rotate(corner, -cell.Rotation());
        return ToCameraView({corner.x + x, corner.y + y}, camera, frame);
    };
    return {place({-halfWidth, -halfHeight}), place({halfWidth, -halfHeight}), place({halfWidth, halfHeight}),
            place({-halfWidth, halfHeight})};
}

CPoint CellCentre(const CXSheetCell& cell, const CCameraFrame& camera, CSize frame) {
    return ToCameraView({std::trunc(cell.PosX() + camera.panX), std::trunc(cell.PosY() + camera.panY)}, camera,
                        frame);
}

} // namespace velmor
