#include "DialogDriver.h"
#include "FakeCapture.h"
#include "ScriptedPrompter.h"
#include "TempFolder.h"
#include "acquire/CaptureSession.h"
#include "views/capture/CaptureDialog.h"
#include "views/capture/CapturePreview.h"
#include "views/capture/CaptureSetupDialog.h"
#include "views/capture/VideoFormatDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>

namespace velmor::testing {
namespace {

using Texts = std::vector<std::string>;

class CCaptureDialogsTest : public ::testing::Test {
protected:
    void Open(CDialog& dialog) {
        dialog.show();
        dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
        // It opens its camera once it is to be seen.
        EXPECT_TRUE(QTest::qWaitFor([&] { return !session.Descriptions().empty(); }, 30000));
    }
    CCaptureRequest Request(SourceMode kind) {
        CCaptureRequest request;
        request.kind = kind;
        request.camera.driver = "Stand camera";
        request.threshold = 100;
        request.handOver = [this](const Path& file, int threshold) {
            thresholds.push_back(threshold);
            return keeps && FileExists(file);
        };
        return request;
    }
    static void Click(QWidget& dialog, const char* name) { Child<QAbstractButton>(dialog, name).click(); }
    static bool IsEnabled(QWidget& dialog, const char* name) { return Child<QWidget>(dialog, name).isEnabled(); }
    static CCapturePreview& Preview(QWidget& dialog) {
        return dynamic_cast<CCapturePreview&>(Child<QWidget>(dialog, "captureWindow"));
    }
    /// The middle of what the preview shows, when it has come to show this.
    static bool Shows(QWidget& dialog, QColor color) {
        const auto isShown = [&] {
            const QImage shown = Preview(dialog).grab().toImage();
            return shown.pixelColor(shown.rect().center()) == color;
        };
        return QTest::qWaitFor(isShown, 30000);
    }

    CTempFolder folder;
    CFakeCapture camera;
    Texts messages;
    CCaptureSession::Devices toldOf;
    CCaptureSession session{camera, [this](const std::string& text) { messages.push_back(text); }, folder.Path(),
                            toldOf};
    std::vector<int> thresholds;
    bool keeps = true;
};

} // namespace

TEST_F(CCaptureDialogsTest, SetupConnectsWhatIsChosenAndShowsItsPicture) {
    CCaptureSetupDialog dialog(nullptr, session, {});
    Open(dialog);
    EXPECT_EQ(TextOf(dialog, "selected"), noCaptureDriver);
    Child<QWidget>(dialog, "selected").setFocus();
    Child<QWidget>(dialog, "drivers").setFocus();
    EXPECT_FALSE(IsEnabled(dialog, "videoSource")) << "a list that gets the focus chooses nothing";
    PressOk(dialog);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(std::exchange(messages, {}), Texts{"You must select a valid capture device."});

    Child<QListWidget>(dialog, "drivers").setCurrentRow(1);
    EXPECT_EQ(TextOf(dialog, "selected"), "Table camera");
    EXPECT_EQ(messages, Texts{"Notice : This source does not have a video overlay capability!"});
    EXPECT_FALSE(IsEnabled(dialog, "overlay"));
    EXPECT_TRUE(Child<QRadioButton>(dialog, "preview").isChecked());
    EXPECT_TRUE(Shows(dialog, QColor(30, 20, 10)));
    messages.clear();
    Click(dialog, "videoSource");
    Click(dialog, "videoFormat");
    EXPECT_EQ(messages,
              (Texts{"This capture device has no Source dialog!", "This capture device has no format dialog!"}));
    PressOk(dialog);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(session.IsConnected());
    EXPECT_EQ(session.Selected(), "Table camera");
}

TEST_F(CCaptureDialogsTest, SourceAndFormatOfTheDeviceCanBeSet) {
    CCaptureControl automatic{1, "Auto Focus", CaptureControlKind::Switch, 0, 1, 1, 1, 1, true, {}};
    CCaptureControl focus{2, "Focus", CaptureControlKind::Number, 0, 100, 5, 40, 70, false, {}};
    CCaptureControl light{3, "Light", CaptureControlKind::Menu, 0, 2, 1, 0, 0, true, {{0, "Day"}, {2, "Lamp"}}};
    camera.controls = {automatic, focus, light};
    camera.formats = {{1280, 720, 30, {}}, {640, 480, 29.97, {}}};
    CCaptureSetupDialog dialog(nullptr, session, {"Stand camera", {}});
    Open(dialog);
    camera.TakeCalls();
    WithDialog([&] { Click(dialog, "videoSource"); },
               [&](QDialog& source) {
                   EXPECT_FALSE(IsEnabled(source, "control2"));
                   camera.controls[1].isActive = true; // by what is switched off now
                   Click(source, "control1");
                   EXPECT_TRUE(IsEnabled(source, "control2"));
                   Type(source, "control2", "55");
                   Type(source, "control2", "300");
                   auto& menu = Child<QComboBox>(source, "control3");
                   menu.setCurrentIndex(1);
                   EXPECT_EQ(camera.controls[0].value, 0);
                   EXPECT_EQ(camera.controls[1].value, 30) << "300 is out of its range, 30 was on the way";
                   EXPECT_EQ(camera.controls[2].value, 2);
                   Click(source, "defaults");
               });
    EXPECT_EQ(camera.controls[0].value, 1);
    EXPECT_EQ(camera.controls[1].value, 40);
    EXPECT_EQ(camera.controls[2].value, 0);

    WithDialog([&] { Click(dialog, "videoFormat"); },
               [&](QDialog& format) {
                   auto& list = Child<QListWidget>(format, "formats");
                   EXPECT_EQ(list.item(1)->text(), "640 x 480, 29.97 frames a second");
                   list.setCurrentRow(0);
                   PressOk(format);
               });
    EXPECT_EQ(camera.format, camera.formats[0]);
}

TEST_F(CCaptureDialogsTest, SpaceCapturesWithTheThresholdWhereverTheFocusIs) {
    CCaptureDialog dialog(nullptr, session, Request(SourceMode::Cels));
    EXPECT_FALSE(IsEnabled(dialog, "capture"));
    Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), "Capture Cels");
    EXPECT_EQ(LabelOf(dialog, "deviceStatus"), "Stand camera  -  8 x 6, 25 frames a second");
    QTest::keyClick(&Child<QWidget>(dialog, "capture"), Qt::Key_Space);
    Type(dialog, "threshold", "0");
    QTest::keyClick(&Child<QWidget>(dialog, "threshold"), Qt::Key_Space);
    EXPECT_EQ(TextOf(dialog, "threshold"), "0");
    Child<QSlider>(dialog, "thresholdSlider").setValue(255);
    QTest::keyClick(&Child<QWidget>(dialog, "showLines"), Qt::Key_Space);
    EXPECT_FALSE(Child<QCheckBox>(dialog, "showLines").isChecked());
    EXPECT_EQ(thresholds, (std::vector{100, 0, 255}));
    EXPECT_EQ(LabelOf(dialog, "countStatus"), "Captured : 3");
    Type(dialog, "threshold", "256");
    Click(dialog, "capture");
    EXPECT_EQ(thresholds.size(), 3U) << "refused";
    dialog.reject();
    EXPECT_EQ(dialog.Threshold(), 25) << "the last that could be one";
    EXPECT_FALSE(session.IsConnected());
}

