#include "scene/PaletteOperations.h"

#include "SceneFixture.h"

using namespace velmor;
using Texts = std::vector<std::string>;
using Hints = std::vector<int>;

namespace {

class CPaletteOperationsTest : public velmor::testing::CSceneFixture {
protected:
    CPaletteOperationsTest() {
        model.folderName = "Walk";
        static_cast<void>(CreateFolder(model.Paths().CelFolder("Walk")));
        palettes.ClearPalette();
    }

    CPaletteOperations palettes{Context()};
    const CColor rose{100, 50, 200, 90};
};

} // namespace

TEST_F(CPaletteOperationsTest, EveryChangeIsSavedAtOnce) {
    const auto saved = [this] {
        CPalette palette;
        EXPECT_TRUE(LoadPalette(model.Paths().PaletteFile("Walk"), palette));
        return palette;
    };
    palettes.AddColor(rose, "Rose");
    EXPECT_EQ((CNamedColor{rose, "Rose"}), saved().At(3));
    prompter.Answer(CColorValues{"\xe7\x8b\x90", CColor{1, 2, 3, 4}}); // a fox, which the file has no letters for
    prompter.Answer(CColorValues{"Pink", CColor{1, 2, 3, 4}});
    palettes.EditColor(3);
    EXPECT_EQ(1U, prompter.TakeMessages().size());
    EXPECT_EQ(rose, std::any_cast<CColorRequest>(prompter.lastRequest).initial.color);
    EXPECT_EQ((CNamedColor{{1, 2, 3, 4}, "Pink"}), saved().At(3));
    palettes.SetFGColor(1);
    palettes.DeleteColor(1);
    EXPECT_EQ("TRANS", saved().At(1).name);
    EXPECT_EQ((CColor{255, 255, 255, 255}), model.paint.foreground); // a copy, not an index
    EXPECT_EQ((Hints{16, 16, 32, 16}), TakeHints());
}

TEST_F(CPaletteOperationsTest, AFailedSaveLeavesThePalette) {
    palettes.AddColor(rose, "Rose");
    const CPalette before = model.palette;
    std::filesystem::remove_all(model.Paths().CelFolder("Walk"));
    EXPECT_FALSE(palettes.LoadColors());
    palettes.AddColor(rose, "Rose");
    model.folderName.clear();
    palettes.DeleteColor(0);
    EXPECT_EQ(before, model.palette);
    EXPECT_EQ(
        (Texts{"Problem opening the color data file for reading", "Problem opening the color data file for writing",
               "Internal error : folder not open for SaveColors"}),
        prompter.messages);
}

TEST_F(CPaletteOperationsTest, TheForegroundFollowsTheEntryThatItWasTakenFrom) {
    const auto edit = [this](int index, CColor color) {
        prompter.Answer(CColorValues{"Edited", color});
        palettes.EditColor(index);
        return model.paint.foreground;
    };
    const CColor white{255, 255, 255, 255};
    palettes.SetFGColor(1);
    EXPECT_EQ(edit(1, rose), rose);
    EXPECT_EQ(edit(0, white), rose) << "another entry";
    palettes.DeleteColor(0);
    EXPECT_EQ(edit(0, white), white) << "moved up by the deletion";
    palettes.SetFGColorValue(MakeColorRef(255, 255, 255));
    EXPECT_EQ(edit(0, rose), white) << "by value";
    palettes.SetFGColor(0);
    palettes.DeleteColor(0);
    EXPECT_EQ(edit(0, white), rose) << "its entry is gone";
    model.folderName.clear();
    palettes.SetFGColor(0);
    EXPECT_EQ(edit(0, rose), white) << "a change that could not be saved";
}

TEST_F(CPaletteOperationsTest, HoldsItsLimits) {
    while (model.palette.Count() < 498)
        static_cast<void>(model.palette.Add({}));
    prompter.Answer(CColorValues{"Last", rose});
    palettes.AskAndAddColor();
    EXPECT_EQ("Last", palettes.GetColorName(498));
    palettes.AskAndAddColor();
    palettes.AddColor(rose, "More");
    palettes.DeleteColor(499);
    palettes.SetBrush(6);
    palettes.SetPen(4);
    model.palette = {};
    palettes.DeleteColor(0);
    EXPECT_EQ(
        (Texts{"Sorry the maximum color allowed exceeded", "Internal error : AddColor called exceeding MAXCOLOR",
               "Internal error : color index out of range in DeleteColor",
               "Internal Error: brush no out of range in SetBrush", "Internal Error: pen no out of range in SetPen",
               "Internal error : no colors to delete in DeleteColor"}),
        prompter.messages);
}

TEST_F(CPaletteOperationsTest, ColorsByValueKeepTheirAlpha) {
    palettes.SetFGAlpha(7);
    palettes.SetFGColorValue(MakeColorRef(10, 20, 30));
    EXPECT_EQ((CColor{30, 20, 10, 7}), model.paint.foreground);
    palettes.SetBrush(-1);
    EXPECT_EQ(-1, model.paint.brush);
    EXPECT_EQ((Hints{32, 32, 64}), TakeHints());
}
