#include "scene/CameraOperations.h"
#include "XSheetScene.h"
#include "scene/DialogRequests.h"
#include "scene/Settings.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace velmor::testing {

namespace {

class CCameraOperationsTest : public CXSheetScene {
protected:
    void OnUpdate(UpdateHint hint) override {
        CXSheetScene::OnUpdate(hint);
        framesShown.push_back(model.cursorFrame);
    }
    CCameraFrame& Camera(int frame = 0) { return scene.camera.MutableAt(frame); }

    CCameraOperations camera{Context(), cursor};
    std::vector<int> framesShown; // the cursor frame at each hint
};

} // namespace

TEST_F(CCameraOperationsTest, GettersAcceptTheFrameAfterTheLast) {
    scene.xsheet.SetFrameCount(10);
    Camera(10) = {1, 2, -0.5, 3};
    EXPECT_EQ(camera.GetCamPosX(10), 1);
    EXPECT_EQ(camera.GetCamPosY(10), 2);
    EXPECT_EQ(camera.GetCamRotDegree(10), -28);
    EXPECT_EQ(camera.GetCamZoom(10), 3);
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
    EXPECT_EQ(camera.GetCamPosX(11) + camera.GetCamPosY(-1) + camera.GetCamRotDegree(11) + camera.GetCamZoom(11),
              0);
    EXPECT_EQ(prompter.TakeMessages().size(), 4U);
    scene.xsheet.SetFrameCount(CXSheet::mostFramesInFile);
    EXPECT_EQ(camera.GetCamZoom(2000), 0); // the track ends there
}

TEST_F(CCameraOperationsTest, CameraMovesOnceForEveryLevel) {
    Camera().rotation = std::numbers::pi / 2;
    EXPECT_TRUE(camera.ProcessCamInput(10, 0));
    EXPECT_EQ(Camera(), (CCameraFrame{0, 10, std::numbers::pi / 2, 1}));
    EXPECT_EQ(TakeHints(), (Hints{8, 4}));

    SetLevels(4);
    Camera() = {};
    camera.SetMode(InputMode::Rotate);
    camera.StartCamInput();
    hints.clear();
    camera.EndCamInput(150, 70);
    EXPECT_DOUBLE_EQ(Camera().rotation, 4);
    EXPECT_EQ(TakeHints(), (Hints{8, 8, 8, 8, 4, 260}));
    Undo();
    EXPECT_EQ(Camera(), CCameraFrame{});

    SetLevels(1);
    camera.SetMode(InputMode::Zoom);
    camera.ProcessCamInput(96, 0);
    EXPECT_DOUBLE_EQ(Camera().zoom, 1.0625);
    SetLevels(0);
    EXPECT_FALSE(camera.ProcessCamInput(96, 0));
}

TEST_F(CCameraOperationsTest, OneToOneTheCameraMovesOnceHoweverManyLevels) {
    for (const int levels : {4, 0}) {
        SetLevels(levels);
        Camera() = {};
        camera.ToggleOneToOne();
        EXPECT_TRUE(camera.MovesOneToOne());
        hints.clear();
        camera.StartCamInput();
        camera.ProcessCamInput(10, 0);
        camera.EndCamInput(0, 5);
        EXPECT_EQ(Camera(), (CCameraFrame{10, 5, 0, 1}));
        EXPECT_EQ(TakeHints(), (Hints{8, 4, 8, 4, 260}));
        Undo();
        EXPECT_EQ(Camera(), CCameraFrame{});
        camera.ToggleOneToOne();
    }
    SetLevels(2);
    camera.ProcessCamInput(10, 0);
    EXPECT_EQ(Camera().panX, 20) << "and as ever without it";
    camera.ToggleOneToOne();
    Put(1, 0, "1");
    cursor.SetLevelCanMove(1);
    EXPECT_TRUE(camera.ProcessCamInput(10, 0));
    EXPECT_EQ(scene.xsheet.Cell(1, 0).PosX(), 394) << "levels move as they do";
    EXPECT_EQ(Camera().panX, 20);
}

