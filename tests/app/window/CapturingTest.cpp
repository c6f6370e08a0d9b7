#include "app/window/Capturing.h"

#include "DocumentFixture.h"
#include "FakeCapture.h"
#include "acquire/CaptureSession.h"
#include "app/window/MainFrame.h"
#include "qt/ModalDriver.h"
#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/Settings.h"
#include "views/capture/CapturePreview.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>

namespace velmor::testing {
namespace {

using Texts = std::vector<std::string>;

constexpr int pictureWidth = 160;
constexpr int pictureHeight = 120;
// Grey, lighter to the right and a little to the top, and no two frames alike.
constexpr const char* movingPicture = "nullsrc=size=160x120:rate=25,"
                                      "geq=lum='16+clip(X*199/(W-1)+20*(1-Y/H)+mod(N,8),0,219)':cb=128:cr=128";

/// The window with a camera that is made of a picture, and a temporary folder of its own.
class CCapturingTest : public CDocumentFixture {
protected:
    CCapturingTest() {
        qputenv("TMPDIR", folder.Path().c_str());
        NewScene("First");
        prompter.Answer(std::string("walk"));
        doc->Assets().NewFolder();
        frame.show();
        UseCamera(movingPicture);
        prompter.TakeMessages();
    }
    ~CCapturingTest() override {
        m_oldTemporary.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_oldTemporary);
    }

    void UseCamera(const std::string& graph) {
        frame.Capturing().UseDrivers(MakeCaptureDrivers({{"Test camera", graph}}));
        Set(profile, setting::captureDriver, "Test camera");
    }
    /// Runs a command's dialog once it is open.
    void With(CommandId command, const std::function<void(QDialog&)>& use) {
        frame.UpdateCommands();
        WithDialog([&] { frame.Action(command)->trigger(); }, use);
    }
    static bool WaitForCamera(QDialog& dialog) {
        return QTest::qWaitForWindowActive(&dialog, 30000) &&
               QTest::qWaitFor([&] { return Child<QWidget>(dialog, "capture").isEnabled(); }, 30000);
    }
    Texts TakeMessages() {
        Texts texts = prompter.TakeMessages();
        std::erase(texts, "Notice : This source does not have a video overlay capability!");
        return texts;
    }

    /// The file of a frame that is being handed over; empty when there is none.
    Path Bitmap() const {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path()))
            if (entry.path().filename() == "Acapture.tmp")
                return entry.path();
        return {};
    }

private:
    QByteArray m_oldTemporary = qgetenv("TMPDIR");

protected:
    CMainFrame frame{*doc, prompter, profile};
};

/// A 24-bit bitmap file's pixel, y from the bottom up.
CColor PixelOf(const std::vector<std::uint8_t>& bitmap, int x, int y) {
    const std::uint8_t* pixel = bitmap.data() + 54 + y * pictureWidth * 3 + x * 3;
    return {pixel[2], pixel[1], pixel[0], 255};
}

} // namespace

TEST_F(CCapturingTest, CapturedCelsHaveTheLinesOfTheThreshold) {
    std::vector<std::vector<std::uint8_t>> bitmaps;
    prompter.onAskName = [&] { bitmaps.push_back(ReadBytes(Bitmap())); };
    const std::vector<int> thresholds = {128, 60, 0, 255};
    With(CommandId::SourcesCaptureCels, [&](QDialog& dialog) {
        ASSERT_TRUE(WaitForCamera(dialog));
        for (const int threshold : thresholds) {
            Child<QLineEdit>(dialog, "threshold").setText(QString::number(threshold));
            prompter.Answer(std::to_string(bitmaps.size() + 1));
            QTest::keyClick(&dialog, Qt::Key_Space);
        }
    });
    EXPECT_EQ(TakeMessages(), Texts{});
    ASSERT_EQ(bitmaps.size(), thresholds.size());
    for (std::size_t cel = 0; cel < thresholds.size(); ++cel) {
        CCelImg image;
        ASSERT_TRUE(image.Load(SceneFolder("First") / "walk" / (std::to_string(cel + 1) + ".bit")));
        ASSERT_EQ(CSize(image.Width(), image.Height()), CSize(pictureWidth, pictureHeight));
        ASSERT_EQ(bitmaps[cel].size(), 54U + pictureWidth * pictureHeight * 3);
        int lines = 0;
        for (int y = 0; y < pictureHeight; ++y)
            for (int x = 0; x < pictureWidth; ++x) {
                const CColor color = PixelOf(bitmaps[cel], x, y);
                const bool isLine = (color.red + color.green + color.blue) / 3 < thresholds[cel];
                ASSERT_EQ(image.IsLine(x, y), isLine) << cel << ": " << x << ", " << y;
                lines += isLine ? 1 : 0;
            }
        EXPECT_EQ(lines > 0, thresholds[cel] > 0);
    }
    EXPECT_EQ(Get(profile, setting::captureThreshold), 255) << "the last one, when the dialog closes";
    EXPECT_EQ(Bitmap(), Path());
}

