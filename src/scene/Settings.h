#pragma once

#include "platform/files/Profile.h"

#include <string>

namespace velmor {

/// One persisted setting: where it stands in the profile, and what it is when it does not.
struct CIntSetting {
    const char* section;
    const char* key;
    int defaultValue;
};
struct CStringSetting {
    const char* section;
    const char* key;
    const char* defaultValue;
};

/// Every persisted setting, those of the cel editor's grid excepted, which image/DisplayBitmap.h reads and writes.
namespace setting {

inline constexpr CStringSetting databaseDir{"Settings", "Database Dir", ""};
inline constexpr CIntSetting importThreshold{"Settings", "ImportThres", 128};
inline constexpr CIntSetting importSpecks{"Settings", "ImportSpecks", 0};
inline constexpr CIntSetting motionPathSetup{"Settings", "MotionPathSetup", 1};
/// What the history of a scene may take; 0 for none.
inline constexpr CIntSetting historyMegabytes{"Settings", "History MB", 1024};
inline constexpr CIntSetting insertCels{"Settings", "IncertCels", 1};
inline constexpr CIntSetting lastDropType{"Settings", "LastDropType", 0};
inline constexpr CIntSetting lastOnWhich{"Settings", "LastOnWhich", 10};

inline constexpr CStringSetting lastScene{"Remember", "Last Scene", ""};
inline constexpr CStringSetting lastFolder{"Remember", "Last Folder", ""};
inline constexpr CIntSetting lastBrush{"Remember", "Last Brush", 0};
inline constexpr CIntSetting lastPen{"Remember", "Last Pen", 0};
inline constexpr CIntSetting lastBucketMode{"Remember", "Last Bucket Mode", 0};
inline constexpr CIntSetting lastFillGap{"Remember", "Last Fill Gap", 0};
inline constexpr CIntSetting lastFillRefusesLeaks{"Remember", "Last Fill Refuses Leaks", 1};
inline constexpr CIntSetting lastFillUnderLine{"Remember", "Last Fill Under Line", 0};
inline constexpr CIntSetting lastFillLines{"Remember", "Last Fill Lines", 0};
inline constexpr CIntSetting lastFillOverAreas{"Remember", "Last Fill Over Areas", 0};
inline constexpr CIntSetting showFillGaps{"Remember", "Show Fill Gaps", 0};
inline constexpr CIntSetting lastCelTool{"Remember", "Last Cel Tool", 0};
inline constexpr CIntSetting celSmoothDisplay{"Remember", "Cel Smooth Display", 0};
inline constexpr CIntSetting celNavigator{"Remember", "Cel Navigator", 0};
/// A SelectWhat; which pixels "Replace Color" finds, and how.
inline constexpr CIntSetting lastRecolorWhat{"Remember", "Last Recolor What", 2};
inline constexpr CIntSetting lastRecolorTolerance{"Remember", "Last Recolor Tolerance", 0};
inline constexpr CIntSetting lastRecolorKeepsAlpha{"Remember", "Last Recolor Keeps Alpha", 1};
/// A SelectWhat; what the selection tools take.
inline constexpr CIntSetting lastSelectWhat{"Remember", "Last Select What", 2};
/// Selecting by colour takes the connected area alone, and colours as near as this.
inline constexpr CIntSetting lastSelectConnected{"Remember", "Last Select Connected", 1};
inline constexpr CIntSetting lastSelectTolerance{"Remember", "Last Select Tolerance", 0};
inline constexpr CIntSetting lastColorKeyProcess{"Remember", "Last Colorkey ProcessType", 0};
inline constexpr CIntSetting lastColorKeyTolerance{"Remember", "Last Colorkey Tolerance", 5};
inline constexpr CIntSetting lastFlipbookScaling{"Remember", "Last Flipbook Scaling", 50};
inline constexpr CIntSetting lastFlipbookQuality{"Remember", "Last Flipbook Quality", 50};
inline constexpr CIntSetting lastFlipbookStep{"Remember", "Last Flipbook Step", 1};
inline constexpr CIntSetting lastFlipbookAntialias{"Remember", "Last Flipbook Antialias", 0};
inline constexpr CIntSetting lastInbetweenSource{"Remember", "Last Inbet Source", 0};
inline constexpr CIntSetting lastInbetweenType{"Remember", "Last Inbet Type", 0};
inline constexpr CIntSetting lastCameraInbetweenSource{"Remember", "Last CamInbet Source", 0};
inline constexpr CIntSetting lastCameraInbetweenType{"Remember", "Last CamInbet Type", 0};
// A curve that was drawn for an inbetween; places in its box, percentages.
inline constexpr CIntSetting inbetweenCurveX1{"Remember", "Inbetween Curve X1", 33};
inline constexpr CIntSetting inbetweenCurveY1{"Remember", "Inbetween Curve Y1", 0};
inline constexpr CIntSetting inbetweenCurveX2{"Remember", "Inbetween Curve X2", 67};
inline constexpr CIntSetting inbetweenCurveY2{"Remember", "Inbetween Curve Y2", 100};
/// Frames that each value stands.
inline constexpr CIntSetting lastInbetweenHold{"Remember", "Last Inbet Hold", 1};
inline constexpr CIntSetting lastCameraInbetweenHold{"Remember", "Last CamInbet Hold", 1};
inline constexpr CIntSetting lastRenderScaling{"Remember", "Last Render Scaling", 100};
inline constexpr CIntSetting lastRenderStep{"Remember", "Last Render Step", 1};
inline constexpr CIntSetting lastRenderAntialias{"Remember", "Last Render Antialias", 1};
inline constexpr CIntSetting lastRenderFileFormat{"Remember", "Last Render FileFormat", 0};
inline constexpr CIntSetting lastRenderTransparent{"Remember", "Last Render Transparent", 0};
inline constexpr CStringSetting lastRenderCompressor{"Remember", "Last Render Compressor", ""};
inline constexpr CIntSetting lastRenderQuality{"Remember", "Last Render Quality", 100};
inline constexpr CStringSetting lastRenderDirectory{"Remember", "Last Rendering Directory", ""};
inline constexpr CStringSetting lastRenderName{"Remember", "Last Rendering Name", ""};
inline constexpr CIntSetting lastSheetFormat{"Remember", "Last Sheet Format", 0};
inline constexpr CIntSetting lastSequenceHold{"Remember", "Last Sequence Hold", 1};
/// 1: a longer exposure pushes what follows down; 0: it eats it.
inline constexpr CIntSetting exposurePushes{"Remember", "Exposure Pushes", 1};
/// How the sheet is looked at: from 1 on with pictures; cells in the colours of their folders; holds as lines.
inline constexpr CIntSetting sheetZoom{"Remember", "Sheet Zoom", 0};
inline constexpr CIntSetting sheetColorsFolders{"Remember", "Sheet Folder Colors", 0};
inline constexpr CIntSetting sheetDrawsHolds{"Remember", "Sheet Hold Lines", 0};

// The pen of a tablet. Sizes are percentages of the width of the chosen pen or brush, places on the curve those of
// its box, lengths pixels of the screen.
inline constexpr CIntSetting penPressure{"Pen", "Pressure On Pens", 0};
inline constexpr CIntSetting penLeast{"Pen", "Least Pen", 20};
inline constexpr CIntSetting penLargest{"Pen", "Largest Pen", 100};
inline constexpr CIntSetting brushPressure{"Pen", "Pressure On Brushes", 0};
inline constexpr CIntSetting brushLeast{"Pen", "Least Brush", 20};
inline constexpr CIntSetting brushLargest{"Pen", "Largest Brush", 100};
inline constexpr CIntSetting pressureCurveX1{"Pen", "Curve X1", 33};
inline constexpr CIntSetting pressureCurveY1{"Pen", "Curve Y1", 33};
inline constexpr CIntSetting pressureCurveX2{"Pen", "Curve X2", 67};
inline constexpr CIntSetting pressureCurveY2{"Pen", "Curve Y2", 67};
inline constexpr CIntSetting stabilizer{"Pen", "Stabilizer", 0};
inline constexpr CIntSetting lastStabilizer{"Pen", "Last Stabilizer", 1};
inline constexpr CIntSetting stabilizerLength{"Pen", "Stabilizer Length", 40};
/// Frames that a new drawing is held.
inline constexpr CIntSetting newDrawingHold{"Remember", "New Drawing Hold", 2};

// Colours are numbers with red in the low byte, strengths percentages.
inline constexpr CIntSetting onionShown{"Onion Skin", "Shown", 0};
inline constexpr CIntSetting onionInCamera{"Onion Skin", "Camera", 0};
/// 0 by the xsheet, 1 by the folder.
inline constexpr CIntSetting onionOrder{"Onion Skin", "Order", 0};
inline constexpr CIntSetting onionBefore{"Onion Skin", "Before", 2};
inline constexpr CIntSetting onionAfter{"Onion Skin", "After", 2};
inline constexpr CIntSetting onionTintBefore{"Onion Skin", "Tint Before", 0x2258e2};
inline constexpr CIntSetting onionTintAfter{"Onion Skin", "Tint After", 0xdc6e1e};
inline constexpr CIntSetting onionStrength{"Onion Skin", "Strength", 70};
inline constexpr CIntSetting onionKept{"Onion Skin", "Kept", 60};
inline constexpr CIntSetting onionPaint{"Onion Skin", "Paint", 0};
inline constexpr CIntSetting onionOver{"Onion Skin", "Over", 0};
inline constexpr CIntSetting lightTableTint{"Light Table", "Tint", 0x488a1a};
inline constexpr CIntSetting lightTableStrength{"Light Table", "Strength", 70};

/// What the composed frames of the preview may take.
inline constexpr CIntSetting previewMegabytes{"Settings", "Preview MB", 512};
inline constexpr CIntSetting previewLoop{"Remember", "Preview Loop", 1};
inline constexpr CIntSetting previewSpeed{"Remember", "Preview Speed", 100}; ///< percent
inline constexpr CIntSetting previewFollowsCamera{"Remember", "Preview Follows Camera", 1};
inline constexpr CIntSetting previewFullSize{"Remember", "Preview Full Size", 0};
inline constexpr CIntSetting previewScrub{"Remember", "Frame Column Scrubs", 0};

// What the mouse takes hold of in the camera view, and what is laid over its picture.
inline constexpr CIntSetting cameraHandles{"Camera View", "Handles", 0};
inline constexpr CIntSetting cameraSpacing{"Camera View", "Spacing", 0};
inline constexpr CIntSetting cameraOneToOne{"Camera View", "One To One", 0};
/// Fields from the middle of the chart to its edge, 12 or 16; 0 for no chart.
inline constexpr CIntSetting cameraFields{"Camera View", "Fields", 0};
inline constexpr CIntSetting cameraFieldsOnStage{"Camera View", "Fields On Stage", 1};
inline constexpr CIntSetting cameraFrameWide{"Camera View", "Frame 16:9", 0};
inline constexpr CIntSetting cameraFrameTall{"Camera View", "Frame 4:3", 0};
inline constexpr CIntSetting cameraActionSafe{"Camera View", "Action Safe", 0};
inline constexpr CIntSetting cameraTitleSafe{"Camera View", "Title Safe", 0};
/// What they take of width and height.
inline constexpr CIntSetting actionSafePercent{"Camera View", "Action Safe Percent", 90};
inline constexpr CIntSetting titleSafePercent{"Camera View", "Title Safe Percent", 80};

inline constexpr CIntSetting cleanupThreshold{"Remember", "Cleanup Threshold", 0};
inline constexpr CIntSetting cleanupSpecks{"Remember", "Cleanup Specks", 4};
inline constexpr CIntSetting cleanupWeight{"Remember", "Cleanup Weight", 0};
inline constexpr CIntSetting cleanupStraightens{"Remember", "Cleanup Straighten", 0};
inline constexpr CIntSetting cleanupRegisters{"Remember", "Cleanup Register", 0};
inline constexpr CIntSetting cleanupErasesPegs{"Remember", "Cleanup Erase Pegs", 0};
/// 0 if it is not known.
inline constexpr CIntSetting cleanupDpi{"Remember", "Cleanup Resolution", 0};

/// By folder the chart of its mouths.
inline constexpr const char* mouthSection = "Mouth Charts";
inline constexpr CIntSetting mouthHold{"Remember", "Mouth Hold", 1};

inline constexpr CIntSetting playerLoop{"Remember", "Player Loop", 0};
inline constexpr CIntSetting playerDouble{"Remember", "Player Double", 0};

inline constexpr CStringSetting captureDriver{"CAPTURE_SETTINGS", "DRIVERNAME", "<None Selected>"};
inline constexpr CIntSetting captureThreshold{"CAPTURE_SETTINGS", "THRESHOLD", 128};

inline constexpr CStringSetting scannerDevice{"SCANNER_SETTINGS", "DEVICENAME", ""};
inline constexpr CStringSetting scannerLabel{"SCANNER_SETTINGS", "DEVICELABEL", ""};
inline constexpr CIntSetting scannerResolution{"SCANNER_SETTINGS", "RESOLUTION", 300};
inline constexpr CIntSetting scannerFeeder{"SCANNER_SETTINGS", "FEEDER", 0};
// The area, in tenths of a millimetre; without width or height all of the glass.
inline constexpr CIntSetting scannerLeft{"SCANNER_SETTINGS", "LEFT", 0};
inline constexpr CIntSetting scannerTop{"SCANNER_SETTINGS", "TOP", 0};
inline constexpr CIntSetting scannerWidth{"SCANNER_SETTINGS", "WIDTH", 0};
inline constexpr CIntSetting scannerHeight{"SCANNER_SETTINGS", "HEIGHT", 0};

/// "light" or "dark"; anything else is as the system has it.
inline constexpr CStringSetting theme{"Window", "Theme", ""};

} // namespace setting

inline int Get(const CProfile& profile, const CIntSetting& which) {
    return profile.GetInt(which.section, which.key, which.defaultValue);
}
inline std::string Get(const CProfile& profile, const CStringSetting& which) {
    return profile.GetString(which.section, which.key, which.defaultValue);
}
// A setting that cannot be written is still in force until the program ends, so nobody is told.
inline void Set(CProfile& profile, const CIntSetting& which, int value) {
    static_cast<void>(profile.WriteInt(which.section, which.key, value));
}
inline void Set(CProfile& profile, const CStringSetting& which, const std::string& value) {
    static_cast<void>(profile.WriteString(which.section, which.key, value));
}

} // namespace velmor