TEST_F(CCameraOperationsTest, ADragIsOneStepOfUndoAndAClickIsNone) {
    SetLevels(1, 10);
    prompter.Answer(5);
    sheet.AddFrames();
    for (const InputMode mode : {InputMode::Move, InputMode::Rotate, InputMode::Zoom}) {
        model.inputMode = mode;
        camera.StartCamInput();
        camera.EndCamInput(0, 0);
    }
    cursor.SetLevelCanMove(0); // of which nothing is to be seen
    camera.StartCamInput();
    camera.EndCamInput(30, 0);
    Undo();
    EXPECT_EQ(scene.xsheet.FrameCount(), 10) << "the frames were still to be taken back";

    Put(0, 0, "1");
    cursor.GoTo({0, 0});
    model.inputMode = InputMode::Move;
    for (int drag = 0; drag < 2; ++drag) {
        camera.StartCamInput();
        camera.ProcessCamInput(0, 0);
        camera.ProcessCamInput(10, 0);
        camera.ProcessCamInput(10, 0);
        camera.EndCamInput(0, 0);
    }
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 40);
    Undo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 20);
}

TEST_F(CCameraOperationsTest, MovesOfOnePixelInARowAreOneStep) {
    SetLevels(1, 10);
    Put(0, 0, "1");
    cursor.SetLevelCanMove(0);
    model.inputMode = InputMode::Move;
    const auto drag = [this](int pixels) {
        camera.StartCamInput();
        camera.EndCamInput(pixels, 0);
    };
    drag(20);
    for (int pixel = 0; pixel < 5; ++pixel)
        drag(1);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 25);
    Undo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 20);
    Redo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384 + 25);
    Undo();
    Undo();
    EXPECT_EQ(scene.xsheet.Cell(0, 0).PosX(), 384);
    EXPECT_FALSE(CanUndo(model));
}

TEST_F(CCameraOperationsTest, MovesTheUsedCellsOfSelectedLevels) {
    SetLevels(3);
    Put(0, 0, "1");
    Put(1, 0, "2");
    cursor.ToggleMultipleMoveSelection();
    cursor.SetLevelCanMove(1);
    cursor.SetLevelCanMove(2); // empty there
    hints.clear();
    Camera().rotation = std::numbers::pi / 2;
    EXPECT_TRUE(camera.ProcessCamInput(10, 0));
    camera.SetMode(InputMode::Rotate);
    camera.ProcessCamInput(150, 0);
    camera.SetMode(InputMode::Zoom);
    camera.ProcessCamInput(10, 0); // as the mouse went, not turned
    const CCellTransform moved = scene.xsheet.Cell(1, 0).Transform();
    EXPECT_EQ(moved.posX, 384);
    EXPECT_EQ(moved.posY, 298);
    EXPECT_DOUBLE_EQ(moved.rotation, 1);
    EXPECT_DOUBLE_EQ(moved.scaleX, 1.05);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).Transform(), (CCellTransform{384, 288, 1, 1, 0}));
    EXPECT_EQ(TakeHints(), (Hints{4, 12, 4, 12, 4}));

    model.cursorFrame = 1; // nothing used there
    EXPECT_FALSE(camera.ProcessCamInput(10, 0));
    camera.EndCamInput(10, 0);
    EXPECT_EQ(TakeHints(), Hints{});
}

TEST_F(CCameraOperationsTest, SurvivesDamagedTracksAndHugeMotion) {
    constexpr int huge = std::numeric_limits<int>::max();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    SetLevels(2);
    for (const CCameraFrame& damaged : {CCameraFrame{nan, nan, nan, nan}, CCameraFrame{0, 0, HUGE_VAL, 0},
                                        CCameraFrame{1e308, -1e308, 1e308, 1e308}, CCameraFrame{}})
        for (const InputMode mode : {InputMode::Move, InputMode::Rotate, InputMode::Zoom}) {
            Put(0, 0, "1").SetTransform({damaged.panX, 0, damaged.zoom, 0, damaged.rotation});
            model.moveSelection.Reset();
            model.inputMode = mode;
            for (int step = 0; step < 2; ++step) {
                Camera() = damaged;
                EXPECT_TRUE(camera.ProcessCamInput(huge, -huge - 1));
                camera.GetCamRotDegree(0);
                cursor.SetLevelCanMove(0);
            }
        }
}

