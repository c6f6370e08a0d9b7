#include "views/source/SourceView.h"
#include "DocumentFixture.h"
#include "image/CelImg.h"
#include "platform/files/Files.h"
#include "qt/ModalDriver.h"
#include "qt/PaletteChange.h"
#include "qt/Patience.h"
#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "views/Text.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHelpEvent>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>

namespace velmor::testing {
namespace {

using Names = std::vector<std::string>;

class SourceViewTest : public CDocumentFixture {
protected:
    ~SourceViewTest() override { view.reset(); }

    /// A scene with folders "Cat" (open, with `cels`) and "Dog" (with cel 1).
    void OpenScene(const Names& cels) {
        NewScene("Test");
        for (const std::string& cel : cels)
            MakeCel("Cat", cel);
        MakeCel("Dog", "1");
        doc->Scenes().SetFolderName("Cat");
    }
    void MakeCel(const std::string& celFolder, const std::string& cel) {
        ASSERT_TRUE(CreateFolder(doc->Model().Paths().CelFolder(celFolder)));
        CCelImg image;
        ASSERT_TRUE(image.CreateCel(20, 10, doc->Model().Paths().CelFile(celFolder, cel)));
        ASSERT_TRUE(image.SaveCel());
    }
    void MakePicture(const std::string& name) {
        ASSERT_TRUE(CreateFolder(doc->Model().Paths().PicturesFolder()));
        CCelImg image;
        ASSERT_TRUE(image.CreatePicture(20, 10, doc->Model().Paths().PictureFile(name)));
        ASSERT_TRUE(image.SavePicture());
    }
    void RemoveCel(const std::string& cel) {
        ASSERT_TRUE(RemoveFile(doc->Model().Paths().CelFile(doc->Model().folderName, cel)));
    }
    void ShowView() {
        view = std::make_unique<CSourceView>(*doc, prompter);
        view->resize(120, 300);
        view->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    }

    QListView& List() { return Child<QListView>(*view, "assets"); }
    QComboBox& Folders() { return Child<QComboBox>(*view, "folders"); }
    Names Listed() {
        Names names;
        for (int row = 0; row < List().model()->rowCount(); ++row)
            names.push_back(FromQt(List().model()->index(row, 0).data().toString()));
        return names;
    }
    Names ListedFolders() {
        Names names;
        for (int i = 0; i < Folders().count(); ++i)
            names.push_back(FromQt(Folders().itemText(i)));
        return names;
    }
    std::string CheckedModes() {
        std::string checked;
        for (const auto* button : view->findChildren<QToolButton*>())
            if (button->isChecked())
                checked += FromQt(button->text());
        return checked;
    }
    const Names& DocumentSelection() { return doc->Model().sourceSelection; }

    QPoint PlaceOf(int row) { return List().visualRect(List().model()->index(row, 0)).center(); }
    void ClickRow(int row, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, keys, PlaceOf(row));
    }
    /// As a user does, with the keyboard in the list of folders.
    void ChooseFolder(const std::string& entry) {
        Folders().setCurrentIndex(Folders().findText(ToQt(entry)));
        emit Folders().textActivated(ToQt(entry));
    }
    void RightClick(QPoint place) {
        QWidget* viewport = List().viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
        QApplication::sendEvent(viewport, &event);
    }

