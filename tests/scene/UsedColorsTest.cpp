#include "scene/UsedColors.h"

#include "TempFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace velmor::testing {
namespace {

constexpr CColor white{255, 255, 255, 255};
constexpr CColor red{0, 0, 255, 255};
constexpr CColor glass{0, 0, 255, 10};
constexpr CColor blue{255, 0, 0, 255};

class UsedColorsTest : public ::testing::Test {
protected:
    Path Paint(const char* name, CColor color) {
        CCelImg cel;
        EXPECT_TRUE(cel.CreateCel(40, 30, folder / name));
        cel.SetColorAt(7, 9, color);
        EXPECT_TRUE(cel.Save());
        return folder / name;
    }
    void Wait() {
        while (used.IsLooking()) {
            used.Poll();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    CTempFolder folder;
    CUsedColors used;
};

TEST_F(UsedColorsTest, AreThoseOfAllFilesAndOfTheImageUnderEdit) {
    EXPECT_FALSE(used.IsUsed(red)) << "not known yet";
    const std::vector<Path> files{Paint("a.bit", red), Paint("b.bit", white), folder / "none.bit"};
    used.Look(files, {});
    Wait();
    EXPECT_EQ(used.IsUsed(red), true);
    EXPECT_EQ(used.IsUsed(white), true);
    EXPECT_EQ(used.IsUsed(glass), false) << "another opacity is another color";
    CCelImg edited;
    ASSERT_TRUE(edited.Load(files[0]));
    edited.SetColorAt(7, 9, blue);
    used.Look(files, edited);
    Wait();
    EXPECT_EQ(used.IsUsed(blue), true);
    EXPECT_EQ(used.IsUsed(red), false) << "in the file alone";
    edited.SetModified(false);
}

TEST_F(UsedColorsTest, FollowFilesThatChangeAndGo) {
    std::vector<Path> files{Paint("a.bit", red), Paint("b.bit", glass)};
    used.Look(files, {});
    used.Look(files, {}); // before the first look is over
    Wait();
    EXPECT_EQ(used.IsUsed(red), true);
    Paint("a.bit", blue);
    used.Look(files, {});
    Wait();
    EXPECT_EQ(used.IsUsed(red), false);
    EXPECT_EQ(used.IsUsed(blue), true);
    files.pop_back();
    used.Look(files, {});
    Wait();
    EXPECT_EQ(used.IsUsed(glass), false);
    used.Look(files, {}); // and the object goes meanwhile
}

} // namespace
} // namespace velmor::testing
