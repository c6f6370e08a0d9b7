#include "DocumentFixture.h"

#include "image/CelImg.h"
#include "scene/AssetOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneManager.h"
#include "scene/SceneModel.h"
#include "scene/SceneSaving.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

#include <algorithm>
#include <chrono>
#include <functional>

namespace velmor {
namespace {

using testing::CDocumentFixture;
using testing::ReadBytes;
using testing::WriteBytes;
using Texts = std::vector<std::string>;

class SceneLifecycle : public CDocumentFixture {
protected:
    void MakeFolder(const std::string& name) {
        prompter.Answer(name);
        doc->Assets().NewFolder();
    }
    /// Scene "S" with cel "1" of folder "A" under edit; its bottom left pixel is red, which is not saved yet.
    void PaintACel() {
        NewScene("S");
        MakeFolder("A");
        prompter.Answer(CNewCelValues{"1", {20, 10}});
        doc->Assets().NewCel();
        PaintCelOne();
        TakeHints();
    }
    void PaintCelOne() {
        doc->Assets().EditCel("1");
        EditedImage().SetColorAt(0, 0, red);
        EditedImage().SetModified(true);
    }
    Path PaintedCel() const { return SceneFolder("S") / "A" / "1.bit"; }
    Path Sheet() const { return SceneFolder("S") / "S.xsheet"; }
    /// Something that cannot be replaced by a file, whoever the user is.
    static void PutInTheWay(const Path& file) {
        std::filesystem::remove(file);
        static_cast<void>(CreateFolder(file / "x"));
    }
    static std::string NotWritten(const std::string& reason, const Path& file) {
        return reason + ":: Writing file ->" + Utf8Of(file);
    }
    std::string CelNotWritten() const { return NotWritten("Problem opening file for writing", PaintedCel()); }

    static constexpr CColor red{0, 0, 255, 255};
};

TEST_F(SceneLifecycle, FirstStartMakesTheDatabaseBesideTheProgramAndRemembersIt) {
    const std::string expected = Utf8Of(Database()) + "/";
    EXPECT_TRUE(FolderExists(Database()));
    EXPECT_EQ(profile.GetString("Settings", "Database Dir", ""), expected);
    EXPECT_EQ(doc->Model().databaseFolder, expected);
    EXPECT_FALSE(doc->Model().sceneOpen);
    EXPECT_EQ(doc->GetTitle(), "* No Scene Open *");
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(SceneLifecycle, NewSceneTakesTheDialogsValuesButNotItsRate) {
    CSceneSettings settings = WithPreset({}, 5);
    EXPECT_EQ(settings.geometry.frameRate, 30);
    settings.name = "Walk 1";
    settings.length = 48;
    settings.geometry.background = MakeColorRef(1, 2, 3);
    prompter.Answer(settings);
    doc->Scenes().NewScene();

    EXPECT_EQ(TakeHints(), std::vector<int>{511});
    EXPECT_EQ(doc->Scenes().GetSceneName(), "Walk 1");
    EXPECT_EQ(doc->GetTitle(), "Walk 1");
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 48);
    EXPECT_EQ(doc->Model().Scene().geometry.width, 1920);
    EXPECT_EQ(doc->Sounds().GetFPS(), 25);
    EXPECT_EQ(doc->Cursor().GetLevelName(0), "Default");
    EXPECT_EQ(profile.GetString("Remember", "Last Scene", ""), "Walk 1");
    // 27 + 24 + frames x 32 + name + frames x 74 + sound count
    EXPECT_EQ(ReadBytes(SceneFolder("Walk 1") / "Walk 1.xsheet").size(), 27U + 24 + 48 * 32 + 8 + 48 * 74 + 4);
}

TEST_F(SceneLifecycle, ASceneThatCannotBeMadeWholeDoesNotAppear) {
    NewScene("Before");
    TakeHints();
    WriteBytes(Database() / "S.scene", std::vector<std::uint8_t>{1});
    NewScene("S");
    EXPECT_EQ(prompter.TakeMessages(), Texts{"The scene could not be created. Disk full or write protected?"});
    EXPECT_EQ(doc->Scenes().GetSceneName(), "Before");
    EXPECT_EQ(ListFolders(Database()), Texts{"Before.scene"}) << "the half that was made is gone";
}

TEST_F(SceneLifecycle, OpeningRemovesWhatKilledProgramsLeftInTheDatabaseAndTheScene) {
    NewScene("S");
    MakeFolder("A");
    const auto leave = [](const Path& in) {
        const Path file = in / ".velmor-0badcafe-0123456789abcdef.tmp";
        WriteBytes(file, std::vector<std::uint8_t>{1});
        std::filesystem::last_write_time(file,
                                         std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
        return file;
    };
    const std::vector<Path> left = {leave(Database()), leave(SceneFolder("S")), leave(SceneFolder("S") / "A")};
    ASSERT_TRUE(doc->Saving().SaveAll());
    EXPECT_TRUE(std::ranges::all_of(left, FileExists));
    StartDocument();
    EXPECT_TRUE(std::ranges::none_of(left, FileExists));
}

TEST_F(SceneLifecycle, SceneDialogStaysOpenUntilItsValuesAreGood) {
    NewScene("Taken");
    const auto attempt = [this](const std::string& name, int length, int width) {
        CSceneSettings settings;
        settings.name = name;
        settings.length = length;
        settings.geometry.width = width;
        prompter.Answer(settings);
    };
    attempt("", 10, 64);
    attempt("a_b", 10, 64);
    attempt("Taken", 10, 64);
    attempt("Good", 2001, 64);
    attempt("Good", 10, 9);
    attempt("Good", 2000, 2048);
    doc->Scenes().NewScene();
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"You must enter a valid scene name.",
                                              "The scene name can only consist of letters, digits and spaces",
                                              "Scene already exists. Use 'Open Scene' to open it.",
                                              "The length must be a whole number from 1 to 2000",
                                              "The width must be a whole number from 10 to 2048"}));
    EXPECT_EQ(doc->Scenes().GetSceneName(), "Good");
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 2000);
}

