#include "app/window/Application.h"

#include "TestScene.h"
#include "app/window/MainFrame.h"
#include "platform/files/ClaimedFile.h"
#include "qt/ModalDriver.h"
#include "qt/Patience.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

#include <QAction>
#include <QLabel>
#include <QTest>

namespace velmor::testing {

TEST(ApplicationTest, ASecondStartBringsTheFirstWindowToTheFront) {
    const CTempFolder folder;
    const CProgramFolders folders{folder / "program", folder / "settings", folder / "data"};
    CApplication first(folders);
    ASSERT_TRUE(first.Start(false));
    first.Frame().showMinimized();
    CApplication second(folders);
    WithDialog([&] { EXPECT_FALSE(second.Start(false)); },
               [](QDialog& dialog) {
                   bool told = false;
                   for (const QLabel* label : dialog.findChildren<QLabel*>())
                       told |= label->text().contains("Personal Velmor is already running");
                   EXPECT_TRUE(told);
               });
    EXPECT_TRUE(WaitFor([&] { return !first.Frame().isMinimized(); }));
}

TEST(ApplicationTest, AnXSheetOpensInTheRunningProgram) {
    const CTempFolder folder;
    const CProgramFolders folders{folder / "program", folder / "settings", folder / "data"};
    const CTestScene here(folder / "db", "Here");
    const CTestScene there(folder / "other", "There");
    const auto file = [](const CTestScene& scene) { return scene.folder / (scene.name + ".xsheet"); };
    CApplication first(folders);
    ASSERT_TRUE(first.Start(false, file(here)));
    EXPECT_EQ(first.Document().Scenes().GetSceneName(), "Here");
    CApplication second(folders);
    EXPECT_FALSE(second.Start(false, file(there))) << "and shows no message, which would wait for an answer";
    EXPECT_TRUE(WaitFor([&] { return first.Document().Scenes().GetSceneName() == "There"; }));
    for (const Path& wrong : {folder / "db" / "x.xsheet", folder / "other" / "There.scene" / "Other.xsheet",
                              folder / "gone" / "Gone.scene" / "Gone.xsheet"})
        WithDialog([&] { EXPECT_FALSE(first.Document().Scenes().OpenSceneFile(wrong)); }, [](QDialog&) {});
    EXPECT_EQ(first.Document().Scenes().GetSceneName(), "There");
    EXPECT_TRUE(FileExists(file(there)));
    EXPECT_FALSE(FolderExists(folder / "gone"));
}

TEST(ApplicationTest, WhatAKilledProgramLeftBesideItsSettingsGoes) {
    const CTempFolder folder;
    const CProgramFolders folders{folder / "program", folder / "settings", folder / "data"};
    ASSERT_TRUE(CreateFolder(folder / "settings") && CreateFolder(folder / "elsewhere"));
    WriteBytes(folder / "elsewhere" / "settings.ini", {});
    std::filesystem::create_symlink("../elsewhere/settings.ini", folder / "settings" / "personal-velmor.ini");
    std::vector<CClaimedFile> living;
    std::vector<Path> abandoned;
    for (const char* place : {"settings", "elsewhere"}) {
        std::optional<CClaimedFile> claimed = CClaimedFile::Make(folder / place);
        ASSERT_TRUE(claimed);
        std::string name = Utf8Of(claimed->Name().filename());
        char& digit = name[name.size() - std::string(".tmp").size() - 1];
        digit = digit == '0' ? '1' : '0';
        WriteBytes(folder / place / name, {}); // which nobody has locked
        living.push_back(std::move(*claimed));
        abandoned.push_back(folder / place / name);
    }
    CApplication program(folders);
    ASSERT_TRUE(program.Start(false));
    for (std::size_t i = 0; i < living.size(); ++i) {
        EXPECT_TRUE(FileExists(living[i].Name()));
        EXPECT_FALSE(FileExists(abandoned[i])) << abandoned[i];
    }
}

// The program dies, as far as its files can tell, before anything is saved; the next one asks, and has it again.
TEST(ApplicationTest, WhatIsFinishedIsSafeBeforeTheNextEventAndComesBack) {
    const CTempFolder folder;
    const CProgramFolders folders{
        folder / "program", folder / "settings", folder / "data", {}, folder / "journals"};
    const CTestScene scene(folder / "db", "Here");
    const Path sheet = scene.folder / "Here.xsheet";
    int levels = 0;
    {
        CApplication program(folders);
        ASSERT_TRUE(program.Start(false, sheet));
        CVelmorltDoc& doc = program.Document();
        const CSceneModel& model = doc.Model();
        levels = model.Scene().xsheet.LevelCount();
        doc.Cursor().GoTo({0, 1});
        doc.Cursor().SetSelEndY(6);
        doc.XSheet().Cut();
        EXPECT_FALSE(model.history.IsIdle());
        QEvent next(QEvent::User);
        QCoreApplication::sendEvent(&program.Frame(), &next);
        EXPECT_TRUE(model.history.IsIdle());
        program.Frame().UpdateCommands();
        program.Frame().Action(CommandId::EditUndo)->trigger();
        EXPECT_EQ(program.Frame().Action(CommandId::EditRedo)->text(), "&Redo Cut\tCtrl+Shift+Z");
        program.Frame().Action(CommandId::EditRedo)->trigger();
        EXPECT_EQ(program.Frame().Action(CommandId::EditUndo)->text(), "&Undo Cut\tCtrl+Z");
    }
    CApplication next(folders);
    WithDialog([&] { ASSERT_TRUE(next.Start(false, sheet)); },
               [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    const CXSheet& recovered = next.Document().Model().Scene().xsheet;
    EXPECT_EQ(recovered.LevelCount(), levels);
    EXPECT_FALSE(recovered.Cell(0, 3).IsUsed());
    EXPECT_TRUE(recovered.Cell(0, 8).IsUsed());
}

TEST(ApplicationTest, TheDemonstrationIsMadeOnceAndOpened) {
    const CTempFolder folder;
    const CProgramFolders folders{folder / "program", folder / "settings", folder / "data"};
    CApplication first(folders);
    ASSERT_TRUE(first.Start(false, CApplication::demoSign));
    const CSceneModel& model = first.Document().Model();
    EXPECT_EQ(model.sceneName, "Demo");
    EXPECT_EQ(model.folderName, "Fox");
    EXPECT_GT(model.Scene().xsheet.LevelCount(), 3);

    // Once more it is the same scene, with what has been done to it.
    const Path mine = model.Paths().PictureFile("Mine");
    WriteBytes(mine, std::vector<std::uint8_t>{1});
    const CTestScene other(PathOf(model.databaseFolder), "Other");
    ASSERT_TRUE(first.Document().Scenes().OpenScene("Other"));
    CApplication second(folders);
    EXPECT_FALSE(second.Start(false, CApplication::demoSign));
    EXPECT_TRUE(QTest::qWaitFor([&] { return model.sceneName == "Demo"; }));
    EXPECT_TRUE(FileExists(mine));
}

} // namespace velmor::testing
