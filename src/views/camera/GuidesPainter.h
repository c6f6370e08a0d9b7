#pragma once

#include "image/Geometry.h"
#include "xsheet/CameraTrack.h"

#include <QColor>

class QPainter;

namespace velmor {

struct CCameraAidChoices;
struct CPictureMapping;

/// The frame that guides are laid over, and the camera that it is seen through.
struct CGuidedFrame {
    CSize size;
    CCameraFrame camera;
};

/// What guides are drawn with. Without a rim they are for paper.
struct CGuideInk {
    QColor chart{90, 200, 255};
    QColor frames{255, 170, 60};
    QColor safe{120, 230, 120};
    QColor rim{0, 0, 0, 150};
    QColor beside{0, 0, 0, 110}; ///< over what lies beside the frames
    double width = 1;
    double textHeight = 10;
};

/// The ink for paper, on a device of so many dots to a point.
CGuideInk PaperInk(double dotsPerPoint);

/// Draws the field chart, the frames and the safe areas that are chosen. The chart's lines are its fields, counted
/// from the middle to north, south, east and west.
void PaintGuides(QPainter& painter, const CCameraAidChoices& choices, const CGuidedFrame& frame,
                 const CPictureMapping& mapping, const CGuideInk& ink);

} // namespace velmor