TEST_F(CCameraOperationsTest, NothingWorksWithoutAScene) {
    model.sceneOpen = false;
    model.selection.lastFrame = 10;
    model.motionPathSetup = 2;
    camera.StartCamInput();
    EXPECT_FALSE(camera.ProcessCamInput(1, 1));
    camera.EndCamInput(1, 1);
    EXPECT_EQ(camera.GetMotionPathSetup(), 0);
    EXPECT_EQ(prompter.TakeMessages().size(), 4U); // one each
    camera.SetMode(InputMode::Zoom);
    camera.EditCameraData();
    camera.Inbetween();
    camera.CheckLines();
    EXPECT_FALSE(prompter.lastRequest.has_value());
    EXPECT_FALSE(CanUndo(model));
    EXPECT_EQ(model.inputMode, InputMode::Move);
    EXPECT_EQ(hints, Hints{});
}

TEST_F(CCameraOperationsTest, MotionPathSetupIsKeptWhenItChanges) {
    prompter.Answer(1); // as it is
    camera.ChooseMotionPaths();
    prompter.Answer(3);
    camera.ChooseMotionPaths();
    EXPECT_EQ(TakeHints(), Hints{});
    prompter.Answer(2);
    camera.ChooseMotionPaths();
    EXPECT_EQ(camera.GetMotionPathSetup(), 2);
    EXPECT_EQ(Get(profile, setting::motionPathSetup), 2);
    camera.ToggleAntialias();
    EXPECT_TRUE(model.cameraAntialias);
    EXPECT_EQ(TakeHints(), (Hints{4, 260}));
}

TEST_F(CCameraOperationsTest, EditsTheCursorFramesCamera) {
    model.cursorFrame = 2;
    prompter.Answer(CCameraForm{4, 5, 150, {1, 0}});
    camera.EditCameraData();
    EXPECT_EQ(Camera(2), (CCameraFrame{4, 5, 2 * std::numbers::pi, 1.5}));
    EXPECT_EQ(TakeHints(), Hints{268});
    Undo();
    EXPECT_EQ(Camera(2), CCameraFrame{});
}

TEST_F(CCameraOperationsTest, InbetweensTheCamera) {
    model.selection = {0, 0, 10, 14};
    Camera(10).zoom = 2;
    Camera(14).panX = 100;
    camera.Inbetween(); // cancelled
    EXPECT_FALSE(CanUndo(model));
    prompter.Answer(CInbetweenAnswer{true, {0, 0}});
    camera.Inbetween();
    EXPECT_NEAR(Camera(12).panX, 50, 1e-3);
    EXPECT_EQ(TakeHints(), Hints{12});
    prompter.Answer(CInbetweenAnswer{true, {2, 4}});
    camera.Inbetween();
    EXPECT_EQ(Camera(11).zoom, 2);
    EXPECT_EQ(Camera(14).zoom, 2);
    EXPECT_EQ(Camera(15).zoom, 1);
    EXPECT_EQ(TakeHints(), Hints{268});
    EXPECT_EQ(Get(profile, setting::lastCameraInbetweenSource), 2);
    EXPECT_EQ(Get(profile, setting::lastCameraInbetweenType), 4);
}

TEST_F(CCameraOperationsTest, LineCheckShowsFramesAndComesBack) {
    cursor.SetCursorY(4);
    hints.clear();
    framesShown.clear();
    prompter.Answer(100);
    prompter.Answer(101); // beyond the slider
    camera.CheckLines();
    const CLineCheckRequest request = std::any_cast<CLineCheckRequest>(prompter.lastRequest);
    EXPECT_EQ(request.frameCount, 100);
    EXPECT_EQ(request.initial, 5);
    EXPECT_EQ(hints, (Hints{4, 8, 4}));
    EXPECT_EQ(framesShown, (std::vector<int>{99, 4, 4}));
    EXPECT_EQ(model.cursorFrame, 4);
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
}

} // namespace velmor::testing
