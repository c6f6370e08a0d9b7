#include "TempFolder.h"
#include "platform/files/Profile.h"
#include "qt/ModalDriver.h"
#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"
#include "views/prompter/QtPrompter.h"
#include "views/prompter/TimeLeft.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

namespace velmor::testing {
namespace {

class CPrompterTest : public ::testing::Test {
protected:
    CPrompterTest() { window.show(); }

    QWidget window;
    CQtPrompter prompter{window};
};

QString TextOf(QDialog& dialog) {
    const auto* box = qobject_cast<QMessageBox*>(&dialog);
    return box != nullptr ? box->text() : Child<QLabel>(dialog, "text").text();
}

TEST_F(CPrompterTest, MessagesShowTheirTextAsItIs) {
    const QString text = "<b>a & b</b>\nReading file ->";
    WithDialog([&] { prompter.ShowMessage(text.toStdString()); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(TextOf(dialog), text);
                   EXPECT_EQ(dynamic_cast<QMessageBox&>(dialog).textFormat(), Qt::PlainText);
                   EXPECT_EQ(dialog.parentWidget(), &window);
               });
    WithDialog([&] { prompter.ShowVelmorMessage(text.toStdString()); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(dialog.windowTitle(), "Velmor Message!");
                   EXPECT_EQ(TextOf(dialog), text);
                   EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1);
               });
}

TEST_F(CPrompterTest, QuestionsAreAnsweredByTheirButtonsAndEscapeMeansNo) {
    bool answer = false;
    const auto confirm = [&] { answer = prompter.Confirm("Sure?", Consequence::Undoable); };
    WithDialog(confirm, [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); });
    EXPECT_TRUE(answer);
    WithDialog(confirm, [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(answer);
    const auto ask = [&] { answer = prompter.AskYesNo("Overwrite?"); };
    WithDialog(ask, [](QDialog& dialog) { dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Yes)->click(); });
    EXPECT_TRUE(answer);
    WithDialog(ask, [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_FALSE(answer);
}

TEST_F(CPrompterTest, ReturnDoesNotDoWhatCannotBeUndone) {
    bool answer = true;
    const auto press = [](QDialog& dialog) {
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        // Where the keyboard is, as a press of the key would find it.
        QTest::keyClick(dialog.focusWidget() != nullptr ? dialog.focusWidget() : &dialog, Qt::Key_Return);
    };
    WithDialog([&] { answer = prompter.Confirm("Delete it?", Consequence::Final); }, press);
    EXPECT_FALSE(answer);
    answer = true;
    WithDialog([&] { answer = prompter.AskYesNo("Overwrite it?"); }, press);
    EXPECT_FALSE(answer);
    WithDialog([&] { answer = prompter.Confirm("Delete it?"); },
               [](QDialog& dialog) { dynamic_cast<CDialog&>(dialog).OkButton().click(); });
    EXPECT_TRUE(answer);
}

TEST_F(CPrompterTest, SpeaksWhileTheWindowIsNotShownYetAndOverTheDialogInFront) {
    window.hide();
    WithDialog([&] { prompter.ShowMessage("early"); },
               [&](QDialog& outer) {
                   EXPECT_EQ(outer.parentWidget(), nullptr);
                   WithDialog([&] { prompter.ShowVelmorMessage("inner"); },
                              [&](QDialog& inner) { EXPECT_EQ(inner.parentWidget(), &outer); });
               });
}

TEST_F(CPrompterTest, WaitCursorsNestAndRestWhileADialogIsOpen) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    auto outer = prompter.BeginWait();
    auto inner = prompter.BeginWait();
    outer.reset();
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    for (const bool own : {false, true})
        WithDialog([&] { own ? prompter.ShowVelmorMessage("text") : prompter.ShowMessage("text"); },
                   [](QDialog&) { EXPECT_EQ(QApplication::overrideCursor(), nullptr); });
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    inner.reset();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

// Reports until `done`; gives up after a time that no machine needs.
template<class Done>
void ReportUntil(IProgress& progress, Done done) {
    QElapsedTimer clock;
    bool isDone = false;
    for (clock.start(); !isDone && clock.elapsed() < 20000; isDone = done())
        progress.Report(40, "Preparing Frame : 4");
    EXPECT_TRUE(isDone);
}

TEST_F(CPrompterTest, ProgressAppearsForLongWorkAndStops) {
    auto progress = prompter.BeginProgress("Rendering");
    progress->Report(1, "Preparing Frame : 1");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "a moment of work needs no dialog";
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
    ReportUntil(*progress, [] { return QApplication::activeModalWidget() != nullptr; });
    auto& dialog = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(dialog.windowTitle(), "Rendering");
    EXPECT_EQ(TextOf(dialog), "Preparing Frame : 4");
    EXPECT_FALSE(progress->TakeStopRequest());

    // A press of the button, and what closes other dialogs, arrive with the reports.
    auto& stop = Child<QPushButton>(dialog, "stop");
    QTimer::singleShot(0, &stop, &QPushButton::click);
    ReportUntil(*progress, [&] { return progress->TakeStopRequest(); });
    EXPECT_FALSE(progress->TakeStopRequest()) << "one press, one request";
    EXPECT_FALSE(dialog.close());
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(progress->TakeStopRequest());

    bool answer = false;
    QTimer driver;
    QObject::connect(&driver, &QTimer::timeout, &driver, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return;
        EXPECT_EQ(box->parentWidget(), &dialog) << "the question stands over the progress dialog";
        driver.stop();
        box->button(QMessageBox::Yes)->click();
    });
    driver.start(1);
    answer = prompter.AskYesNo("Do you want to stop generating flipbook?");
    EXPECT_TRUE(answer);
    progress.reset();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(CPrompterTest, ProgressMayBeReportedFromWithinItsOwnEvents) {
    auto progress = prompter.BeginProgress("Rendering");
    int depth = 0;
    int deepest = 0;
    int calls = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        deepest = std::max(deepest, ++depth);
        ++calls;
        progress->Report(50, "from within");
        --depth;
    });
    timer.start(0);
    ReportUntil(*progress, [&] { return calls >= 3; });
    EXPECT_EQ(deepest, 1);
}

TEST(TimeLeftTest, SpeaksOnlyOfLongWork) {
    EXPECT_EQ(TimeLeftText(0, 60000), "");
    EXPECT_EQ(TimeLeftText(50, 2000), "") << "too early";
    EXPECT_EQ(TimeLeftText(50, 5000), "") << "ten seconds in all";
    EXPECT_EQ(TimeLeftText(25, 11000), "About 35 seconds left") << "33, rounded up";
    EXPECT_EQ(TimeLeftText(95, 60000), "A few seconds left");
    EXPECT_EQ(TimeLeftText(50, 58000), "About a minute left");
    EXPECT_EQ(TimeLeftText(10, 60000), "About 9 minutes left");
    EXPECT_EQ(TimeLeftText(1, 60000), "About 1 h 39 min left");
    EXPECT_EQ(TimeLeftText(100, 60000), "A few seconds left");
}

TEST(FileChooserTest, TakesFiltersApart) {
    EXPECT_EQ(NameFilters("Velmor Drawing Files (*.vlw)|*.vlw|Targa Files (*.tga)|*.tga||"),
              (QStringList{"Velmor Drawing Files (*.vlw)", "Targa Files (*.tga)"}));
    EXPECT_EQ(NameFilters("Audio Files (*.wav) |*.wav|"), QStringList{"Audio Files (*.wav)"});
    EXPECT_EQ(NameFilters("Pictures|*.tga;*.bmp||"), QStringList{"Pictures (*.tga *.bmp)"});
    EXPECT_EQ(NameFilters(""), QStringList());
}

TEST_F(CPrompterTest, FilesComeInTheirNumericOrderAndTheFolderIsRemembered) {
    const CTempFolder folder;
    for (const char* name : {"walk10.tga", "walk2.tga", "walk1.tga", "other.bmp"})
        WriteBytes(folder / name, {});
    const CFileRequest request{"Select", "Targa Files (*.tga)|*.tga||", "", "", true};
    std::vector<Path> files;
    const auto ask = [&] { files = prompter.Ask(COpenFilesRequest{request}); };
    WithDialog(ask, [&](QDialog& dialog) {
        auto& chooser = dynamic_cast<QFileDialog&>(dialog);
        EXPECT_EQ(chooser.windowTitle(), "Select");
        chooser.setDirectory(QString::fromStdString(folder.Path().string()));
        Child<QLineEdit>(chooser, "fileNameEdit").setText("\"walk10.tga\" \"walk2.tga\" \"walk1.tga\"");
        QMetaObject::invokeMethod(&chooser, "accept");
    });
    EXPECT_EQ(files, (std::vector{folder / "walk1.tga", folder / "walk2.tga", folder / "walk10.tga"}));
    WithDialog(ask, [&](QDialog& dialog) {
        EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).directory(),
                  QDir(QString::fromStdString(folder.Path().string())));
    });
    EXPECT_TRUE(files.empty());
}

