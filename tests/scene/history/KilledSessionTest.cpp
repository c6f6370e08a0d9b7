#include "TempFolder.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <random>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace velmor::testing {
namespace {

/// What a session said until it was killed, line by line.
struct CSession {
    std::vector<std::string> lines;
    bool wasKilled = false;
};

// The time counts from the start, or from the first line.
CSession RunAndKill(std::vector<std::string> arguments, int milliseconds, bool fromFirstLine) {
    int ends[2] = {};
    EXPECT_EQ(::pipe(ends), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    posix_spawn_file_actions_addclose(&actions, ends[1]);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    EXPECT_EQ(::posix_spawn(&child, pointers.front(), &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    if (pollfd said{ends[0], POLLIN, 0}; fromFirstLine)
        ::poll(&said, 1, -1);
    ::poll(nullptr, 0, milliseconds);
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    std::string said;
    char buffer[4096];
    for (ssize_t count = 0; (count = ::read(ends[0], buffer, sizeof buffer)) > 0;)
        said.append(buffer, static_cast<std::size_t>(count));
    ::close(ends[0]);
    CSession session;
    session.wasKilled = WIFSIGNALED(status);
    for (std::size_t begin = 0, end = 0; (end = said.find('\n', begin)) != std::string::npos; begin = end + 1)
        session.lines.push_back(said.substr(begin, end - begin));
    return session;
}

// Each session goes on with what the one before it left. Killed are those that open and recover as well.
TEST(KilledSession, LosesNothingThatWasFinished) {
    CTempFolder folder;
    std::mt19937 random(20);
    std::string last;
    std::size_t states = 0;
    for (int round = 0; round < 300; ++round) {
        std::vector<std::string> arguments{VELMOR_KILLED_ANIMATOR, folder.Path().string(), std::to_string(round)};
        if (!last.empty())
            arguments.push_back(last);
        // The first one has to get as far as a scene.
        const bool fromFirstLine = last.empty() || round % 4 != 0;
        const CSession session = RunAndKill(arguments, 1 + static_cast<int>(random() % 60), fromFirstLine);
        for (const std::string& line : session.lines)
            ASSERT_FALSE(line.starts_with("FAILED")) << line << " in round " << round;
        ASSERT_TRUE(session.wasKilled || session.lines.size() > 500) << "round " << round;
        if (!session.lines.empty())
            last = session.lines.back();
        states += session.lines.size();
    }
    EXPECT_GT(states, 400U);
}

// No file may grow beyond some kilobytes, the journal among them. Whatever cannot be written is told, and the
// session goes on; the next one, on a disk with room, has a scene that opens, and loses nothing any more.
TEST(KilledSession, GoesOnWithAFullDisk) {
    CTempFolder folder;
    const std::string place = folder.Path().string();
    std::vector<std::string> lines = RunAndKill({VELMOR_KILLED_ANIMATOR, place, "1"}, 30, true).lines;
    ASSERT_FALSE(lines.empty());
    for (int round = 2; round < 12; ++round) {
        const std::string limit = std::to_string(8 * round * round);
        const std::string command = "ulimit -f " + limit + "; exec \"$0\" \"$@\"";
        const std::vector<std::string> limited{
            "/bin/sh", "-c", command, VELMOR_KILLED_ANIMATOR, place, std::to_string(round), "any"};
        lines = RunAndKill(limited, 150, true).lines;
        ASSERT_FALSE(lines.empty());
        ASSERT_FALSE(lines.front().starts_with("FAILED")) << lines.front() << " with " << limit;
        lines = RunAndKill({VELMOR_KILLED_ANIMATOR, place, std::to_string(round), "any"}, 20, true).lines;
        ASSERT_FALSE(lines.empty());
        lines = RunAndKill({VELMOR_KILLED_ANIMATOR, place, std::to_string(round), lines.back()}, 20, true).lines;
        ASSERT_FALSE(lines.empty());
        EXPECT_FALSE(lines.front().starts_with("FAILED")) << lines.front() << " after " << limit;
    }
}

} // namespace
} // namespace velmor::testing
