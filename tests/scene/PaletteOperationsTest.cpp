#include "scene/PaletteOperations.h"

#include "SceneFixture.h"
#include "image/PaletteNames.h"

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
    prompter.Answer(CColorValues{"Pink", CColor{1, 2, 3, 4}});
    palettes.EditColor(3);
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

TEST_F(CPaletteOperationsTest, NamesThatTheFileHasNoLettersForStandBesideIt) {
    const std::string fox = "\xe7\x8b\x90"; // one letter
    const Path names = PaletteNamesFile(model.Paths().PaletteFile("Walk"));
    palettes.AddColor(rose, "Rose");
    EXPECT_FALSE(FileExists(names)) << "there is nothing to write";
    prompter.Answer(CColorValues{fox, rose});
    palettes.EditColor(3);
    ASSERT_TRUE(FileExists(names));
    CPalette bare;
    ASSERT_TRUE(LoadPalette(model.Paths().PaletteFile("Walk"), bare));
    EXPECT_EQ(bare.At(3).name, "?");
    palettes.ClearPalette();
    EXPECT_TRUE(palettes.LoadColors());
    EXPECT_EQ(model.palette.At(3).name, fox);
    palettes.MoveColor(3, 0);
    EXPECT_TRUE(palettes.LoadColors());
    EXPECT_EQ(model.palette.At(0).name, fox) << "the name goes with its entry";
    palettes.DeleteColor(0);
    EXPECT_FALSE(FileExists(names));
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CPaletteOperationsTest, ADamagedNamesFileIsToldAndSetAside) {
    palettes.AddColor(rose, "\xe7\x8b\x90");
    const Path names = PaletteNamesFile(model.Paths().PaletteFile("Walk"));
    const std::string text = "no names at all";
    ASSERT_TRUE(WriteFileAtomically(names, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}));
    EXPECT_TRUE(palettes.LoadColors());
    EXPECT_EQ((Texts{"Invalid or corrupted color names file",
                     "The damaged color names file is kept as Walk.colors.names.damaged"}),
              prompter.TakeMessages());
    EXPECT_FALSE(FileExists(names));
    EXPECT_EQ(model.palette.At(3), (CNamedColor{rose, "?"}));
}

TEST_F(CPaletteOperationsTest, EntriesMoveAndTheForegroundGoesWithItsOwn) {
    const auto order = [this] {
        std::string text;
        for (int i = 0; i < model.palette.Count(); ++i)
            text += model.palette.At(i).name[0];
        return text;
    };
    palettes.AddColor(rose, "Rose");
    palettes.SetFGColor(1);
    palettes.MoveColor(0, 2);
    EXPECT_EQ(order(), "WTBR");
    EXPECT_EQ(model.paint.foregroundEntry, 0);
    palettes.MoveColor(3, 0);
    EXPECT_EQ(order(), "RWTB");
    EXPECT_EQ(model.paint.foregroundEntry, 1);
    palettes.MoveColor(1, 3);
    EXPECT_EQ(order(), "RTBW");
    EXPECT_EQ(model.paint.foregroundEntry, 3);
    for (const auto& [from, to] : {std::pair(0, 4), std::pair(-1, 0), std::pair(2, 2)})
        palettes.MoveColor(from, to);
    EXPECT_EQ(order(), "RTBW");
    EXPECT_TRUE(palettes.LoadColors());
    EXPECT_EQ(order(), "RTBW");
}

TEST_F(CPaletteOperationsTest, TheTwoColorsChangePlaces) {
    palettes.SetFGColorValue(MakeColorRef(9, 8, 7));
    palettes.SetBGColor(1);
    palettes.SwapColors();
    EXPECT_EQ(model.paint.foreground, (CColor{255, 255, 255, 255}));
    EXPECT_EQ(model.paint.foregroundEntry, 1);
    EXPECT_EQ(model.paint.background, (CColor{7, 8, 9, 255}));
    palettes.SwapColors();
    EXPECT_EQ(model.paint.foregroundEntry, -1);
}

TEST_F(CPaletteOperationsTest, PalettesGoToOtherProgramsAndComeBack) {
    const Path file = model.Paths().CelFolder("Walk") / "out.gpl";
    palettes.AddColor(rose, "\xe7\x8b\x90");
    const CPalette before = model.palette;
    prompter.Answer(file);
    palettes.AskAndExportPalette();
    ASSERT_TRUE(FileExists(file));
    palettes.ClearPalette();
    prompter.Answer(std::vector<Path>{file});
    palettes.AskAndImportPalette();
    EXPECT_EQ(model.palette, before) << "what is there already is not added again";
    prompter.Answer(std::vector<Path>{file});
    palettes.AskAndImportPalette();
    EXPECT_EQ((Texts{"The palette has all colors of this file already"}), prompter.TakeMessages());

    while (model.palette.Count() < CPalette::mostColors)
        static_cast<void>(model.palette.Add({{1, 2, 3, 4}, "Filler"}));
    model.palette.Remove(0);
    model.palette.Remove(0);
    static_cast<void>(model.palette.Add({{1, 2, 3, 4}, "Filler"}));
    prompter.Answer(std::vector<Path>{file});
    palettes.AskAndImportPalette();
    EXPECT_EQ(model.palette.Count(), CPalette::mostColors);
    EXPECT_EQ((Texts{"The palette is full: 1 colors of the file are left out"}), prompter.TakeMessages());
    prompter.Answer(std::vector<Path>{model.Paths().PaletteFile("Walk")});
    palettes.AskAndImportPalette();
    EXPECT_EQ((Texts{"This is no GIMP palette file"}), prompter.TakeMessages());
}
