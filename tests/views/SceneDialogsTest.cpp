#include "TempFolder.h"
#include "qt/ModalDriver.h"
#include "scene/DialogRequests.h"
#include "scene/SceneSettings.h"
#include "views/prompter/QtPrompter.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <algorithm>
#include <limits>

namespace velmor::testing {
namespace {

class CSceneDialogsTest : public ::testing::Test {
protected:
    CSceneDialogsTest() { window.show(); }

    static QString Text(QDialog& dialog, const char* name) { return Child<QLineEdit>(dialog, name).text(); }
    static void Type(QDialog& dialog, const char* name, const QString& text) {
        auto& edit = Child<QLineEdit>(dialog, name);
        edit.selectAll();
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, text);
    }
    static void Choose(QComboBox& box, const QString& text) {
        box.setCurrentText(text);
        emit box.activated(box.currentIndex());
    }
    static void PressEnter(QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }

    QWidget window;
    CQtPrompter prompter{window};
};

TEST_F(CSceneDialogsTest, PresetsSetSizeAndRate) {
    std::optional<CSceneSettings> settings;
    WithDialog(
        [&] {
            settings = prompter.Ask(CSceneSettingsRequest{true, WithPreset({}, palPreset), {}});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "New Scene");
            auto& presets = Child<QComboBox>(dialog, "presets");
            auto& rates = Child<QComboBox>(dialog, "rates");
            EXPECT_EQ(presets.currentText(), "PAL");
            EXPECT_EQ(Text(dialog, "length"), "100");
            EXPECT_TRUE(Child<QLineEdit>(dialog, "width").isReadOnly());
            EXPECT_TRUE(Child<QLineEdit>(dialog, "rate").isReadOnly());
            EXPECT_FALSE(rates.isEnabled());
            EXPECT_EQ(rates.currentText(), "25");
            Choose(presets, "HDTV 2");
            EXPECT_EQ(Text(dialog, "width") + Text(dialog, "height") + Text(dialog, "rate"), "1920108030");
            EXPECT_EQ(rates.currentText(), "30");
            Choose(presets, "Custom");
            EXPECT_EQ(Text(dialog, "height"), "1080") << "what was there is where one goes on";
            Type(dialog, "height", "800");
            Choose(rates, "24");
            EXPECT_EQ(Text(dialog, "rate"), "24");
            Type(dialog, "rate", "12");
            EXPECT_EQ(rates.currentText(), "Custom");
            Type(dialog, "name", "Walk 1");
            PressEnter(dialog);
        });
    ASSERT_TRUE(settings.has_value());
    EXPECT_EQ(*settings, (CSceneSettings{"Walk 1", 100, {1920, 800, 12, 0}, customPreset}));
}

TEST_F(CSceneDialogsTest, RefusedSettingsKeepTheDialogOpen) {
    std::vector<int> widths;
    CSceneSettingsRequest request{false, {"Walk", 20, {640, 480, 24, MakeColorRef(10, 20, 30)}, customPreset}, {}};
    request.accept = [&](const CSceneSettings& values) {
        widths.push_back(values.geometry.width);
        return static_cast<bool>(CheckSceneSettings(values));
    };
    std::optional<CSceneSettings> settings;
    WithDialog([&] { settings = prompter.Ask(request); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(dialog.windowTitle(), "Scene Settings");
                   EXPECT_TRUE(Child<QLineEdit>(dialog, "name").isReadOnly());
                   EXPECT_TRUE(Child<QComboBox>(dialog, "rates").isEnabled());
                   for (const char* refused : {"", "5", "99999", "-640"}) {
                       Type(dialog, "width", refused);
                       PressEnter(dialog);
                       EXPECT_TRUE(dialog.isVisible()) << refused;
                       EXPECT_EQ(Text(dialog, "width"), refused) << "what was typed stays as it is";
                   }
                   Type(dialog, "width", "2048");
                   PressEnter(dialog);
                   EXPECT_FALSE(dialog.isVisible());
               });
    EXPECT_EQ(widths, (std::vector{0, 5, 99999, -640, 2048}));
    ASSERT_TRUE(settings.has_value());
    EXPECT_EQ(settings->geometry, (CSceneGeometry{2048, 480, 24, MakeColorRef(10, 20, 30)}));
    WithDialog([&] { settings = prompter.Ask(request); }, [](QDialog& dialog) { dialog.reject(); });
    EXPECT_FALSE(settings.has_value());
}

