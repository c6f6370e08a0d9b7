#include "scene/AssetOperations.h"
#include "scene/EditedImage.h"

#include "AssetScene.h"
#include "scene/NewCelSize.h"
#include "scene/Settings.h"

namespace velmor::testing {

namespace {

class AssetOperations : public CAssetScene {
protected:
    /// Cels 3 and 5 (red and blue), both exposed on two levels, "5" of another folder and held copies as well.
    void ExposeThreeAndFive() {
        SetLevels(2);
        MakeCel(CelFile("3"), red);
        MakeCel(CelFile("5"), blue);
        MakeCel(model.Paths().CelFile("Cat", "5"), white);
        Expose(0, 0, "Man", "3");
        Expose(0, 1, "Man", "5");
        Expose(1, 2, "Man", "5");
        Expose(1, 3, "Cat", "5");
        model.clipboard = scene.xsheet.Copy({0, 0, 0, 1});
    }
    /// The sheet as it is, and the copied cells.
    std::string EverythingExposed() {
        const std::string now = Row(0, 2) + Row(1, 4);
        std::string copied;
        for (const CXSheetCell& cel : model.clipboard.cells)
            copied += cel.IsUsed() ? cel.CelName() : ".";
        return now + " " + copied;
    }
    void PlaceSounds() {
        for (const char* name : {"Boo", "Hey"})
            static_cast<void>(
                sounds.StoreSound(name, 22050, std::vector<std::uint8_t>(100, static_cast<std::uint8_t>(name[0]))));
        static_cast<void>(scene.sounds.Place(0, "Boo"));
        static_cast<void>(scene.sounds.Place(2, "Hey"));
        static_cast<void>(scene.sounds.Place(4, "Boo"));
        sounds.PrepareSoundBuffer();
        TakeHints();
    }
    /// The first sample of each second frame.
    std::string Heard() const {
        const int step = 2 * SamplesPerFrame(scene.geometry.frameRate);
        std::string heard;
        for (int i = 0; i < 3; ++i)
            heard += static_cast<char>(model.soundBuffer.value()[static_cast<std::size_t>(i * step)]);
        return heard;
    }
};

} // namespace

TEST_F(AssetOperations, NeedSomethingToWorkOn) {
    const auto runAll = [this] {
        assets.DeleteSelected();
        assets.RenameSelected();
        assets.DuplicateSelected();
    };
    const Texts nothingSelected{"Internal Error : Nothing selected in OnAssetsRenamecel"};
    runAll();
    EXPECT_EQ(prompter.TakeMessages(), nothingSelected);
    Select(SourceMode::Cels, {"1"});
    model.folderName.clear();
    runAll();
    assets.DeleteFolder();
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
    Select(SourceMode::Pictures, {"Sky"});
    model.sceneOpen = false;
    runAll();
    EXPECT_EQ(prompter.TakeMessages(), nothingSelected);
    EXPECT_FALSE(prompter.lastRequest.has_value());
    EXPECT_EQ(hints, Hints{});
}

TEST_F(AssetOperations, ADeletedCelLeavesTheSheetAndTheEditor) {
    ExposeThreeAndFive();
    Edit(CelFile("5"), red);
    Select(SourceMode::Cels, {"5"});
    prompter.confirmations = {false};
    assets.DeleteSelected();
    EXPECT_TRUE(FileExists(CelFile("5")) && hints.empty());

    assets.DeleteSelected();
    const std::string question =
        "Are you sure you want to remove selected cels from folder \"Man\" and xsheet ? (NO UNDO!)";
    EXPECT_EQ(prompter.TakeMessages(), (Texts{question, question}));
    EXPECT_EQ(EverythingExposed(), "3....5 3.");
    EXPECT_EQ(model.celImg.GetLoadState(), LoadState::Nothing);
    EXPECT_FALSE(FileExists(CelFile("5"))) << "the editor must not have saved it once more";
    EXPECT_TRUE(FileExists(model.Paths().CelFile("Cat", "5")));
    EXPECT_EQ(model.sourceSelection, Texts{});
    EXPECT_EQ(TakeHints(), Hints{271});
}

TEST_F(AssetOperations, DeletionStopsAtAFileThatResists) {
    for (const char* name : {"A", "B", "C"})
        MakePicture(name, red);
    for (int frame = 0; frame < 3; ++frame)
        Expose(0, frame, "_Pictures_", std::string(1, static_cast<char>('A' + frame)));
    PutInTheWay(PictureFile("B"));
    Select(SourceMode::Pictures, {"A", "B", "C"});
    assets.DeleteSelected();
    EXPECT_EQ(
        prompter.TakeMessages(),
        (Texts{"Are you sure you want to remove selected pictures from Pictures folder and xsheet ? (NO UNDO!)",
               "Internal Error: Problem deleting file in OnAssetsDeleteassets", Utf8Of(PictureFile("B"))}));
    EXPECT_EQ(Row(0, 3), ".BC");
    EXPECT_FALSE(FileExists(PictureFile("A")));
    EXPECT_TRUE(FileExists(PictureFile("C")));
    EXPECT_EQ(model.sourceSelection, (Texts{"B", "C"}));
    EXPECT_EQ(TakeHints(), Hints{270});
}

TEST_F(AssetOperations, DeletedAndRenamedSoundsAreHeardSo) {
    PlaceSounds();
    EXPECT_EQ(Heard(), "BHB");
    Select(SourceMode::Sounds, {"Hey"});
    prompter.Answer(std::string("Ho"));
    assets.RenameSelected();
    EXPECT_EQ(Heard(), "BHB");
    EXPECT_EQ(*scene.sounds.NameAt(2), "Ho");
    EXPECT_EQ(TakeHints(), Hints{10});
    prompter.Answer(std::string("Boo"));
    assets.RenameSelected();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Sound Exists, Do you want to overwrite it ?"});
    EXPECT_EQ(Heard(), "\x80H\x80") << "the sound that was replaced is heard no more";
    assets.DeleteSelected();
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"Are you sure you want to remove selected sounds from Sounds folder and xsheet ? (NO UNDO!)"});
    EXPECT_EQ(Heard(), "\x80\x80\x80");
    EXPECT_EQ(TakeHints(), (Hints{10, 10}));
}