TEST_F(SceneLifecycle, OpenCommandListsScenesAndRefusesTheOpenOne) {
    doc->Scenes().AskAndOpenScene();
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"There are no scenes avaliable yet.\nUse 'New Scene' to create a new scene"});
    NewScene("B");
    NewScene("A");
    static_cast<void>(CreateFolder(Database() / ".scene"));
    TakeHints();

    prompter.Answer(std::string("A"));
    doc->Scenes().AskAndOpenScene();
    EXPECT_EQ(std::any_cast<COpenSceneRequest>(prompter.lastRequest).scenes, (Texts{"A", "B"}));
    EXPECT_EQ(prompter.TakeMessages(), Texts{"The scene is already open."});
    EXPECT_TRUE(TakeHints().empty());

    prompter.Answer(std::string("B"));
    doc->Scenes().AskAndOpenScene();
    EXPECT_EQ(doc->Scenes().GetSceneName(), "B");
    EXPECT_EQ(TakeHints(), std::vector<int>{511});

    std::filesystem::remove_all(SceneFolder("A"));
    prompter.Answer(std::string("A"));
    doc->Scenes().AskAndOpenScene();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Problem openning the scene"});
    EXPECT_EQ(doc->Scenes().GetSceneName(), "B");
}

TEST_F(SceneLifecycle, LeavingASceneSavesItsSheet) {
    NewScene("One", 10);
    prompter.Answer(5);
    doc->XSheet().AddFrames();
    NewScene("Two", 3);
    ASSERT_TRUE(doc->Scenes().OpenScene("One"));
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 15);
    EXPECT_FALSE(CanUndo(doc->Model()));
}

