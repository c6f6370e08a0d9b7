#include "RunAndKill.h"
#include "TempFolder.h"

#include <random>

namespace velmor::testing {
namespace {

// As without a window, and nothing that is done to the scene behind the views' backs upsets them.
TEST(KilledWindow, LosesNothingThatWasFinished) {
    CTempFolder folder;
    std::mt19937 random(4);
    std::string last;
    for (int round = 0; round < 40; ++round) {
        std::vector<std::string> arguments{VELMOR_KILLED_WINDOW, folder.Path().string(), std::to_string(round)};
        if (!last.empty())
            arguments.push_back(last);
        const CSession session = RunAndKill(arguments, 1 + static_cast<int>(random() % 200), true);
        ASSERT_FALSE(session.lines.empty());
        ASSERT_TRUE(session.wasKilled) << "round " << round << ": " << session.lines.back();
        last = session.lines.back();
        ASSERT_FALSE(last.starts_with("FAILED")) << last << " in round " << round;
    }
}

} // namespace
} // namespace velmor::testing
