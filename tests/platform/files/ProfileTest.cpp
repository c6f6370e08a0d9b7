#include "platform/files/Profile.h"
#include "TempFolder.h"

#include <gtest/gtest.h>
#include <random>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;
using velmor::testing::WriteBytes;

namespace {

void WriteText(const Path& path, std::string_view text) {
    WriteBytes(path, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

} // namespace

TEST(Profile, EveryStringSurvivesTheFile) {
    using namespace std::string_literals;
    const std::string values[] = {"",
                                  "plain",
                                  " blank first",
                                  "blank last ",
                                  "\ttabs\t",
                                  "two\nlines\r\n",
                                  "\"quoted\"",
                                  "\"half",
                                  "say \"so\"",
                                  "\"",
                                  "\\",
                                  " \"\\x41 ",
                                  "back\\slash\\",
                                  "\"\\q\"",
                                  "; no comment",
                                  "# no comment",
                                  "a ; b # c = d",
                                  "=",
                                  "[Settings]",
                                  "<<<END_OF_TEXT",
                                  "<None Selected>",
                                  "with\0nul"s,
                                  "\x7F\x01\x1F",
                                  "/Filme/J\u00F6rg/D\u00E9p\u00F4t \u65E5\u672C/",
                                  std::string(5000, ' ')};
    const CTempFolder folder;
    const Path file = folder / "new folder" / "personal-velmor.ini";
    int number = 0;
    for (const std::string& value : values)
        ASSERT_TRUE(CProfile(file).WriteString("Remember", "Key " + std::to_string(number++), value));
    const CProfile profile(file);
    number = 0;
    for (const std::string& value : values)
        EXPECT_EQ(profile.GetString("Remember", "Key " + std::to_string(number++), "default"), value);
}

TEST(Profile, SectionsAndKeysStandInTheFileAsTheyAre) {
    const CTempFolder folder;
    const Path file = folder / "p.ini";
    CProfile profile(file);
    static_cast<void>(profile.WriteInt("CELVIEW_GRID2COLOR", "RED", 7));
    static_cast<void>(profile.WriteInt("GRID2COLOR", "Red", 1));
    static_cast<void>(profile.WriteInt("GRID2COLOR", "RED", -2));
    static_cast<void>(profile.WriteString("Settings", "Database Dir", "/films/"));
    const auto bytes = ReadBytes(file);
    EXPECT_EQ(
        std::string(bytes.begin(), bytes.end()),
        "[CELVIEW_GRID2COLOR]\nRED=7\n\n\n[GRID2COLOR]\nRed=1\nRED=-2\n\n\n[Settings]\nDatabase Dir=/films/\n");
    EXPECT_EQ(CProfile(file).GetInt("GRID2COLOR", "RED", 255), -2);
    EXPECT_EQ(CProfile(file).GetInt("Grid2Color", "RED", 255), 255);
}

TEST(Profile, WhatTheUserAddedByHandIsKept) {
    const CTempFolder folder;
    WriteText(folder / "p.ini", "; mine\n\n[Other]\n  key =  a value  \n\n[Remember]\n; why\nLast Scene = Old\n");
    CProfile profile(folder / "p.ini");
    EXPECT_EQ(profile.GetString("Other", "key", ""), "a value");
    EXPECT_TRUE(profile.WriteString("Remember", "Last Scene", ""));
    EXPECT_EQ(CProfile(folder / "p.ini").GetString("Other", "key", ""), "a value");
    EXPECT_EQ(CProfile(folder / "p.ini").GetString("Remember", "Last Scene", "none"), "");
    const auto bytes = ReadBytes(folder / "p.ini");
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_NE(text.find("; mine"), std::string::npos);
    EXPECT_NE(text.find("; why"), std::string::npos);
}

TEST(Profile, IntegersAreWholeNumbersOf32Bits) {
    const CTempFolder folder;
    WriteText(folder / "p.ini",
              "[S]\nlow=-2147483648\nover=2147483648\ntail=5x\nempty=\nreal=1.5\nword=x\nblank= 12 \n");
    const CProfile profile(folder / "p.ini");
    EXPECT_EQ(profile.GetInt("S", "low", 9), -2147483647 - 1);
    EXPECT_EQ(profile.GetInt("S", "blank", 9), 12);
    for (const char* key : {"over", "tail", "empty", "real", "word", "missing"})
        EXPECT_EQ(profile.GetInt("S", key, 9), 9) << key;
}

TEST(Profile, WithoutAFileThatCanBeWrittenValuesStayInMemory) {
    CProfile memory;
    EXPECT_TRUE(memory.WriteInt("S", "k", 3));
    EXPECT_EQ(memory.GetInt("S", "k", 0), 3);

    const CTempFolder folder;
    CProfile unwritable(folder.Path());
    EXPECT_FALSE(unwritable.WriteString("S", "k", "v"));
    EXPECT_EQ(unwritable.GetString("S", "k", ""), "v");
}

TEST(Profile, NoDamageStopsIt) {
    const CTempFolder folder;
    const std::string whole =
        "; top\n[Settings]\nDatabase Dir=\" /a\\x0a\\\"b \"\nImportThres=128\n[Remember]\nLast Scene=S\n";
    std::mt19937 random(5);
    const auto reads = [&](std::string_view text) {
        WriteText(folder / "p.ini", text);
        CProfile profile(folder / "p.ini");
        profile.GetString("Settings", "Database Dir", "");
        EXPECT_TRUE(profile.WriteInt("Settings", "ImportThres", 77));
        EXPECT_EQ(CProfile(folder / "p.ini").GetInt("Settings", "ImportThres", 0), 77) << text;
    };
    for (std::size_t length = 0; length <= whole.size(); ++length)
        reads(std::string_view(whole).substr(0, length));
    constexpr std::string_view nasty = "[]=;#\"\\\n\r\0 <x\xEF\xBB\xBF";
    for (int round = 0; round < 300; ++round) {
        std::string text = whole;
        for (int change = 0; change < 6; ++change)
            text[random() % text.size()] = round % 2 ? nasty[random() % nasty.size()] : static_cast<char>(random());
        reads(text);
    }
}
