#include "DialogDriver.h"
#include "TempFolder.h"
#include "scene/DialogRequests.h"
#include "views/dialogs/RenderedDialog.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>

namespace velmor::testing {
namespace {

class CRenderDialogsTest : public CDialogFixture {
protected:
    CRenderDialogsTest() {
        request.levelNames = {"Ink", "Paint", "Sky"};
        request.frameCount = 100;
        request.scene = {768, 576};
        request.initial.levels = {0, 1, 2};
        request.initial.lastFrame = 100;
        request.initial.compressor = "MSVC";
        request.initial.directory = "/renders";
        request.initial.name = "Demo";
        request.accept = [this](const CRenderSetup& setup) {
            return static_cast<bool>(CheckRenderSetup(setup, 100, request.scene));
        };
        request.chooseCompressor = [this](const std::string& current) {
            return prompter.Ask(CCompressorRequest{AvailableCompressors(), current});
        };
    }

    std::optional<CRenderSetup> Ask(const std::function<void(QDialog&)>& use) {
        std::optional<CRenderSetup> answer;
        WithDialog([&] { answer = prompter.Ask(request); }, use);
        return answer;
    }

    static void ChooseFormat(QDialog& dialog, RenderFormat format) {
        Child<QComboBox>(dialog, "format").setCurrentIndex(static_cast<int>(format));
    }