TEST_F(AssetOperations, ADeletedFolderTakesItsCelsWithIt) {
    ExposeThreeAndFive();
    palettes.ClearPalette();
    static_cast<void>(palettes.SaveColors());
    Select(SourceMode::Cels, {"3"});
    Edit(CelFile("3"), red);
    Set(profile, setting::lastFolder, "Man");
    assets.DeleteFolder();
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"Are you sure you want to remove current folder \"Man\" and remove the references of cels "
                    "inside it from the xsheet ? (NO UNDO!)"});
    EXPECT_FALSE(FolderExists(model.Paths().CelFolder("Man")));
    EXPECT_EQ(EverythingExposed(), ".....5 ..");
    EXPECT_EQ(model.folderName + Get(profile, setting::lastFolder), "");
    EXPECT_EQ(model.celImg.GetLoadState(), LoadState::Nothing);
    EXPECT_EQ(model.sourceSelection, Texts{});
    EXPECT_EQ(TakeHints(), Hints{271});
}

TEST_F(AssetOperations, WhatIsDeletedGoesToTheTrash) {
    ExposeThreeAndFive();
    CAssetOperations withTrash(Context(), lifecycle, imports, sounds, {}, CTrash(folder / "Trash"));
    Select(SourceMode::Cels, {"5"});
    withTrash.DeleteSelected();
    EXPECT_FALSE(FileExists(CelFile("5")));
    EXPECT_EQ(Load(folder / "Trash" / "files" / "5.bit").ColorAt(0, 0), blue);
    EXPECT_EQ(EverythingExposed(), "3....5 3.");
    withTrash.DeleteFolder();
    EXPECT_FALSE(FolderExists(model.Paths().CelFolder("Man")));
    EXPECT_EQ(Load(folder / "Trash" / "files" / "Man" / "3.bit").ColorAt(0, 0), red);
    EXPECT_EQ(model.folderName, "");

    CAssetOperations withBrokenTrash(Context(), lifecycle, imports, sounds, {}, CTrash("/proc/version/Trash"));
    for (const char* name : {"A", "B"})
        MakePicture(name, red);
    PutInTheWay(PictureFile("B"));
    Select(SourceMode::Pictures, {"A", "B"});
    prompter.TakeMessages();
    withBrokenTrash.DeleteSelected();
    EXPECT_FALSE(FileExists(PictureFile("A"))) << "removed as ever";
    EXPECT_EQ(prompter.TakeMessages().back(), Utf8Of(PictureFile("B")));
}

