#include "views/dialogs/HistoryDialog.h"

#include "DialogDriver.h"
#include "qt/Patience.h"
#include "views/dialogs/HistoryDelegate.h"
#include "views/dialogs/HistoryPicture.h"

#include <QListView>
#include <QScrollBar>
#include <algorithm>

namespace velmor::testing {
namespace {

using Ids = std::vector<std::int64_t>;

constexpr const char* day = "Monday, 6 May 2024";

/// A history that does what it is told.
struct CMadeUpHistory {
    CMadeUpHistory() {
        Add("Paint", "Fox\n1");
        Add("Drop Cels", "Ink\n12");
        Add("Delete Cel", "Fox\n7", HistoryEntryKind::Deletion).canComeBack = true;
        Add("Move Cel", "Paint\n3");
    }
    CHistoryEntry& Add(const std::string& name, const std::string& subjects,
                       HistoryEntryKind kind = HistoryEntryKind::Step) {
        CHistoryEntry entry;
        entry.id = static_cast<std::int64_t>(entries.size()) * 10 + 10;
        entry.time = QDateTime(QDate(2024, 5, 6), QTime(12, 0)).toMSecsSinceEpoch();
        entry.name = name;
        entry.subjects = subjects;
        entry.kind = kind;
        return entries.emplace_back(entry);
    }
    CHistoryRequest Request() {
        CHistoryRequest request;
        request.title = "Demo";
        request.entries = [this] { return entries; };
        request.goTo = [this](std::int64_t id) {
            gone.push_back(id);
            for (CHistoryEntry& entry : entries)
                entry.isDone = entry.id <= id || entry.kind != HistoryEntryKind::Step;
        };
        request.bringBack = [this](std::int64_t id) {
            broughtBack.push_back(id);
            Add("Bring back 7", "Fox\n7");
        };
        return request;
    }

    std::vector<CHistoryEntry> entries;
    Ids gone;
    Ids broughtBack;
};

class CHistoryDialogTest : public CDialogFixture {
protected:
    void Run(const std::function<void(QDialog&)>& use) {
        const CHistoryRequest request = history.Request();
        WithDialog([&] { prompter.RunHistory(request); }, use);
    }
    static QListView& List(QDialog& dialog) { return Child<QListView>(dialog, "steps"); }
    static std::vector<std::string> Rows(QDialog& dialog) {
        std::vector<std::string> rows;
        for (int row = 0; row < List(dialog).model()->rowCount(); ++row)
            rows.push_back(List(dialog).model()->index(row, 0).data().toString().toStdString());
        return rows;
    }
    static std::string Chosen(QDialog& dialog) {
        return List(dialog).currentIndex().data().toString().toStdString();
    }
    static QModelIndex IndexOf(QDialog& dialog, const char* name) {
        const auto* model = List(dialog).model();
        return model->match(model->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly).value(0);
    }
    static void ClickOn(QDialog& dialog, const char* name) {
        List(dialog).scrollTo(IndexOf(dialog, name));
        QTest::mouseClick(List(dialog).viewport(), Qt::LeftButton, {},
                          List(dialog).visualRect(IndexOf(dialog, name)).center());
    }