TEST_F(SceneLifecycle, SceneWithoutASheetGetsOneAndDamagedOnesLeaveTheOpenScene) {
    static_cast<void>(CreateFolder(SceneFolder("Bare")));
    ASSERT_TRUE(doc->Scenes().OpenScene("Bare"));
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 100);
    const auto sheet = ReadBytes(SceneFolder("Bare") / "Bare.xsheet");
    EXPECT_EQ(sheet.size(), 10663U);

    static_cast<void>(CreateFolder(SceneFolder("Hurt")));
    const std::span<const std::uint8_t> half(sheet.data(), sheet.size() / 2);
    WriteBytes(SceneFolder("Hurt") / "Hurt.xsheet", half);
    EXPECT_FALSE(doc->Scenes().OpenScene("Hurt"));
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Invalid or corrupted xsheet data file"});
    EXPECT_EQ(doc->Scenes().GetSceneName(), "Bare");
    EXPECT_EQ(ReadBytes(SceneFolder("Hurt") / "Hurt.xsheet").size(), half.size());
    EXPECT_FALSE(doc->Scenes().OpenScene("../Bare"));
}

TEST_F(SceneLifecycle, ReopensSceneAndFolderOfTheLastRun) {
    NewScene("Run");
    MakeFolder("Legs");
    StartDocument();
    EXPECT_EQ(doc->Scenes().GetSceneName(), "Run");
    EXPECT_EQ(doc->Scenes().GetFolderName(), "Legs");

    std::filesystem::remove_all(SceneFolder("Run") / "Legs");
    StartDocument();
    EXPECT_EQ(doc->Scenes().GetFolderName(), "");
    EXPECT_TRUE(prompter.TakeMessages().empty());

    std::filesystem::remove_all(SceneFolder("Run"));
    StartDocument();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Problem opening the last open scene"});
    EXPECT_EQ(profile.GetString("Remember", "Last Scene", "?"), "");
    StartDocument();
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(SceneLifecycle, ChoosingAFolderGivesItAPalette) {
    NewScene("Paint");
    static_cast<void>(CreateFolder(SceneFolder("Paint") / "Head"));
    TakeHints();
    doc->Scenes().SetFolderName("Head");
    EXPECT_EQ(TakeHints(), std::vector<int>{19});
    EXPECT_TRUE(FileExists(SceneFolder("Paint") / "Head" / "Head.colors"));
    EXPECT_EQ(doc->Model().palette.Count(), 3);
    EXPECT_EQ(doc->Palette().GetColorName(2), "TRANS");
    EXPECT_EQ(profile.GetString("Remember", "Last Folder", ""), "Head");
}

TEST_F(SceneLifecycle, FolderNamesAreChecked) {
    NewScene("S");
    prompter.Answer(std::string());
    prompter.Answer(std::string("_Pictures_"));
    prompter.Answer(std::string("Arm"));
    doc->Assets().NewFolder();
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"You must enter a valid scene name.",
                                              "The scene name can only consist of letters, digits and spaces"}));
    prompter.Answer(std::string("Arm"));
    doc->Assets().NewFolder();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Folder already exists. Use the drop down list to view it."});
    EXPECT_EQ(doc->Scenes().GetFolderName(), "Arm");
}

TEST_F(SceneLifecycle, OperationsThatNeedASceneSaySo) {
    EXPECT_EQ(doc->Scenes().GetSceneName(), "");
    EXPECT_EQ(doc->Scenes().GetFolderName(), "");
    doc->Scenes().SetFolderName("x");
    EXPECT_EQ(doc->Scenes().FindNextCelName(), "");
    EXPECT_FALSE(doc->Scenes().LoadXSheet());
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"Internal error : scene not open for getscenename",
                                              "Internal error : scene not open for getfoldername",
                                              "Internal error : scene not open for setfoldername",
                                              "Internal error : scene not open for FindNextCelName",
                                              "Internal Error :  Scene not open in LoadXSheet"}));
    NewScene("S");
    EXPECT_EQ(doc->Scenes().FindNextCelName(), "");
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Internal error : folder not open for FindNextCelName"});
}