TEST_F(AssetOperations, AFolderThatResistsStaysTheCurrentOne) {
    ExposeThreeAndFive();
    MakePicture("Sky", white);
    Edit(PictureFile("Sky"), red);
    const Path folderPath = model.Paths().CelFolder("Man");
    static_cast<void>(CreateFolder(folderPath / "inner"));
    assets.DeleteFolder();
    EXPECT_EQ(Texts(prompter.messages.begin() + 1, prompter.messages.end()),
              (Texts{"Internal Error: Problem deleting folder in OnAssetsDeletecels",
                     Utf8Of(folderPath) + "\nGetLastError returns -> " + std::to_string(ENOTEMPTY)}));
    EXPECT_EQ(EverythingExposed(), "35..55 35");
    EXPECT_EQ(model.folderName, "Man");
    EXPECT_TRUE(model.celImg.IsModified());
    EXPECT_EQ(TakeHints(), Hints{2});

    std::filesystem::remove(folderPath / "inner");
    assets.DeleteFolder();
    EXPECT_EQ(model.folderName, "");
    EXPECT_EQ(Load(PictureFile("Sky")).ColorAt(1, 0), red) << "an edited picture is closed, not lost";
}

TEST_F(AssetOperations, ARenamedCelReplacesAnother) {
    ExposeThreeAndFive();
    Edit(CelFile("5"), red);
    Select(SourceMode::Cels, {"3", "5"});
    for (const char* name : {"a12", "5", "5"})
        prompter.Answer(std::string(name));
    prompter.confirmations = {false, true};
    assets.RenameSelected();
    const std::string question = "Cel Exists, Do you want to overwrite it ?";
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"The cel name must be a number and if required a letter", question, question}));
    EXPECT_EQ(std::any_cast<CNameRequest>(prompter.lastRequest).initial, "3");
    EXPECT_EQ(EverythingExposed(), "5....5 5.");
    EXPECT_FALSE(FileExists(CelFile("3")));
    EXPECT_EQ(Load(CelFile("5")).ColorAt(0, 0), red);
    EXPECT_EQ(model.celImg.GetLoadState(), LoadState::Nothing) << "its drawing was the one replaced";
    EXPECT_EQ(model.sourceSelection, Texts{"5"});
    EXPECT_EQ(TakeHints(), Hints{271});
}

TEST_F(AssetOperations, TheDrawingOfACellIsOpenedWhereverItLies) {
    MakeCel(CelFile("1"), white);
    MakeCel(model.Paths().CelFile("Cat", "3"), red);
    MakePicture("Sky", blue);
    Expose(0, 4, "Cat", "3");
    Expose(0, 5, std::string(picturesFolder), "Sky");
    Expose(0, 6, "Cat", "4");
    Edit(CelFile("1"), red);
    assets.EditDrawing({0, 4});
    EXPECT_EQ(model.celImg.FilePath(), model.Paths().CelFile("Cat", "3"));
    EXPECT_EQ(model.folderName, "Cat");
    EXPECT_EQ(model.sourceSelection, std::vector<std::string>{"3"});
    EXPECT_EQ(Load(CelFile("1")).ColorAt(1, 0), red) << "what was under edit is saved";

    assets.EditDrawing({0, 5});
    EXPECT_EQ(model.celImg.FilePath(), PictureFile("Sky"));
    EXPECT_EQ(model.sourceMode, SourceMode::Pictures);
    for (const int frame : {50, -1, 100})
        assets.EditDrawing({0, frame});
    assets.EditDrawing({7, 4});
    EXPECT_TRUE(prompter.messages.empty());
    assets.EditDrawing({0, 6});
    EXPECT_EQ(prompter.messages.size(), 1u) << "its file is gone";
    EXPECT_EQ(model.celImg.FilePath(), PictureFile("Sky"));
    EXPECT_EQ(model.sourceMode, SourceMode::Pictures);
}