TEST_F(CSceneDialogsTest, BackgroundIsChosenInTheColourDialog) {
    std::optional<CSceneSettings> settings;
    WithDialog(
        [&] {
            settings = prompter.Ask(CSceneSettingsRequest{true, WithPreset({}, palPreset), {}});
        },
        [&](QDialog& dialog) {
            WithDialog([&] { Child<QPushButton>(dialog, "backgroundChooser").click(); },
                       [](QDialog& inner) {
                           auto& colors = dynamic_cast<QColorDialog&>(inner);
                           EXPECT_EQ(colors.currentColor(), QColor(Qt::black));
                           colors.setCurrentColor(QColor(1, 2, 3));
                           colors.accept();
                       });
            PressEnter(dialog);
        });
    ASSERT_TRUE(settings.has_value());
    EXPECT_EQ(settings->geometry.background, MakeColorRef(1, 2, 3));
}

TEST_F(CSceneDialogsTest, TypingFindsAmongThousandsOfScenes) {
    std::vector<std::string> scenes;
    for (int i = 0; i < 5000; ++i)
        scenes.push_back("Scene " + std::to_string(i));
    std::optional<std::string> scene;
    const auto ask = [&] { scene = prompter.Ask(COpenSceneRequest{scenes}); };
    WithDialog(ask, [](QDialog& dialog) {
        auto& search = Child<QLineEdit>(dialog, "search");
        QTest::keyClicks(&search, "NE 432");
        QTest::keyClick(&search, Qt::Key_Down);
        QTest::keyClick(&search, Qt::Key_Down);
        PressEnter(dialog);
    });
    EXPECT_EQ(scene, "Scene 4321") << "432, 4320, 4321";
    WithDialog(ask, [](QDialog& dialog) {
        auto& search = Child<QLineEdit>(dialog, "search");
        QTest::keyClicks(&search, "no such scene");
        PressEnter(dialog);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_FALSE(scene.has_value());
    WithDialog(ask, [](QDialog& dialog) {
        auto& list = Child<QListView>(dialog, "scenes");
        const QPoint second = list.visualRect(list.model()->index(1, 0)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, second);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, second);
    });
    EXPECT_EQ(scene, "Scene 1");
}

TEST_F(CSceneDialogsTest, DatabaseFolderEndsWithTheSeparator) {
    const CTempFolder folder;
    std::optional<std::string> chosen;
    WithDialog([&] { chosen = prompter.Ask(CDatabaseFolderRequest{"/old/Database/"}); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(dialog.windowTitle(), "Global Settings");
                   EXPECT_EQ(Text(dialog, "folder"), "/old/Database/");
                   WithDialog([&] { Child<QPushButton>(dialog, "set").click(); },
                              [&](QDialog& inner) {
                                  auto& chooser = dynamic_cast<QFileDialog&>(inner);
                                  EXPECT_EQ(chooser.windowTitle(), "Choose Folder");
                                  EXPECT_EQ(chooser.labelText(QFileDialog::Accept), "Set");
                                  EXPECT_EQ(chooser.directory(), QDir::current());
                                  Child<QLineEdit>(chooser, "fileNameEdit")
                                      .setText(QString::fromStdString(folder.Path().string()));
                                  QMetaObject::invokeMethod(&chooser, "accept");
                              });
                   PressEnter(dialog);
               });
    EXPECT_EQ(chosen, folder.Path().string() + "/");
}

TEST_F(CSceneDialogsTest, NamesAreAskedAgainUntilTheyAreAccepted) {
    struct CCase {
        NameKind kind;
        const char* title;
    };
    for (const CCase& each : {CCase{NameKind::Folder, "New Folder"}, CCase{NameKind::Cel, "New Cel No?"},
                              CCase{NameKind::Sound, "New Sound Name?"}, CCase{NameKind::Level, "Level Info"}}) {
        std::optional<std::string> name;
        WithDialog(
            [&] {
                name = prompter.Ask(
                    CNameRequest{each.kind, "7", [](const std::string& text) { return text != "bad"; }});
            },
            [&](QDialog& dialog) {
                EXPECT_EQ(dialog.windowTitle(), each.title);
                auto& edit = Child<QLineEdit>(dialog, "name");
                EXPECT_EQ(edit.selectedText(), "7") << "typing replaces what is proposed";
                QTest::keyClicks(&edit, "bad");
                PressEnter(dialog);
                EXPECT_EQ(edit.selectedText(), "bad");
                QTest::keyClicks(&edit, "8");
                PressEnter(dialog);
            });
        EXPECT_EQ(name, "8");
    }
}

TEST_F(CSceneDialogsTest, ARuleMayAskOverTheDialog) {
    std::optional<std::string> name;
    int asked = 0;
    const auto overwrite = [&](const std::string&) {
        ++asked;
        return prompter.AskYesNo("Cel Exists, Do you want to overwrite it ?");
    };
    WithDialog(
        [&] {
            name = prompter.Ask(CNameRequest{NameKind::Cel, "12a", overwrite});
        },
        [&](QDialog& dialog) {
            WithDialog([&] { PressEnter(dialog); },
                       [&](QDialog& question) {
                           EXPECT_EQ(question.parentWidget(), &dialog);
                           question.reject();
                       });
            EXPECT_TRUE(dialog.isVisible());
            WithDialog(
                [&] { PressEnter(dialog); },
                [](QDialog& question) { dynamic_cast<QMessageBox&>(question).button(QMessageBox::Yes)->click(); });
        });
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(name, "12a");
}

TEST_F(CSceneDialogsTest, NewCelGivesNumberAndSize) {
    std::optional<CNewCelValues> cel;
    WithDialog(
        [&] {
            cel = prompter.Ask(CNewCelRequest{{"13", {768, 576}}, {}});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "New Cel ?");
            Type(dialog, "width", "100");
            Type(dialog, "height", "");
            PressEnter(dialog);
        });
    ASSERT_TRUE(cel.has_value());
    EXPECT_EQ(cel->name, "13");
    EXPECT_EQ(cel->size, (CSize{100, 0}));
}

