#include "scene/NamingRules.h"

#include <gtest/gtest.h>

using namespace velmor;

TEST(NamingRules, CelNamesAreDigitsAndAtMostOneLetter) {
    for (const char* name : {"1", "12a", "007", "7b", "7Z", "123456789012345678901234567890"})
        EXPECT_TRUE(CheckCelName(name)) << name;
    for (const char* name : {"", "a", "12ab", "a12", "1a2", "12 ", "-1", "1.5", "1\xc3\xa4"})
        EXPECT_EQ("The cel name must be a number and if required a letter", CheckCelName(name).Message()) << name;
}

TEST(NamingRules, CelsAreStoredWithoutZerosBeforeTheirNumber) {
    for (const auto& [entered, stored] : {std::pair{"7", "7"},
                                          {"007", "7"},
                                          {"070a", "70a"},
                                          {"000", "0"},
                                          {"0b", "0b"},
                                          {"00000000000000012", "12"}})
        EXPECT_EQ(stored, StoredCelName(entered));
}

TEST(NamingRules, OtherNames) {
    for (const char* name : {"a.b", "_Pictures_", "a/b", "..", "caf\xc3\xa9"}) {
        for (const auto check : {CheckSceneName, CheckFolderName})
            EXPECT_EQ("The scene name can only consist of letters, digits and spaces", check(name).Message());
        for (const auto check : {CheckPictureName, CheckSoundName})
            EXPECT_EQ("The picture name should only consist of letters and numbers", check(name).Message());
    }
    EXPECT_EQ("You must enter a valid scene name.", CheckFolderName("").Message());
    EXPECT_TRUE(CheckSceneName("Act 2 shot 07") && CheckSceneName(std::string(25, 'x')));
    EXPECT_FALSE(CheckSceneName(std::string(26, 'x')));
    EXPECT_TRUE(CheckFolderName(std::string(26, 'x')));
    EXPECT_TRUE(CheckPictureName("Sky01"));
    EXPECT_FALSE(CheckPictureName("blue sky"));
    EXPECT_FALSE(CheckSoundName(""));
}