TEST_F(AssetOperations, TheEditorFollowsARenamedPicture) {
    MakePicture("Sky", red);
    Edit(PictureFile("Sky"), blue);
    Select(SourceMode::Pictures, {"Sky"});
    prompter.Answer(std::string("Sky"));
    assets.RenameSelected();
    EXPECT_TRUE(prompter.messages.empty() && hints.empty());
    prompter.Answer(std::string("Night"));
    assets.RenameSelected();
    EXPECT_EQ(TakeHints(), Hints{3});
    EXPECT_TRUE(model.celImg.IsModified());
    EXPECT_TRUE(CEditedImage(Context()).Close());
    EXPECT_FALSE(FileExists(PictureFile("Sky")));
    EXPECT_EQ(Load(PictureFile("Night")).ColorAt(1, 0), blue);
}

TEST_F(AssetOperations, ARenameThatFailsChangesNothing) {
    ExposeThreeAndFive();
    std::filesystem::rename(CelFile("3"), CelFile("003"));
    Edit(CelFile("5"), red);
    Select(SourceMode::Cels, {"3"});
    prompter.Answer(std::string("5"));
    assets.RenameSelected();
    EXPECT_EQ(prompter.messages.size(), 2U); // the question and the failure
    EXPECT_EQ(EverythingExposed(), "35..55 35");
    EXPECT_EQ(Load(CelFile("5")).ColorAt(0, 0), blue);
    EXPECT_TRUE(model.celImg.IsModified());
    EXPECT_EQ(hints, Hints{});
}

TEST_F(AssetOperations, NewNamesLoseTheZerosBeforeTheirNumber) {
    ExposeThreeAndFive();
    prompter.Answer(CNewCelValues{"007", {30, 20}});
    assets.NewCel();
    EXPECT_TRUE(FileExists(CelFile("7")) && !FileExists(CelFile("007")));
    Select(SourceMode::Cels, {"3"});
    prompter.Answer(std::string("03"));
    assets.RenameSelected();
    EXPECT_EQ(prompter.TakeMessages(), Texts{}) << "its own name";
    prompter.Answer(std::string("005"));
    assets.RenameSelected();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Cel Exists, Do you want to overwrite it ?"});
    EXPECT_EQ(Load(CelFile("5")).ColorAt(0, 0), red);
    EXPECT_EQ(EverythingExposed(), "5....5 5.");
    prompter.Answer(std::string("012b"));
    assets.DuplicateSelected();
    EXPECT_TRUE(FileExists(CelFile("12b")));
}

// A file that was made elsewhere keeps its name until it is given another.
TEST_F(AssetOperations, ACelWithZerosInItsTitleIsWorkedOnUnderIt) {
    SetLevels(2);
    MakeCel(CelFile("007"), red);
    MakeCel(CelFile("7"), white);
    Expose(0, 0, "Man", "007");
    Expose(0, 1, "Man", "7");
    Select(SourceMode::Cels, {"007"});
    assets.EditCel("007");
    EXPECT_EQ(model.celImg.FilePath(), CelFile("007"));
    prompter.Answer(std::string("007"));
    assets.RenameSelected();
    EXPECT_TRUE(FileExists(CelFile("007"))) << "nothing was entered";
    assets.DeleteSelected();
    EXPECT_FALSE(FileExists(CelFile("007")));
    EXPECT_EQ(Load(CelFile("7")).ColorAt(0, 0), white);
    EXPECT_EQ(Row(0, 2), ".7");
}

TEST_F(AssetOperations, ACopyNeverReplacesAnything) {
    MakeCel(CelFile("3"), red);
    MakeCel(CelFile("12a"), white);
    Edit(CelFile("3"), blue);
    Select(SourceMode::Cels, {"3"});
    prompter.Answer(std::string("13"));
    assets.DuplicateSelected();
    EXPECT_EQ(std::any_cast<CNameRequest>(prompter.lastRequest).initial, "13");
    EXPECT_EQ(Load(CelFile("13")).ColorAt(0, 0), red);
    EXPECT_EQ(Load(CelFile("13")).ColorAt(1, 0), blue) << "a copy is what the editor shows";
    EXPECT_EQ(TakeHints(), Hints{2});

    prompter.Answer(std::string("12a"));
    assets.DuplicateSelected();
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Cel Exists, Do you want to overwrite it ?",
                     "Can not duplicate asset!\nEither the destination asset exists,\nor disk is full??\n"
                     "or disk is write protected??"}));
    EXPECT_EQ(Load(CelFile("12a")).ColorAt(0, 0), white);
    EXPECT_EQ(hints, Hints{});

    for (const char* name : {"Boo9", "Boo10"})
        static_cast<void>(sounds.StoreSound(name, 22050, std::vector<std::uint8_t>(9)));
    Select(SourceMode::Sounds, {"Boo9"});
    prompter.Answer(std::string("Copy"));
    assets.DuplicateSelected();
    EXPECT_EQ(std::any_cast<CNameRequest>(prompter.lastRequest).initial, "Boo11");
    EXPECT_TRUE(FileExists(model.Paths().SoundFile("Copy")));
}