TEST_F(SceneLifecycle, SaveAllWritesTheEditedCelAndOpensItAgain) {
    PaintACel();
    prompter.Answer(1);
    doc->XSheet().AddFrames();
    TakeHints();

    EXPECT_TRUE(doc->Saving().SaveAll());
    EXPECT_EQ(TakeHints(), std::vector<int>{1});
    EXPECT_TRUE(CanUndo(doc->Model())) << "saving does not end the history";
    EXPECT_EQ(doc->Model().celImg.FilePath(), PaintedCel());
    EXPECT_FALSE(doc->Model().celImg.IsModified());
    CCelImg saved;
    ASSERT_TRUE(saved.Load(PaintedCel()));
    EXPECT_EQ(saved.ColorAt(0, 0), red);

    // What another program has made of the file meanwhile is what the editor shows.
    saved.SetColorAt(1, 1, red);
    ASSERT_TRUE(saved.Save());
    EXPECT_TRUE(doc->Saving().SaveAll());
    EXPECT_EQ(doc->Model().celImg.ColorAt(1, 1), red);
}

TEST_F(SceneLifecycle, SaveAllWritesWhatItCan) {
    PaintACel();
    prompter.Answer(7);
    doc->XSheet().AddFrames();
    PutInTheWay(Sheet());
    EXPECT_FALSE(doc->Saving().SaveAll());
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{NotWritten("Problem opening the xsheet data file for writing", Sheet())});
    EXPECT_TRUE(CanUndo(doc->Model()));
    CCelImg saved;
    ASSERT_TRUE(saved.Load(PaintedCel()));
    EXPECT_EQ(saved.ColorAt(0, 0), red);

    EditedImage().SetModified(true);
    PutInTheWay(PaintedCel());
    EXPECT_FALSE(doc->Saving().SaveAll());
    EXPECT_EQ(prompter.TakeMessages().back(), CelNotWritten());
    EXPECT_TRUE(doc->Model().celImg.IsModified());
}

TEST_F(SceneLifecycle, WorkThatCannotBeSavedIsGivenUpWhenAskedAlone) {
    PaintACel();
    NewScene("Other", 3);
    ASSERT_TRUE(doc->Scenes().OpenScene("S"));
    doc->Scenes().SetFolderName("A");
    const std::string question =
        "The scene could not be saved.\nDo you want to go on without saving it ?\n\n" + Utf8Of(PaintedCel());
    const std::function<void()> leaves[] = {[&] {
                                                prompter.Answer(std::string("Other"));
                                                doc->Scenes().AskAndOpenScene();
                                            },
                                            [&] { NewScene("Newer"); },
                                            [&] {
                                                prompter.Answer(Utf8Of(folder / "Elsewhere"));
                                                doc->Scenes().ChooseDatabase();
                                            }};
    for (const auto& leave : leaves) {
        std::filesystem::remove_all(PaintedCel());
        CCelImg blank;
        ASSERT_TRUE(blank.CreateCel(20, 10, PaintedCel()));
        ASSERT_TRUE(blank.Save());
        PaintCelOne();
        prompter.Answer(7);
        doc->XSheet().AddFrames();
        PutInTheWay(PaintedCel());
        TakeHints();

        prompter.confirmations = {false};
        leave();
        EXPECT_EQ(prompter.TakeMessages(), (Texts{CelNotWritten(), question}));
        EXPECT_EQ(doc->Scenes().GetSceneName(), "S");
        EXPECT_EQ(doc->Model().celImg.ColorAt(0, 0), red);
        EXPECT_TRUE(doc->Model().celImg.IsModified());
        EXPECT_TRUE(CanUndo(doc->Model()));
        EXPECT_EQ(TakeHints(), std::vector<int>{});

        prompter.confirmations = {true};
        leave();
        EXPECT_EQ(prompter.TakeMessages(), (Texts{CelNotWritten(), question}));
        EXPECT_NE(doc->GetTitle(), "S");
        EXPECT_EQ(doc->Model().celImg.GetLoadState(), LoadState::Nothing);
        static_cast<void>(doc->Scenes().OpenScene("S"));
        doc->Scenes().SetFolderName("A");
    }
}

