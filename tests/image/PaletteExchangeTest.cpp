#include "TempFolder.h"
#include "image/PaletteNames.h"
#include "image/import/GimpPalette.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

using namespace velmor;
using velmor::testing::CTempFolder;

namespace {

std::span<const std::uint8_t> BytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

CPalette ReadGpl(const std::string& text) {
    CPalette palette;
    const CStatus status = ReadGimpPalette(BytesOf(text), palette);
    EXPECT_TRUE(status) << status.Message();
    return palette;
}

std::string FaultOf(const std::string& text) {
    CPalette palette({{{1, 2, 3, 4}, "stays"}});
    const CStatus status = ReadGimpPalette(BytesOf(text), palette);
    EXPECT_EQ(palette.Count(), 1);
    return status.Message();
}

const std::string fox = "\xe7\x8b\x90";

} // namespace

TEST(GimpPalette, IsReadAsProgramsWriteIt) {
    const CPalette palette = ReadGpl("GIMP Palette\r\nName: Skin\r\nColumns: 4\r\n# a comment\r\n"
                                     "255 224 189\tLight skin\r\n"
                                     "  0   0   0 Black without a tab\r\n"
                                     "1 2 3\r\n"
                                     "\r\n"
                                     " 12\t13\t14\t  kept blanks \r\n");
    ASSERT_EQ(palette.Count(), 4);
    EXPECT_EQ(palette.At(0), (CNamedColor{{189, 224, 255, 255}, "Light skin"}));
    EXPECT_EQ(palette.At(1), (CNamedColor{{0, 0, 0, 255}, "Black without a tab"}));
    EXPECT_EQ(palette.At(2), (CNamedColor{{3, 2, 1, 255}, ""}));
    EXPECT_EQ(palette.At(3), (CNamedColor{{14, 13, 12, 255}, "  kept blanks "}));
    EXPECT_EQ(ReadGpl("\xef\xbb\xbfGIMP Palette\n1 2 3\tR\xe9gl").At(0).name, "R\xc3\xa9gl")
        << "an old file in Windows-1252, behind a mark of UTF-8";
    EXPECT_EQ(ReadGpl("GIMP Palette\n").Count(), 0);
}

TEST(GimpPalette, ComesBackWithNamesAndOpacities) {
    std::mt19937 random(1);
    std::vector<CNamedColor> colors{
        {{1, 2, 3, 0}, "TRANS"}, {{4, 5, 6, 255}, fox + " \xc3\xa9?#"}, {{7, 8, 9, 77}, "#"}};
    for (int i = 0; i < 300; ++i) {
        const auto byte = [&random] { return static_cast<std::uint8_t>(random()); };
        std::string name = "x";
        for (int letters = 0; letters < 8; ++letters)
            name += static_cast<char>(' ' + random() % 95);
        colors.push_back({{byte(), byte(), byte(), byte()}, name});
    }
    const CPalette palette(colors);
    EXPECT_EQ(ReadGpl(GimpPaletteText(palette, "Fox\nName: no")), palette);
    EXPECT_EQ(ReadGpl(GimpPaletteText(CPalette(std::vector<CNamedColor>{{{}, "two\nlines"}}), "")).At(0).name,
              "two lines");
}

TEST(GimpPalette, RefusesWhatIsNoneAndSurvivesAnyBytes) {
    EXPECT_EQ(FaultOf(""), "This is no GIMP palette file");
    EXPECT_EQ(FaultOf("JASC-PAL\n0100\n"), "This is no GIMP palette file");
    EXPECT_EQ(FaultOf("GIMP Palette\n1 2 3\n1 2\n"), "Line 3 of the palette file has no color");
    EXPECT_EQ(FaultOf("GIMP Palette\n1 2 256\tx\n"), "Line 2 of the palette file has no color");
    EXPECT_EQ(FaultOf("GIMP Palette\n-1 2 3\tx\n"), "Line 2 of the palette file has no color");
    EXPECT_EQ(FaultOf("GIMP Palette\n1 2 3x\n"), "Line 2 of the palette file has no color");
    std::mt19937 random(2);
    for (int round = 0; round < 2000; ++round) {
        std::string text = "GIMP Palette\n";
        for (int i = static_cast<int>(random() % 60); i > 0; --i)
            text += "0123456789 \t\n#\r\x80\xff"[random() % 17];
        CPalette palette;
        static_cast<void>(ReadGimpPalette(BytesOf(text), palette));
    }
}

TEST(PaletteNames, StandBesideThePaletteForNamesItHasNoLettersFor) {
    const CTempFolder folder;
    const Path file = PaletteNamesFile(folder / "Fox.colors");
    EXPECT_EQ(file, folder / "Fox.colors.names");
    const CPalette full({{{1, 2, 3, 255}, "Plain"},
                         {{4, 5, 6, 0}, fox},
                         {{4, 5, 6, 7}, "a\\b\n" + fox + "\t "},
                         {{8, 9, 10, 255}, "R\xc3\xa9gl"}});
    ASSERT_TRUE(SavePaletteNames(file, full));
    const auto bare = [] {
        return CPalette({{{1, 2, 3, 255}, "Plain"},
                         {{4, 5, 6, 0}, "?"},
                         {{4, 5, 6, 7}, "a\\b\n?\t "},
                         {{8, 9, 10, 255}, "R\xc3\xa9gl"}});
    };
    CPalette palette = bare();
    ASSERT_TRUE(LoadPaletteNames(file, palette));
    EXPECT_EQ(palette, full);

    // An older program has removed the first entry and renamed another.
    CPalette older({{{4, 5, 6, 0}, "?"}, {{4, 5, 6, 7}, "Renamed"}, {{8, 9, 10, 255}, "R\xc3\xa9gl"}});
    const CPalette before = older;
    ASSERT_TRUE(LoadPaletteNames(file, older));
    EXPECT_EQ(older, before);

    ASSERT_TRUE(SavePaletteNames(file, before));
    EXPECT_FALSE(FileExists(file));
    EXPECT_TRUE(LoadPaletteNames(file, palette));
}

TEST(PaletteNames, AreNotTakenFromADamagedFile) {
    const CTempFolder folder;
    const Path file = folder / "Fox.colors.names";
    const std::string head = "VELMOR COLOR NAMES 1\n";
    const std::string good = "0 030201ff " + fox + "\n";
    for (const std::string& text :
         {std::string(), std::string("x"), head + "0 030201ff\n", head + "x 030201ff " + fox + "\n",
          head + "0 0302 " + fox + "\n", head + good + "99999999999 030201ff y\n",
          head + good + "0 030201ff y\\q\n", head + good + "\n\n", std::string(200, '\0')}) {
        ASSERT_TRUE(WriteFileAtomically(file, BytesOf(text)));
        CPalette palette({{{1, 2, 3, 255}, "?"}});
        EXPECT_FALSE(LoadPaletteNames(file, palette)) << text;
        EXPECT_EQ(palette.At(0).name, "?") << text;
    }
    // Entries that there are not hurt nobody.
    ASSERT_TRUE(WriteFileAtomically(file, BytesOf(head + "7 030201ff " + fox + "\n-3 030201ff y\n" + good)));
    CPalette palette({{{1, 2, 3, 255}, "?"}});
    EXPECT_TRUE(LoadPaletteNames(file, palette));
    EXPECT_EQ(palette.At(0).name, fox);
}
