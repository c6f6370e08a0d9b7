#pragma once

#include "platform/Status.h"
#include "xsheet/CameraTrack.h"
#include "xsheet/XSheetCell.h"

namespace velmor {

// What the dialogs of a cell and of the camera show and take back. Values are shown with two decimals, rounded
// down.

/// Whole turns and the degrees beyond them, both with the rotation's sign.
struct CTurns {
    int turns = 0;
    double degrees = 0;

    bool operator==(const CTurns&) const = default;
};

struct CCellDataForm {
    double posX = 0;
    double posY = 0;
    double scaleX = 1; ///< factors
    double scaleY = 1;
    bool preserveScale = true; ///< Y follows X
    CTurns rotation;
    double blurX = 1; ///< 1 to 50
    double blurY = 1;
    bool preserveBlur = true;
    double transparency = 0; ///< 0 to 100

    bool operator==(const CCellDataForm&) const = default;
};

struct CBlurForm {
    double blurX = 1; ///< 1 to 50
    double blurY = 1;
    bool preserve = true;

    bool operator==(const CBlurForm&) const = default;
};

struct CCameraForm {
    double posX = 0;
    double posY = 0;
    double zoomPercent = 100;
    CTurns rotation;

    bool operator==(const CCameraForm&) const = default;
};

CCellDataForm CellDataFormOf(const CXSheetCell& cell);
/// Refuses blur outside 1 to 50 and transparency outside 0 to 100.
CStatus CheckCellDataForm(const CCellDataForm& form);
/// `cel` must be used.
void ApplyCellDataForm(const CCellDataForm& form, CXSheetCell& cell);

CBlurForm BlurFormOf(const CXSheetCell& cell);
CStatus CheckBlurForm(const CBlurForm& form);
void ApplyBlurForm(const CBlurForm& form, CXSheetCell& cell);

double TransparencyFormOf(const CXSheetCell& cell);
CStatus CheckTransparency(double transparency);

CCameraForm CameraFormOf(const CCameraFrame& camera);
CCameraFrame CameraOf(const CCameraForm& form);

} // namespace velmor
