#include "TempFolder.h"
#include "image/Palette.h"
#include "qt/ModalDriver.h"
#include "scene/SceneManager.h"
#include "views/prompter/QtPrompter.h"

#include <QComboBox>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace velmor::testing {
namespace {

class CSceneManagerDialogTest : public ::testing::Test {
protected:
    CSceneManagerDialogTest() {
        window.show();
        for (const char* cel : {"1", "2", "10"})
            Put("Walk", "Man", cel, ".bit");
        Put("Walk", "Dog", "7", ".bit");
        Put("Walk", "_Pictures_", "Sky", ".rgba");
        Put("Run", "Man", "2", ".bit");
        Put("Run", "Cat", "9", ".bit");
    }

    void Put(const std::string& scene, const std::string& where, const std::string& name, const char* extension) {
        const Path target = database.Path() / (scene + ".scene") / where;
        static_cast<void>(CreateFolder(target));
        WriteBytes(target / (name + extension), {});
    }
    bool Exists(const char* file) const { return FileExists(database / file); }

    void Run(const std::function<void(QDialog&)>& use) {
        WithDialog([this] { prompter.RunSceneManager(manager); }, use);
    }
    static QStringList Names(QDialog& dialog, const char* list) {
        const QAbstractItemModel& model = *Child<QListView>(dialog, list).model();
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names.append(model.index(row, 0).data().toString());
        return names;
    }
    static void Choose(QDialog& dialog, const char* box, const char* text) {
        Child<QComboBox>(dialog, box).setCurrentText(text);
    }
    static void Select(QDialog& dialog, int row) {
        auto& list = Child<QListView>(dialog, "leftAssets");
        list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
    }
    static bool IsEnabled(QDialog& dialog, const char* button) {
        return Child<QPushButton>(dialog, button).isEnabled();
    }
    // Presses a button that asks or tells something, and answers.
    static void Press(QDialog& dialog, const char* button, const std::function<void(QDialog&)>& answer) {
        WithDialog([&] { Child<QPushButton>(dialog, button).click(); }, answer);
    }

