#include "xsheet/CellForms.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace velmor {

namespace {

// The cel dialog works with a pi of eleven decimals and its reciprocal, the camera dialog with the exact value.
// Both stay as they are: each pair brings a value back that it has shown.
constexpr double celReciprocalPi = 0.3183098861837697;
constexpr double celPi = 3.14159265359;
constexpr double cameraReciprocalPi = 0.3183098861837907;
constexpr double cameraPi = 3.141592653589793;
constexpr double halfTurnsPerDegree = 0.005555555555555556; // 1 / 180

double WithTwoDecimals(double value) {
    return std::floor(value * 100) * 0.01;
}

CTurns TurnsOf(double radians, double reciprocalPi) {
    const double degrees = radians * reciprocalPi * 180;
    if (!std::isfinite(degrees))
        return {};
    const double whole = std::min(std::floor(std::abs(std::trunc(degrees)) / 360),
                                  static_cast<double>(std::numeric_limits<int>::max()));
    const int turns = static_cast<int>(degrees < 0 ? -whole : whole);
    return {turns, WithTwoDecimals(degrees - turns * 360.0)};
}

double RadiansOf(const CTurns& rotation, double pi) {
    return (rotation.turns * 360.0 + rotation.degrees) * halfTurnsPerDegree * pi;
}

// Not a number lies outside every range.
bool IsWithin(double value, double least, double most) {
    return value >= least && value <= most;
}

CStatus CheckBlur(double blur) {
    return IsWithin(blur, 1, 50) ? CStatus() : CStatus::Failure("The blur must be a number from 1 to 50");
}

bool HasFinitePlacement(const CCellDataForm& form) {
    return std::isfinite(form.posX) && std::isfinite(form.posY) && std::isfinite(form.scaleX) &&
           (form.preserveScale || std::isfinite(form.scaleY)) && std::isfinite(form.rotation.degrees);
}

} // namespace

CCellDataForm CellDataFormOf(const CXSheetCell& cell) {
    CCellDataForm form;
    form.posX = WithTwoDecimals(cell.PosX());
    form.posY = WithTwoDecimals(cell.PosY());
    form.scaleX = WithTwoDecimals(cell.ScaleX());
    form.scaleY = WithTwoDecimals(cell.ScaleY());
    form.preserveScale = cell.ScaleX() == cell.ScaleY();
    form.rotation = TurnsOf(cell.Rotation(), celReciprocalPi);
    form.blurX = std::floor(cell.BlurX());
    form.blurY = std::floor(cell.BlurY());
    form.preserveBlur = cell.BlurX() == cell.BlurY();
    form.transparency = TransparencyFormOf(cell);
    return form;
}

CStatus CheckCellDataForm(const CCellDataForm& form) {
    if (!HasFinitePlacement(form))
        return CStatus::Failure("Position, scale and rotation must be numbers");
    if (CStatus status = CheckBlurForm({form.blurX, form.blurY, form.preserveBlur}); !status)
        return status;
    return CheckTransparency(form.transparency);
}

void ApplyCellDataForm(const CCellDataForm& form, CXSheetCell& cell) {
    cell.SetTransform({form.posX, form.posY, form.scaleX, form.preserveScale ? form.scaleX : form.scaleY,
                       RadiansOf(form.rotation, celPi)});
    static_cast<void>(cell.SetTrans(form.transparency)); // fails on empty cells only
    ApplyBlurForm({form.blurX, form.blurY, form.preserveBlur}, cell);
}

CBlurForm BlurFormOf(const CXSheetCell& cell) {
    const double blurX = std::floor(cell.BlurX());
    const double blurY = std::floor(cell.BlurY());
    return {blurX, blurY, blurX == blurY};
}

CStatus CheckBlurForm(const CBlurForm& form) {
    if (CStatus status = CheckBlur(form.blurX); !status || form.preserve)
        return status;
    return CheckBlur(form.blurY);
}

void ApplyBlurForm(const CBlurForm& form, CXSheetCell& cell) {
    static_cast<void>(cell.SetBlur(form.blurX, form.preserve ? form.blurX : form.blurY)); // as above
}

double TransparencyFormOf(const CXSheetCell& cell) {
    return WithTwoDecimals(cell.Transparency());
}

CStatus CheckTransparency(double transparency) {
    return IsWithin(transparency, 0, 100) ? CStatus()
                                          : CStatus::Failure("The transparency must be a number from 0 to 100");
}

CCameraForm CameraFormOf(const CCameraFrame& camera) {
    return {WithTwoDecimals(camera.panX), WithTwoDecimals(camera.panY), std::floor(camera.zoom * 10000) * 0.01,
            TurnsOf(camera.rotation, cameraReciprocalPi)};
}

CCameraFrame CameraOf(const CCameraForm& form) {
    return {form.posX, form.posY, RadiansOf(form.rotation, cameraPi), form.zoomPercent * 0.01};
}

} // namespace velmor
