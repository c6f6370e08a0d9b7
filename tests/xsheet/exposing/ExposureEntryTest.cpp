#include "xsheet/exposing/ExposureEntry.h"
#include "xsheet/exposing/DrawingNames.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using Key = CEntryKey::Kind;
using Kind = CTypedExposure::Kind;
using Outcome = CExposureEntry::Outcome;

class ExposureEntryTest : public ::testing::Test {
protected:
    CExposureEntry entry;

    // '<' is Backspace, '^' the digit behind it with Ctrl.
    Outcome Type(const std::string& keys) {
        Outcome outcome = Outcome::NotTaken;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const bool control = keys[i] == '^';
            const char key = keys[control ? ++i : i];
            outcome = entry.Press(key == '.'   ? CEntryKey{Key::Dot}
                                  : key == '-' ? CEntryKey{Key::Minus}
                                  : key == '+' ? CEntryKey{Key::Plus}
                                  : key == '<' ? CEntryKey{Key::Backspace}
                                               : CEntryKey{control ? Key::ControlDigit : Key::Digit, key - '0'});
        }
        return outcome;
    }
    CTypedExposure TypedAfter(const std::string& keys) {
        entry.Clear();
        Type(keys);
        return entry.Typed();
    }
};

TEST_F(ExposureEntryTest, WhatIsTypedSaysWhatItWillDo) {
    EXPECT_EQ(TypedAfter(""), CTypedExposure{});
    EXPECT_EQ(TypedAfter("012"), (CTypedExposure{Kind::Drawing, "012", 0}));
    EXPECT_EQ(TypedAfter("1^2"), (CTypedExposure{Kind::Drawing, "12", 0}));
    EXPECT_EQ(TypedAfter("1.-+"), (CTypedExposure{Kind::Drawing, "1", 0})) << "signs come first";
    EXPECT_EQ(TypedAfter("."), (CTypedExposure{Kind::Empty, "", 0}));
    EXPECT_EQ(TypedAfter("-06"), (CTypedExposure{Kind::Hold, "", 6}));
    EXPECT_EQ(TypedAfter("+"), (CTypedExposure{Kind::Lengthen, "", 0}));
    EXPECT_EQ(TypedAfter("^12"), (CTypedExposure{Kind::SetLength, "", 12}));
    EXPECT_EQ(TypedAfter("+123456"), (CTypedExposure{Kind::Lengthen, "", 1234})) << "no count runs over";
    EXPECT_EQ(TypedAfter("99999999999999999999").number.size(), 12U);
    TypedAfter("^12");
    EXPECT_EQ(entry.Text(), "=12");
}

TEST_F(ExposureEntryTest, NothingButTypingIsTakenWhileTheLineIsEmpty) {
    for (const Key key : {Key::Enter, Key::Escape, Key::Backspace, Key::Back, Key::On}) {
        EXPECT_EQ(entry.Press({key}), Outcome::NotTaken);
        EXPECT_FALSE(entry.IsOpen());
    }
    EXPECT_EQ(Type("^0"), Outcome::NotTaken) << "no exposure has no frames";
    Type("5");
    for (const Key key : {Key::Enter, Key::Escape, Key::Backspace, Key::Back, Key::On})
        EXPECT_TRUE(entry.Takes({key}));
    EXPECT_EQ(entry.Press({Key::Enter}), Outcome::Entered);
    EXPECT_EQ(entry.Text(), "5");
    EXPECT_EQ(entry.Press({Key::Escape}), Outcome::GivenUp);
    EXPECT_FALSE(entry.IsOpen());
}

TEST_F(ExposureEntryTest, BackspaceGoesBackToNothing) {
    EXPECT_EQ(Type("12<"), Outcome::Taken);
    EXPECT_EQ(entry.Typed().number, "1");
    EXPECT_EQ(Type("<"), Outcome::GivenUp);
    EXPECT_EQ(Type("-3<"), Outcome::Taken);
    EXPECT_EQ(entry.Typed(), (CTypedExposure{Kind::Hold, "", 0}));
    EXPECT_EQ(Type("<"), Outcome::GivenUp);
    EXPECT_EQ(Type("^3<"), Outcome::GivenUp);
}

TEST_F(ExposureEntryTest, AChoiceHoldsUntilTheNumberChanges) {
    Type("1");
    entry.Press({Key::On});
    entry.Press({Key::On});
    entry.Press({Key::Back});
    EXPECT_EQ(entry.Choice(), 1);
    Type("2");
    EXPECT_EQ(entry.Choice(), 0);
    entry.Press({Key::Back});
    EXPECT_EQ(entry.Choice(), -1);
    Type("<");
    EXPECT_EQ(entry.Choice(), 0);
}

TEST(DrawingNamesTest, ANumberFindsNamesThatBeginOrEndWithIt) {
    using Names = std::vector<std::string>;
    const Names names{"1", "2", "12", "120", "0012", "Fox1", "Fox12", "Fox012", "Fox 120", "2b", "12a", "Cat", "0"};
    EXPECT_EQ(DrawingsNamed(names, "12"), (Names{"12", "0012", "Fox12", "Fox012", "120", "12a", "Fox 120"}));
    EXPECT_EQ(DrawingsNamed(names, "1"),
              (Names{"1", "Fox1", "12", "120", "12a", "0012", "Fox12", "Fox012", "Fox 120"}));
    EXPECT_EQ(DrawingsNamed(names, "2"), (Names{"2", "2b"}));
    EXPECT_EQ(DrawingsNamed(names, "0"), (Names{"0", "0012", "Fox012"}));
    EXPECT_EQ(DrawingsNamed(names, "00"), (Names{"0", "0012"}));
    EXPECT_EQ(DrawingsNamed(names, "7"), Names{});
    EXPECT_EQ(DrawingsNamed(names, ""), Names{});
}

} // namespace
} // namespace velmor::testing
