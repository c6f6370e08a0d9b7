#include "CommandLineFixture.h"

#include "image/CelImg.h"

namespace velmor {
namespace {

using testing::CommandLine;

class CelsCommand : public CommandLine {
protected:
    CelsCommand() {
        EXPECT_TRUE(CreateFolder(scene.folder / "Owl"));
        for (const char* name : {"1", "2"}) {
            CCelImg cel;
            EXPECT_TRUE(cel.CreateCel(8, 6, File(name)));
            cel.SetColorAt(1, 1, {10, 20, 30, 200});
            cel.SetColorAt(2, 1, {11, 20, 30, 255});
            cel.SetLine(2, 1, true);
            EXPECT_TRUE(cel.Save());
        }
    }
    Path File(const std::string& name) const { return scene.folder / "Owl" / (name + ".bit"); }
    CColor At(const std::string& name, int x) const {
        CCelImg cel;
        EXPECT_TRUE(cel.Load(File(name)));
        return cel.ColorAt(x, 1);
    }
};

TEST_F(CelsCommand, RecolorTakesWhatItIsTold) {
    const std::string command = "cels recolor " + Database() + "Test Owl --from 1e140a --to 00ff80 ";
    EXPECT_EQ(Run(command + "--cels 1").output, "1 pixel recolored\n");
    EXPECT_EQ(At("1", 1), (CColor{128, 255, 0, 200})) << "alpha stays";
    EXPECT_EQ(At("2", 1), (CColor{10, 20, 30, 200}));
    EXPECT_EQ(Run(command + "--tolerance 1 --lines").output, "2 pixels recolored\n");
    EXPECT_EQ(At("1", 2), (CColor{128, 255, 0, 255}));
    EXPECT_EQ(At("2", 1), (CColor{10, 20, 30, 200})) << "that is paint";
    EXPECT_EQ(Run(command + "--paint").output, "1 pixel recolored\n");
}

TEST_F(CelsCommand, RecolorRefusesWhatItCannotDo) {
    const auto before = Contents();
    const std::string command = "cels recolor " + Database() + "Test ";
    EXPECT_EQ(Run(command + "Owl --from 1e140 --to 00ff80").status, 2);
    EXPECT_EQ(Run(command + "Owl --from 1e140a --to 00ff8x").status, 2);
    EXPECT_EQ(Run(command + "Owl --from 1e140a --to 00ff80 --lines --paint").status, 2);
    EXPECT_EQ(Run(command + "Ape --from 1e140a --to 00ff80").error, "There is no cel folder Ape\n");
    EXPECT_EQ(Run(command + ".. --from 1e140a --to 00ff80").status, 1);
    EXPECT_EQ(Run(command + "Owl --from 1e140a --to 00ff80 --cels 1,7").error, "There is no cel 7 in Owl\n");
    EXPECT_EQ(Contents(), before);
}

} // namespace
} // namespace velmor
