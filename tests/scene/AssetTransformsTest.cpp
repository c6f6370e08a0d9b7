#include "scene/AssetTransforms.h"

#include "AssetScene.h"
#include "platform/process/Interrupt.h"
#include "scene/Settings.h"

#include <sys/resource.h>

namespace velmor::testing {

namespace {

class AssetTransforms : public CAssetScene {
protected:
    void Rotate(CRotationValues values) {
        prompter.Answer(values);
        transforms.RotateSelected();
    }
    void Flip(FlipDirection direction) {
        prompter.Answer(direction);
        transforms.FlipSelected();
    }
    /// Where the red corner has gone to.
    std::pair<int, int> RedPixel(const Path& file) {
        const CCelImg image = Load(file);
        for (int y = 0; y < image.Height(); ++y)
            for (int x = 0; x < image.Width(); ++x)
                if (image.ColorAt(x, y) == red)
                    return {x, y};
        return {-1, -1};
    }
};

using Place = std::pair<int, int>;

} // namespace

TEST_F(AssetTransforms, NeedImages) {
    Select(SourceMode::Sounds, {"Boo"});
    transforms.RotateSelected();
    transforms.ColorKeySelected();
    transforms.FlipSelected();
    Select(SourceMode::Cels, {});
    transforms.RotateSelected();
    transforms.FlipSelected();
    model.folderName.clear();
    Select(SourceMode::Cels, {"1"});
    transforms.RotateSelected();
    transforms.ColorKeySelected();
    transforms.FlipSelected();
    model.sourceMode = static_cast<SourceMode>(4);
    transforms.RotateSelected();
    model.sceneOpen = false;
    transforms.RotateSelected();
    transforms.FlipSelected();
    transforms.ColorKeyEdited(red);
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"Internal Error: Sound is shown in OnAssetsFlip",
                                              "Internal Error: Nothing selected in OnAssetsFlip",
                                              "Internal Error: Folder not open in OnAssetsFlip",
                                              "Internal Error : Invalid source show mode in OnAssetsRotatecels",
                                              "Internal Error: Scene not open in OnAssetsFlip",
                                              "Internal Error : no picture image loaded in CCelImg::ColorKey"}));
    EXPECT_FALSE(prompter.lastRequest.has_value());
    EXPECT_TRUE(hints.empty() && prompter.progressTexts.empty());
}

TEST_F(AssetTransforms, RotateTheWayTheDialogSays) {
    MakeCel(CelFile("1"), red);
    Select(SourceMode::Cels, {"1"});
    transforms.RotateSelected(); // cancelled
    EXPECT_EQ(RedPixel(CelFile("1")), Place(0, 0));
    Rotate({RotationKind::Clockwise90, 0});
    EXPECT_EQ(RedPixel(CelFile("1")), Place(0, 19)) << "bottom left goes to top left";
    EXPECT_EQ(Load(CelFile("1")).Width(), 10);
    Rotate({RotationKind::CounterClockwise90, 0});
    EXPECT_EQ(RedPixel(CelFile("1")), Place(0, 0));
    Rotate({RotationKind::HalfTurn, 0});
    EXPECT_EQ(RedPixel(CelFile("1")), Place(19, 9));
    Rotate({RotationKind::Free, 90});
    EXPECT_EQ(RedPixel(CelFile("1")), Place(0, 19));
    EXPECT_EQ(hints, Hints{}) << "nothing that a view shows has changed";
}

TEST_F(AssetTransforms, CellsTakeTheNewSize) {
    MakeCel(CelFile("1"), red);
    MakeCel(model.Paths().CelFile("Cat", "1"), red);
    Expose(0, 0, "Man", "1");
    Expose(0, 1, "Cat", "1");
    model.clipboard = scene.xsheet.Copy({0, 0, 0, 1});
    Select(SourceMode::Cels, {"1"});
    Rotate({RotationKind::Clockwise90, 0});
    EXPECT_EQ(scene.xsheet.Cell(0, 0).Size(), (CSize{10, 20}));
    EXPECT_EQ(scene.xsheet.Cell(0, 1).Size(), (CSize{20, 10}));
    EXPECT_EQ(model.clipboard.cells[0], scene.xsheet.Cell(0, 0));
    EXPECT_EQ(model.clipboard.cells[1], scene.xsheet.Cell(0, 1));
    EXPECT_EQ(TakeHints(), Hints{260});
}

TEST_F(AssetTransforms, FlipCelsAndPictures) {
    MakeCel(CelFile("1"), red);
    MakePicture("Sky", red);
    Expose(0, 0, "_Pictures_", "Sky");
    Select(SourceMode::Cels, {"1"});
    Flip(FlipDirection::Horizontal);
    EXPECT_EQ(RedPixel(CelFile("1")), Place(19, 0));
    EXPECT_EQ(hints, Hints{});
    Select(SourceMode::Pictures, {"Sky"});
    Flip(FlipDirection::Vertical);
    EXPECT_EQ(RedPixel(PictureFile("Sky")), Place(0, 9));
    EXPECT_EQ(TakeHints(), Hints{260});
}