TEST_F(AssetOperations, ACelTooLargeForItsFileOrTheMemoryIsNotMade) {
    ExposeThreeAndFive();
    for (const CSize size : {CSize{70000, 100}, {100, 32768}, {32767, 2}})
        prompter.Answer(CNewCelValues{"3", size});
    assets.NewCel();
    const std::string tooLarge = "A cel can be at most 32767 pixels wide and high";
    EXPECT_EQ(prompter.TakeMessages(), (Texts{tooLarge, tooLarge, "Cel Exists, Do you want to overwrite it ?"}));
    EXPECT_TRUE(prompter.AllAnswersTaken());
    EXPECT_EQ(Load(CelFile("3")).Width(), 32767);

    EXPECT_TRUE(CheckNewCelSize({1000, 1000}, 10'000'000));
    EXPECT_EQ(CheckNewCelSize({32767, 32767}, 4'000'000'000).Message(),
              "There is not enough memory for a cel of this size");
    EXPECT_TRUE(CheckNewCelSize({-1000, -1000}, 0)) << "refused where it is made";
}

TEST_F(AssetOperations, ANewCelReplacesTheOldOneOnlyWhenItIsThere) {
    ExposeThreeAndFive();
    Edit(CelFile("3"), blue);
    prompter.Answer(CNewCelValues{"3", {1, 50}});
    assets.NewCel();
    EXPECT_EQ(prompter.velmorMessages, Texts{"Invalid cel dimensions"});
    EXPECT_TRUE(model.celImg.IsModified());
    EXPECT_EQ(hints, Hints{});
    prompter.Answer(CNewCelValues{"3", {30, 50}});
    assets.NewCel();
    EXPECT_EQ(model.celImg.FilePath(), CelFile("3"));
    EXPECT_EQ(model.celImg.ColorAt(1, 0), white);
    EXPECT_EQ(scene.xsheet.Cell(0, 0).Size(), (CSize{30, 50}));
    EXPECT_EQ(Load(CelFile("3")).ColorAt(1, 0), white);
    EXPECT_EQ(TakeHints(), Hints{263});
}

TEST_F(AssetOperations, ANewCelIsTheOneToWorkOn) {
    const int opened = model.openedImages;
    MakePicture("Sky", red);
    Edit(PictureFile("Sky"), blue);
    Select(SourceMode::Pictures, {"Sky"});
    prompter.Answer(CNewCelValues{"1", {30, 20}});
    assets.NewCel();
    EXPECT_EQ(Load(PictureFile("Sky")).ColorAt(1, 0), blue) << "saved before it was left";
    EXPECT_EQ(model.celImg.FilePath(), CelFile("1"));
    EXPECT_EQ(model.openedImages, opened + 1) << "the canvas is to have the keyboard";
    EXPECT_EQ(model.celImg.Width(), 30);
    EXPECT_FALSE(model.celImg.IsModified());
    EXPECT_EQ(model.sourceMode, SourceMode::Cels);
    EXPECT_EQ(model.sourceSelection, Texts{"1"});

    model.celImg.SetModified(true);
    PutInTheWay(CelFile("1"));
    prompter.Answer(CNewCelValues{"2", {30, 20}});
    prompter.confirmations = {false};
    assets.NewCel();
    EXPECT_EQ(prompter.TakeMessages().back(),
              "The image could not be saved.\nDo you want to go on without saving it ?\n\n" + Utf8Of(CelFile("1")));
    EXPECT_EQ(model.celImg.FilePath(), CelFile("1")) << "what cannot be saved is left only if the user wants";
    EXPECT_TRUE(FileExists(CelFile("2")));
}

} // namespace velmor::testing
