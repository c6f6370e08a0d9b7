#include "platform/process/InstanceGuard.h"
#include "TempFolder.h"

#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::WriteBytes;

TEST(InstanceGuard, OneHolderAtATime) {
    const CTempFolder folder;
    std::optional<CInstanceGuard> first = CInstanceGuard::Acquire(folder / "config");
    ASSERT_TRUE(first);
    EXPECT_TRUE(FileExists(folder / "config" / "personal_velmor"));
    EXPECT_FALSE(CInstanceGuard::Acquire(folder / "config"));
    EXPECT_TRUE(CInstanceGuard::Acquire(folder / "other"));
    CInstanceGuard moved = std::move(*first);
    first.reset();
    EXPECT_FALSE(CInstanceGuard::Acquire(folder / "config"));
    moved = *CInstanceGuard::Acquire(folder / "third");
    EXPECT_TRUE(CInstanceGuard::Acquire(folder / "config"));
}

TEST(InstanceGuard, AKilledProcessHoldsItNoLonger) {
    const CTempFolder folder;
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const std::optional<CInstanceGuard> guard = CInstanceGuard::Acquire(folder.Path());
        const char held = guard ? 'y' : 'n';
        if (::write(pipe[1], &held, 1) == 1)
            ::pause();
        ::_exit(0);
    }
    char held = 0;
    EXPECT_EQ(::read(pipe[0], &held, 1), 1);
    EXPECT_EQ(held, 'y');
    EXPECT_FALSE(CInstanceGuard::Acquire(folder.Path()));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(CInstanceGuard::Acquire(folder.Path()));
    ::close(pipe[0]);
    ::close(pipe[1]);
}

TEST(InstanceGuard, WhereNoLockCanBeHadNothingIsHeldUp) {
    const CTempFolder folder;
    WriteBytes(folder / "file", {});
    EXPECT_TRUE(CInstanceGuard::Acquire(folder / "file"));
}