    CMadeUpHistory history;
};

TEST_F(CHistoryDialogTest, GoesToWhatIsClickedAndShowsWhereItIs) {
    Run([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "History - Demo");
        EXPECT_EQ(Rows(dialog), (std::vector<std::string>{"Before the first step", day, "Paint", "Drop Cels",
                                                          "Delete Cel", "Move Cel"}));
        EXPECT_EQ(Chosen(dialog), "Move Cel");
        ClickOn(dialog, "Paint");
        EXPECT_EQ(history.gone, Ids{10});
        EXPECT_EQ(Chosen(dialog), "Paint");
        ClickOn(dialog, "Paint"); // it is there already
        ClickOn(dialog, day);
        EXPECT_EQ(history.gone, Ids{10});
        ClickOn(dialog, "Before the first step");
        ClickOn(dialog, "Delete Cel");
        EXPECT_EQ(history.gone, (Ids{10, 0, 30}));
        EXPECT_TRUE(history.broughtBack.empty());
    });
}

TEST_F(CHistoryDialogTest, TheListStaysWhereItIsWhenAStepIsClicked) {
    for (int i = 0; i < 200; ++i)
        history.Add("Paint " + std::to_string(i), "Fox");
    Run([&](QDialog& dialog) {
        QScrollBar& bar = *List(dialog).verticalScrollBar();
        ASSERT_GT(bar.maximum(), 0);
        bar.setValue(bar.maximum() / 2 + 7);
        const int before = bar.value();
        const QPoint middle = List(dialog).viewport()->rect().center();
        const std::string clicked = List(dialog).indexAt(middle).data().toString().toStdString();
        QTest::mouseClick(List(dialog).viewport(), Qt::LeftButton, {}, middle);
        EXPECT_EQ(history.gone.size(), 1U);
        EXPECT_EQ(Chosen(dialog), clicked);
        EXPECT_EQ(bar.value(), before);
    });
}

TEST_F(CHistoryDialogTest, KeysMoveGoAndStep) {
    Run([&](QDialog& dialog) {
        QTest::keyClick(&List(dialog), Qt::Key_Up);
        QTest::keyClick(&List(dialog), Qt::Key_Up);
        EXPECT_TRUE(history.gone.empty()) << "arrows only choose";
        QTest::keyClick(&List(dialog), Qt::Key_Return);
        QTest::keyClick(&List(dialog), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&List(dialog), Qt::Key_Z, Qt::ControlModifier);
        QTest::keyClick(&List(dialog), Qt::Key_Z, Qt::ControlModifier); // nothing is left
        EXPECT_EQ(history.gone, (Ids{20, 10, 0}));
        EXPECT_EQ(Chosen(dialog), "Before the first step");
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(&List(dialog), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(history.gone, (Ids{20, 10, 0, 10, 20, 40})) << "a deletion is passed by";
        EXPECT_TRUE(dialog.isVisible());
    });
}

TEST_F(CHistoryDialogTest, TypingFindsNamesAndSubjects) {
    Run([&](QDialog& dialog) {
        EXPECT_EQ(LabelOf(dialog, "count"), "4 steps");
        QTest::keyClicks(&List(dialog), "fo");
        EXPECT_EQ(TextOf(dialog, "search"), "fo");
        EXPECT_EQ(Rows(dialog), (std::vector<std::string>{day, "Paint", "Delete Cel"}));
        EXPECT_EQ(LabelOf(dialog, "count"), "2 of 4 match");
        QLineEdit& search = Child<QLineEdit>(dialog, "search");
        QTest::keyClick(&search, Qt::Key_Up);
        QTest::keyClick(&search, Qt::Key_Return);
        EXPECT_EQ(history.gone, Ids{10});
        Type(dialog, "search", "CEL 12");
        EXPECT_EQ(Rows(dialog), (std::vector<std::string>{day, "Drop Cels"}));
        Type(dialog, "search", "nothing");
        EXPECT_EQ(LabelOf(dialog, "count"), "0 of 4 match");
        EXPECT_TRUE(Child<QLabel>(dialog, "empty").isVisible());
        QTest::keyClick(&search, Qt::Key_Escape);
        EXPECT_EQ(Rows(dialog).size(), 6U);
        EXPECT_EQ(Chosen(dialog), "Paint");
        List(dialog).setFocus();
        QTest::keyClick(&List(dialog), Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(dialog.focusWidget(), &search);
    });
}

TEST_F(CHistoryDialogTest, BringsBackFromTheLineOrWithTheButton) {
    Run([&](QDialog& dialog) {
        auto& button = Child<QPushButton>(dialog, "bringBack");
        EXPECT_FALSE(button.isEnabled());
        List(dialog).setCurrentIndex(IndexOf(dialog, "Delete Cel"));
        button.click();
        EXPECT_EQ(history.broughtBack, Ids{30});
        EXPECT_EQ(Chosen(dialog), "Delete Cel");
        EXPECT_EQ(Rows(dialog).back(), "Bring back 7");

        QStyleOptionViewItem option;
        option.initFrom(&List(dialog));
        option.rect = List(dialog).visualRect(IndexOf(dialog, "Delete Cel"));
        auto& delegate = dynamic_cast<CHistoryDelegate&>(*List(dialog).itemDelegate());
        EXPECT_TRUE(delegate.BackButton(option, IndexOf(dialog, "Paint")).isEmpty());
        QTest::mouseClick(List(dialog).viewport(), Qt::LeftButton, {},
                          delegate.BackButton(option, IndexOf(dialog, "Delete Cel")).center());
        EXPECT_EQ(history.broughtBack, (Ids{30, 30}));
        EXPECT_TRUE(history.gone.empty());
    });
}

TEST_F(CHistoryDialogTest, NothingLeadsPastWhatSomethingElseChanged) {
    history.entries[1].kind = HistoryEntryKind::Break;
    Run([&](QDialog& dialog) {
        EXPECT_EQ(Rows(dialog).front(), day) << "the state before all cannot be had either";
        ClickOn(dialog, "Paint");
        EXPECT_TRUE(history.gone.empty());
        EXPECT_NE(LabelOf(dialog, "status").find("cannot go back"), std::string::npos);
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(&List(dialog), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(history.gone, Ids{30});
    });
}

TEST_F(CHistoryDialogTest, LookingOnlyChangesNothing) {
    CHistoryRequest request = history.Request();
    request.isReadOnly = true;
    WithDialog([&] { prompter.RunHistory(request); },
               [&](QDialog& dialog) {
                   ClickOn(dialog, "Paint");
                   ClickOn(dialog, "Delete Cel");
                   QTest::keyClick(&List(dialog), Qt::Key_Return);
                   QTest::keyClick(&List(dialog), Qt::Key_Z, Qt::ControlModifier);
                   EXPECT_FALSE(Child<QPushButton>(dialog, "bringBack").isVisible());
               });
    EXPECT_TRUE(history.gone.empty() && history.broughtBack.empty());
    history.entries.clear();
    Run([](QDialog& dialog) {
        EXPECT_TRUE(Child<QLabel>(dialog, "empty").isVisible());
        QTest::keyClick(&List(dialog), Qt::Key_Return);
        QTest::keyClick(&List(dialog), Qt::Key_Z, Qt::ControlModifier);
    });
}

TEST_F(CHistoryDialogTest, OnlyPicturesOfLinesThatAreSeenAreAskedFor) {
    for (int i = 0; i < 10000; ++i)
        history.Add("Paint", "Fox\n" + std::to_string(i));
    CHistoryRequest request = history.Request();
    Ids asked;
    request.pictureOf = [&](std::int64_t id) {
        asked.push_back(id);
        return CHistoryPicture{2, 1, {255, 0, 0, 255, 0, 0}};
    };
    WithDialog([&] { prompter.RunHistory(request); },
               [&](QDialog&) {
                   ASSERT_TRUE(WaitFor([&] { return !asked.empty(); }));
                   QApplication::processEvents();
                   EXPECT_LT(asked.size(), 40U);
                   EXPECT_EQ(std::ranges::max(asked), history.entries.back().id) << "it begins where the scene is";
               });
}

TEST(HistoryPicture, BytesThatDoNotFitAreNoPicture) {
    EXPECT_TRUE(PixmapOf({}).isNull());
    EXPECT_TRUE(PixmapOf({2, 2, {1, 2, 3}}).isNull());
    EXPECT_TRUE(PixmapOf({-2, -2, std::vector<std::uint8_t>(12)}).isNull());
    EXPECT_TRUE(PixmapOf({1 << 30, 1 << 30, std::vector<std::uint8_t>(12)}).isNull());
    const QImage image = PixmapOf({1, 2, {255, 0, 0, 0, 0, 255}}).toImage();
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 1), QColor(Qt::blue));
}

TEST(HistoryPicture, ChangedCellsAreSeenAndStayInTheSheet) {
    const QRect sheet(10, 20, 60, 40);
    EXPECT_EQ(ChangedCells(sheet, {1, 1, 0, 4}, 3, 10), QRect(30, 20, 20, 20));
    EXPECT_EQ(ChangedCells(sheet, {2, 1, 9, 9}, 3, 10), QRect(30, 56, 40, 4)) << "the wrong way round";
    for (const CXSheetSelection& cells :
         {CXSheetSelection{49, 49, 1999, 1999}, {0, 0, 0, 0}, {-5, 99, -5, 9999}, {70, 80, 5000, 6000}}) {
        const QRect mark = ChangedCells(sheet, cells, 50, 2000);
        EXPECT_TRUE(sheet.contains(mark));
        EXPECT_GE(std::min(mark.width(), mark.height()), 3);
    }
    EXPECT_TRUE(sheet.contains(ChangedCells(sheet, {0, 0, 0, 0}, 0, 0)));
}

} // namespace
} // namespace velmor::testing
