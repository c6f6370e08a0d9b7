#include "app/demo/DemoScene.h"

#include "app/demo/Animator.h"
#include "app/demo/DemoColors.h"
#include "app/demo/FoxDrawing.h"
#include "app/demo/ImportFiles.h"
#include "app/demo/PropDrawings.h"
#include "platform/files/ClaimedFile.h"
#include "platform/files/SystemPaths.h"
#include "scene/ImportOperations.h"
#include "scene/SoundOperations.h"

#include <array>
#include <span>

namespace velmor::demo {

namespace {

constexpr int frameCount = 100;
constexpr int lastFrame = frameCount - 1;

// Levels, the topmost last: a new level goes on top.
constexpr const char* meadowLevel = "Meadow";
constexpr const char* farCloudLevel = "Far cloud";
constexpr const char* cloudLevel = "Cloud";
constexpr const char* shadowLevel = "Shadow";
constexpr const char* foxLevel = "Fox";
constexpr const char* butterflyLevel = "Butterfly";
constexpr const char* plantLevel = "Plants";
constexpr const char* titleLevel = "Title";

// The walk: whole cycles on ones, so that the feet do not slide, from `walkStart` to the right.
constexpr int walkDrawings = 16;
constexpr int walkFrames = 64;
constexpr int stepFrames = walkDrawings / 2;
constexpr double foxScale = 0.5;
constexpr double walkStart = 150;
constexpr double walkEnd = walkStart + walkFrames * foxStride * foxScale;
constexpr double ground = 62; ///< row of the frame where the fox's soles are

/// A key of a level that is moved: the cel's middle and its scale.
struct CLevelKey {
    int frame;
    double x, y, scale;
};

CCellDataForm FormOf(const CLevelKey& key) {
    CCellDataForm form;
    form.posX = key.x;
    form.posY = key.y;
    form.scaleX = form.scaleY = key.scale;
    return form;
}

/// The middle of the fox's cel when the ground point is there.
CLevelKey FoxKey(int frame, double x, double height) {
    const CSpot middle{foxCel.width / 2.0 - foxGround.x, foxCel.height / 2.0 - foxGround.y};
    return {frame, x + middle.x * foxScale, ground + height + middle.y * foxScale, foxScale};
}

/// Edits the keys and inbetweens position and scale from each to the next.
void Move(CAnimator& animator, const std::string& level, std::span<const CLevelKey> keys, InbetweenType type) {
    for (const CLevelKey& key : keys)
        animator.EditCel(level, key.frame, FormOf(key));
    for (std::size_t i = 1; i < keys.size(); ++i) {
        const CInbetweenKeys span{keys[i - 1].frame, keys[i].frame};
        animator.Inbetween(level, span, LevelSource::Position, type);
        animator.Inbetween(level, span, LevelSource::Zoom, type);
    }
}

/// Gives a level one transparency and one blur from `first` to `last`.
void Soften(CAnimator& animator, const std::string& level, CInbetweenKeys span, double transparency, double blur) {
    animator.SetTransparency(level, span.first, transparency);
    animator.Inbetween(level, span, LevelSource::Transparency, InbetweenType::Constant);
    animator.SetBlur(level, span.first, blur);
    animator.Inbetween(level, span, LevelSource::Blur, InbetweenType::Constant);
}

std::vector<std::string> Numbers(int first, int last) {
    std::vector<std::string> names;
    for (int number = first; number <= last; ++number)
        names.push_back(std::to_string(number));
    return names;
}

class CDemoScene {
public:
    CDemoScene(CAnimator& animator, const CClaimedFolder& files) : m_animator(animator), m_files(files) {}