    std::unique_ptr<CSourceView> view;
};

TEST_F(SourceViewTest, ListsFoldersAndCelsInTheirOrder) {
    OpenScene({"10", "2b", "2", "1", "2a", "007"});
    ASSERT_TRUE(CreateFolder(SceneFolder("Test") / "made_outside"));
    ShowView();
    EXPECT_EQ(Listed(), (Names{"1", "2", "2a", "2b", "7", "10"}));
    EXPECT_EQ(ListedFolders(), (Names{"Cat", "Dog", "<New Folder>"}));
    EXPECT_EQ(Folders().currentText(), "Cat");
}

TEST_F(SourceViewTest, RowsThatLookTheSameStandForTheirOwnFiles) {
    OpenScene({"007", "7"});
    ShowView();
    ASSERT_EQ(Listed(), (Names{"7", "7"}));
    for (const int row : {0, 1}) {
        const std::string title = row == 0 ? "007" : "7";
        ClickRow(row);
        EXPECT_EQ(DocumentSelection(), Names{title});
        EXPECT_EQ(view->DragData()->data(CSourceView::dragType).toStdString(), title + '\n');
        EXPECT_TRUE(List().currentIndex().data(Qt::ToolTipRole).toString().contains(ToQt("<b>" + title + "</b>")));
        QTest::keyClick(&List(), Qt::Key_Return);
        EXPECT_EQ(doc->Model().celImg.FilePath(), doc->Model().Paths().CelFile("Cat", title));
    }
    ClickRow(0);
    doc->XSheet().DropCels(0, 0, 1, false);
    EXPECT_EQ(doc->Cursor().GetXsheetData(0, 0), "Cat007");
    doc->Assets().DeleteSelected();
    EXPECT_EQ(Listed(), Names{"7"});
    EXPECT_TRUE(FileExists(doc->Model().Paths().CelFile("Cat", "7")));
    EXPECT_TRUE(DocumentSelection().empty());
    EXPECT_EQ(doc->Cursor().GetXsheetData(0, 0), "");
}

TEST_F(SourceViewTest, ShowsNothingWithoutAScene) {
    ShowView();
    QMenu menu;
    menu.addAction("Delete");
    view->SetContextMenu(&menu);
    RightClick({10, 10});
    EXPECT_FALSE(menu.isVisible());
    EXPECT_TRUE(Listed().empty());
    EXPECT_TRUE(ListedFolders().empty());
    EXPECT_FALSE(Folders().isEnabled());
    EXPECT_EQ(CheckedModes(), "CEL");
    NewScene("Test");
    EXPECT_TRUE(Folders().isEnabled());
    EXPECT_EQ(ListedFolders(), Names{"<New Folder>"});
    EXPECT_EQ(Folders().currentIndex(), -1);
}

TEST_F(SourceViewTest, AnotherFolderClearsTheSelection) {
    OpenScene({"1", "2"});
    ShowView();
    ClickRow(0);
    ASSERT_EQ(DocumentSelection(), Names{"1"});
    ChooseFolder("Dog");
    EXPECT_EQ(doc->Scenes().GetFolderName(), "Dog");
    EXPECT_EQ(Listed(), Names{"1"});
    EXPECT_TRUE(DocumentSelection().empty());
    EXPECT_FALSE(List().selectionModel()->hasSelection()) << "a cel of the same name stands there too";
}

TEST_F(SourceViewTest, NewFolderIsMadeOrGivenUp) {
    OpenScene({"1"});
    ShowView();
    prompter.Cancel();
    ChooseFolder("<New Folder>");
    EXPECT_EQ(Folders().currentText(), "Cat");
    prompter.Answer(std::string("Bird"));
    ChooseFolder("<New Folder>");
    EXPECT_EQ(doc->Scenes().GetFolderName(), "Bird");
    EXPECT_EQ(Folders().currentText(), "Bird");
    EXPECT_EQ(ListedFolders(), (Names{"Bird", "Cat", "Dog", "<New Folder>"}));
    EXPECT_TRUE(prompter.AllAnswersTaken());
}

TEST_F(SourceViewTest, OneModeIsCheckedAndListed) {
    OpenScene({"1"});
    MakePicture("sky");
    ShowView();
    ClickRow(0);
    QTest::mouseClick(&Child<QToolButton>(*view, "pictures"), Qt::LeftButton);
    EXPECT_EQ(doc->Model().sourceMode, SourceMode::Pictures);
    EXPECT_EQ(CheckedModes(), "PIC");
    EXPECT_EQ(Listed(), Names{"sky"});
    EXPECT_TRUE(DocumentSelection().empty());
    QTest::mouseClick(&Child<QToolButton>(*view, "sounds"), Qt::LeftButton);
    EXPECT_EQ(CheckedModes(), "SND");
    EXPECT_TRUE(Listed().empty());
    ClickRow(0);
    QTest::mouseClick(&Child<QToolButton>(*view, "sounds"), Qt::LeftButton);
    EXPECT_EQ(CheckedModes(), "SND");
    doc->Scenes().SetSourceMode(SourceMode::Cels);
    EXPECT_EQ(CheckedModes(), "CEL");
    EXPECT_EQ(Listed(), Names{"1"});
}

TEST_F(SourceViewTest, SelectionIsToldInListOrder) {
    OpenScene({"1", "2", "10"});
    ShowView();
    ClickRow(2);
    ClickRow(1, Qt::ControlModifier);
    EXPECT_EQ(DocumentSelection(), (Names{"2", "10"}));
    ClickRow(0);
    ClickRow(2, Qt::ShiftModifier);
    EXPECT_EQ(DocumentSelection(), (Names{"1", "2", "10"}));
    List().clearSelection();
    EXPECT_TRUE(DocumentSelection().empty());
}

TEST_F(SourceViewTest, OpensByDoubleClickAndReturn) {
    OpenScene({"1", "2"});
    ShowView();
    ClickRow(1);
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(1));
    EXPECT_EQ(doc->Model().celImg.FilePath(), doc->Model().Paths().CelFile("Cat", "2"));
    ClickRow(0);
    QTest::keyClick(&List(), Qt::Key_Return);
    EXPECT_EQ(doc->Model().celImg.FilePath(), doc->Model().Paths().CelFile("Cat", "1"));
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(SourceViewTest, TheListHasItsKeysBeforeTheWindow) {
    OpenScene({"1", "2", "20", "3"});
    ShowView();
    std::string taken;
    for (const char* key : {"Del", "Shift+Del", "Home", "Ctrl+A", "2", "Space", "F2", "+", "Ctrl+2"})
        view->addAction(key, QKeySequence(key), view.get(), [&taken, key] { taken += std::string(key) + " "; });
    view->activateWindow();
    List().setFocus();
    QTest::keyClicks(&List(), "20");
    EXPECT_EQ(DocumentSelection(), Names{"20"}) << "found by its name";
    prompter.confirmations = {false};
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(prompter.TakeMessages().size(), 1U) << "asked";
    EXPECT_EQ(Listed().size(), 4U);
    QTest::keyClick(&List(), Qt::Key_Delete);
    EXPECT_EQ(Listed(), (Names{"1", "2", "3"}));
    QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(DocumentSelection(), (Names{"1", "2", "3"}));
    QTest::keyClick(&List(), Qt::Key_Home);
    EXPECT_EQ(DocumentSelection(), Names{"1"});
    EXPECT_EQ(taken, "");
    QTest::keyClick(&List(), Qt::Key_F2);
    QTest::keyClick(&List(), Qt::Key_Plus);
    QTest::keyClick(&List(), Qt::Key_2, Qt::ControlModifier);
    QTest::keyClick(&List(), Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_EQ(taken, "F2 + Ctrl+2 Shift+Del ");
    Folders().setFocus();
    QTest::keyClick(&Folders(), Qt::Key_Delete);
    EXPECT_EQ(taken, "F2 + Ctrl+2 Shift+Del Del ");
    EXPECT_EQ(Listed().size(), 3U);
}

TEST_F(SourceViewTest, RefreshKeepsSelectionCurrentItemAndPlace) {
    Names cels;
    for (int i = 1; i <= 200; ++i)
        cels.push_back(std::to_string(2 * i));
    OpenScene(cels);
    ShowView();
    List().scrollTo(List().model()->index(120, 0), QAbstractItemView::PositionAtTop);
    ClickRow(121);
    ClickRow(123, Qt::ControlModifier);
    const int top = List().visualRect(List().model()->index(120, 0)).top();

    MakeCel("Cat", "1");
    MakeCel("Cat", "3");
    RemoveCel("248");
    doc->Views().UpdateAllViews(UpdateHint::AssetLists);
    EXPECT_EQ(Listed().size(), 201u);
    EXPECT_EQ(DocumentSelection(), Names{"244"}) << "248 was selected too, and is gone";
    EXPECT_EQ(List().visualRect(List().model()->index(122, 0)).top(), top);

    ClickRow(123);
    EXPECT_EQ(List().currentIndex().data(), "244");
    MakeCel("Cat", "5");
    doc->Views().UpdateAllViews(folderDeletedHint);
    EXPECT_EQ(List().currentIndex().data(), "244");
}

TEST_F(SourceViewTest, ReadsTheDiskOnlyForWhatConcernsIt) {
    OpenScene({"1"});
    ShowView();
    MakeCel("Cat", "2");
    for (const UpdateHint hint : {UpdateHint::CameraRedraw, UpdateHint::Cells, selectionHint, UpdateHint::Colors,
                                  UpdateHint::Tools, cellsAndPictureHint})
        doc->Views().UpdateAllViews(hint);
    EXPECT_EQ(Listed().size(), 1u);
    for (const UpdateHint hint : {UpdateHint::EditedImage, paletteReloadHint, structureHint, everythingHint}) {
        RemoveCel("2");
        doc->Views().UpdateAllViews(UpdateHint::AssetLists);
        MakeCel("Cat", "2");
        doc->Views().UpdateAllViews(hint);
        EXPECT_EQ(Listed().size(), 2u) << static_cast<int>(hint);
    }
}

TEST_F(SourceViewTest, RenamedAssetStaysSelected) {
    OpenScene({"1", "2", "3"});
    ShowView();
    ClickRow(0);
    prompter.Answer(std::string("9"));
    doc->Assets().RenameSelected();
    EXPECT_EQ(Listed(), (Names{"2", "3", "9"}));
    EXPECT_EQ(List().currentIndex().data(), "9");
    EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex()));
    EXPECT_EQ(DocumentSelection(), Names{"9"});
}