TEST_F(CPrompterTest, FilesAreFilteredAsLastTime) {
    CProfile profile;
    const CTempFolder folder;
    WriteBytes(folder / "1.bmp", {});
    CFileRequest request{
        "Select File(s)", "Targa Files (*.tga)|*.tga|Bitmaps|*.bmp|All|*.tga;*.bmp||", "", "", false, 2};
    const auto filterOfRun = [&](const QString& change) {
        QWidget shown;
        shown.show();
        CQtPrompter another;
        another.SetParent(shown, &profile);
        QString filter;
        WithDialog([&] { static_cast<void>(another.Ask(COpenFilesRequest{request})); },
                   [&](QDialog& dialog) {
                       auto& chooser = dynamic_cast<QFileDialog&>(dialog);
                       filter = chooser.selectedNameFilter();
                       if (change.isEmpty())
                           return;
                       chooser.selectNameFilter(change);
                       chooser.setDirectory(QString::fromStdString(folder.Path().string()));
                       Child<QLineEdit>(chooser, "fileNameEdit").setText("1.bmp");
                       QMetaObject::invokeMethod(&chooser, "accept");
                   });
        return filter;
    };
    EXPECT_EQ(filterOfRun(""), "All (*.tga *.bmp)");
    EXPECT_EQ(filterOfRun("Bitmaps (*.bmp)"), "All (*.tga *.bmp)");
    EXPECT_EQ(filterOfRun(""), "Bitmaps (*.bmp)");
    request.filter = "Targa Files (*.tga)|*.tga|Drawings|*.vlw|All|*.tga||";
    EXPECT_EQ(filterOfRun(""), "All (*.tga)") << "the one that was chosen is gone";
}