    CRenderSetupRequest request;
};

TEST_F(CRenderDialogsTest, SetupIsTakenAsEntered) {
    const std::optional<CRenderSetup> answer = Ask([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Render Setup");
        Child<QPushButton>(dialog, "none").click();
        PressOk(dialog);
        EXPECT_TRUE(dialog.isVisible());
        Child<QPushButton>(dialog, "all").click();
        Child<QListWidget>(dialog, "levels").item(1)->setSelected(false);
        Type(dialog, "start", "5");
        Type(dialog, "end", "");
        PressOk(dialog);
        EXPECT_TRUE(Child<CNumberEdit>(dialog, "end").IsMarked());
        Type(dialog, "end", "25");
        Type(dialog, "step", "10");
        Child<QSlider>(dialog, "scalingSlider").setValue(200);
        Child<QCheckBox>(dialog, "antialias").setChecked(false);
        Child<QCheckBox>(dialog, "transparent").setChecked(true);
        Child<QCheckBox>(dialog, "resume").setChecked(true);
        Type(dialog, "folder", "/out");
        Type(dialog, "fileName", "Shot");
        EXPECT_EQ(LabelOf(dialog, "result"), "Shot0005.png to Shot0025.png, 3 frames of 1536 x 1152 pixels");
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->levels, (std::vector<int>{0, 2}));
    EXPECT_EQ(answer->firstFrame, 5);
    EXPECT_EQ(answer->lastFrame, 25);
    EXPECT_EQ(answer->step, 10);
    EXPECT_EQ(answer->scaling, 200);
    EXPECT_FALSE(answer->antialias);
    EXPECT_TRUE(answer->transparentBackground);
    EXPECT_TRUE(answer->resume);
    EXPECT_EQ(answer->format, RenderFormat::Png);
    EXPECT_EQ(answer->directory, "/out");
    EXPECT_EQ(answer->name, "Shot");
}

TEST_F(CRenderDialogsTest, AllFramesPutsTheWholeSceneIn) {
    request.initial.firstFrame = 7;
    request.initial.lastFrame = 9;
    const std::optional<CRenderSetup> answer = Ask([](QDialog& dialog) {
        Child<QPushButton>(dialog, "allFrames").click();
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->firstFrame, 1);
    EXPECT_EQ(answer->lastFrame, 100);
}

TEST_F(CRenderDialogsTest, WhatIsRenderedCanBePlayedAndItsFolderOpened) {
    std::vector<Path> opened;
    bool canOpen = true;
    int plays = 0;
    const auto open = [&](const Path& path) {
        opened.push_back(path);
        return canOpen;
    };
    const auto offer = [&](const CRenderedRequest& rendered, const std::function<void(QDialog&)>& use) {
        CRenderedDialog dialog(&window, rendered, open);
        WithDialog([&] { dialog.exec(); }, use);
    };
    offer({"/out/shot0001.png", false, 3, {}}, [&](QDialog& dialog) {
        EXPECT_EQ(LabelOf(dialog, "text"), "3 frames rendered to\n/out");
        EXPECT_EQ(dialog.findChild<QPushButton*>("play"), nullptr);
        Child<QPushButton>(dialog, "openFolder").click();
        EXPECT_FALSE(Child<QLabel>(dialog, "failure").isVisible());
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible()) << "Return goes on with the work";
    });
    offer({"/out/shot.mp4", true, 1, {}}, [&](QDialog& dialog) {
        EXPECT_EQ(LabelOf(dialog, "text"), "1 frame rendered to\n/out/shot.mp4");
        canOpen = false;
        Child<QPushButton>(dialog, "play").click();
        EXPECT_TRUE(Child<QLabel>(dialog, "failure").isVisible());
    });
    EXPECT_EQ(opened, (std::vector<Path>{"/out", "/out/shot.mp4"}));
    offer({"/out/shot.avi", true, 9, [&] { ++plays; }},
          [](QDialog& dialog) { Child<QPushButton>(dialog, "play").click(); });
    EXPECT_EQ(plays, 1);
    EXPECT_EQ(opened.size(), 2u);
}

TEST_F(CRenderDialogsTest, OnlyWhatTheFormatHasAUseForIsEnabled) {
    struct CRow {
        RenderFormat format;
        bool transparent, compressor, quality, resume;
    };
    Ask([](QDialog& dialog) {
        for (const CRow& row : {CRow{RenderFormat::Bitmap, false, false, false, true},
                                {RenderFormat::Avi, false, true, true, false},
                                {RenderFormat::Mp4, false, false, true, false},
                                {RenderFormat::Targa, true, false, false, true}}) {
            ChooseFormat(dialog, row.format);
            EXPECT_EQ(Child<QCheckBox>(dialog, "transparent").isEnabled(), row.transparent);
            EXPECT_EQ(Child<QPushButton>(dialog, "compressor").isEnabled(), row.compressor);
            EXPECT_EQ(Child<QSlider>(dialog, "qualitySlider").isEnabled(), row.quality);
            EXPECT_EQ(Child<QCheckBox>(dialog, "resume").isEnabled(), row.resume);
        }
        ChooseFormat(dialog, RenderFormat::Avi);
        EXPECT_EQ(LabelOf(dialog, "result"), "Demo.avi, 100 frames of 768 x 576 pixels");
        Type(dialog, "start", "1000");
        EXPECT_EQ(LabelOf(dialog, "result"), "");
    });
}

TEST_F(CRenderDialogsTest, CompressorOfAnAviIsChosenFromWhatThereIs) {
    const std::optional<CRenderSetup> answer = Ask([](QDialog& dialog) {
        ChooseFormat(dialog, RenderFormat::Avi);
        WithDialog([&] { Child<QPushButton>(dialog, "compressor").click(); },
                   [](QDialog& chooser) {
                       EXPECT_EQ(chooser.windowTitle(), "Choose a compressor for render output");
                       auto& list = Child<QListWidget>(chooser, "compressors");
                       EXPECT_EQ(list.currentRow(), 0);
                       list.setCurrentRow(list.count() - 1);
                       PressOk(chooser);
                   });
        EXPECT_FALSE(Child<QSlider>(dialog, "qualitySlider").isEnabled());                      // it is lossless
        WithDialog([&] { Child<QPushButton>(dialog, "compressor").click(); }, [](QDialog&) {}); // cancelled
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->compressor, AvailableCompressors().back().name);
}

TEST_F(CRenderDialogsTest, DirectoryIsChosenFromTheFolders) {
    const CTempFolder folder;
    request.initial.directory = folder.Path().parent_path().string();
    const std::optional<CRenderSetup> answer = Ask([&](QDialog& dialog) {
        WithDialog(
            [&] { Child<QPushButton>(dialog, "chooseFolder").click(); },
            [&](QDialog& chooser) {
                Child<QLineEdit>(chooser, "fileNameEdit").setText(QString::fromStdString(folder.Path().string()));
                QMetaObject::invokeMethod(&chooser, "accept");
            });
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->directory, folder.Path().string() + "/");
}

} // namespace
} // namespace velmor::testing
