#include "XSheetScene.h"
#include "scene/Settings.h"
#include "scene/sheet/OtherSheet.h"
#include "scene/sheet/SheetDisplay.h"
#include "xsheet/XSheetFile.h"

namespace velmor::testing {
namespace {

class SheetAtAGlanceTest : public CXSheetScene {
protected:
    std::string Names() const {
        std::string names;
        for (int level = 0; level < scene.xsheet.LevelCount(); ++level)
            names += scene.xsheet.LevelName(level);
        return names;
    }
    std::string Folded() const {
        std::string folded;
        for (int level = 0; level < scene.xsheet.LevelCount(); ++level)
            folded += display.Folded()[static_cast<std::size_t>(level)] ? 'f' : '.';
        return folded;
    }
    /// A cel of the open scene.
    void MakeCel(const std::string& celFolder, const std::string& name, CSize size) {
        static_cast<void>(CreateFolder(model.Paths().CelFolder(celFolder)));
        CCelImg cel;
        EXPECT_TRUE(cel.CreateCel(size.width, size.height, model.Paths().CelFile(celFolder, name)));
        EXPECT_TRUE(cel.SaveCel());
    }
    /// Another scene of the database, with one level.
    void MakeScene(const std::string& name, const CScene& made) {
        const CScenePaths paths(model.databaseFolder, name);
        static_cast<void>(CreateFolder(paths.SceneFolder()));
        EXPECT_TRUE(SaveXSheet(paths.XSheetFile(), made));
    }

    CSheetDisplay display{Context()};
    COtherSheet other{Context()};
};

TEST_F(SheetAtAGlanceTest, LevelsMoveWithTheirNamesFlagsAndFoldsAsOneStep) {
    SetLevels(4);
    Put(2, 5, "A");
    cursor.GoTo({2, 5});
    model.selection = {1, 2, 0, 99};
    model.moveSelection.ToggleLevel(2, 4);
    display.Fold(2, 3, true);
    sheet.MoveLevels(1, 2, 4);
    EXPECT_EQ(Names(), "0312");
    EXPECT_EQ(Folded(), ".f.f");
    EXPECT_TRUE(scene.xsheet.Cell(3, 5).IsUsed());
    EXPECT_EQ(model.CursorCell(), (CSheetCell{3, 5}));
    EXPECT_EQ(model.selection, (CXSheetSelection{2, 3, 0, 99}));
    EXPECT_TRUE(model.moveSelection.IsLevelSelected(3));
    EXPECT_FALSE(model.moveSelection.IsLevelSelected(2));
    Undo();
    EXPECT_EQ(Names(), "0123");
    EXPECT_EQ(Folded(), "..ff");
    Redo();
    EXPECT_EQ(Names(), "0312");

    const CScene before = scene;
    sheet.MoveLevels(2, 3, 3);
    sheet.MoveLevels(2, 9, 0);
    sheet.MoveLevels(1, 1, 9);
    model.selection = {0, 1, 0, 0};
    sheet.MoveLevelsLeft();
    EXPECT_EQ(scene, before) << "there is no such place";
    sheet.MoveLevelsRight();
    EXPECT_EQ(Names(), "1032");
}

TEST_F(SheetAtAGlanceTest, FoldsBelongToTheirScene) {
    SetLevels(3);
    scene.xsheet.SetLevelName(0, "Man");
    scene.xsheet.SetLevelName(2, "Man");
    display.Fold(2, 2, true);
    EXPECT_EQ(Folded(), "..f") << "of two with the same name";
    EXPECT_TRUE(display.AreFolded(2, 2));
    EXPECT_FALSE(display.AreFolded(1, 2));
    model.sceneName = "Else";
    EXPECT_EQ(Folded(), "...");
    model.sceneName = "Test";
    EXPECT_EQ(Folded(), "..f");
    display.UnfoldAll();
    EXPECT_EQ(Folded(), "...");
    display.SetZoom(9);
    EXPECT_EQ(display.Zoom(), CSheetDisplay::mostZoom);
    Set(profile, setting::sheetZoom, -4);
    EXPECT_EQ(display.Zoom(), 0);
}

TEST_F(SheetAtAGlanceTest, CellsOfAnotherSceneAreCopiedAsFarAsTheirDrawingsAreHere) {
    CScene away;
    away.geometry.width = 968;
    away.geometry.height = 576;
    away.xsheet = CXSheet(2, 6);
    away.xsheet.MutableCell(0, 1) = CXSheetCell::FromFile("Fox", "1", {500, 288, 2, 1, 0.5}, 30, 1, 1, {9, 9});
    away.xsheet.MutableCell(0, 2) = CXSheetCell::FromFile("Fox", "2", {500, 288, 1, 1, 0}, 0, 1, 1, {9, 9});
    MakeScene("Away", away);
    MakeCel("Fox", "1", {40, 30});
    EXPECT_EQ(other.Scenes(), Texts{"Away"});
    EXPECT_FALSE(other.CanCopy());
    ASSERT_TRUE(other.Open("Away"));
    other.Select({0, 1}, false);
    other.Select({1, 3}, true);
    EXPECT_EQ(other.Model().selection, (CXSheetSelection{0, 1, 1, 3}));
    other.Copy();
    EXPECT_EQ(model.clipboard.width, 2);
    EXPECT_EQ(model.clipboard.height, 3);
    const CXSheetCell& copied = model.clipboard.cells.front();
    EXPECT_TRUE(copied.Shows("Fox", "1"));
    EXPECT_EQ(copied.Size(), (CSize{40, 30})) << "as it is here";
    EXPECT_EQ(copied.PosX(), 400) << "as far from the middle";
    EXPECT_EQ(copied.Transparency(), 30);
    EXPECT_FALSE(model.clipboard.cells[2].IsUsed());
    const Texts told = prompter.TakeMessages();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told.front().find("Fox 2"), std::string::npos);

    cursor.GoTo({0, 10});
    sheet.Paste();
    EXPECT_TRUE(scene.xsheet.Cell(0, 10).Shows("Fox", "1"));
    CScene read;
    EXPECT_TRUE(LoadXSheet(CScenePaths(model.databaseFolder, "Away").XSheetFile(), read));
    EXPECT_EQ(read, away) << "it is never written";
}

TEST_F(SheetAtAGlanceTest, ASceneThatCannotBeReadLeavesTheOneThatIsShown) {
    MakeScene("Away", CScene());
    ASSERT_TRUE(other.Open("Away"));
    EXPECT_FALSE(other.Open("Nowhere"));
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_EQ(other.Model().sceneName, "Away");
    EXPECT_TRUE(other.CanCopy());
    other.Select({7, 0}, false);
    other.Select({0, 100}, true);
    EXPECT_EQ(other.Model().selection, CXSheetSelection{}) << "outside";
    other.Close();
    other.Copy();
    EXPECT_TRUE(model.clipboard.IsEmpty());
}

} // namespace
} // namespace velmor::testing
