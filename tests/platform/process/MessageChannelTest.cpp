#include "platform/process/MessageChannel.h"

#include "platform/scanner/ScannerMessages.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace velmor::testing {
namespace {

using Result = CMessageChannel::Result;

class CMessageChannelTest : public ::testing::Test {
protected:
    CMessageChannelTest() {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
        here = CMessageChannel(ends[0]);
        there = CMessageChannel(ends[1]);
        raw = ends[1];
    }
    void SendRaw(const std::vector<std::uint8_t>& bytes) {
        ASSERT_EQ(::write(raw, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    CMessageChannel here;
    CMessageChannel there;
    int raw = -1;
    CChannelMessage got;
};

} // namespace

TEST_F(CMessageChannelTest, MessagesArriveWholeAndInOrder) {
    const CChannelMessage large{3, std::vector<std::uint8_t>(3'000'000, 77)};
    std::thread sender([&] {
        EXPECT_TRUE(there.Send({1, {9}}));
        EXPECT_TRUE(there.Send({2, {}}));
        EXPECT_TRUE(there.Send(large));
        EXPECT_TRUE(there.Send({4, {8, 8}}));
    });
    for (const int kind : {1, 2, 3, 4}) {
        ASSERT_EQ(here.Receive(got, 10'000), Result::Message);
        EXPECT_EQ(got.kind, kind);
        if (kind == 3) {
            EXPECT_EQ(got.bytes, large.bytes);
        }
    }
    EXPECT_EQ(got.bytes, (std::vector<std::uint8_t>{8, 8}));
    sender.join();
    EXPECT_EQ(here.Receive(got, 0), Result::Nothing);
    SendRaw({5, 2, 0, 0, 0, 6});
    EXPECT_EQ(here.Receive(got, 0), Result::Nothing) << "a byte is missing";
    SendRaw({7});
    EXPECT_EQ(here.Receive(got, 0), Result::Message);
    EXPECT_EQ(got.bytes, (std::vector<std::uint8_t>{6, 7}));
}

TEST_F(CMessageChannelTest, AnEndThatIsGoneOrMadIsClosed) {
    SendRaw({1, 0xff, 0xff, 0xff, 0xff});
    EXPECT_EQ(here.Receive(got, 0), Result::Closed) << "four gigabytes";
    here.Close();
    EXPECT_FALSE(there.Send({1, {}})) << "and no signal ends the program";
    EXPECT_EQ(there.Receive(got, 0), Result::Closed);
}

TEST(ScannerMessagesTest, ValuesComeThrough) {
    CScanSettings settings{ScanMode::Color, 600, {1.5, 2, 3, 4.25}, true, 99};
    const CScanSettings same = SettingsOf(MessageOf(settings));
    EXPECT_EQ(same.mode, settings.mode);
    EXPECT_EQ(same.resolution, 600);
    EXPECT_EQ(same.area, settings.area);
    EXPECT_TRUE(same.feeder);
    EXPECT_EQ(same.threshold, 99);
    const auto devices =
        DevicesOf(MessageOf(std::vector<CScannerDevice>{{"net:\xff:\xc3\xbc", "B\xc3\xbcro"}, {"", ""}}));
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_EQ(devices[0].name, "net:\xff:\xc3\xbc");
    EXPECT_EQ(devices[0].label, "B\xc3\xbcro");
    const CScannerAbilities abilities =
        AbilitiesOf(MessageOf(CScannerAbilities{75, 600, {75, 600}, 210, 297, true}));
    EXPECT_EQ(abilities.resolutions, (std::vector<int>{75, 600}));
    EXPECT_EQ(abilities.height, 297);
    const CScannedPage page = PageOf(MessageOf(CScannedPage{ScanMode::Color, 1, 2, {1, 2, 3, 4, 5, 6}}));
    EXPECT_EQ(page.height, 2);
    EXPECT_EQ(page.rows.size(), 6U);
}

TEST(ScannerMessagesTest, WhatCannotBeReadIsEmpty) {
    EXPECT_TRUE(PageOf({0, {1, 0, 0}}).rows.empty());
    EXPECT_LE(DevicesOf({0, {0xff, 0xff, 0xff, 0x7f, 'x'}}).size(), 1U);
    EXPECT_LE(DevicesOf({0, {0xff, 0xff, 0xff, 0xff, 0xff}}).size(), 2U);
    EXPECT_GE(AbilitiesOf({0, {}}).mostResolution, 1);
    const double endless = std::numeric_limits<double>::infinity();
    const CScannerAbilities abilities =
        AbilitiesOf(MessageOf(CScannerAbilities{75, 600, {-5, 75, 0}, -endless, std::nan(""), true}));
    EXPECT_EQ(abilities.width, 0);
    EXPECT_EQ(abilities.height, 0);
    EXPECT_EQ(abilities.resolutions, std::vector<int>{75});
    constexpr int most = std::numeric_limits<int>::max();
    for (const CScannedPage& page :
         {CScannedPage{ScanMode::Color, 1, 2, {1, 2, 3, 4, 5}},
          CScannedPage{ScanMode::Color, most, most, {1, 2, 3}}, CScannedPage{ScanMode::LineArt, 9, 1, {1}},
          CScannedPage{ScanMode::LineArt, -8, 1, {1}}}) {
        const CScannedPage read = PageOf(MessageOf(page));
        EXPECT_TRUE(read.rows.empty() && read.width == 0 && read.height == 0) << page.width;
    }
}

} // namespace velmor::testing
