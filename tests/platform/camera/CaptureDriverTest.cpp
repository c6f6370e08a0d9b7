#include "platform/camera/CaptureDriver.h"

#include <array>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace velmor::testing {
namespace {

// Far more than is ever needed; nothing is said about how long it takes.
bool WaitFor(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!condition() && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return condition();
}

/// The device of a graph, and the drivers behind it.
class CCaptureDriverTest : public ::testing::Test {
protected:
    ICaptureDevice& Camera(const std::string& graph) {
        drivers = MakeCaptureDrivers({{"Test camera", graph}});
        device = drivers->Create("Test camera", {});
        if (!device)
            throw std::runtime_error("no device");
        return *device;
    }

    std::unique_ptr<ICaptureDrivers> drivers;
    std::unique_ptr<ICaptureDevice> device;
};

std::array<int, 3> PixelOf(const CCaptureFrame& frame, int x, int y) {
    const std::uint8_t* pixel = frame.bytes.data() + (y * frame.width + x) * 4;
    return {pixel[0], pixel[1], pixel[2]};
}

} // namespace

TEST_F(CCaptureDriverTest, FramesAreTheDevicesPicturesTopRowFirst) {
    ICaptureDevice& camera = Camera("color=c=0x204060:size=64x48:rate=50,format=bgr0,"
                                    "drawbox=x=0:y=0:w=16:h=8:color=0xf0e0d0:t=fill");
    ASSERT_TRUE(camera.Connect());
    EXPECT_EQ(camera.Format(), (CCaptureFormat{64, 48, 50, {}}));
    ASSERT_TRUE(WaitFor([&] { return camera.LatestFrame() != nullptr; }));
    const auto frame = camera.LatestFrame();
    ASSERT_EQ(frame->bytes.size(), 64U * 48 * 4);
    EXPECT_EQ(PixelOf(*frame, 3, 3), (std::array{0xd0, 0xe0, 0xf0}));
    EXPECT_EQ(PixelOf(*frame, 20, 3), (std::array{0x60, 0x40, 0x20}));
    EXPECT_EQ(PixelOf(*frame, 3, 20), (std::array{0x60, 0x40, 0x20}));
    EXPECT_TRUE(WaitFor([&] { return camera.LatestFrame()->number > frame->number + 2; }));
    EXPECT_EQ(PixelOf(*frame, 20, 3), (std::array{0x60, 0x40, 0x20})) << "a frame in use does not change";
}

TEST_F(CCaptureDriverTest, AGrabbedFrameCameAfterTheCall) {
    ICaptureDevice& camera = Camera("testsrc2=size=64x48:rate=50");
    EXPECT_EQ(camera.GrabFrame(), nullptr) << "not connected";
    ASSERT_TRUE(camera.Connect());
    std::uint64_t last = 0;
    for (int grab = 0; grab < 4; ++grab) {
        const auto latest = camera.LatestFrame();
        const auto frame = camera.GrabFrame();
        ASSERT_NE(frame, nullptr);
        EXPECT_GT(frame->number, latest ? latest->number : last);
        last = frame->number;
    }
    EXPECT_TRUE(camera.Disconnect());
    EXPECT_TRUE(camera.Disconnect());
    EXPECT_EQ(camera.LatestFrame(), nullptr);
}

TEST_F(CCaptureDriverTest, ADeviceThatVanishesFailsAndCanBeConnectedAgain) {
    ICaptureDevice& camera = Camera("testsrc2=size=64x48:rate=50:duration=0.2");
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(camera.Connect());
        ASSERT_TRUE(WaitFor([&] { return camera.LatestFrame() != nullptr; }));
        ASSERT_TRUE(WaitFor([&] { return camera.HasFailed(); }));
        EXPECT_EQ(camera.GrabFrame(), nullptr);
    }
}

TEST_F(CCaptureDriverTest, FramesOfAnotherSizeThanPromisedAreDropped) {
    ICaptureDevice& camera = Camera("testsrc2=size=64x48:rate=50,scale=w='if(lt(n,3),64,32)':h=48:eval=frame");
    ASSERT_TRUE(camera.Connect());
    ASSERT_TRUE(WaitFor([&] { return camera.DroppedFrames() >= 3; }));
    ASSERT_NE(camera.LatestFrame(), nullptr);
    EXPECT_EQ(camera.LatestFrame()->width, 64);
    EXPECT_EQ(camera.LatestFrame()->number, 3U);
    device.reset(); // in the middle of it all
}

TEST_F(CCaptureDriverTest, WhatCannotBeOpenedDoesNotConnect) {
    ICaptureDevice& camera = Camera("nosuchfilter=1");
    EXPECT_FALSE(camera.Connect());
    EXPECT_TRUE(camera.HasFailed());
    EXPECT_EQ(camera.GrabFrame(), nullptr);
    EXPECT_EQ(drivers->Create("Another camera", {}), nullptr);
    EXPECT_FALSE(camera.SetFormat({64, 48, 25, {}}));
    EXPECT_TRUE(camera.Controls().empty());
    EXPECT_TRUE(camera.Formats().empty());
}

TEST_F(CCaptureDriverTest, DescriptionsAreTenAtMostAndDiffer) {
    const std::size_t own = MakeCaptureDrivers({})->Descriptions().size();
    drivers = MakeCaptureDrivers({{"Camera", "a"}, {"Other", "b"}, {"Camera", "c"}});
    std::vector<std::string> names = drivers->Descriptions();
    names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(std::min(own, names.size())));
    EXPECT_EQ(names, (std::vector<std::string>{"Camera (a)", "Other", "Camera (c)"}));

    std::vector<CVirtualCamera> many;
    for (int camera = 0; camera < 14; ++camera)
        many.push_back({"Camera " + std::to_string(camera), "testsrc2"});
    EXPECT_EQ(MakeCaptureDrivers(many)->Descriptions().size(), ICaptureDrivers::mostDrivers);
}

} // namespace velmor::testing
