#include "views/dialogs/RecoveryDialog.h"

#include "DialogDriver.h"
#include "views/dialogs/LocalTime.h"

namespace velmor::testing {
namespace {

std::int64_t TimeOf(int day, int hour, int minute) {
    return QDateTime(QDate(2026, 11, day), QTime(hour, minute, 30)).toMSecsSinceEpoch();
}

const QDateTime now(QDate(2026, 11, 22), QTime(15, 0));

std::string Unsaved(int changes, std::int64_t first, std::int64_t last) {
    CRecoveryRequest request;
    request.scene = "Demo";
    request.changes = changes;
    request.firstTime = first;
    request.lastTime = last;
    return UnsavedText(request, now).toStdString();
}

class CRecoveryDialogTest : public CDialogFixture {
protected:
    CRecoveryDialogTest() {
        request.scene = "Demo";
        request.changes = 37;
    }
    RecoveryAnswer Ask(const std::function<void(QDialog&)>& use) {
        RecoveryAnswer answer{};
        WithDialog([&] { answer = prompter.Ask(request); }, use);
        return answer;
    }

    CRecoveryRequest request;
};

TEST(RecoveryText, TellsWhatIsThereAndSinceWhen) {
    EXPECT_EQ(Unsaved(37, TimeOf(22, 14, 32), TimeOf(22, 14, 51)),
              "The scene Demo has 37 changes from 14:32 to 14:51 that were not saved.");
    EXPECT_EQ(Unsaved(1, TimeOf(22, 14, 32), TimeOf(22, 14, 32)),
              "The scene Demo has 1 change at 14:32 that was not saved.");
    EXPECT_EQ(Unsaved(2, TimeOf(21, 23, 50), TimeOf(22, 0, 10)),
              "The scene Demo has 2 changes from 21 November, 23:50 to 00:10 that were not saved.");
    EXPECT_EQ(MomentText(QDateTime(QDate(2025, 3, 1), QTime(9, 5)), now), "1 March 2025, 09:05");
    EXPECT_EQ(DayText(QDateTime(QDate(2026, 11, 21), QTime(23, 59)), now), "Yesterday");
    EXPECT_EQ(DayText(QDateTime(QDate(2026, 11, 20), QTime(0, 0)), now), "Friday, 20 November");
}

TEST_F(CRecoveryDialogTest, ReturnRecoversAndEscapeLeavesItForLater) {
    EXPECT_EQ(Ask([](QDialog& dialog) { QTest::keyClick(dialog.focusWidget(), Qt::Key_Return); }),
              RecoveryAnswer::Recover);
    EXPECT_EQ(Ask([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }), RecoveryAnswer::Later);
}

TEST_F(CRecoveryDialogTest, DiscardingIsAskedOnceMore) {
    const auto discard = [](QDialog& dialog, int key) {
        WithDialog([&] { Child<QPushButton>(dialog, "discard").click(); },
                   [key](QDialog& question) {
                       if (key == 0)
                           PressOk(question);
                       else
                           QTest::keyClick(question.focusWidget(), static_cast<Qt::Key>(key));
                   });
    };
    EXPECT_EQ(Ask([&](QDialog& dialog) {
                  discard(dialog, Qt::Key_Return);
                  EXPECT_TRUE(dialog.isVisible()) << "Return is not enough for what is final";
              }),
              RecoveryAnswer::Later);
    EXPECT_EQ(Ask([&](QDialog& dialog) { discard(dialog, 0); }), RecoveryAnswer::Discard);
}

TEST_F(CRecoveryDialogTest, LookingLeavesTheQuestionOpen) {
    int looks = 0;
    request.look = [&] { ++looks; };
    EXPECT_EQ(Ask([](QDialog& dialog) {
                  Child<QPushButton>(dialog, "look").click();
                  EXPECT_TRUE(dialog.isVisible());
              }),
              RecoveryAnswer::Later);
    EXPECT_EQ(looks, 1);
}

TEST_F(CRecoveryDialogTest, WhatDoesNotFitCannotBeRecovered) {
    request.fits = false;
    request.reason = "Its xsheet was changed by another program.";
    request.look = [] {};
    Ask([](QDialog& dialog) {
        EXPECT_FALSE(dynamic_cast<CDialog&>(dialog).OkButton().isEnabled());
        EXPECT_NE(LabelOf(dialog, "question").find("changed by another program"), std::string::npos);
        EXPECT_EQ(dialog.focusWidget(), &Child<QPushButton>(dialog, "look"));
        EXPECT_TRUE(Child<QPushButton>(dialog, "discard").isEnabled());
    });
}

} // namespace
} // namespace velmor::testing