TEST_F(SceneLifecycle, ASceneWhoseFolderVanishedCanBeLeft) {
    PaintACel();
    std::filesystem::remove_all(SceneFolder("S"));
    const Texts shown{NotWritten("Problem opening the xsheet data file for writing", Sheet()), CelNotWritten(),
                      "The scene could not be saved.\nDo you want to go on without saving it ?\n\n" +
                          Utf8Of(Sheet()) + "\n" + Utf8Of(PaintedCel())};
    int opened = 0;
    prompter.useSceneManager = [&](CSceneManager&) { ++opened; };
    static_cast<void>(CreateFolder(SceneFolder("Other")));
    prompter.confirmations = {false, true};
    doc->Scenes().ManageScenes();
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(prompter.TakeMessages(), shown);
    doc->Scenes().ManageScenes();
    EXPECT_EQ(opened, 1);
    prompter.TakeMessages();
    EXPECT_TRUE(doc->Scenes().OpenScene("Other"));
    EXPECT_EQ(prompter.TakeMessages(), shown);
}

TEST_F(SceneLifecycle, AnImageThatCannotBeSavedDoesNotHoldTheEditor) {
    PaintACel();
    prompter.Answer(CNewCelValues{"2", {20, 10}});
    doc->Assets().NewCel();
    PaintCelOne();
    PutInTheWay(PaintedCel());
    const Texts shown{CelNotWritten(),
                      "The image could not be saved.\nDo you want to go on without saving it ?\n\n" +
                          Utf8Of(PaintedCel())};
    static_cast<void>(CreateFolder(SceneFolder("S") / "B"));
    prompter.confirmations = {false, false, true};
    doc->Assets().EditCel("2");
    EXPECT_EQ(prompter.TakeMessages(), shown);
    doc->Scenes().SetFolderName("B");
    EXPECT_EQ(prompter.TakeMessages(), shown);
    EXPECT_EQ(doc->Scenes().GetFolderName(), "A");
    EXPECT_EQ(doc->Model().celImg.ColorAt(0, 0), red);
    doc->Assets().EditCel("2");
    EXPECT_EQ(prompter.TakeMessages(), shown);
    EXPECT_EQ(doc->Model().celImg.FilePath(), SceneFolder("S") / "A" / "2.bit");
}

TEST_F(SceneLifecycle, ASceneThatCannotBeOpenedChangesNothing) {
    PaintACel();
    prompter.Answer(7);
    doc->XSheet().AddFrames();
    static_cast<void>(CreateFolder(SceneFolder("Hurt")));
    WriteBytes(SceneFolder("Hurt") / "Hurt.xsheet", std::vector<std::uint8_t>(100, 7));
    TakeHints();
    for (const char* name : {"Hurt", "Gone"}) {
        EXPECT_FALSE(doc->Scenes().OpenScene(name));
        EXPECT_EQ(doc->Model().celImg.ColorAt(0, 0), red);
        EXPECT_TRUE(doc->Model().celImg.IsModified());
        EXPECT_TRUE(CanUndo(doc->Model()));
    }
    EXPECT_EQ(TakeHints(), std::vector<int>{});
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Invalid or corrupted xsheet data file"});
    doc->History().Undo();
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 10);
}

TEST_F(SceneLifecycle, TheOpenSceneIsOpenedAgainAsItIs) {
    NewScene("S", 10);
    prompter.Answer(5);
    doc->XSheet().AddFrames();
    ASSERT_TRUE(doc->Scenes().OpenScene("S"));
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 15);
}

TEST_F(SceneLifecycle, SceneSettingsResizeTheSheetAndKeepTheCursorInside) {
    NewScene("S", 50);
    doc->Cursor().SetCursorY(40);
    doc->Cursor().SetSelEndY(45);
    TakeHints();
    CSceneSettings settings;
    settings.name = "ignored";
    settings.length = 20;
    settings.geometry = {320, 240, 30, MakeColorRef(9, 8, 7)};
    settings.preset = customPreset;
    prompter.Answer(settings);
    doc->Scenes().EditSceneSettings();
    EXPECT_EQ(TakeHints(), std::vector<int>{396});
    EXPECT_EQ(doc->Scenes().GetSceneName(), "S");
    EXPECT_EQ(doc->Model().Scene().geometry, settings.geometry);
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 20);
    EXPECT_EQ(doc->Model().cursorFrame, 19);
    EXPECT_EQ(doc->Model().selection.lastFrame, 19);
    EXPECT_EQ(doc->Sounds().GetSoundBuffer()->size(), 20U * (22050 / 30));
}

