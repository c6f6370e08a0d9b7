#pragma once

#include "app/demo/Curves.h"

#include <vector>

namespace velmor::demo {

/// A foot: where its sole stands from the spot below the resting hips, and how it is turned (degrees, toes up).
struct CFootPose {
    double x = 0;
    double lift = 0;
    double toes = 0;
};

/// An arm: swing of the upper arm (degrees, forward from hanging down) and bend of the elbow.
struct CArmPose {
    double swing = 0;
    double bend = 20;
};

/// What differs from drawing to drawing of the fox, who looks to the right. Distances are pixels of the cel, angles
/// degrees. "Near" is the side towards the viewer.
struct CFoxPose {
    double hipX = 0; ///< from the resting hips
    double hipY = 0;
    double lean = 0;    ///< of the body, forward
    double stretch = 1; ///< of the body and the head; below 1 squashed
    double headX = 0;   ///< from its seat on the body
    double headY = 0;
    double nod = 0;     ///< of the head, forward
    double ears = 0;    ///< how far they lag behind, backward
    double tail = 0;    ///< its root, up from level
    double tailTip = 0; ///< its tip, up from the root's direction
    double scarf = 0;   ///< its loose end, up from hanging
    CArmPose nearArm;
    CArmPose farArm;
    CFootPose nearFoot;
    CFootPose farFoot;
    double eyesOpen = 1;    ///< 0 closed
    double smile = 0.4;     ///< 0 content, 1 laughing with open mouth
    CSpot gaze{0.2, 0};     ///< -1 to 1 both ways
    bool eyesLaugh = false; ///< closed eyes bend up instead of down
};

/// Drawings of the walk cycle, in order: 16, of which every second is a key. The figure walks on the spot; between
/// two drawings the ground has to pass under it by foxStride pixels of the cel.
std::vector<CFoxPose> WalkPoses();
inline constexpr double foxStride = 16;

enum class JumpEvent { None, TakeOff, Landing, Rest };

/// One drawing of the jump, how long it is held and where the fox is meanwhile.
struct CJumpDrawing {
    CFoxPose pose;
    int frames = 2;
    double x = 0;      ///< pixels of the frame from where the walk ends
    double height = 0; ///< above the ground
    JumpEvent event = JumpEvent::None;
};

/// From the last step over crouch, leap and landing to the quiet end, in order.
std::vector<CJumpDrawing> JumpDrawings();

} // namespace velmor::demo
