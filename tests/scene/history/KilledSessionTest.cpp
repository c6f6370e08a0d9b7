#include "RunAndKill.h"
#include "TempFolder.h"

#include <random>

namespace velmor::testing {
namespace {

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