    bool Make() {
        m_animator.NewScene(demoScene, frameCount);
        if (!m_animator.Succeeded())
            return false;
        AddLevels();
        PaintMeadow();
        AddClouds();
        AddFox();
        AddShadow();
        AddButterfly();
        AddPlants();
        AddTitle();
        MoveCamera();
        AddSounds();
        m_animator.SaveAll();
        return m_animator.Succeeded();
    }

private:
    void AddLevels() {
        m_animator.RenameLevel("Default", meadowLevel);
        for (const char* level :
             {farCloudLevel, cloudLevel, shadowLevel, foxLevel, butterflyLevel, plantLevel, titleLevel})
            m_animator.AddLevel(level);
    }

    /// One cel for the whole scene.
    void HoldThroughout(const std::string& level, const std::string& cel) {
        m_animator.Drop(SourceMode::Cels, {cel}, level, 0, frameCount);
    }

    void PaintMeadow() {
        if (!WriteTarga(m_files.File("meadow.tga"), PaintLandscape())) {
            m_animator.Fail("The painted meadow could not be written.");
            return;
        }
        if (!m_animator.Document().Imports().ImportPicture(m_files.File("meadow.tga"), "Meadow"))
            return;
        m_animator.Drop(SourceMode::Pictures, {"Meadow"}, meadowLevel, 0, frameCount);
        // The picture's left edge is the frame's at rest, and 30 of its rows lie below the frame.
        const std::array keys = {
            CLevelKey{0, landscapeSize.width / 2.0, landscapeSize.height / 2.0 - 30, 1},
            CLevelKey{lastFrame, landscapeSize.width / 2.0, landscapeSize.height / 2.0 - 30, 1}};
        Move(m_animator, meadowLevel, keys, InbetweenType::Constant);
    }

    /// Clouds go along with the camera for a part of its way, as what is far away seems to.
    void AddClouds() {
        m_animator.NewFolder("Clouds", CloudColors());
        m_animator.NewCel(cloudCel, DrawCloud);
        HoldThroughout(cloudLevel, "1");
        HoldThroughout(farCloudLevel, "1");
        Move(m_animator, cloudLevel,
             std::array{CLevelKey{0, 800, 496, 0.66}, CLevelKey{lastFrame, 1130, 488, 0.66}},
             InbetweenType::SlowOutSlowIn);
        Move(m_animator, farCloudLevel, std::array{CLevelKey{0, 70, 400, 0.4}, CLevelKey{lastFrame, 560, 404, 0.4}},
             InbetweenType::SlowOutSlowIn);
        Soften(m_animator, cloudLevel, {0, lastFrame}, 12, 3);
        Soften(m_animator, farCloudLevel, {0, lastFrame}, 35, 4);
    }

    void AddFox() {
        m_animator.NewFolder(demoFolder, FoxColors());
        for (const CFoxPose& pose : WalkPoses())
            m_animator.NewCel(foxCel, [&](CCelImg& cel, const CPalette& palette) { DrawFox(cel, palette, pose); });
        for (const CJumpDrawing& drawing : m_jump)
            m_animator.NewCel(foxCel,
                              [&](CCelImg& cel, const CPalette& palette) { DrawFox(cel, palette, drawing.pose); });
        for (int frame = 0; frame < walkFrames; frame += walkDrawings)
            m_animator.Drop(SourceMode::Cels, Numbers(1, walkDrawings), foxLevel, frame, 1);
        const int lastStep = walkFrames - 1;
        Move(m_animator, foxLevel,
             std::array{FoxKey(0, walkStart, 0), FoxKey(lastStep, walkStart + lastStep * foxStride * foxScale, 0)},
             InbetweenType::Linear);
        ExposeJump();
    }

    /// The drawings of the jump stand still in their place for as long as they are held.
    void ExposeJump() {
        int frame = walkFrames;
        int cel = walkDrawings;
        for (const CJumpDrawing& drawing : m_jump) {
            m_animator.Drop(SourceMode::Cels, {std::to_string(++cel)}, foxLevel, frame, drawing.frames);
            const int last = frame + drawing.frames - 1;
            Move(m_animator, foxLevel,
                 std::array{FoxKey(frame, walkEnd + drawing.x, drawing.height),
                            FoxKey(last, walkEnd + drawing.x, drawing.height)},
                 InbetweenType::Constant);
            frame += drawing.frames;
        }
    }