TEST_F(CCaptureDialogsTest, PreviewShowsLinesAndTheOnionSkin) {
    CCaptureDialog dialog(nullptr, session, Request(SourceMode::Cels));
    Open(dialog);
    EXPECT_TRUE(Shows(dialog, QColor(30, 20, 10)));
    Click(dialog, "capture"); // all of it is line
    camera.frame = PlainFrame(8, 6, 220, 220, 220);
    EXPECT_TRUE(Shows(dialog, QColor(220, 220, 220)));
    Click(dialog, "showLines");
    EXPECT_TRUE(Shows(dialog, Qt::white));
    Type(dialog, "threshold", "221");
    EXPECT_TRUE(Shows(dialog, Qt::black));
    Type(dialog, "threshold", "220");
    EXPECT_TRUE(Shows(dialog, Qt::white));
    Child<QSlider>(dialog, "onion").setValue(2);
    EXPECT_EQ(LabelOf(dialog, "onionShown"), "50 %");
    const QImage shown = Preview(dialog).grab().toImage();
    const QColor mixed = shown.pixelColor(shown.rect().center());
    EXPECT_LT(mixed.red(), 160) << "blue lines over white";
    EXPECT_GT(mixed.blue(), 220);
}

TEST_F(CCaptureDialogsTest, ACameraThatVanishesLeavesTheDialogUsable) {
    CCaptureDialog dialog(nullptr, session, Request(SourceMode::Pictures));
    Open(dialog);
    EXPECT_EQ(dialog.windowTitle(), "Capture Pictures");
    EXPECT_FALSE(IsEnabled(dialog, "threshold")) << "pictures keep their colours";
    messages.clear();
    camera.hasFailed = true;
    Click(dialog, "capture");
    EXPECT_EQ(messages, Texts{"Could not grab a frame!"});
    EXPECT_EQ(LabelOf(dialog, "countStatus"), "Captured : 0");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Preview(dialog).Shown().isNull(); }, 30000));
    Click(dialog, "preview"); // plugged in again
    keeps = false;
    Click(dialog, "capture");
    keeps = true;
    Click(dialog, "capture");
    EXPECT_EQ(LabelOf(dialog, "countStatus"), "Captured : 1");
}

} // namespace velmor::testing
