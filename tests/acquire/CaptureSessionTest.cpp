#include "acquire/CaptureSession.h"

#include "FakeCapture.h"
#include "TempFolder.h"
#include "acquire/CaptureLines.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* notice = "Notice : This source does not have a video overlay capability!";

class CCaptureSessionTest : public ::testing::Test {
protected:
    Texts TakeMessages() { return std::exchange(messages, {}); }
    bool Grab() {
        return session.Grab([this](const Path& file) {
            bitmap = ReadBytes(file);
            return keeps;
        });
    }

    CTempFolder folder;
    CFakeCapture camera;
    Texts messages;
    CCaptureSession::Devices toldOf;
    CCaptureSession session{camera, [this](const std::string& text) { messages.push_back(text); }, folder.Path(),
                            toldOf};
    std::vector<std::uint8_t> bitmap;
    bool keeps = true;
};

} // namespace

TEST_F(CCaptureSessionTest, SetupWithoutDriversRefusesOk) {
    camera.descriptions.clear();
    session.OpenSetup({noCaptureDriver, {}});
    EXPECT_EQ(TakeMessages(), Texts{"There are no set capture devices!"});
    EXPECT_FALSE(session.AcceptSetup());
    EXPECT_EQ(TakeMessages(), Texts{"You must select a valid capture device."});
}

TEST_F(CCaptureSessionTest, SetupConnectsTheSavedDriverOrSaysThatItIsGone) {
    session.OpenSetup({"Table camera", {}});
    EXPECT_EQ(camera.TakeCalls(), (Texts{"create Table camera", "connect"}));
    EXPECT_EQ(TakeMessages(), Texts{notice});
    EXPECT_TRUE(session.AcceptSetup());

    CCaptureSession other(
        camera, [this](const std::string& text) { messages.push_back(text); }, folder.Path(), toldOf);
    other.OpenSetup({"Old camera", {}});
    EXPECT_EQ(TakeMessages(), Texts{"The last open capture device is not available, please select an available "
                                    "driver from list."});
    EXPECT_FALSE(other.IsConnected());
    EXPECT_FALSE(other.AcceptSetup());
}

TEST_F(CCaptureSessionTest, AMissingOverlayIsSaidOnceOfEachDevice) {
    const auto connect = [this](const char* driver) {
        CCaptureSession another(
            camera, [this](const std::string& text) { messages.push_back(text); }, folder.Path(), toldOf);
        EXPECT_TRUE(another.OpenCapture({driver, {}}));
        EXPECT_FALSE(another.HasOverlay());
    };
    connect("Table camera");
    EXPECT_EQ(TakeMessages(), Texts{notice});
    connect("Table camera");
    EXPECT_EQ(TakeMessages(), Texts{});
    connect("Stand camera");
    EXPECT_EQ(TakeMessages(), Texts{notice});
}

TEST_F(CCaptureSessionTest, ADriverThatIsSelectedTakesThePlaceOfTheOneBefore) {
    session.OpenSetup({"Table camera", {}});
    camera.TakeCalls();
    EXPECT_TRUE(session.Select("Stand camera"));
    EXPECT_EQ(camera.TakeCalls(), (Texts{"disconnect", "create Stand camera", "connect"}));
    TakeMessages();

    camera.canDisconnect = false;
    camera.canCreate = false;
    EXPECT_FALSE(session.Select("Table camera"));
    EXPECT_EQ(TakeMessages(),
              (Texts{"Fatal error : Could not disconnect capture driver", "Could not create a capture window"}));
    EXPECT_FALSE(session.IsConnected());
    camera.canCreate = true;
    camera.canConnect = false;
    EXPECT_FALSE(session.Select("Table camera"));
    EXPECT_EQ(TakeMessages(), Texts{"Could not connect to selected capture driver"});
    EXPECT_FALSE(session.IsConnected());
    EXPECT_TRUE(session.AcceptSetup()) << "it may be busy now and free later";
}

TEST_F(CCaptureSessionTest, CaptureNeedsTheDriverOfSetup) {
    EXPECT_FALSE(session.OpenCapture({noCaptureDriver, {}}));
    EXPECT_EQ(TakeMessages(), Texts{"Please select a capture device from capture setup before capturing"});
    EXPECT_FALSE(session.OpenCapture({"Old camera", {}}));
    EXPECT_EQ(TakeMessages(),
              Texts{"The selected device in setup was not found, please make capture setup again to "
                    "select a valid capture device"});
    camera.canConnect = false;
    EXPECT_FALSE(session.OpenCapture({"Stand camera", {}}));
    EXPECT_EQ(TakeMessages(), (Texts{"Could not connect to selected capture driver",
                                     "Could not open the capture window, please make capture setup."}));
    EXPECT_FALSE(Grab());
    EXPECT_FALSE(session.WindowSize().has_value());
    EXPECT_EQ(TakeMessages(), (Texts{"Internal error : OnCapture Called with no capture window!",
                                     "Internal error : PositionWindows Called with no capture window!"}));
    camera.canConnect = true;
    EXPECT_TRUE(session.OpenCapture({"Stand camera", {}}));
    EXPECT_EQ(session.WindowSize(), (CSize{8, 6}));
}