TEST_F(CPrompterTest, SavingAddsTheExtension) {
    const CTempFolder folder;
    WriteBytes(folder / "take.avi", {});
    std::optional<Path> file;
    WithDialog(
        [&] {
            file = prompter.Ask(
                CSaveFileRequest{{"Save", "Microsoft Movies (*.avi) |*.avi||", ".avi", "movie.avi", false}});
        },
        [&](QDialog& dialog) {
            auto& chooser = dynamic_cast<QFileDialog&>(dialog);
            auto& name = Child<QLineEdit>(chooser, "fileNameEdit");
            EXPECT_EQ(name.text(), "movie.avi");
            chooser.setDirectory(QString::fromStdString(folder.Path().string()));
            name.setText("take");
            QMetaObject::invokeMethod(&chooser, "accept");
            EXPECT_FALSE(chooser.isVisible()) << "an existing file is the writer's affair";
        });
    EXPECT_EQ(file, folder / "take.avi");
}

TEST_F(CPrompterTest, DialogsComeBackInTheSizeTheyWereGiven) {
    CProfile profile;
    const auto sizeAfter = [&](std::optional<QSize> change) {
        QWidget shown;
        shown.show();
        CQtPrompter another;
        another.SetParent(shown, &profile);
        QSize size;
        WithDialog(
            [&] {
                another.Ask(CLevelRequest{"Which?", {"Default"}});
            },
            [&](QDialog& dialog) {
                size = dialog.size();
                if (change)
                    dialog.resize(*change);
            });
        return size;
    };
    const QSize usual = sizeAfter({});
    EXPECT_EQ(sizeAfter(QSize(411, 433)), usual);
    EXPECT_EQ(sizeAfter({}), QSize(411, 433));
    EXPECT_EQ(profile.GetInt("Window", "SelectLevel Width", 0), 411);
}

} // namespace
} // namespace velmor::testing
