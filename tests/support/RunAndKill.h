#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace velmor::testing {

/// What a session said until it was killed, line by line.
struct CSession {
    std::vector<std::string> lines;
    bool wasKilled = false;
};

/// The time counts from the start, or from the first line.
inline CSession RunAndKill(std::vector<std::string> arguments, int milliseconds, bool fromFirstLine) {
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

} // namespace velmor::testing