TEST_F(SourceViewTest, ANewCelIsSelectedWhateverWasListed) {
    OpenScene({"1", "2"});
    MakePicture("sky");
    ShowView();
    doc->Scenes().SetSourceMode(SourceMode::Pictures);
    ClickRow(0);
    prompter.Answer(CNewCelValues{"3", {20, 10}});
    doc->Assets().NewCel();
    EXPECT_EQ(Listed(), (Names{"1", "2", "3"}));
    EXPECT_EQ(DocumentSelection(), Names{"3"});
    EXPECT_EQ(List().currentIndex().data(), "3");
    EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex()));
}

TEST_F(SourceViewTest, DeletedAssetsLeaveTheSelection) {
    OpenScene({"1", "2", "3"});
    ShowView();
    ClickRow(0);
    ClickRow(1, Qt::ShiftModifier);
    doc->Assets().DeleteSelected();
    EXPECT_EQ(Listed(), Names{"3"});
    EXPECT_TRUE(DocumentSelection().empty());
    EXPECT_FALSE(List().selectionModel()->hasSelection());
}

TEST_F(SourceViewTest, ContextMenuIsForTheItemUnderTheMouse) {
    OpenScene({"1", "2", "3"});
    ShowView();
    QMenu menu;
    menu.addAction("Delete");
    Names selectedAtShow;
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&] { selectedAtShow = DocumentSelection(); });
    view->SetContextMenu(&menu);
    ClickRow(0);
    RightClick(PlaceOf(2));
    EXPECT_EQ(selectedAtShow, Names{"3"});
    menu.close();
    ClickRow(1, Qt::ControlModifier);
    RightClick(PlaceOf(1));
    EXPECT_EQ(selectedAtShow, (Names{"2", "3"}));
    menu.close();
}

