#include "scene/SceneManager.h"

#include "DocumentFixture.h"
#include "image/Palette.h"
#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"

#include <fstream>

namespace velmor::testing {

namespace {

using Texts = std::vector<std::string>;
using Side = CSceneManager::CSide;

/// Two scenes on disk: "Left" with cels, pictures and a sound, "Right" with a folder and nothing in it.
class SceneManager : public ::testing::Test {
protected:
    SceneManager() {
        static_cast<void>(CreateFolder(left.CelFolder("Man")));
        static_cast<void>(CreateFolder(right.CelFolder("Cat")));
        static_cast<void>(CreateFolder(left.PicturesFolder()));
        static_cast<void>(CreateFolder(left.SoundsFolder()));
    }

    static void Write(const Path& file, const std::string& text) { std::ofstream(file) << text; }
    static std::string Read(const Path& file) {
        const std::vector<std::uint8_t> bytes = ReadBytes(file);
        return {bytes.begin(), bytes.end()};
    }
    static CPalette MakePalette(int colors, std::uint8_t shade) {
        CPalette palette;
        for (int i = 0; i < colors; ++i)
            static_cast<void>(palette.Add({{shade, shade, static_cast<std::uint8_t>(i), 255}, std::to_string(i)}));
        return palette;
    }
    void Transfer(SourceMode kind, const Texts& names) {
        manager.TransferAssets(kind, man, cat, names,
                               [this](const std::string& title) { titles.push_back(title); });
    }

    CTempFolder folder;
    CScriptedPrompter prompter;
    const std::string database = WithSeparator(folder.Path().string());
    const CScenePaths left{database, "Left"}, right{database, "Right"};
    const Side man{"Left", "Man"}, cat{"Right", "Cat"};
    CSceneManager manager{database, prompter};
    Texts titles;
};

} // namespace

TEST_F(SceneManager, ListsWhatIsOnDisk) {
    for (const char* name : {"10", "2b", "007", "2"})
        Write(left.CelFile("Man", name), name);
    Write(left.PictureFile("Sky"), "");
    Write(left.SoundFile("Boo"), "");
    static_cast<void>(CreateFolder(folder / ".scene"));
    EXPECT_EQ(manager.Scenes(), (Texts{"Left", "Right"}));
    EXPECT_EQ(manager.Folders("Left"), Texts{"Man"});
    EXPECT_EQ(manager.Assets(man, SourceMode::Cels), (Texts{"2", "2b", "007", "10"}));
    EXPECT_EQ(manager.Assets({"Left", ""}, SourceMode::Cels), Texts{});
    EXPECT_EQ(manager.Assets({"Left", ""}, SourceMode::Pictures), Texts{"Sky"});
    EXPECT_EQ(manager.Assets({"Left", ""}, SourceMode::Sounds), Texts{"Boo"});
    EXPECT_EQ(manager.Folders(""), Texts{});
    EXPECT_EQ(manager.Assets({}, SourceMode::Pictures), Texts{});
}

TEST_F(SceneManager, TransfersWhatIsNotThereYet) {
    for (const char* name : {"1", "2", "003"})
        Write(left.CelFile("Man", name), name);
    Write(right.CelFile("Cat", "1"), "mine");
    Transfer(SourceMode::Cels, {"1", "2", "9", "003"});
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"1\n exists, the source will not be transferred.\n"
                                              "First delete the source to overwrite it",
                                              "9\nFailed to transfer file\nEither the destination exists?? \n"
                                              "or disk full ?? \nor write protected ??"}));
    EXPECT_EQ(Read(right.CelFile("Cat", "1")) + Read(right.CelFile("Cat", "2")) + Read(right.CelFile("Cat", "003")),
              "mine2003");
    EXPECT_EQ(titles, (Texts{"Transferring...", "Transferring..1", "Transferring..2", "Transferring..9",
                             "Transferring..003", "Scene Manager"}));

    Write(left.PictureFile("Sky"), "sky");
    Transfer(SourceMode::Pictures, {"Sky"});
    EXPECT_EQ(Read(right.PictureFile("Sky")), "sky");
}

TEST_F(SceneManager, TransfersNothingToNowhere) {
    Write(left.CelFile("Man", "1"), "1");
    const auto setTitle = [this](const std::string& title) { titles.push_back(title); };
    manager.TransferAssets(SourceMode::Cels, man, {"Right", ""}, {"1"}, setTitle);
    manager.TransferAssets(SourceMode::Cels, man, {}, {"1"}, setTitle);
    EXPECT_EQ(titles, Texts{});
    manager.TransferAssets(SourceMode::Cels, man, {"Gone", "Cat"}, {"1"}, setTitle);
    EXPECT_EQ(prompter.messages.size(), 1U);
    EXPECT_EQ(manager.Scenes(), (Texts{"Left", "Right"}));
}