TEST_F(CSceneDialogsTest, ANewCelThatIsTooLargeIsEnteredAgain) {
    std::vector<CSize> sizes;
    WithDialog(
        [&] {
            prompter.Ask(CNewCelRequest{{"13", {768, 576}}, [&](const CNewCelValues& values) {
                                            sizes.push_back(values.size);
                                            return false;
                                        }});
        },
        [&](QDialog& dialog) {
            Type(dialog, "width", "99999999999");
            PressEnter(dialog);
            EXPECT_EQ(dialog.focusWidget()->objectName(), "width");
            Type(dialog, "width", "100");
            Type(dialog, "height", "70000");
            PressEnter(dialog);
            EXPECT_EQ(dialog.focusWidget()->objectName(), "height");
        });
    EXPECT_EQ(sizes, (std::vector{CSize{std::numeric_limits<int>::max(), 576}, CSize{100, 70000}}));
}

TEST_F(CSceneDialogsTest, LevelsAreChosenByTheirPlaceNotTheirName) {
    std::optional<int> level;
    WithDialog(
        [&] {
            level = prompter.Ask(CLevelRequest{"Delete which level?", {"A", "", ""}});
        },
        [](QDialog& dialog) {
            QTest::keyClick(&Child<QListWidget>(dialog, "levels"), Qt::Key_End);
            PressEnter(dialog);
        });
    EXPECT_EQ(level, 2);
}