TEST_F(CCaptureSessionTest, AGrabStopsTheDisplayHandsOverABitmapAndResumes) {
    camera.hasOverlay = true;
    ASSERT_TRUE(session.OpenCapture({"Stand camera", {}}));
    EXPECT_EQ(TakeMessages(), Texts{});
    EXPECT_FALSE(session.IsOverlay()) << "it starts with the preview";
    session.ShowOverlay();
    EXPECT_EQ(session.ShownFrame(), nullptr);
    camera.TakeCalls();

    bool showsGrabbed = false;
    EXPECT_TRUE(session.Grab([&](const Path& file) {
        EXPECT_EQ(file.filename(), "Acapture.tmp");
        EXPECT_EQ(std::filesystem::status(file.parent_path()).permissions(), std::filesystem::perms::owner_all);
        bitmap = ReadBytes(file);
        const auto grabbed = camera.frame;
        camera.frame = PlainFrame(8, 6, 1, 2, 3);
        showsGrabbed = session.ShownFrame() == grabbed;
        return true;
    }));
    EXPECT_TRUE(showsGrabbed) << "while it is named";
    EXPECT_EQ(camera.TakeCalls(), (Texts{"overlay off", "grab", "overlay on"}));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    ASSERT_EQ(bitmap.size(), 54U + 8 * 3 * 6);
    EXPECT_EQ(bitmap[0], 'B');
    EXPECT_EQ(bitmap[28], 24) << "bits a pixel";
    EXPECT_EQ(std::vector<std::uint8_t>(bitmap.end() - 3, bitmap.end()), (std::vector<std::uint8_t>{10, 20, 30}));
    EXPECT_EQ(session.GrabbedCount(), 1);
}

TEST_F(CCaptureSessionTest, AGrabThatFailsAtAnyStepKeepsNothingAndTheNextOneWorks) {
    ASSERT_TRUE(session.OpenCapture({"Stand camera", {}}));
    TakeMessages();
    camera.hasFailed = true; // unplugged
    EXPECT_FALSE(Grab());
    EXPECT_EQ(TakeMessages(), Texts{"Could not grab a frame!"});
    EXPECT_TRUE(session.HasFailed());
    EXPECT_EQ(session.ShownFrame(), nullptr);
    session.ShowPreview(); // plugged in again
    EXPECT_FALSE(session.HasFailed());

    std::filesystem::remove(folder.Path());
    EXPECT_FALSE(Grab());
    EXPECT_EQ(TakeMessages(), Texts{"Could not save a grabbed frame! Is windows disk full??"});
    std::filesystem::create_directory(folder.Path());

    const auto good = std::exchange(camera.frame, nullptr);
    EXPECT_FALSE(Grab());
    EXPECT_EQ(TakeMessages(), Texts{"Could not grab a frame!"});
    auto cut = std::make_shared<CCaptureFrame>(*good);
    cut->bytes.resize(cut->bytes.size() - 4);
    camera.frame = cut;
    EXPECT_FALSE(Grab()) << "bytes that do not fit the size";
    TakeMessages();

    camera.frame = good;
    keeps = false; // the user gave up naming it
    EXPECT_FALSE(Grab());
    EXPECT_EQ(TakeMessages(), Texts{});
    EXPECT_EQ(session.GrabbedCount(), 0);
    EXPECT_EQ(session.LastGrabbed(), nullptr);
    EXPECT_EQ(session.ShownFrame(), good) << "the display runs again";
    keeps = true;
    EXPECT_TRUE(Grab());
    EXPECT_EQ(session.LastGrabbed(), good);
}

TEST_F(CCaptureSessionTest, SourceAndFormatAreOfferedOrRefused) {
    session.OpenSetup({"Stand camera", {}});
    TakeMessages();
    EXPECT_TRUE(session.SourceControls().empty());
    EXPECT_TRUE(session.Formats().empty());
    EXPECT_EQ(TakeMessages(),
              (Texts{"This capture device has no Source dialog!", "This capture device has no format dialog!"}));
    camera.controls.emplace_back().name = "Focus";
    camera.formats = {{640, 480, 30, {}}};
    EXPECT_EQ(session.SourceControls().size(), 1U);
    EXPECT_EQ(session.Formats().size(), 1U);
    EXPECT_TRUE(session.SetFormat(camera.formats.front()));
    EXPECT_EQ(session.WindowSize(), (CSize{640, 480}));
    EXPECT_EQ(session.Choice().format, camera.formats.front());
    camera.canSetFormat = false;
    EXPECT_FALSE(session.SetFormat(camera.formats.front()));
    EXPECT_EQ(TakeMessages().size(), 1U);
    static_cast<void>(session.Select("Table camera"));
    EXPECT_EQ(session.Choice().format.width, 0) << "another camera, another format";
    static_cast<void>(session.OpenCapture({"Stand camera", {320, 200, 15, {}}}));
    EXPECT_EQ(session.WindowSize(), (CSize{320, 200}));
}

TEST(CaptureLinesTest, WhatIsDarkerThanTheThresholdIsALine) {
    CCaptureFrame frame{256 * 3, 1, {}, 0};
    for (int sum = 0; sum < 256 * 3; ++sum) // of the three colours, uneven ones included
        for (const int value : {sum / 3, (sum + 1) / 3, std::min(255, (sum + 2) / 3), 255})
            frame.bytes.push_back(static_cast<std::uint8_t>(value));
    std::vector<std::uint32_t> pixels(frame.bytes.size() / 4);
    for (const int threshold : {0, 1, 127, 128, 255}) {
        MarkLines(frame, threshold, pixels, 1, 0);
        for (std::size_t pixel = 0; pixel < pixels.size(); ++pixel) {
            const std::uint8_t* color = &frame.bytes[pixel * 4];
            const bool isLine = (color[0] + color[1] + color[2]) / 3 < threshold;
            ASSERT_EQ(pixels[pixel] == 1, isLine) << threshold << ", " << pixel;
        }
    }
}

} // namespace velmor::testing
