#include "app/demo/FoxPose.h"

#include <array>
#include <cmath>
#include <functional>

namespace velmor::demo {

namespace {

constexpr int walkKeys = 8;

/// One leg through a whole cycle: heel strike, weight taken, passing under, push, and back through the air. While
/// it stands, the foot goes back by the same distance from key to key.
constexpr std::array<CFootPose, walkKeys> legKeys = {{
    {64, 2, 20},    // contact
    {32, 0, 0},     // down
    {0, 0, 0},      // passing
    {-32, 1, -6},   // up
    {-64, 12, -34}, // the other foot's contact
    {-72, 38, -58}, // its down
    {-14, 50, -26}, // its passing
    {52, 32, 8},    // its up
}};

/// What both halves of the cycle share, from contact to up.
struct CBounceKey {
    double hipY, headY, nod, ears, tail, tailTip, scarf;
};
constexpr std::array<CBounceKey, walkKeys / 2> bounceKeys = {{
    {-5, 2, 2, 8, 26, 18, 30},    // contact
    {-17, -5, 5, -4, 30, 30, 40}, // down
    {4, -4, 0, -10, 22, 8, 26},   // passing
    {11, 3, -3, 2, 18, 0, 18},    // up
}};

/// The arms swing against the legs.
constexpr std::array<CArmPose, walkKeys> armKeys = {{
    {-38, 12},
    {-30, 14},
    {-2, 26},
    {28, 44},
    {42, 52},
    {36, 48},
    {4, 28},
    {-26, 14},
}};

CFoxPose WalkKey(int key) {
    const CBounceKey& bounce = bounceKeys[static_cast<std::size_t>(key) % bounceKeys.size()];
    const auto near = static_cast<std::size_t>(key);
    const std::size_t far = (near + walkKeys / 2) % walkKeys;
    CFoxPose pose;
    pose.hipY = bounce.hipY;
    pose.lean = 6;
    pose.stretch = 1 + bounce.hipY / 400;
    pose.headY = bounce.headY;
    pose.nod = bounce.nod;
    pose.ears = bounce.ears;
    pose.tail = bounce.tail;
    pose.tailTip = bounce.tailTip;
    pose.scarf = bounce.scarf;
    pose.nearFoot = legKeys[near];
    pose.farFoot = legKeys[far];
    pose.nearArm = armKeys[near];
    pose.farArm = armKeys[far];
    pose.smile = 0.55;
    pose.gaze = {0.5, 0.35};
    return pose;
}

/// The middle of a smooth curve through four values, between the second and the third.
double Middle(double before, double from, double to, double after) {
    return (9 * (from + to) - (before + after)) / 16;
}

/// The drawing between two keys, by the keys around them.
CFoxPose Inbetween(const CFoxPose& before, const CFoxPose& from, const CFoxPose& to, const CFoxPose& after) {
    CFoxPose pose = from;
    const auto blend = [&](auto value) {
        value(pose) = Middle(value(before), value(from), value(to), value(after));
    };
    blend([](auto& p) -> auto& { return p.hipY; });
    blend([](auto& p) -> auto& { return p.stretch; });
    blend([](auto& p) -> auto& { return p.headY; });
    blend([](auto& p) -> auto& { return p.nod; });
    blend([](auto& p) -> auto& { return p.ears; });
    blend([](auto& p) -> auto& { return p.tail; });
    blend([](auto& p) -> auto& { return p.tailTip; });
    blend([](auto& p) -> auto& { return p.scarf; });
    blend([](auto& p) -> auto& { return p.nearArm.swing; });
    blend([](auto& p) -> auto& { return p.nearArm.bend; });
    blend([](auto& p) -> auto& { return p.farArm.swing; });
    blend([](auto& p) -> auto& { return p.farArm.bend; });
    blend([](auto& p) -> auto& { return p.nearFoot.x; });
    blend([](auto& p) -> auto& { return p.nearFoot.lift; });
    blend([](auto& p) -> auto& { return p.nearFoot.toes; });
    blend([](auto& p) -> auto& { return p.farFoot.x; });
    blend([](auto& p) -> auto& { return p.farFoot.lift; });
    blend([](auto& p) -> auto& { return p.farFoot.toes; });
    return pose;
}

CFoxPose Standing() {
    CFoxPose pose;
    pose.tail = 24;
    pose.tailTip = 20;
    pose.scarf = 14;
    pose.nearArm = {-4, 18};
    pose.farArm = {10, 22};
    pose.nearFoot = {6, 0, 0};
    pose.farFoot = {40, 0, 0};
    pose.gaze = {0.5, 0.6};
    return pose;
}

/// The last step: the far foot comes up to the near one.
CFoxPose Closing() {
    CFoxPose pose = Standing();
    pose.hipY = -10;
    pose.lean = 4;
    pose.stretch = 0.97;
    pose.ears = -6;
    pose.tail = 34;
    pose.tailTip = 30;
    pose.scarf = 36;
    pose.nearArm = {-20, 14};
    pose.farArm = {-8, 18};
    pose.nearFoot = {36, 0, 0};
    pose.farFoot = {-18, 36, -34};
    return pose;
}

CFoxPose HalfCrouched() {
    CFoxPose pose = Standing();
    pose.hipY = -22;
    pose.lean = 10;
    pose.stretch = 0.95;
    pose.headY = -4;
    pose.ears = -8;
    pose.tail = 34;
    pose.nearArm = {-34, 14};
    pose.farArm = {-24, 16};
    return pose;
}

CFoxPose Crouched() {
    CFoxPose pose = HalfCrouched();
    pose.hipY = -52;
    pose.lean = 17;
    pose.stretch = 0.86;
    pose.headY = -12;
    pose.nod = -8;
    pose.ears = 16;
    pose.tail = 8;
    pose.tailTip = 26;
    pose.scarf = 4;
    pose.nearArm = {-68, 8};
    pose.farArm = {-56, 10};
    pose.smile = 0.2;
    pose.gaze = {0.5, 0.9};
    return pose;
}

CFoxPose TakingOff() {
    CFoxPose pose = Standing();
    pose.hipX = 10;
    pose.hipY = 26;
    pose.lean = 12;
    pose.stretch = 1.14;
    pose.headX = 6;
    pose.headY = 6;
    pose.nod = -10;
    pose.ears = 22;
    pose.tail = -34;
    pose.tailTip = -24;
    pose.scarf = -6;
    pose.nearArm = {72, 10};
    pose.farArm = {98, 8};
    pose.nearFoot = {-34, 4, -48};
    pose.farFoot = {-6, 4, -44};
    pose.smile = 0.8;
    pose.gaze = {0.5, 0.9};
    return pose;
}

CFoxPose Rising() {
    CFoxPose pose = TakingOff();
    pose.stretch = 1.09;
    pose.tail = -42;
    pose.tailTip = -30;
    pose.nearArm = {82, 8};
    pose.farArm = {112, 6};
    pose.nearFoot = {-40, 20, -40};
    pose.farFoot = {12, 38, -20};
    pose.smile = 1;
    return pose;
}

CFoxPose Floating() {
    CFoxPose pose = Rising();
    pose.hipX = 0;
    pose.hipY = 12;
    pose.lean = 2;
    pose.stretch = 1;
    pose.headX = 0;
    pose.headY = 4;
    pose.nod = -12;
    pose.ears = 6;
    pose.tail = 4;
    pose.tailTip = -26;
    pose.scarf = 60;
    pose.nearArm = {-112, -14};
    pose.farArm = {106, 8};
    pose.nearFoot = {-34, 46, -24};
    pose.farFoot = {34, 62, 14};
    pose.eyesOpen = 0;
    pose.eyesLaugh = true;
    return pose;
}

CFoxPose FloatingLonger() {
    CFoxPose pose = Floating();
    pose.ears = -12;
    pose.tail = 34;
    pose.tailTip = 18;
    pose.scarf = 92;
    pose.nearArm = {-124, -18};
    pose.farArm = {114, 6};
    return pose;
}

CFoxPose Falling() {
    CFoxPose pose = TakingOff();
    pose.lean = 0;
    pose.hipX = 0;
    pose.stretch = 1.08;
    pose.headX = 0;
    pose.headY = 6;
    pose.nod = 4;
    pose.ears = -20;
    pose.tail = 62;
    pose.tailTip = 34;
    pose.scarf = 116;
    pose.nearArm = {-92, -10};
    pose.farArm = {96, 10};
    pose.nearFoot = {-18, 4, 4};
    pose.farFoot = {28, 6, 12};
    pose.smile = 0.9;
    return pose;
}

CFoxPose Landed() {
    CFoxPose pose = Crouched();
    pose.hipY = -62;
    pose.lean = 8;
    pose.stretch = 0.82;
    pose.headY = -20;
    pose.nod = 10;
    pose.ears = -24;
    pose.tail = 58;
    pose.tailTip = 40;
    pose.scarf = 84;
    pose.nearArm = {44, 30};
    pose.farArm = {56, 30};
    pose.eyesOpen = 0;
    pose.smile = 0.5;
    return pose;
}

CFoxPose Overshooting() {
    CFoxPose pose = Standing();
    pose.hipY = 12;
    pose.stretch = 1.06;
    pose.headY = 6;
    pose.nod = -4;
    pose.ears = 16;
    pose.tail = 8;
    pose.tailTip = -6;
    pose.scarf = -4;
    pose.nearArm = {14, 16};
    pose.farArm = {24, 18};
    return pose;
}

CFoxPose Settled() {
    CFoxPose pose = Standing();
    pose.hipY = -5;
    pose.stretch = 0.985;
    pose.ears = -5;
    pose.tail = 30;
    pose.tailTip = 26;
    pose.scarf = 24;
    return pose;
}

CFoxPose LookingUp() {
    CFoxPose pose = Standing();
    pose.nod = -3;
    pose.smile = 0.3;
    pose.gaze = {0.1, 1.2};
    pose.eyesOpen = 1.08;
    pose.ears = 4;
    return pose;
}

CFoxPose Delighted() {
    CFoxPose pose = LookingUp();
    pose.eyesOpen = 0;
    pose.eyesLaugh = true;
    pose.smile = 0.85;
    pose.ears = -6;
    pose.tail = 36;
    pose.tailTip = 30;
    pose.nearArm = {26, 70};
    pose.farArm = {34, 74};
    return pose;
}

} // namespace

std::vector<CFoxPose> WalkPoses() {
    std::vector<CFoxPose> poses;
    for (int key = 0; key < walkKeys; ++key) {
        const auto at = [&](int offset) { return WalkKey((key + offset + walkKeys) % walkKeys); };
        poses.push_back(at(0));
        poses.push_back(Inbetween(at(-1), at(0), at(1), at(2)));
    }
    return poses;
}

std::vector<CJumpDrawing> JumpDrawings() {
    return {
        {.pose = WalkKey(0), .x = 0},
        {.pose = Closing(), .x = 14},
        {.pose = HalfCrouched(), .x = 28},
        {.pose = Crouched(), .frames = 4, .x = 29},
        {.pose = TakingOff(), .x = 36, .height = 16, .event = JumpEvent::TakeOff},
        {.pose = Rising(), .x = 44, .height = 78},
        {.pose = Floating(), .x = 51, .height = 112},
        {.pose = FloatingLonger(), .x = 58, .height = 113},
        {.pose = Falling(), .x = 65, .height = 62},
        {.pose = Landed(), .frames = 4, .x = 70, .event = JumpEvent::Landing},
        {.pose = Overshooting(), .x = 70},
        {.pose = Settled(), .x = 70, .event = JumpEvent::Rest},
        {.pose = LookingUp(), .frames = 4, .x = 70},
        {.pose = Delighted(), .frames = 4, .x = 70},
    };
}

} // namespace velmor::demo
