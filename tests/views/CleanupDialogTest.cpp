#include "DialogDriver.h"
#include "scene/DialogRequests.h"
#include "views/dialogs/SplitPreview.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSlider>
#include <QTableWidget>
#include <QWheelEvent>

namespace velmor::testing {
namespace {

class CCleanupDialogTest : public CDialogFixture {
protected:
    CCleanupDialogTest() {
        request.chosen = {"2"};
        request.all = {"1", "2", "3"};
        request.initial.cleanup.specks = 4;
        request.preview = [this](const CCleanupValues& values, const std::string& name) {
            shown.push_back(name);
            lastShown = values;
            CCleanupPreview preview;
            EXPECT_TRUE(preview.before.CreateCel(200, 100, "x"));
            preview.after = preview.before;
            preview.done.specks = values.cleanup.specks;
            return preview;
        };
        request.findPegs = [this](const CCleanupValues&, const std::string& name, CPegs& pegs) {
            ++searches;
            pegs.spacing = 100;
            pegs.slotLength = 12.5;
            pegs.degrees = 1.25;
            return name == "3" ? CStatus::Failure("No holes") : CStatus();
        };
    }
    void Ask(const std::function<void(QDialog&)>& use) {
        WithDialog([&] { answer = prompter.Ask(request); }, use);
    }
    static QString CellOf(QDialog& dialog, int row, int column) {
        return Child<QTableWidget>(dialog, "drawings").item(row, column)->text();
    }

    CCleanupRequest request;
    std::optional<CCleanupValues> answer;
    std::vector<std::string> shown;
    CCleanupValues lastShown;
    int searches = 0;
};

TEST_F(CCleanupDialogTest, LooksForHolesBeforeAnythingIsDone) {
    Ask([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Clean Up Cels");
        auto& drawings = Child<QTableWidget>(dialog, "drawings");
        EXPECT_EQ(drawings.rowCount(), 1);
        QTest::qWait(20);
        EXPECT_EQ(searches, 0) << "nobody needs them";
        Choose(dialog, "which", 1);
        EXPECT_EQ(drawings.rowCount(), 3);
        Child<QCheckBox>(dialog, "registers").click();
        EXPECT_TRUE(QTest::qWaitFor([&] { return searches == 3; }));
        EXPECT_EQ(CellOf(dialog, 0, 1).toStdString(), "Acme, turned by 1.25\u00b0");
        EXPECT_EQ(CellOf(dialog, 2, 1), "not found");
        EXPECT_EQ(LabelOf(dialog, "holesText"), "No peg holes on 1 of 3, not put on register: 3");
        Type(dialog, "weight", "2");
        QTest::qWait(20);
        EXPECT_EQ(searches, 3) << "they are where they were";
        Type(dialog, "dpi", "150");
        EXPECT_TRUE(QTest::qWaitFor([&] { return searches > 5; })) << "others may be found";
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->all && answer->cleanup.registers);
    EXPECT_EQ(answer->cleanup.dpi, 150.0);
    EXPECT_EQ(answer->cleanup.weight, 2);
    EXPECT_EQ(answer->reference, "");
}

TEST_F(CCleanupDialogTest, ShowsOneDrawingAfterTheOther) {
    request.initial.all = true;
    request.initial.cleanup.registers = true;
    Ask([&](QDialog& dialog) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return !shown.empty(); }));
        EXPECT_EQ(LabelOf(dialog, "previewText"), "200 x 100 pixels, 4 specks removed");
        EXPECT_FALSE(Child<QPushButton>(dialog, "previous").isEnabled());
        Child<QPushButton>(dialog, "next").click();
        Child<QPushButton>(dialog, "useThis").click();
        EXPECT_EQ(Child<QComboBox>(dialog, "reference").currentText(), "2");
        EXPECT_TRUE(QTest::qWaitFor([&] { return shown.back() == "2" && lastShown.reference == "2"; }));
        Child<QPushButton>(dialog, "next").click();
        EXPECT_FALSE(Child<QPushButton>(dialog, "next").isEnabled());
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->reference, "2");
}

TEST_F(CCleanupDialogTest, OnlyGreyHasAThresholdAndOnlyLinesHaveSpecks) {
    Ask([&](QDialog& dialog) {
        auto& threshold = Child<QLineEdit>(dialog, "threshold");
        EXPECT_FALSE(threshold.isEnabled());
        EXPECT_NE(threshold.parentWidget()->toolTip(), "") << "which says why";
        EXPECT_TRUE(Child<QLineEdit>(dialog, "specks").isEnabled());
    });
    request.kind = SourceMode::Pictures;
    Ask([&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Clean Up Pictures");
        EXPECT_FALSE(Child<QLineEdit>(dialog, "specks").isEnabled());
        EXPECT_FALSE(Child<QComboBox>(dialog, "reference").isEnabled());
        Type(dialog, "threshold", "128");
        EXPECT_TRUE(Child<QLineEdit>(dialog, "specks").isEnabled());
        Type(dialog, "specks", "");
        request.accept = [](const CCleanupValues& values) { return values.cleanup.specks >= 0; };
        PressOk(dialog);
        EXPECT_TRUE(dialog.isVisible());
        Type(dialog, "specks", "0");
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->cleanup.threshold, 128);
}

TEST_F(CCleanupDialogTest, ThePreviewShowsBeforeOnTheLeftAndAfterOnTheRight) {
    CSplitPreview preview("preview");
    preview.resize(400, 300);
    QImage red(400, 300, QImage::Format_RGB32), green = red;
    red.fill(Qt::red);
    green.fill(Qt::green);
    preview.Show({red, {}}, {green, {}});
    const auto colorAt = [&](int x) { return preview.grab().toImage().pixelColor(x, 50); };
    EXPECT_EQ(colorAt(100), QColor(Qt::red));
    EXPECT_EQ(colorAt(300), QColor(Qt::green));
    double told = 0;
    preview.splitChanged = [&](double split) { told = split; };
    QTest::mousePress(&preview, Qt::LeftButton, {}, {200, 50});
    QTest::mouseMove(&preview, {360, 50});
    QTest::mouseRelease(&preview, Qt::LeftButton, {}, {360, 50});
    EXPECT_DOUBLE_EQ(told, 0.9);
    EXPECT_EQ(colorAt(300), QColor(Qt::red));
    preview.SetSplit(0);
    EXPECT_EQ(colorAt(100), QColor(Qt::green));
    green.setPixelColor(300, 50, Qt::blue);
    preview.Show({red, {}}, {green, {}});
    QWheelEvent wheel({300.5, 50.5}, {300.5, 50.5}, {}, {0, 1200}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&preview, &wheel);
    EXPECT_EQ(colorAt(300), QColor(Qt::blue)) << "it stays under the pointer";
    EXPECT_EQ(colorAt(297), QColor(Qt::blue)) << "and has grown";
    QTest::keyClick(&preview, Qt::Key_0);
    EXPECT_EQ(colorAt(300), QColor(Qt::blue));
    EXPECT_EQ(colorAt(297), QColor(Qt::green));
}

} // namespace
} // namespace velmor::testing
