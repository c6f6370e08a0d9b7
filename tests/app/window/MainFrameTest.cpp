#include "MainFrameFixture.h"
#include "app/window/OnlineManual.h"
#include "scene/AssetOperations.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "views/camera/CamFrame.h"
#include "views/cel/CelFrame.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QBuffer>
#include <QDialog>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QStatusBar>
#include <QTest>
#include <QTextBrowser>
#include <QToolBar>
#include <fstream>
#include <set>

namespace velmor::testing {
namespace {

class CMainFrameTest : public CMainFrameFixture {
protected:
    QString Pane(const char* name) { return Frame().statusBar()->findChild<QLabel*>(name)->text(); }
};

void CountCommands(const QMenu& menu, std::map<QString, int>& uses) {
    for (const QAction* action : menu.actions()) {
        if (action->menu() != nullptr)
            CountCommands(*action->menu(), uses);
        else if (!action->isSeparator())
            ++uses[action->objectName()];
    }
}

} // namespace

TEST_F(CMainFrameTest, EveryCommandStandsInExactlyOneMenu) {
    std::map<QString, int> uses;
    for (const QAction* title : Frame().menuBar()->actions())
        CountCommands(*title->menu(), uses);
    EXPECT_EQ(uses.size(), Commands().size());
    for (const auto& [id, count] : uses)
        EXPECT_EQ(count, 1) << id.toStdString();
}

TEST_F(CMainFrameTest, XsheetsOfOtherProgramsComeInWhereTheyAreSeen) {
    const auto isEnabled = [this](CommandId id) {
        Frame().UpdateCommands();
        return Frame().Action(id)->isEnabled();
    };
    for (const CommandId id :
         {CommandId::FileImportXsheet, CommandId::FileExportXsheet, CommandId::SourcesImportSequence})
        EXPECT_FALSE(isEnabled(id));
    NewScene("Test");
    EXPECT_TRUE(isEnabled(CommandId::SourcesImportSequence));
    const Path file = folder / "Test.csv";
    prompter.Answer(ExchangeFormat::Csv);
    prompter.Answer(Path(file));
    Run(CommandId::FileExportXsheet);
    EXPECT_TRUE(FileExists(file));

    const std::string text = "Frame,Ink\n1,\n2,\n3,\n";
    WriteBytes(file, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    Run(CommandId::ViewCelEditor);
    prompter.Answer(std::vector<Path>{file});
    prompter.Answer(std::string());
    Run(CommandId::FileImportXsheet);
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 3);
    EXPECT_EQ(doc->Model().Scene().xsheet.LevelName(0), "Ink");
    EXPECT_TRUE(Frame().Panes().IsOpen(StackedPane::Xsheet));
    Run(CommandId::EditUndo);
    EXPECT_EQ(doc->Model().Scene().xsheet.FrameCount(), 10);
}

TEST_F(CMainFrameTest, ThumbnailsOfAssetsAreASwitchThatIsRemembered) {
    EXPECT_FALSE(Frame().SourceView().ShowsThumbnails());
    Frame().Action(CommandId::ViewAssetThumbnails)->trigger();
    EXPECT_TRUE(Frame().SourceView().ShowsThumbnails());
    EXPECT_TRUE(Frame().Action(CommandId::ViewAssetThumbnails)->isChecked());
    Frame().close();
    EndFrame();
    EXPECT_TRUE(Frame().SourceView().ShowsThumbnails());
}

TEST_F(CMainFrameTest, NoKeyBelongsToTwoCommands) {
    // Views may have keys of their own, of which only those of the view with the focus act.
    std::map<std::pair<QKeySequence, std::optional<StackedPane>>, QString> owners;
    std::set<QKeySequence> ofViews, ofTheWindow;
    for (const CCommand& command : Commands()) {
        for (const QKeySequence& key : Frame().Action(command.id)->shortcuts()) {
            EXPECT_FALSE(key.isEmpty()) << command.text;
            const bool focused = command.reach == KeyReach::Focused;
            const auto owner = std::pair(key, focused ? command.pane : std::nullopt);
            EXPECT_TRUE(owners.emplace(owner, command.text).second)
                << key.toString().toStdString() << " of " << command.text;
            (focused ? ofViews : ofTheWindow).insert(key);
        }
        const QString focusedKeys = command.focusedKeys;
        for (const QString& key : focusedKeys.split("; ", Qt::SkipEmptyParts)) {
            EXPECT_TRUE(owners.emplace(std::pair(QKeySequence(key), command.pane), command.text).second)
                << command.text;
            ofViews.insert(QKeySequence(key));
        }
    }
    for (const QKeySequence& key : ofViews)
        EXPECT_FALSE(ofTheWindow.contains(key)) << key.toString().toStdString();
}

TEST_F(CMainFrameTest, CommandsAreEnabledByWhatIsOpen) {
    const auto enabled = [this](CommandId id) {
        Frame().UpdateCommands();
        return Frame().Action(id)->isEnabled();
    };
    using enum CommandId;
    const std::vector<CommandId> withScene = {FileSceneSettings,
                                              FileSaveAll,
                                              FilePrint,
                                              EditCopy,
                                              EditCut,
                                              AssetsNewFolder,
                                              CameraMoveMode,
                                              CameraZoomIn,
                                              XsheetAddLevel,
                                              XsheetAddFrames,
                                              SourcesImportPicture,
                                              AnimationLineCheck,
                                              AnimationMakeFlipbook};
    const std::vector<CommandId> withFolder = {AssetsNewCel, AssetsDeleteFolder, SourcesImportCels};
    const std::vector<CommandId> withMore = {
        EditUndo,       EditPaste,       XsheetDeleteLevel, XsheetSwapLevels,     AssetsDelete, AssetsRotate,
        AssetsColorKey, CelUpdateCamera, XsheetEditCelData, XsheetInbetweenLevel, EditCondense};
    const auto expect = [&](const std::vector<CommandId>& ids, bool expected, const char* state) {
        for (const CommandId id : ids)
            EXPECT_EQ(enabled(id), expected) << CommandOf(id).text << " with " << state;
    };
    for (const CommandId id : {FileNewScene, FileOpenScene, FileSceneManager, FileSettings, ViewCamera, HelpAbout})
        EXPECT_TRUE(enabled(id)) << CommandOf(id).text;
    expect(withScene, false, "no scene");
    expect(withFolder, false, "no scene");
    expect(withMore, false, "no scene");

    NewScene("First");
    expect(withScene, true, "a scene");
    expect(withFolder, false, "a scene");
    expect(withMore, false, "a scene");

    prompter.Answer(std::string("walk"));
    doc->Assets().NewFolder();
    expect(withFolder, true, "a folder");
    expect(withMore, false, "a folder");

    prompter.Answer(std::string("Back"));
    Frame().Action(XsheetAddLevel)->trigger();
    expect({EditUndo, XsheetDeleteLevel, XsheetSwapLevels}, true, "two levels");
}

TEST_F(CMainFrameTest, StatusPanesAndTitleFollowTheScene) {
    EXPECT_EQ(Frame().windowTitle(), "* No Scene Open * - Personal Velmor");
    EXPECT_EQ(Pane("camera mode") + Pane("current frame") + Pane("total frames"), "");
    NewScene("First", 12);
    Frame().UpdateCommands();
    EXPECT_EQ(Frame().windowTitle(), "First - Personal Velmor");
    EXPECT_EQ(Pane("camera mode"), "Mode : MOVE");
    EXPECT_EQ(Pane("current frame"), "Current Frm : 1");
    EXPECT_EQ(Pane("total frames"), "Total Frm : 12");
    Frame().Action(CommandId::CameraZoomMode)->trigger();
    doc->Cursor().SetCursorY(4);
    Frame().UpdateCommands();
    EXPECT_EQ(Pane("camera mode"), "Mode : ZOOM");
    EXPECT_EQ(Pane("current frame"), "Current Frm : 5");
    EXPECT_TRUE(Frame().Action(CommandId::CameraZoomMode)->isChecked());
    EXPECT_FALSE(Frame().Action(CommandId::CameraMoveMode)->isChecked());
}

TEST_F(CMainFrameTest, KeysReachTheirCommands) {
    NewScene("First");
    prompter.Answer(std::string("Back"));
    QTest::keyClick(&Frame(), Qt::Key_Insert);
    EXPECT_EQ(doc->Model().Scene().xsheet.LevelCount(), 2);
    QTest::keyClick(&Frame(), Qt::Key_Backspace, Qt::AltModifier);
    EXPECT_EQ(doc->Model().Scene().xsheet.LevelCount(), 1);
    QTest::keyClick(&Frame(), Qt::Key_F7);
    EXPECT_EQ(doc->Model().inputMode, InputMode::Zoom);
}

TEST_F(CMainFrameTest, ViewCommandsDivideTheStackedPanes) {
    const auto heights = [this] {
        QCoreApplication::processEvents();
        return std::array{Frame().CameraPane().parentWidget()->height(),
                          Frame().XsheetPane().parentWidget()->height(),
                          Frame().CelPane().parentWidget()->height()};
    };
    Frame().resize(1200, 800);
    Frame().Action(CommandId::ViewCamera)->trigger();
    EXPECT_EQ(heights()[1], leastPane);
    EXPECT_EQ(heights()[2], leastPane);
    EXPECT_GT(heights()[0], 500);
    Frame().Action(CommandId::ViewCelEditor)->trigger();
    EXPECT_EQ(heights()[0], leastPane);
    EXPECT_GT(heights()[2], 500);
    Frame().Action(CommandId::ViewCameraAndXsheet)->trigger();
    const auto shared = heights();
    EXPECT_GT(shared[0], 250);
    EXPECT_GT(shared[1], 250);
    EXPECT_EQ(shared[2], leastPane);
    for (const int height : {700, 900}) {
        Frame().resize(1200, height);
        const auto resized = heights();
        EXPECT_NEAR(resized[0], resized[1], 30) << "halves of any window";
        EXPECT_EQ(resized[2], leastPane);
    }
}

TEST_F(CMainFrameTest, LayoutIsRememberedAndLeavingSavesTheScene) {
    NewScene("First");
    Frame().resize(1111, 777);
    Frame().Action(CommandId::ViewXsheet)->trigger();
    Frame().Action(CommandId::ViewStatusBar)->trigger();
    prompter.Answer(std::string("Back"));
    doc->XSheet().AddLevel();
    EXPECT_TRUE(Frame().close());
    EndFrame();
    QCoreApplication::processEvents();
    EXPECT_EQ(Frame().size(), QSize(1111, 777));
    EXPECT_FALSE(Frame().IsStatusBarShown());
    EXPECT_EQ(Frame().CameraPane().parentWidget()->height(), leastPane);
}

TEST_F(CMainFrameTest, HalvesAreHalvesAfterARestart) {
    Run(CommandId::ViewCameraAndXsheet);
    EXPECT_TRUE(Frame().close());
    EndFrame();
    Frame().resize(1200, 1000);
    QCoreApplication::processEvents();
    EXPECT_NEAR(Frame().CameraPane().parentWidget()->height(), Frame().XsheetPane().parentWidget()->height(), 30);
}

TEST_F(CMainFrameTest, AHiddenBarOfAPaneComesBack) {
    const std::pair<CommandId, const char*> bars[] = {{CommandId::ViewCameraTools, "camera tools"},
                                                      {CommandId::ViewXsheetTools, "xsheet tools"},
                                                      {CommandId::ViewCelTools, "celToolBar"},
                                                      {CommandId::ViewColors, "colorBar"},
                                                      {CommandId::ViewBrushes, "brushBar"}};
    for (const auto& [id, name] : bars) {
        auto* bar = Frame().findChild<QToolBar*>(name);
        ASSERT_NE(bar, nullptr) << name;
        bar->hide(); // as its window's own context menu does
        Frame().UpdateCommands();
        EXPECT_FALSE(Frame().Action(id)->isChecked()) << name;
        Run(id);
        EXPECT_TRUE(bar->isVisible()) << name;
        EXPECT_TRUE(Frame().Action(id)->isChecked()) << name;
    }
}

TEST_F(CMainFrameTest, ASceneThatCannotBeSavedIsNotLeftUnasked) {
    NewScene("First");
    // A folder in the file's place cannot be replaced, whoever runs the test.
    const Path sheet = SceneFolder("First") / "First.xsheet";
    std::filesystem::remove(sheet);
    std::filesystem::create_directories(sheet / "in the way");
    Frame();
    prompter.confirmations = {false};
    EXPECT_FALSE(Frame().close());
    EXPECT_TRUE(Frame().isVisible());
    prompter.confirmations = {true};
    EXPECT_TRUE(Frame().close());
}

TEST_F(CMainFrameTest, WithoutAReaderTheManualHasAWindowOfItsOwn) {
    const auto open = [this](bool hasReader) {
        OpenOnlineManual(Frame(), prompter, folder.Path(), [&](const Path&) { return hasReader; });
        return Frame().findChild<QDialog*>("Manual");
    };
    const auto write = [this](const char* name, const std::string& text) { std::ofstream(folder / name) << text; };
    write("manual.pdf", "%PDF");
    EXPECT_EQ(open(true), nullptr);
    EXPECT_EQ(open(false), nullptr);
    EXPECT_TRUE(prompter.velmorMessages.back().ends_with("Error Code :31"));
    QByteArray picture;
    QBuffer buffer(&picture);
    QImage(3000, 20, QImage::Format_RGB32).save(&buffer, "PNG");
    write("manual.md", "# Commands\n\nWhat there is.\n\n![A picture](data:image/png;base64," +
                           picture.toBase64().toStdString() + ")\n");
    prompter.TakeMessages();
    QDialog* window = open(false);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    auto& page = *window->findChild<QTextBrowser*>();
    EXPECT_TRUE(page.toPlainText().contains("What there is."));
    EXPECT_GT(page.document()->size().height(), 20) << "the picture is there";
    EXPECT_EQ(page.horizontalScrollBar()->maximum(), 0) << "and no wider than the window";
    EXPECT_EQ(open(false), window) << "a second one would lie over the first";
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{});
}

TEST_F(CMainFrameTest, AMissingManualIsReported) {
    Frame().Action(CommandId::HelpManual)->trigger();
    EXPECT_EQ(prompter.velmorMessages.back(),
              "Failed to open the online manual!\nManual.pdf not found or Adobe Acrobat "
              "Reader not Installed!\n Error Code :2");
}

} // namespace velmor::testing