TEST_F(SceneManager, MergesPalettesBehindTheOldColours) {
    ASSERT_TRUE(SavePalette(left.PaletteFile("Man"), MakePalette(10, 1)));
    ASSERT_TRUE(SavePalette(right.PaletteFile("Cat"), MakePalette(20, 2)));
    prompter.confirmations = {false};
    manager.MergePalette(man, cat);
    manager.MergePalette(man, cat);
    const std::string question = "Are you sure you want to add palette of \nfolder 'Man' at scene 'Left'\n"
                                 "to the palette of \nfolder 'Cat' at scene 'Right'";
    EXPECT_EQ(prompter.TakeMessages(), (Texts{question, question}));
    CPalette merged, expected = MakePalette(20, 2);
    expected.Append(MakePalette(10, 1));
    ASSERT_TRUE(LoadPalette(right.PaletteFile("Cat"), merged));
    EXPECT_EQ(merged, expected);

    const std::string before = Read(right.PaletteFile("Cat"));
    Write(left.PaletteFile("Man"), "no palette");
    manager.MergePalette(man, cat);
    manager.MergePalette(cat, man);
    std::filesystem::remove(left.PaletteFile("Man"));
    manager.MergePalette(man, cat);
    manager.MergePalette(man, {"Right", ""});
    std::erase_if(prompter.messages, [](const std::string& text) { return text.starts_with("Are you sure"); });
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Invalid or corrupted color data file", "Invalid or corrupted color data file",
                     "Problem opening the color data file for reading"}));
    EXPECT_EQ(Read(right.PaletteFile("Cat")), before);
}

TEST_F(SceneManager, ReplacesAPaletteByAPaletteOnly) {
    ASSERT_TRUE(SavePalette(left.PaletteFile("Man"), MakePalette(10, 1)));
    ASSERT_TRUE(SavePalette(right.PaletteFile("Cat"), MakePalette(20, 2)));
    const std::string before = Read(right.PaletteFile("Cat"));
    prompter.confirmations = {false};
    manager.TransferPalette(man, cat);
    EXPECT_EQ(Read(right.PaletteFile("Cat")), before);
    manager.TransferPalette(man, cat);
    EXPECT_EQ(prompter.TakeMessages().back(),
              "Are you sure you want to overwrite palette of \nfolder 'Cat' at scene 'Right'\n"
              "with palette of \nfolder 'Man' at scene 'Left'");
    EXPECT_EQ(Read(right.PaletteFile("Cat")), Read(left.PaletteFile("Man")));
    Write(right.PaletteFile("Cat"), "no palette");
    manager.TransferPalette(cat, man);
    EXPECT_EQ(prompter.TakeMessages().back(), "\nFailed to transfer file\ndisk full ?? \nor write protected ??");
    CPalette kept;
    EXPECT_TRUE(LoadPalette(left.PaletteFile("Man"), kept));
}

TEST_F(SceneManager, DeletesASceneAndNothingElse) {
    EXPECT_FALSE(manager.DeleteScene(""));
    EXPECT_TRUE(prompter.messages.empty());
    prompter.confirmations = {false};
    EXPECT_FALSE(manager.DeleteScene("Left"));
    EXPECT_TRUE(prompter.TakeMessages().back().starts_with("Are you sure you want to \ndelete scene 'Left'"));
    EXPECT_TRUE(manager.DeletedScenes().empty());

    Write(left.CelFile("Man", "1"), "1");
    Write(folder / "outside", "outside");
    Write(right.CelFile("Cat", "1"), "mine");
    std::filesystem::create_directory_symlink(right.SceneFolder(), left.SceneFolder() / "Borrowed");
    std::filesystem::create_symlink(folder / "outside", left.CelFile("Man", "2"));
    std::filesystem::create_symlink(folder / "nowhere", left.CelFile("Man", "3"));
    EXPECT_TRUE(manager.DeleteScene("Left"));
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_FALSE(FolderExists(left.SceneFolder()));
    EXPECT_EQ(Read(right.CelFile("Cat", "1")) + Read(folder / "outside"), "mineoutside");
    EXPECT_EQ(manager.DeletedScenes(), std::set<std::string>{"Left"});
}