TEST_F(SourceViewTest, DragCarriesTheSelectedAssets) {
    OpenScene({"1", "2", "10"});
    ShowView();
    EXPECT_TRUE(view->DragPicture().isNull());
    std::vector<Path> asked;
    view->SetThumbnails([&](const Path& file) {
        asked.push_back(file);
        QPixmap red(40, 30);
        red.fill(Qt::red);
        return red;
    });
    ClickRow(1);
    const QImage one = view->DragPicture().toImage();
    EXPECT_EQ(asked, std::vector<Path>{doc->Model().Paths().CelFile("Cat", "2")});
    const QColor middle = one.pixelColor(one.width() / 2, one.height() / 2);
    EXPECT_GT(middle.red() - middle.green(), 200);
    ClickRow(2, Qt::ControlModifier);
    EXPECT_NE(view->DragPicture().toImage(), one);
    EXPECT_EQ(view->DragData()->data(CSourceView::dragType), "2\n10\n");
}

TEST_F(SourceViewTest, MouseDragsAnItemAway) {
    OpenScene({"1", "2", "10"});
    ShowView();
    std::vector<Path> pictured;
    view->SetThumbnails([&](const Path& file) {
        pictured.push_back(file);
        return QPixmap();
    });
    QTimer::singleShot(0, [] { QDrag::cancel(); });
    QTest::mousePress(List().viewport(), Qt::LeftButton, {}, PlaceOf(1));
    for (int step = 1; step <= 4; ++step)
        QTest::mouseMove(List().viewport(), PlaceOf(1) + QPoint(10 * step, 0));
    QTest::mouseRelease(List().viewport(), Qt::LeftButton, {}, PlaceOf(1));
    ASSERT_FALSE(pictured.empty()) << "no drag has started";
    EXPECT_EQ(pictured.front(), doc->Model().Paths().CelFile("Cat", "2"));
    EXPECT_EQ(DocumentSelection(), Names{"2"});
}

