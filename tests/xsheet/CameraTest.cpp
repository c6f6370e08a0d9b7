#include "xsheet/CameraTrack.h"
#include "xsheet/MoveSelection.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <string>

using namespace velmor;

namespace {

// The selected ones of four levels, "c" for the camera.
std::string Selected(const CMoveSelection& selection) {
    std::string text;
    for (int level = 0; level < 4; ++level)
        text += selection.IsLevelSelected(level) ? std::to_string(level) : "";
    return text + (selection.IsCameraSelected() ? "c" : "");
}

} // namespace

TEST(CameraTrack, InputMovesRotatesAndZooms) {
    CCameraFrame camera{1, 2, std::numbers::pi / 2, 1};
    ApplyCameraInput(camera, InputMode::Move, 10, 0, 768, 576);
    EXPECT_EQ(camera, (CCameraFrame{1, 12, std::numbers::pi / 2, 1}));
    ApplyCameraInput(camera, InputMode::Rotate, -150, 99, 768, 576);
    EXPECT_DOUBLE_EQ(camera.rotation, std::numbers::pi / 2 - 1);
    ApplyCameraInput(camera, InputMode::Zoom, 96, 0, 768, 576);
    EXPECT_DOUBLE_EQ(camera.zoom, 1.0625);
    camera.zoom = 2;
    ApplyCameraInput(camera, InputMode::Zoom, 0, 576, 768, 576);
    EXPECT_DOUBLE_EQ(camera.zoom, 2.5);
    camera.zoom = 0;
    ApplyCameraInput(camera, InputMode::Zoom, 10, 10, 768, 576);
    EXPECT_EQ(camera.zoom, 0);
}

TEST(CameraTrack, DegreesAreCutOff) {
    EXPECT_EQ(RotationInDegrees(-0.5), -28);
    EXPECT_EQ(RotationInDegrees(std::numbers::pi), 180);
    EXPECT_EQ(RotationInDegrees(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(RotationInDegrees(std::nan("")), 0);
}

TEST(MoveSelection, OneAtATimeUnlessSeveralMayBeSelected) {
    CMoveSelection selection;
    EXPECT_EQ(Selected(selection), "c");
    selection.ToggleLevel(2, 4);
    EXPECT_EQ(Selected(selection), "2");
    selection.ToggleLevel(1, 4);
    EXPECT_EQ(Selected(selection), "1");
    selection.ToggleLevel(1, 4); // stays: something must move
    EXPECT_EQ(Selected(selection), "1");
    EXPECT_FALSE(selection.ToggleMultiple());
    selection.ToggleLevel(3, 4);
    selection.ToggleLevel(0, 4);
    EXPECT_EQ(Selected(selection), "013");
    selection.ToggleLevel(0, 4);
    EXPECT_EQ(Selected(selection), "13");
    EXPECT_TRUE(selection.ToggleMultiple());
    EXPECT_EQ(Selected(selection), "1");
    EXPECT_FALSE(selection.ToggleMultiple());
    selection.ToggleLevel(1, 4); // the last one stays
    EXPECT_EQ(Selected(selection), "1");
    selection.SelectCamera();
    EXPECT_EQ(Selected(selection), "c");
    EXPECT_FALSE(selection.ToggleMultiple());
    EXPECT_FALSE(selection.IsMultiple());
}

TEST(MoveSelection, FollowsItsLevels) {
    CMoveSelection selection;
    selection.ToggleMultiple();
    selection.ToggleLevel(0, 3);
    selection.ToggleLevel(2, 3);
    selection.SwapLevels(1, 2);
    EXPECT_EQ(Selected(selection), "01");
    selection.InsertLevel(3); // the new level keeps the flag of the old first one
    EXPECT_EQ(Selected(selection), "012");
    selection.DeleteLevel(1, 4);
    EXPECT_EQ(Selected(selection), "01");
    selection.InsertLevel(49);
    EXPECT_FALSE(selection.IsLevelSelected(49));
}