TEST_F(SceneManager, DeletionGoesOnPastAFileThatResists) {
    Write(left.CelFile("Man", "1"), "1");
    Write(left.PictureFile("Sky"), "");
    std::filesystem::permissions(left.CelFolder("Man"), std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::remove);
    if (std::ofstream(left.CelFile("Man", "2")).is_open())
        GTEST_SKIP() << "this user may write everywhere";
    EXPECT_TRUE(manager.DeleteScene("Left"));
    EXPECT_EQ(prompter.TakeMessages().back(), "Problem Deleting file :: " + Utf8Of(left.CelFile("Man", "1")));
    EXPECT_EQ(prompter.velmorMessages.size(), 1U);
    EXPECT_FALSE(FileExists(left.PictureFile("Sky")));
    std::filesystem::permissions(left.CelFolder("Man"), std::filesystem::perms::owner_all);
}

namespace {

class SceneManagerOfADocument : public CDocumentFixture {
protected:
    void MakeFolder(const std::string& name) {
        prompter.Answer(name);
        doc->Assets().NewFolder();
    }
};

} // namespace

TEST_F(SceneManagerOfADocument, NeedsASceneAndSavedFiles) {
    bool opened = false;
    prompter.useSceneManager = [&](CSceneManager&) { opened = true; };
    doc->Scenes().ManageScenes();
    EXPECT_EQ(prompter.velmorMessages, Texts{"There are no scenes avaliable yet.\n"
                                             "You should have at least one scene in order to open scene manager"});
    NewScene("S");
    MakeFolder("A");
    prompter.Answer(CNewCelValues{"1", {20, 10}});
    doc->Assets().NewCel();
    doc->Assets().EditCel("1");
    EditedImage().SetModified(true);
    std::filesystem::remove(SceneFolder("S") / "A" / "1.bit");
    static_cast<void>(CreateFolder(SceneFolder("S") / "A" / "1.bit" / "x"));
    TakeHints();
    prompter.confirmations = {false}; // to go on without saving
    doc->Scenes().ManageScenes();
    EXPECT_FALSE(opened);
    EXPECT_EQ(TakeHints(), std::vector<int>{});
    EXPECT_TRUE(doc->Model().celImg.IsModified());
}

TEST_F(SceneManagerOfADocument, ADeletedSceneGoesToTheTrash) {
    trash = CTrash(folder / "Trash");
    StartDocument();
    NewScene("S");
    MakeFolder("A");
    prompter.useSceneManager = [](CSceneManager& manager) { EXPECT_TRUE(manager.DeleteScene("S")); };
    doc->Scenes().ManageScenes();
    EXPECT_FALSE(FolderExists(SceneFolder("S")));
    EXPECT_TRUE(FileExists(folder / "Trash" / "files" / "S.scene" / "A" / "A.colors"));
    EXPECT_FALSE(doc->Model().sceneOpen);
}

TEST_F(SceneManagerOfADocument, ThePaletteIsReadAgain) {
    NewScene("S");
    MakeFolder("A");
    NewScene("T");
    MakeFolder("B");
    const Path palette = SceneFolder("T") / "B" / "B.colors";
    prompter.useSceneManager = [](CSceneManager& manager) {
        manager.MergePalette({"S", "A"}, {"T", "B"});
        static_cast<void>(manager.DeleteScene("S"));
    };
    TakeHints();
    doc->Scenes().ManageScenes();
    EXPECT_EQ(doc->Model().palette.Count(), 6);
    EXPECT_EQ(TakeHints(), std::vector<int>{18});
    EXPECT_EQ(doc->GetTitle(), "T");
    EXPECT_FALSE(FolderExists(SceneFolder("S")));
}

TEST_F(SceneManagerOfADocument, TheOpenSceneIsClosedWhenItIsDeleted) {
    NewScene("S");
    MakeFolder("A");
    Set(profile, setting::importThreshold, 77);
    prompter.useSceneManager = [](CSceneManager& manager) { static_cast<void>(manager.DeleteScene("S")); };
    TakeHints();
    doc->Scenes().ManageScenes();
    EXPECT_EQ(TakeHints(), std::vector<int>{511});
    EXPECT_FALSE(doc->Model().sceneOpen);
    EXPECT_EQ(doc->Model().importThreshold, 77);
    EXPECT_EQ(Get(profile, setting::lastScene), "");
    prompter.TakeMessages();
    StartDocument();
    EXPECT_FALSE(doc->Model().sceneOpen);
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
}

} // namespace velmor::testing
