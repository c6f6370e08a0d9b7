#include "app/window/MainFrame.h"

#include "DocumentFixture.h"
#include "SaneTestDevice.h"
#include "image/CelImg.h"
#include "qt/ModalDriver.h"
#include "scene/AssetOperations.h"
#include "scene/Settings.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <deque>

namespace velmor::testing {
namespace {

/// The program's window with SANE's test device, and a user who works in the scan window.
class CScanningTest : public CDocumentFixture {
protected:
    using Deed = std::function<bool(QDialog&)>;

    CScanningTest() {
        m_frame = std::make_unique<CMainFrame>(*doc, prompter, profile);
        m_frame->show();
    }

    QAction& Command(CommandId id) {
        m_frame->UpdateCommands();
        return *m_frame->Action(id);
    }
    /// Runs a command. Each deed is tried on the dialog that is open until it says that it is done. The window that
    /// comes while a slow machine looks for the scanners is left alone.
    void Drive(CommandId id, std::deque<Deed> deeds) {
        QTimer user;
        user.setInterval(5);
        QObject::connect(&user, &QTimer::timeout, &user, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && !deeds.empty() && dialog->objectName() != "ScanWait" && deeds.front()(*dialog))
                deeds.pop_front();
        });
        user.start();
        Command(id).trigger();
        EXPECT_TRUE(deeds.empty()) << "the dialogs ended first";
    }
    /// The same for the scan window, which is closed in the end.
    void Run(CommandId id, std::deque<Deed> deeds) {
        deeds.push_back(Click("close"));
        Drive(id, std::move(deeds));
    }
    /// Presses a button as soon as that is possible.
    static Deed Click(const char* button) {
        return [button](QDialog& dialog) {
            auto* widget = dialog.findChild<QPushButton*>(button);
            const bool can = widget != nullptr && widget->isEnabled() && widget->isVisible();
            if (can)
                widget->click();
            return can;
        };
    }
    static Deed Do(std::function<void(QDialog&)> deed) {
        return [deed](QDialog& dialog) {
            deed(dialog);
            return true;
        };
    }
    /// A paper small enough for a test.
    static Deed SmallPaper() {
        return Do([](QDialog& dialog) {
            auto& resolution = Child<QComboBox>(dialog, "resolution");
            resolution.setCurrentIndex(0);
            for (const auto& [name, text] : {std::pair{"width", "40"}, {"height", "30"}}) {
                auto& edit = Child<QLineEdit>(dialog, name);
                edit.selectAll();
                QTest::keyClicks(&edit, text);
            }
        });
    }
    /// Waits until nothing is being scanned any more.
    static Deed Idle() {
        return [](QDialog& dialog) {
            auto* preview = dialog.findChild<QPushButton*>("preview");
            return preview != nullptr && preview->isEnabled();
        };
    }
    static Deed Says(const QString& text) {
        return [text](QDialog& dialog) { return Child<QLabel>(dialog, "message").text() == text; };
    }
    void OpenFolder() {
        NewScene("First");
        prompter.Answer(std::string("walk"));
        doc->Assets().NewFolder();
    }
    bool Load(CCelImg& image, const Path& file) { return static_cast<bool>(image.Load(file)); }

    CSaneTestDevice device;
    std::unique_ptr<CMainFrame> m_frame;
};

} // namespace

TEST_F(CScanningTest, CommandsNeedWhatTheyFill) {
    EXPECT_TRUE(Command(CommandId::SourcesSelectSource).isEnabled());
    EXPECT_FALSE(Command(CommandId::SourcesScanPicture).isEnabled());
    NewScene("First");
    EXPECT_TRUE(Command(CommandId::SourcesScanPicture).isEnabled());
    EXPECT_FALSE(Command(CommandId::SourcesScanCels).isEnabled());
    prompter.Answer(std::string("walk"));
    doc->Assets().NewFolder();
    EXPECT_TRUE(Command(CommandId::SourcesScanCels).isEnabled());
}

TEST_F(CScanningTest, WithoutAScannerTheCommandsOnlySaySo) {
    CSaneTestDevice::Remove();
    OpenFolder();
    Command(CommandId::SourcesSelectSource).trigger();
    Command(CommandId::SourcesScanCels).trigger();
    Command(CommandId::SourcesScanPicture).trigger();
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{});
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    const std::string notFound = "No scanner was found. Is it connected and switched on?";
    EXPECT_EQ(prompter.statusTexts, std::vector<std::string>(3, notFound));
}