TEST_F(SourceViewTest, RowsShowWhatIsDrawnWhenAsked) {
    Names cels;
    for (int i = 1; i <= 100; ++i)
        cels.push_back(std::to_string(i));
    OpenScene(cels);
    ShowView();
    Names asked;
    QColor color = Qt::red;
    view->SetThumbnails([&](const Path& file) {
        asked.push_back(Utf8Of(file.stem()));
        QPixmap picture(160, 90);
        picture.fill(color);
        return file.stem() == "2" ? QPixmap() : picture;
    });
    const auto middleOf = [&](int row) {
        return List().viewport()->grab().toImage().pixelColor(4 + 24, PlaceOf(row).y());
    };
    const int height = List().visualRect(List().model()->index(0, 0)).height();
    QApplication::processEvents();
    EXPECT_TRUE(asked.empty());

    view->ShowThumbnails(true);
    EXPECT_TRUE(asked.empty()) << "choosing a folder does not wait for its pictures";
    ASSERT_TRUE(WaitFor([&] { return asked.size() >= 4 && middleOf(0) == color; }));
    EXPECT_GT(List().visualRect(List().model()->index(0, 0)).height(), height);
    QTest::qWait(20);
    EXPECT_LT(asked.size(), 20U) << "only what is seen";
    EXPECT_NE(middleOf(1), color) << "has none";
    EXPECT_EQ(std::ranges::count(asked, "2"), 1) << "and is not read again";

    asked.clear();
    color = Qt::blue;
    ASSERT_TRUE(WaitFor([&] {
        MakeCel("Cat", "1"); // until its time stamp is another
        doc->Views().UpdateAllViews(UpdateHint::EditedImage);
        return middleOf(0) == color;
    }));
    EXPECT_EQ(middleOf(2), QColor(Qt::red));

    doc->Scenes().SetSourceMode(SourceMode::Sounds);
    view->ShowThumbnails(false);
    doc->Scenes().SetSourceMode(SourceMode::Cels);
    EXPECT_EQ(List().visualRect(List().model()->index(0, 0)).height(), height);
    EXPECT_NE(middleOf(0), color);
}

TEST_F(SourceViewTest, ToolTipsTellOfTheAssetOrTheList) {
    OpenScene({"1"});
    ShowView();
    const QString tip = List().model()->index(0, 0).data(Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains("20 x 10")) << FromQt(tip);
    const QPoint below(20, List().viewport()->height() - 5);
    QHelpEvent help(QEvent::ToolTip, below, List().viewport()->mapToGlobal(below));
    QApplication::sendEvent(List().viewport(), &help);
    EXPECT_EQ(QToolTip::text(), "Drag and Drop pictures, cels and sounds to xsheet");
}

TEST_F(SourceViewTest, TheListIsGreenAndDimmedOnADarkDesktop) {
    OpenScene({"1"});
    ShowView();
    const auto ground = [this] {
        const QImage image = List().viewport()->grab().toImage();
        return image.pixelColor(image.rect().bottomRight() - QPoint(2, 2));
    };
    const auto iconIsDark = [this] {
        const auto icon = List().model()->index(0, 0).data(Qt::DecorationRole).value<QIcon>();
        const QImage image = icon.pixmap(64, 64).toImage();
        for (int i = 0; i < 64 * 64; ++i)
            if (const QColor color = image.pixelColor(i % 64, i / 64); color.alpha() == 255)
                return color.lightness() < 128;
        return false;
    };
    EXPECT_EQ(ground(), QColor(200, 255, 200));
    EXPECT_TRUE(iconIsDark());
    {
        const CPaletteChange dark(DarkDesktop());
        view->setPalette(DarkDesktop());
        EXPECT_LT(ground().lightness(), 80);
        EXPECT_GT(List().palette().color(QPalette::Text).lightness(), 200);
        EXPECT_FALSE(iconIsDark());
    }
    view->setPalette({});
    EXPECT_EQ(ground(), QColor(200, 255, 200));
}

} // namespace
} // namespace velmor::testing