    /// The first frame of the drawing at which something happens.
    int FrameOf(JumpEvent event) const {
        int frame = walkFrames;
        for (const CJumpDrawing& drawing : m_jump) {
            if (drawing.event == event)
                break;
            frame += drawing.frames;
        }
        return frame;
    }

    /// Below the fox; while it leaps the shadow is smaller and fainter.
    void AddShadow() {
        m_animator.NewFolder("Shadow", ShadowColors());
        m_animator.NewCel(shadowCel, DrawShadow);
        HoldThroughout(shadowLevel, "1");
        const int takeOff = FrameOf(JumpEvent::TakeOff);
        const int landing = FrameOf(JumpEvent::Landing);
        const int top = (takeOff + landing) / 2;
        constexpr double row = ground + 2;
        constexpr double jumpEnd = walkEnd + 70;
        Move(m_animator, shadowLevel,
             std::array{CLevelKey{0, walkStart, row, 0.42}, CLevelKey{walkFrames, walkEnd, row, 0.42}},
             InbetweenType::Linear);
        Move(m_animator, shadowLevel,
             std::array{CLevelKey{walkFrames, walkEnd, row, 0.42}, CLevelKey{takeOff, walkEnd + 32, row, 0.42}},
             InbetweenType::SlowIn);
        Move(m_animator, shadowLevel,
             std::array{CLevelKey{takeOff, walkEnd + 32, row, 0.42}, CLevelKey{top, walkEnd + 54, row, 0.26},
                        CLevelKey{landing, jumpEnd, row, 0.46}},
             InbetweenType::SlowOutSlowIn);
        Move(m_animator, shadowLevel,
             std::array{CLevelKey{landing, jumpEnd, row, 0.46}, CLevelKey{lastFrame, jumpEnd, row, 0.42}},
             InbetweenType::SlowIn);
        Soften(m_animator, shadowLevel, {0, lastFrame}, 55, 4);
        m_animator.SetTransparency(shadowLevel, top, 80);
        for (const CInbetweenKeys& span : {CInbetweenKeys{takeOff, top}, CInbetweenKeys{top, landing}}) {
            m_animator.Inbetween(shadowLevel, span, LevelSource::Transparency, InbetweenType::SlowOutSlowIn);
        }
    }

    /// Flutters ahead of the fox on twos, up and away from its leap, and comes to sit on its head.
    void AddButterfly() {
        m_animator.NewFolder("Butterfly", ButterflyColors());
        for (const double spread : WingBeat())
            m_animator.NewCel(butterflyCel, [spread](CCelImg& cel, const CPalette& palette) {
                DrawButterfly(cel, palette, spread);
            });
        constexpr int beatFrames = 8;
        for (int frame = 0; frame < frameCount; frame += beatFrames)
            m_animator.Drop(SourceMode::Cels, Numbers(1, 4), butterflyLevel, frame, 2);
        const int rest = FrameOf(JumpEvent::Rest);
        m_animator.Drop(SourceMode::Cels, {"1", "2"}, butterflyLevel, rest, (frameCount - rest) / 2);
        constexpr double size = 0.38;
        const CSpot perch = CSpot{walkEnd + 70, ground} + foxCrown * foxScale + CSpot{5, 14};
        Move(m_animator, butterflyLevel,
             std::array{CLevelKey{0, 318, 300, size}, CLevelKey{10, 372, 262, size}, CLevelKey{20, 470, 318, size},
                        CLevelKey{30, 540, 266, size}, CLevelKey{40, 640, 322, size}, CLevelKey{50, 716, 278, size},
                        CLevelKey{60, 778, 330, size}, CLevelKey{68, 800, 344, size}, CLevelKey{74, 796, 372, size},
                        CLevelKey{80, 838, 452, size}, CLevelKey{85, 846, 400, size},
                        CLevelKey{rest, perch.x, perch.y, size}, CLevelKey{lastFrame, perch.x, perch.y, size}},
             InbetweenType::SlowOutSlowIn);
    }

