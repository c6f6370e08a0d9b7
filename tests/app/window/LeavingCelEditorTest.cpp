// What happens to an unsaved drawing when the cel editor is left.

#include "MainFrameFixture.h"
#include "TestScene.h"
#include "qt/Patience.h"
#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/source/SourceView.h"

#include <QAbstractItemView>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace velmor::testing {
namespace {

class CLeavingCelEditorTest : public CMainFrameFixture {
protected:
    CLeavingCelEditorTest() {
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
        doc->Scenes().SetFolderName("A");
        doc->Assets().EditCel("2"); // which the frame under the cursor does not show
        Run(CommandId::ViewCelEditor);
    }
    ~CLeavingCelEditorTest() override { EndFrame(); }

    /// A stroke, as far as the document sees it.
    void Paint() {
        CCelImg& image = EditedImage();
        image.SetColorAt(0, 0, {1, 2, ++m_stroke, 255});
        image.SetModified(true);
    }
    bool IsSaved() {
        QCoreApplication::processEvents();
        CCelImg onDisk;
        EXPECT_TRUE(onDisk.Load(file));
        return !doc->Model().celImg.IsModified() && onDisk.ColorAt(0, 0) == doc->Model().celImg.ColorAt(0, 0);
    }

    CTestScene scene{Database()};
    const Path file = SceneFolder("Test") / "A" / "2.bit";

private:
    std::uint8_t m_stroke = 0;
};

} // namespace

TEST_F(CLeavingCelEditorTest, AChangedDrawingIsWrittenWhateverItIsLeftFor) {
    QDialog window(&Frame());
    QLineEdit field(&window);
    QAbstractItemView& list = *Frame().SourceView().findChild<QAbstractItemView*>("assets");
    const std::function<void()> leave[] = {[&] { Key(Qt::Key_F1); }, [&] { Key(Qt::Key_F2); },
                                           [&] { Key(Qt::Key_F3); }, [&] { list.setFocus(); },
                                           [&] {
                                               window.show();
                                               window.activateWindow();
                                               EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
                                               field.setFocus();
                                           }};
    for (std::size_t i = 0; i < std::size(leave); ++i) {
        Frame().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Frame()));
        Run(CommandId::ViewCelEditor);
        EXPECT_TRUE(HasFocus(Frame().CelPane().View()));
        Paint();
        TakeHints();
        leave[i]();
        EXPECT_TRUE(WaitFor([this] { return IsSaved(); })) << i;
        EXPECT_EQ(TakeHints(), std::vector<int>{260}) << i;
        EXPECT_EQ(doc->Model().celImg.FilePath(), file) << "it stays under edit";
    }
}

TEST_F(CLeavingCelEditorTest, MenusAndThePanesOwnPartsAreNoLeaving) {
    Paint();
    QMenu menu;
    menu.addAction("x");
    menu.popup({0, 0});
    EXPECT_FALSE(IsSaved());
    menu.close();
    Frame().CelPane().findChild<QWidget*>("colorList")->setFocus();
    EXPECT_FALSE(IsSaved());
}

TEST_F(CLeavingCelEditorTest, AFailureIsToldOncePerChange) {
    std::filesystem::remove(file);
    std::filesystem::create_directories(file / "in the way");
    Paint();
    const auto leave = [this] {
        Key(Qt::Key_F2);
        QCoreApplication::processEvents();
        Key(Qt::Key_F4);
        QCoreApplication::processEvents();
        return prompter.TakeMessages().size();
    };
    EXPECT_EQ(leave(), 1u);
    EXPECT_EQ(leave(), 0u);
    Paint();
    EXPECT_EQ(leave(), 1u);
    std::filesystem::remove_all(file);
    Paint();
    EXPECT_EQ(leave(), 0u);
    EXPECT_TRUE(IsSaved());
}

} // namespace velmor::testing