TEST_F(AssetTransforms, ADamagedFileEndsTheBatch) {
    for (const char* name : {"1", "2", "3"})
        MakeCel(CelFile(name), red);
    Expose(0, 0, "Man", "1");
    std::filesystem::resize_file(CelFile("2"), 40);
    const std::vector<std::uint8_t> damaged = ReadBytes(CelFile("2"));
    Select(SourceMode::Cels, {"1", "2", "3"});
    Rotate({RotationKind::Clockwise90, 0});
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"Unable to read cel file :: Truncated cel file:: Reading cel file ->" + Utf8Of(CelFile("2"))});
    EXPECT_EQ(scene.xsheet.Cell(0, 0).Size(), (CSize{10, 20}));
    EXPECT_EQ(ReadBytes(CelFile("2")), damaged);
    EXPECT_EQ(RedPixel(CelFile("3")), Place(0, 0));
    EXPECT_EQ(TakeHints(), Hints{260});
}

TEST_F(AssetTransforms, WhatCannotBeTurnedOrWrittenStays) {
    MakePicture("Long", red, 30000, 2);
    Select(SourceMode::Pictures, {"Long"});
    Rotate({RotationKind::Free, std::numeric_limits<double>::quiet_NaN()});
    SurviveFileSizeLimit();
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit nothing{0, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &nothing);
    Flip(FlipDirection::Horizontal);
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Invalid cel dimensions\nInternal Error :: Rotating cel file ->" + Utf8Of(PictureFile("Long")),
                     "Problem writing file: Disk Full? or ReadOnly?:: Writing cel/picture file ->" +
                         Utf8Of(PictureFile("Long"))}));
    EXPECT_EQ(RedPixel(PictureFile("Long")), Place(0, 0));
    EXPECT_EQ(hints, Hints{});
}

TEST_F(AssetTransforms, TheEditorShowsWhatHasBecomeOfItsImage) {
    MakeCel(CelFile("1"), red);
    Edit(CelFile("1"), blue);
    Select(SourceMode::Cels, {"1"});
    Flip(FlipDirection::Horizontal);
    EXPECT_EQ(Load(CelFile("1")).ColorAt(18, 0), blue) << "edits that were not saved yet are not lost";
    EXPECT_EQ(model.celImg.ColorAt(18, 0), blue);
    EXPECT_EQ(model.celImg.FilePath(), CelFile("1"));
    EXPECT_FALSE(model.celImg.IsModified());
    EXPECT_EQ(TakeHints(), Hints{1});

    model.celImg.SetModified(true);
    PutInTheWay(CelFile("1"));
    Flip(FlipDirection::Horizontal);
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_TRUE(model.celImg.IsModified());
    EXPECT_EQ(model.celImg.ColorAt(18, 0), blue);
}

TEST_F(AssetTransforms, KeyPicturesAndRememberHow) {
    for (const char* name : {"A", "B", "C"})
        MakePicture(name, red);
    Expose(0, 0, "_Pictures_", "B");
    Select(SourceMode::Pictures, {"A", "B", "C"});
    transforms.ColorKeySelected();
    EXPECT_TRUE(prompter.progressTexts.empty());
    prompter.Answer(CColorKeyValues{red, 256, 2, 1});
    prompter.Answer(CColorKeyValues{red, 7, 2, 1});
    prompter.stopAtReport = 3; // the second picture is done
    transforms.ColorKeySelected();
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_EQ(prompter.progressTexts,
              (Texts{"Percent Complete 0 %", "Percent Complete 33 %", "Percent Complete 66 %"}));
    EXPECT_EQ(Load(PictureFile("B")).ColorAt(0, 0), (CColor{0, 0, 0, 0}));
    EXPECT_EQ(Load(PictureFile("B")).ColorAt(1, 0), white);
    EXPECT_EQ(Load(PictureFile("C")).ColorAt(0, 0), red);
    EXPECT_EQ(TakeHints(), Hints{260});

    transforms.ColorKeySelected();
    const CColorKeyValues initial = std::any_cast<CColorKeyRequest>(prompter.lastRequest).initial;
    EXPECT_EQ(std::pair(initial.tolerance, initial.process), std::pair(7, 2));
    Set(profile, setting::lastColorKeyTolerance, -3);
    Set(profile, setting::lastColorKeyProcess, 3);
    transforms.ColorKeySelected();
    EXPECT_EQ(std::any_cast<CColorKeyRequest>(prompter.lastRequest).initial.tolerance, 0);
    EXPECT_EQ(std::any_cast<CColorKeyRequest>(prompter.lastRequest).initial.process, 2);
}

TEST_F(AssetTransforms, ACelAmongThePicturesIsNotKeyed) {
    MakeCel(PictureFile("Fake"), red);
    Select(SourceMode::Pictures, {"Fake"});
    prompter.Answer(CColorKeyValues{red});
    transforms.ColorKeySelected();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Internal Error : no picture image loaded in CCelImg::ColorKey\n"
                                             "Internal Error :: ColorKey ->" +
                                             Utf8Of(PictureFile("Fake"))});
    EXPECT_EQ(RedPixel(PictureFile("Fake")), Place(0, 0));
}

TEST_F(AssetTransforms, ThePictureUnderEditIsKeyedInMemory) {
    MakePicture("Sky", red);
    model.celImg = Load(PictureFile("Sky"));
    prompter.Answer(CColorKeyValues{red, 0, 0, 2});
    transforms.ColorKeyEdited(blue);
    EXPECT_EQ(std::any_cast<CColorKeyRequest>(prompter.lastRequest).initial.color, blue);
    EXPECT_EQ(model.celImg.ColorAt(0, 0), (CColor{255, 255, 255, 0}));
    EXPECT_TRUE(model.celImg.IsModified());
    EXPECT_EQ(Load(PictureFile("Sky")).ColorAt(0, 0), red);
    EXPECT_EQ(TakeHints(), Hints{1});
}

} // namespace velmor::testing
