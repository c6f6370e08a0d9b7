#include "image/Palette.h"

#include "DamagedFiles.h"

#include <gtest/gtest.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes FileOf(std::initializer_list<std::uint8_t> rest) {
    const std::string signature = "\x19VELMORLTCOLORDATAFILEV1.0";
    Bytes bytes(signature.begin(), signature.end());
    for (const std::uint8_t byte : rest)
        bytes.push_back(byte);
    return bytes;
}

class PaletteFileTest : public ::testing::Test {
protected:
    std::string LoadError(const Bytes& bytes) {
        WriteBytes(file, bytes);
        palette = CPalette::Default();
        const CStatus status = LoadPalette(file, palette);
        EXPECT_TRUE(status || palette == CPalette::Default());
        return status.Message();
    }

    CTempFolder folder;
    Path file = folder / "a.colors";
    CPalette palette;
};

} // namespace

TEST(PaletteTest, HoldsTheLimitWhenAddingOnly) {
    CPalette palette;
    for (int i = 0; i < CPalette::mostColors; ++i)
        EXPECT_TRUE(palette.Add({CColor{}, std::to_string(i)}));
    EXPECT_FALSE(palette.Add({CColor{}, "one too many"}));
    EXPECT_EQ(palette.Count(), 499);
    palette.Append(palette);
    EXPECT_EQ(palette.Count(), 998);
    EXPECT_EQ(palette.At(499), palette.At(0));
    palette.Remove(0);
    EXPECT_EQ(palette.At(0).name, "1");
    EXPECT_EQ(palette.Count(), 997);
}

TEST_F(PaletteFileTest, WritesToTheByteAndReadsBack) {
    CPalette saved;
    static_cast<void>(saved.Add({CColor{1, 2, 3, 4}, "\xc3\xa9"}));
    static_cast<void>(saved.Add({CColor{5, 6, 7, 8}, ""}));
    ASSERT_TRUE(SavePalette(file, saved));
    EXPECT_EQ(ReadBytes(file), FileOf({2, 0, 0, 0, 3, 2, 1, 4, 1, 0xe9, 7, 6, 5, 8, 0}));

    static_cast<void>(saved.Add({CColor{}, std::string(300, 'x')}));
    ASSERT_TRUE(SavePalette(file, saved));
    const Bytes bytes = ReadBytes(file);
    EXPECT_EQ(Bytes(bytes.end() - 303, bytes.end() - 299), (Bytes{255, 44, 1, 'x'}));
    ASSERT_TRUE(LoadPalette(file, palette));
    EXPECT_EQ(palette, saved);
}

TEST_F(PaletteFileTest, ReadsAnyCountThatTheFileHolds) {
    EXPECT_EQ(LoadError(FileOf({0, 0, 0, 0})), "");
    EXPECT_EQ(palette.Count(), 0);
    EXPECT_EQ(LoadError(FileOf({255, 255, 255, 255})), "");
    EXPECT_EQ(palette.Count(), 0);
    Bytes large = FileOf({0x58, 2, 0, 0}); // 600 colours
    large.resize(large.size() + 600 * 5);
    EXPECT_EQ(LoadError(large), "");
    EXPECT_EQ(palette.Count(), 600);
}

TEST_F(PaletteFileTest, RefusesWhatIsNotAPalette) {
    const std::string corrupted = "Invalid or corrupted color data file";
    EXPECT_EQ(LoadError({}), corrupted);
    EXPECT_EQ(LoadError(Bytes(40, 'V')), corrupted);
    EXPECT_EQ(LoadError(FileOf({255, 255, 255, 127, 1, 2, 3, 4, 0})), corrupted);
    EXPECT_EQ(LoadPalette(folder / "none", palette).Message(), "Problem opening the color data file for reading");
    EXPECT_EQ(SavePalette(folder / "none" / "a", palette).Message(),
              "Problem opening the color data file for writing");
    ASSERT_TRUE(SavePalette(file, CPalette::Default()));
    const Bytes good = ReadBytes(file);
    velmor::testing::ForEachDamage(good, [&](const Bytes& bad) {
        const std::string error = LoadError(bad);
        EXPECT_TRUE(error.empty() || error == corrupted);
        EXPECT_TRUE(bad.size() == good.size() || error == corrupted);
    });
}