    /// Out of focus in front of everything; they pass faster than the ground.
    void AddPlants() {
        m_animator.NewFolder("Plants", PlantColors());
        m_animator.NewCel(plantCel, DrawPlants);
        HoldThroughout(plantLevel, "1");
        Move(m_animator, plantLevel, std::array{CLevelKey{0, 704, 92, 0.96}, CLevelKey{lastFrame, 560, 80, 0.96}},
             InbetweenType::SlowOutSlowIn);
        m_animator.SetBlur(plantLevel, 0, 2);
        m_animator.SetBlur(plantLevel, lastFrame, 6);
        m_animator.Inbetween(plantLevel, {0, lastFrame}, LevelSource::Blur, InbetweenType::SlowOutSlowIn);
    }

    void AddTitle() {
        constexpr int leaving = 18;
        constexpr int gone = 36;
        m_animator.NewFolder("Title", TitleColors());
        m_animator.NewCel(titleCel, DrawTitle);
        m_animator.Drop(SourceMode::Cels, {"1"}, titleLevel, 0, gone);
        Move(m_animator, titleLevel,
             std::array{CLevelKey{0, 420, 452, 0.62}, CLevelKey{leaving, 470, 462, 0.64},
                        CLevelKey{gone - 1, 580, 512, 0.7}},
             InbetweenType::SlowOut);
        m_animator.SetTransparency(titleLevel, leaving, 0);
        m_animator.SetTransparency(titleLevel, gone - 1, 100);
        m_animator.Inbetween(titleLevel, {leaving, gone - 1}, LevelSource::Transparency, InbetweenType::SlowOut);
    }

    /// Follows the fox, waits while it crouches, and closes in on its face.
    void MoveCamera() {
        constexpr int arrived = 66;
        constexpr int closingIn = 76;
        const CCameraForm follow{-345, 8, 108, {}};
        m_animator.EditCamera(0, {0, 0, 100, {}});
        m_animator.EditCamera(arrived, follow);
        m_animator.EditCamera(closingIn, follow);
        m_animator.EditCamera(lastFrame, {-368, 52, 158, {}});
        for (const CameraSource source : {CameraSource::Pan, CameraSource::Zoom}) {
            m_animator.InbetweenCamera({0, arrived}, source, InbetweenType::SlowOutSlowIn);
            m_animator.InbetweenCamera({arrived, closingIn}, source, InbetweenType::Constant);
            m_animator.InbetweenCamera({closingIn, lastFrame}, source, InbetweenType::SlowOutSlowIn);
        }
    }

    void AddSounds() {
        for (const CDemoSound& sound : MakeSounds()) {
            const Path file = m_files.File(sound.name + ".wav");
            if (!WriteWave(file, sound.samples)) {
                m_animator.Fail("A sound could not be written.");
                return;
            }
            if (!m_animator.Document().Sounds().ImportSound(file, sound.name))
                return;
        }
        int frame = 0;
        for (const std::string& step : StepTune()) {
            m_animator.DropSound(step, frame);
            frame += stepFrames;
        }
        m_animator.DropSound(leapSound, FrameOf(JumpEvent::TakeOff));
        m_animator.DropSound(landingSound, FrameOf(JumpEvent::Landing));
        m_animator.DropSound(chimeSound, FrameOf(JumpEvent::Rest));
    }

    CAnimator& m_animator;
    const CClaimedFolder& m_files;
    std::vector<CJumpDrawing> m_jump = JumpDrawings();
};

} // namespace

bool MakeDemoScene(CAnimator& animator) {
    const std::optional<CClaimedFolder> files = CClaimedFolder::Make(TemporaryFolder());
    if (!files) {
        animator.Fail("There is no folder for temporary files.");
        return false;
    }
    return CDemoScene(animator, *files).Make();
}

} // namespace velmor::demo
