#include "platform/files/TextEncoding.h"

#include <gtest/gtest.h>

using namespace velmor;

TEST(TextEncoding, EveryByteSurvivesTheWayThereAndBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
}

TEST(TextEncoding, UsesTheTableOfWindows1252) {
    EXPECT_EQ(Windows1252ToUtf8("\x80 \x9F \xE4 \xFF \x81"), "\u20AC \u0178 \u00E4 \u00FF \xC2\x81");
    EXPECT_EQ(Utf8ToWindows1252("\u201Cfa\u00E7ade\u201D \u2122"), "\x93"
                                                                   "fa\xE7"
                                                                   "ade\x94 \x99");
}

TEST(TextEncoding, SaysWhatWouldBeLost) {
    for (const char* storable : {"", "why?", "\u20AC \u00E4 \u00FF \xC2\x81"})
        EXPECT_TRUE(IsStorable(storable)) << storable;
    for (const char* lost : {"a\u0416", "\U0001F3A8", "\x80"})
        EXPECT_FALSE(IsStorable(lost)) << lost;
}

TEST(TextEncoding, WhatDoesNotExistThereBecomesAQuestionMark) {
    EXPECT_EQ(Utf8ToWindows1252("a\u0416b\u65E5c\U0001F3A8d"), "a?b?c?d");
    EXPECT_EQ(Utf8ToWindows1252("\u0100"), "?");
    // One for each invalid byte: lone continuations, cut characters, overlong forms, surrogates, beyond Unicode.
    EXPECT_EQ(Utf8ToWindows1252("\x80x\xBF"), "?x?");
    EXPECT_EQ(Utf8ToWindows1252("\xE2\x82"), "??");
    EXPECT_EQ(Utf8ToWindows1252("\xC3("), "?(");
    EXPECT_EQ(Utf8ToWindows1252("\xC0\xAF"), "??");
    EXPECT_EQ(Utf8ToWindows1252("\xE0\x80\xAF\xF0\x80\x80\xAF"), "???????");
    EXPECT_EQ(Utf8ToWindows1252("\xED\xA0\x80"), "???");
    EXPECT_EQ(Utf8ToWindows1252("\xF4\x90\x80\x80\xFF"), "?????");
}