TEST_F(CCapturingTest, CapturedPicturesKeepTheirColors) {
    std::vector<std::uint8_t> bitmap;
    prompter.onAskName = [&] { bitmap = ReadBytes(Bitmap()); };
    prompter.Answer(std::string("sky"));
    With(CommandId::SourcesCapturePicture, [&](QDialog& dialog) {
        ASSERT_TRUE(WaitForCamera(dialog));
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(TakeMessages(), Texts{});
    CCelImg image;
    ASSERT_TRUE(image.Load(SceneFolder("First") / "_Pictures_" / "sky.rgba"));
    ASSERT_EQ(bitmap.size(), 54U + pictureWidth * pictureHeight * 3);
    for (int y = 0; y < pictureHeight; ++y)
        for (int x = 0; x < pictureWidth; ++x)
            ASSERT_EQ(image.ColorAt(x, y), PixelOf(bitmap, x, y)) << x << ", " << y;
    EXPECT_LT(image.ColorAt(0, 60).red, 40) << "black is at the left";
    EXPECT_GT(image.ColorAt(pictureWidth - 1, 60).red, 215);
    EXPECT_GT(image.ColorAt(80, 119).red, image.ColorAt(80, 0).red + 15) << "the lighter rows are at the top";
}

TEST_F(CCapturingTest, ACameraThatIsUnpluggedCostsNothingButTheFrame) {
    UseCamera("testsrc2=size=64x48:rate=25:duration=2");
    With(CommandId::SourcesCaptureCels, [&](QDialog& dialog) {
        ASSERT_TRUE(WaitForCamera(dialog));
        TakeMessages();
        const auto& preview = dynamic_cast<CCapturePreview&>(Child<QWidget>(dialog, "captureWindow"));
        const auto shows = [&] { return !preview.Shown().isNull(); };
        ASSERT_TRUE(QTest::qWaitFor(shows, 30000));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !shows(); }, 30000));
        Child<QAbstractButton>(dialog, "capture").click();
        EXPECT_EQ(TakeMessages(), Texts{"Could not grab a frame!"});
        EXPECT_TRUE(dialog.isVisible());

        Child<QAbstractButton>(dialog, "preview").click(); // plugged in again
        prompter.Answer(std::string("7"));
        Child<QAbstractButton>(dialog, "capture").click();
        EXPECT_EQ(TakeMessages(), Texts{});
    });
    EXPECT_TRUE(FileExists(SceneFolder("First") / "walk" / "7.bit"));
}

TEST_F(CCapturingTest, SetupStoresTheDriverAndBothDialogsSayThatItIsGone) {
    Set(profile, setting::captureDriver, noCaptureDriver);
    With(CommandId::SourcesCameraSettings, [&](QDialog& dialog) {
        auto& drivers = Child<QListWidget>(dialog, "drivers");
        ASSERT_TRUE(QTest::qWaitFor([&] { return drivers.count() > 0; }, 30000));
        drivers.setCurrentRow(drivers.count() - 1);
        dialog.accept();
    });
    EXPECT_EQ(Get(profile, setting::captureDriver), "Test camera");
    EXPECT_EQ(TakeMessages(), Texts{});

    frame.Capturing().UseDrivers(MakeCaptureDrivers({{"Other camera", movingPicture}}));
    const auto waitForMessage = [&](QDialog&) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !prompter.messages.empty(); }, 30000));
    };
    With(CommandId::SourcesCameraSettings, waitForMessage);
    EXPECT_EQ(TakeMessages(), Texts{"The last open capture device is not available, please select an available "
                                    "driver from list."});
    With(CommandId::SourcesCapturePicture, waitForMessage);
    EXPECT_EQ(TakeMessages(),
              Texts{"The selected device in setup was not found, please make capture setup again to "
                    "select a valid capture device"});
    EXPECT_EQ(Get(profile, setting::captureDriver), "Test camera");
}

TEST_F(CCapturingTest, TheChosenFormatOutlastsTheCamera) {
    const CCaptureFormat large{1280, 720, 29.97, "mjpeg"};
    const auto useFake = [this]() -> CFakeCapture& {
        auto fake = std::make_unique<CFakeCapture>();
        CFakeCapture& drivers = *fake;
        frame.Capturing().UseDrivers(std::move(fake));
        return drivers;
    };
    Set(profile, setting::captureDriver, "Stand camera");
    useFake().formats = {large, {640, 480, 30, {}}};
    With(CommandId::SourcesCameraSettings, [&](QDialog& dialog) {
        auto& button = Child<QAbstractButton>(dialog, "videoFormat");
        ASSERT_TRUE(QTest::qWaitFor([&] { return button.isEnabled(); }, 30000));
        WithDialog([&] { button.click(); },
                   [](QDialog& format) {
                       Child<QListWidget>(format, "formats").setCurrentRow(0);
                       format.accept();
                   });
        dialog.accept();
    });
    CFakeCapture& camera = useFake();
    With(CommandId::SourcesCapturePicture, [&](QDialog& dialog) { ASSERT_TRUE(WaitForCamera(dialog)); });
    EXPECT_EQ(camera.format, large);
}

TEST_F(CCapturingTest, CapturingNeedsAPlaceForWhatIsCaptured) {
    const auto enabled = [this] {
        frame.UpdateCommands();
        return std::vector{frame.Action(CommandId::SourcesCameraSettings)->isEnabled(),
                           frame.Action(CommandId::SourcesCaptureCels)->isEnabled(),
                           frame.Action(CommandId::SourcesCapturePicture)->isEnabled()};
    };
    EXPECT_EQ(enabled(), (std::vector{true, true, true}));
    doc->Scenes().SetFolderName("");
    EXPECT_EQ(enabled(), (std::vector{true, false, true}));
}

} // namespace velmor::testing