TEST_F(SceneLifecycle, SceneSettingsAreTakenBackByUndo) {
    PaintACel();
    doc->Scenes().SetSourceSelection({"1"});
    doc->XSheet().DropCels(0, 8, 1, false);
    const CSceneGeometry geometry = doc->Model().Scene().geometry;
    CSceneSettings settings;
    settings.length = 5;
    settings.geometry = {320, 240, 30, MakeColorRef(9, 8, 7)};
    settings.preset = customPreset;
    prompter.Answer(settings);
    doc->Scenes().EditSceneSettings();
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 5);
    // The same once more is no step of its own.
    prompter.Answer(settings);
    doc->Scenes().EditSceneSettings();

    doc->History().Undo();
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 10);
    EXPECT_EQ(doc->Cursor().GetXsheetData(0, 8), "A1");
    EXPECT_EQ(doc->Model().Scene().geometry, geometry);
    EXPECT_EQ(doc->Sounds().GetSoundBuffer()->size(), 10U * (22050 / 25));
}

TEST_F(SceneLifecycle, AnotherDatabaseFolderClosesTheScene) {
    NewScene("S");
    TakeHints();
    prompter.Answer(doc->Model().databaseFolder);
    doc->Scenes().ChooseDatabase();
    EXPECT_TRUE(doc->Model().sceneOpen);
    EXPECT_TRUE(TakeHints().empty());

    prompter.Answer(Utf8Of(folder / "Elsewhere"));
    Set(profile, setting::importThreshold, 77);
    doc->Scenes().ChooseDatabase();
    EXPECT_EQ(TakeHints().back(), 511);
    EXPECT_FALSE(doc->Model().sceneOpen);
    EXPECT_EQ(profile.GetString("Settings", "Database Dir", ""), Utf8Of(folder / "Elsewhere") + "/");
    EXPECT_TRUE(FolderExists(folder / "Elsewhere"));
    EXPECT_EQ(doc->Model().importThreshold, 77);
    EXPECT_FALSE(doc->Sounds().GetSoundBuffer());
    prompter.TakeMessages();

    StartDocument();
    EXPECT_TRUE(prompter.TakeMessages().empty()) << "the scene is not looked for in the other database";
}

TEST_F(SceneLifecycle, ADamagedPaletteIsSetAsideAndNotOverwritten) {
    NewScene("S");
    MakeFolder("Fox");
    doc->Palette().AddColor(red, "Fur");
    MakeFolder("Cat");
    doc->Palette().AddColor(red, "Whiskers");
    const Path file = SceneFolder("S") / "Fox" / "Fox.colors";
    const Path aside = SceneFolder("S") / "Fox" / "Fox.colors.damaged";
    auto damaged = ReadBytes(file);
    damaged.resize(damaged.size() - 6); // in the last entry
    WriteBytes(file, damaged);
    WriteBytes(aside, std::vector<std::uint8_t>{1});

    doc->Scenes().SetFolderName("Fox");
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Invalid or corrupted color data file"});
    EXPECT_EQ(doc->Model().palette, CPalette::Default()) << "the three entries in front of the damage";
    EXPECT_EQ(ReadBytes(file), damaged) << "looking at a folder changes nothing";
    doc->Palette().AddColor(red, "Tail");
    EXPECT_EQ(ReadBytes(SceneFolder("S") / "Fox" / "Fox.colors.damaged2"), damaged);
    EXPECT_EQ(ReadBytes(aside), std::vector<std::uint8_t>{1});
    EXPECT_EQ(prompter.TakeMessages(), Texts{"The damaged color data file is kept as Fox.colors.damaged2"});

    doc->Scenes().SetFolderName("Cat");
    doc->Scenes().SetFolderName("Fox");
    EXPECT_EQ(doc->Model().palette.Count(), 4);
    EXPECT_EQ(doc->Palette().GetColorName(3), "Tail");
    WriteBytes(file, std::vector<std::uint8_t>(40, 'V'));
    doc->Scenes().SetFolderName("Fox");
    EXPECT_EQ(doc->Model().palette, CPalette::Default());
}

} // namespace
} // namespace velmor