TEST_F(CScanningTest, LineArtBecomesCels) {
    OpenFolder();
    prompter.Answer(std::string("1"));
    prompter.Answer(std::string("7"));
    Run(CommandId::SourcesScanCels, {SmallPaper(), Do([](QDialog& dialog) {
                                         EXPECT_TRUE(Child<QLabel>(dialog, "mode").text().startsWith("Line art"));
                                         EXPECT_TRUE(dialog.findChildren<QRadioButton*>().empty())
                                             << "another depth would be refused";
                                     }),
                                     Click("scan"), Idle(), Click("scan"), Idle()});
    EXPECT_TRUE(prompter.AllAnswersTaken());
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{});
    CCelImg cel;
    ASSERT_TRUE(Load(cel, SceneFolder("First") / "walk" / "7.bit"));
    EXPECT_TRUE(FileExists(SceneFolder("First") / "walk" / "1.bit"));
    EXPECT_NEAR(cel.Width(), 118, 2);
    EXPECT_NEAR(cel.Height(), 89, 2);
    int lines = 0;
    for (int x = 0; x < cel.Width(); ++x)
        lines += cel.IsLine(x, cel.Height() / 2) ? 1 : 0;
    EXPECT_GT(lines, 0) << "the test pattern is black and white";
    EXPECT_LT(lines, cel.Width());
}

TEST_F(CScanningTest, ColorBecomesAPicture) {
    OpenFolder();
    prompter.Answer(std::string("paper"));
    Run(CommandId::SourcesScanPicture, {SmallPaper(), Click("scan"), Idle()});
    EXPECT_TRUE(prompter.AllAnswersTaken());
    CCelImg picture;
    ASSERT_TRUE(Load(picture, SceneFolder("First") / "_Pictures_" / "paper.rgba"));
    EXPECT_NEAR(picture.Width(), 118, 2);
}

TEST_F(CScanningTest, TheFeedersPagesAllBecomeCels) {
    OpenFolder();
    for (int cel = 1; cel <= 10; ++cel)
        prompter.Answer(std::to_string(cel));
    Run(CommandId::SourcesScanCels,
        {SmallPaper(), Do([](QDialog& dialog) { Child<QAbstractButton>(dialog, "feeder").click(); }), Click("scan"),
         Idle()});
    EXPECT_TRUE(prompter.AllAnswersTaken());
    EXPECT_TRUE(FileExists(SceneFolder("First") / "walk" / "10.bit"));
}

TEST_F(CScanningTest, FailuresShowInTheWindowAndStoppingLeavesNothing) {
    OpenFolder();
    CSaneTestDevice::Configure({{"read-status-code", "\"SANE_STATUS_JAMMED\""}});
    Run(CommandId::SourcesScanCels, {SmallPaper(), Click("scan"), Says("Document feeder jammed")});
    CSaneTestDevice::Configure({{"read-delay", "true"}, {"read-delay-duration", "200000"}});
    Run(CommandId::SourcesScanPicture, {Click("scan"), Click("stop"), Idle(), Click("scan")});
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{});
    EXPECT_FALSE(FileExists(SceneFolder("First") / "_Pictures_"));
}

TEST_F(CScanningTest, ScannerAndSettingsAreRemembered) {
    OpenFolder();
    Drive(CommandId::SourcesSelectSource, {Do([](QDialog& dialog) {
              Child<QListWidget>(dialog, "scanners").setCurrentRow(1);
              dialog.accept();
          })});
    EXPECT_EQ(Get(profile, setting::scannerDevice), "test:1");
    Run(CommandId::SourcesScanPicture, {SmallPaper(), Click("preview"), Idle()});
    EXPECT_EQ(Get(profile, setting::scannerWidth), 400);
    EXPECT_EQ(Get(profile, setting::scannerHeight), 300);
    m_frame = std::make_unique<CMainFrame>(*doc, prompter, profile);
    m_frame->show();
    Run(CommandId::SourcesScanCels, {Do([](QDialog& dialog) {
            EXPECT_EQ(Child<QLineEdit>(dialog, "width").text(), "40");
            EXPECT_EQ(Child<QLabel>(dialog, "scanner").text(), "Noname frontend-tester");
        })});
}

} // namespace velmor::testing
