#include "CommandLineFixture.h"
#include "PunchedPage.h"

#include <nlohmann/json.hpp>

namespace velmor {
namespace {

using testing::CommandLine;
using testing::CPunchedPage;
using testing::CRun;

class CleanCommands : public CommandLine {
protected:
    CleanCommands() {
        EXPECT_TRUE(CreateFolder(scene.folder / "Owl"));
        Make("1", 2);
        Make("2", -1);
    }
    Path File(const std::string& name) const { return scene.folder / "Owl" / (name + ".bit"); }
    void Make(const std::string& name, double degrees) const {
        CPunchedPage page;
        page.size = {900, 700};
        page.dpi = 80;
        page.x = 440;
        page.y = 630;
        page.degrees = degrees;
        CCelImg cel = page.Draw();
        for (int x = 100; x < 300; ++x)
            for (int y = 100; y < 103; ++y)
                CPunchedPage::SetBlack(cel, x, y);
        CPunchedPage::SetBlack(cel, 20, 20);
        cel.SetFilePath(File(name));
        EXPECT_TRUE(cel.Save());
    }
    CCelImg Cel(const std::string& name) const {
        CCelImg cel;
        EXPECT_TRUE(cel.Load(File(name)));
        return cel;
    }
    CRun Clean(const std::string& command, const std::string& options) {
        return Run("cels " + command + " " + Database() + "Test Owl " + options);
    }
};

TEST_F(CleanCommands, ChangeLinesOfTheCelsThatAreNamed) {
    EXPECT_EQ(Clean("despeckle", "--size 3 --cels 1").output, "1: 1 speck removed\n");
    EXPECT_FALSE(Cel("1").IsLine(20, 20));
    EXPECT_TRUE(Cel("2").IsLine(20, 20));
    EXPECT_EQ(Clean("thicken", "--by 2 --cels 2").status, 0);
    EXPECT_TRUE(Cel("2").IsLine(200, 104));
    EXPECT_EQ(Clean("thin", "--by 1").output, "1: done\n2: done\n");
    EXPECT_FALSE(Cel("1").IsLine(200, 102));
    EXPECT_TRUE(Cel("1").IsLine(200, 101));
    EXPECT_TRUE(Cel("2").IsLine(200, 103));
    EXPECT_FALSE(Cel("2").IsLine(200, 104));
}

TEST_F(CleanCommands, RegisterSaysWhereTheHolesAreAndPutsCelsOnThem) {
    const auto before = Contents();
    const CRun dry = Clean("register", "--dry-run --json --dpi 80");
    EXPECT_EQ(dry.status, 0) << dry.error;
    EXPECT_EQ(Contents(), before);
    const auto found = nlohmann::json::parse(dry.output);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[1]["cel"], "2");
    EXPECT_NEAR(found[1]["pegs"]["degrees"].get<double>(), -1, 0.1);
    EXPECT_NEAR(found[1]["pegs"]["x"].get<double>(), 440, 0.5);
    EXPECT_EQ(found[1]["pegs"]["edge"], "top");
    EXPECT_EQ(Clean("register", "--dry-run --dpi 200").status, 1) << "not at that resolution";

    EXPECT_EQ(Clean("register", "--reference 1").status, 0);
    CPegs pegs;
    ASSERT_TRUE(FindPegs(Cel("2"), {}, pegs));
    EXPECT_NEAR(pegs.degrees, 2, 0.1);
    EXPECT_EQ(Clean("cleanup", "--register --erase-pegs --despeckle 3 --thin 1").status, 0);
    EXPECT_FALSE(FindPegs(Cel("2"), {}, pegs));
    EXPECT_EQ(Clean("register", "--cels 2").status, 1) << "they are gone";
}

TEST_F(CleanCommands, RefuseWhatMakesNoSenseAndChangeNothing) {
    const auto before = Contents();
    for (const char* options :
         {"despeckle|", "despeckle|--size 0", "despeckle|--size 101", "thin|--by 9", "thin|",
          "cleanup|--thin 1 --thicken 1", "cleanup|--reference 1", "thicken|--by 1 --dry-run"}) {
        const std::string text = options;
        const std::size_t bar = text.find('|');
        EXPECT_EQ(Clean(text.substr(0, bar), text.substr(bar + 1)).status, 2) << options;
    }
    EXPECT_EQ(Clean("thin", "--by 1 --cels 1,9").status, 1);
    EXPECT_EQ(Clean("register", "--reference 9").status, 1);
    EXPECT_EQ(Run("cels thin " + Database() + "Test Nobody --by 1").status, 1);
    EXPECT_EQ(Contents(), before);
}

} // namespace
} // namespace velmor