TEST_F(CSceneDialogsTest, TwoLevelsAreSwappedAndAThirdReplacesTheFirst) {
    std::optional<std::pair<int, int>> levels;
    WithDialog(
        [&] {
            levels = prompter.Ask(CSwapLevelsRequest{{"A", "B", "C", "D"}});
        },
        [](QDialog& dialog) {
            auto& list = Child<QListWidget>(dialog, "levels");
            const auto click = [&](int row) {
                QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                                  list.visualItemRect(list.item(row)).center());
            };
            click(3);
            PressEnter(dialog);
            EXPECT_TRUE(dialog.isVisible()) << "one is not enough";
            click(2);
            click(0);
            EXPECT_FALSE(list.item(3)->isSelected());
            PressEnter(dialog);
        });
    EXPECT_EQ(levels, std::pair(0, 2));
}

TEST_F(CSceneDialogsTest, FrameCountsAreHeldAgainstTheRule) {
    std::vector<int> counts;
    std::optional<int> count;
    WithDialog(
        [&] {
            count = prompter.Ask(CFrameCountRequest{"Add how many frames to the end ?", 1, [&](int value) {
                                                        counts.push_back(value);
                                                        return value == 48;
                                                    }});
        },
        [](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "How many frames ?");
            for (const char* text : {"", "90000", "48"}) {
                Type(dialog, "count", text);
                PressEnter(dialog);
            }
        });
    EXPECT_EQ(counts, (std::vector{0, 90000, 48}));
    EXPECT_EQ(count, 48);
}

TEST_F(CSceneDialogsTest, FrameCountsAreShownWhileTheyAreEntered) {
    std::vector<std::optional<int>> shown;
    WithDialog(
        [&] {
            CFrameCountRequest request{"By how many frames ?", 2, {}, "Shift Cels"};
            request.show = [&](std::optional<int> value) { shown.push_back(value); };
            prompter.Ask(request);
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Shift Cels");
            EXPECT_EQ(shown, (std::vector<std::optional<int>>{2}));
            for (const char* text : {"", "-4"})
                Type(dialog, "count", text);
            PressEnter(dialog);
        });
    ASSERT_GE(shown.size(), 3U);
    EXPECT_NE(std::ranges::find(shown, std::optional<int>()), shown.end()) << "what is no number is told as well";
    EXPECT_EQ(shown.back(), -4);
}

TEST_F(CSceneDialogsTest, TabGoesThroughTheFieldsBeforeTheButtons) {
    WithDialog(
        [&] {
            prompter.Ask(CNewCelRequest{{"13", {768, 576}}, {}});
        },
        [](QDialog& dialog) {
            QStringList order;
            for (int i = 0; i < 4; ++i) {
                order.append(dialog.focusWidget()->objectName());
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            }
            EXPECT_EQ(order, (QStringList{"name", "width", "height", ""}));
        });
}

TEST_F(CSceneDialogsTest, AppearancesAreSeenAsTheyAreChosen) {
    std::vector<Appearance> shown;
    std::optional<Appearance> answer;
    const auto ask = [&](const std::function<void(QDialog&)>& use) {
        shown.clear();
        const CAppearanceRequest request{Appearance::Light, [&](Appearance chosen) { shown.push_back(chosen); }};
        WithDialog([&] { answer = prompter.Ask(request); },
                   [&](QDialog& dialog) {
                       EXPECT_EQ(dialog.windowTitle(), "Appearance");
                       EXPECT_TRUE(shown.empty());
                       const QList<QRadioButton*> choices = dialog.findChildren<QRadioButton*>();
                       EXPECT_TRUE(choices.at(1)->isChecked());
                       choices.at(2)->click();
                       use(dialog);
                   });
    };
    ask(PressEnter);
    EXPECT_EQ(answer, Appearance::Dark);
    EXPECT_EQ(shown, std::vector{Appearance::Dark});
    ask([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(answer);
    EXPECT_EQ(shown, (std::vector{Appearance::Dark, Appearance::Light})) << "it is as it was";
}

} // namespace
} // namespace velmor::testing