    CTempFolder database;
    QWidget window;
    CQtPrompter prompter{window};
    CSceneManager manager{WithSeparator(database.Path().string()), prompter};
};

TEST_F(CSceneManagerDialogTest, ListsFollowSceneFolderAndKind) {
    Run([](QDialog& dialog) {
        EXPECT_EQ(Child<QComboBox>(dialog, "leftScene").currentIndex(), -1);
        EXPECT_FALSE(IsEnabled(dialog, "deleteScene"));
        Choose(dialog, "leftScene", "Walk");
        EXPECT_EQ(Names(dialog, "leftAssets"), QStringList{"7"}) << "the first folder, Dog";
        Choose(dialog, "leftFolder", "Man");
        EXPECT_EQ(Names(dialog, "leftAssets"), (QStringList{"1", "2", "10"}));
        Choose(dialog, "leftScene", "Run");
        EXPECT_EQ(Child<QComboBox>(dialog, "leftFolder").currentText(), "Man") << "the folder of that name";
        EXPECT_EQ(Names(dialog, "leftAssets"), QStringList{"2"});
        EXPECT_EQ(Names(dialog, "rightAssets"), QStringList());

        Choose(dialog, "leftScene", "Walk");
        Child<QRadioButton>(dialog, "PIC").click();
        EXPECT_EQ(Names(dialog, "leftAssets"), QStringList{"Sky"});
        EXPECT_FALSE(Child<QComboBox>(dialog, "leftFolder").isEnabled());
        Child<QRadioButton>(dialog, "SND").click();
        EXPECT_EQ(Names(dialog, "leftAssets"), QStringList());
        Child<QRadioButton>(dialog, "CEL").click();
        EXPECT_TRUE(Child<QComboBox>(dialog, "leftFolder").isEnabled());
        EXPECT_EQ(Names(dialog, "leftAssets"), (QStringList{"1", "2", "10"}));
        EXPECT_FALSE(IsEnabled(dialog, "backupScene") || IsEnabled(dialog, "restoreScene"));
    });
}

TEST_F(CSceneManagerDialogTest, TransfersTheSelectedAssetsInOrder) {
    Run([&](QDialog& dialog) {
        Choose(dialog, "leftScene", "Walk");
        Choose(dialog, "leftFolder", "Man");
        Choose(dialog, "rightScene", "Run");
        EXPECT_FALSE(IsEnabled(dialog, "transferAssets")) << "nothing selected";
        Select(dialog, 2);
        Select(dialog, 1);
        Choose(dialog, "rightFolder", "Man");
        Press(dialog, "transferAssets", [&](QDialog& message) {
            EXPECT_EQ(dialog.windowTitle(), "Transferring..2") << "2 is there already, 10 has not come yet";
            EXPECT_FALSE(Exists("Run.scene/Man/10.bit"));
            message.accept();
        });
        EXPECT_EQ(dialog.windowTitle(), "Scene Manager");
        EXPECT_EQ(Names(dialog, "rightAssets"), (QStringList{"2", "10"}));
        EXPECT_EQ(Child<QListView>(dialog, "leftAssets").selectionModel()->selectedRows().size(), 2);

        Child<QRadioButton>(dialog, "PIC").click();
        EXPECT_FALSE(IsEnabled(dialog, "transferAssets"));
        Select(dialog, 0);
        Child<QPushButton>(dialog, "transferAssets").click();
        EXPECT_EQ(Names(dialog, "rightAssets"), QStringList{"Sky"});
    });
    EXPECT_TRUE(Exists("Run.scene/_Pictures_/Sky.rgba"));
}

TEST_F(CSceneManagerDialogTest, PalettesGoFromLeftToRight) {
    CPalette palette;
    ASSERT_TRUE(SavePalette(database / "Walk.scene/Man/Man.colors", palette));
    Run([&](QDialog& dialog) {
        Choose(dialog, "leftScene", "Walk");
        Choose(dialog, "leftFolder", "Man");
        Choose(dialog, "rightScene", "Run");
        Choose(dialog, "rightFolder", "Cat");
        Press(dialog, "transferPalette", [](QDialog& question) { question.reject(); });
        EXPECT_FALSE(Exists("Run.scene/Cat/Cat.colors"));
        Press(dialog, "transferPalette", [](QDialog& question) { question.accept(); });
        EXPECT_TRUE(Exists("Run.scene/Cat/Cat.colors"));
        Press(dialog, "mergePalette", [](QDialog& question) { question.accept(); });
        Child<QRadioButton>(dialog, "SND").click();
        EXPECT_FALSE(IsEnabled(dialog, "transferPalette")) << "no folders are chosen from now";
    });
}

TEST_F(CSceneManagerDialogTest, TabGoesFromLeftToRight) {
    Run([](QDialog& dialog) {
        ASSERT_NE(dialog.focusWidget(), nullptr);
        EXPECT_EQ(dialog.focusWidget()->objectName(), "leftScene");
        QStringList order;
        for (int i = 0; i < 8; ++i) {
            order.append(dialog.focusWidget()->objectName());
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        EXPECT_EQ(order, (QStringList{"leftScene", "leftFolder", "leftAssets", "SND", "PIC", "CEL", "rightScene",
                                      "rightFolder"}))
            << "without a scene no button of the middle is enabled";
    });
}

TEST_F(CSceneManagerDialogTest, DeletesTheLeftSceneAndKeepsTheRightOne) {
    Run([&](QDialog& dialog) {
        Choose(dialog, "leftScene", "Walk");
        Choose(dialog, "rightScene", "Run");
        Choose(dialog, "rightFolder", "Man");
        Press(dialog, "deleteScene", [](QDialog& question) { question.accept(); });
        EXPECT_EQ(Child<QComboBox>(dialog, "leftScene").currentIndex(), -1);
        EXPECT_EQ(Names(dialog, "leftAssets"), QStringList());
        EXPECT_FALSE(IsEnabled(dialog, "deleteScene"));
        EXPECT_EQ(Child<QComboBox>(dialog, "rightScene").currentText(), "Run");
        EXPECT_EQ(Child<QComboBox>(dialog, "rightFolder").currentText(), "Man");
        EXPECT_EQ(Child<QComboBox>(dialog, "rightScene").count(), 1);
        QTest::keyClick(&Child<QListView>(dialog, "rightAssets"), Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible()) << "Enter in a list does not close";
    });
    EXPECT_FALSE(FolderExists(database / "Walk.scene"));
    EXPECT_EQ(manager.DeletedScenes(), std::set<std::string>{"Walk"});
}

} // namespace
} // namespace velmor::testing
