#include "platform/process/InstanceBell.h"
#include "TempFolder.h"

#include <gtest/gtest.h>
#include <optional>
#include <poll.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::WriteBytes;

TEST(InstanceBell, ARingReachesWhoListens) {
    const CTempFolder folder;
    EXPECT_FALSE(CInstanceBell::Ring(folder.Path())) << "nobody is there";
    CInstanceBell bell(folder.Path());
    pollfd waiting{bell.Descriptor(), POLLIN, 0};
    EXPECT_EQ(::poll(&waiting, 1, 0), 0);
    EXPECT_TRUE(bell.TakeRings().empty());
    EXPECT_TRUE(CInstanceBell::Ring(folder.Path()));
    EXPECT_TRUE(CInstanceBell::Ring(folder.Path(), "/a path/to it"));
    EXPECT_EQ(::poll(&waiting, 1, 0), 1);
    EXPECT_EQ(bell.TakeRings(), (std::vector<std::string>{"", "/a path/to it"}));
    EXPECT_FALSE(CInstanceBell::Ring(folder.Path(), std::string(10000, 'x')));
    EXPECT_TRUE(bell.TakeRings().empty());
}

TEST(InstanceBell, WhatACrashLeavesIsNoHindrance) {
    const CTempFolder folder;
    WriteBytes(folder / "personal_velmor.bell", {});
    EXPECT_FALSE(CInstanceBell::Ring(folder.Path()));
    std::optional<CInstanceBell> bell;
    bell.emplace(folder.Path());
    EXPECT_TRUE(CInstanceBell::Ring(folder.Path()));
    bell.reset();
    EXPECT_FALSE(CInstanceBell::Ring(folder.Path()));
}

TEST(InstanceBell, NobodyWaitsForOneThatDoesNotAnswer) {
    const CTempFolder folder;
    CInstanceBell bell(folder.Path());
    int rings = 0;
    while (rings < 100'000 && CInstanceBell::Ring(folder.Path()))
        ++rings;
    EXPECT_LT(rings, 100'000) << "the system has stopped keeping rings";
    EXPECT_FALSE(bell.TakeRings().empty());
}

TEST(InstanceBell, WithoutASocketTheBellIsSilent) {
    const CTempFolder folder;
    const Path deep = folder / std::string(200, 'x');
    static_cast<void>(CreateFolder(deep));
    CInstanceBell bell(deep);
    EXPECT_LT(bell.Descriptor(), 0);
    EXPECT_TRUE(bell.TakeRings().empty());
    EXPECT_FALSE(CInstanceBell::Ring(deep));
}
