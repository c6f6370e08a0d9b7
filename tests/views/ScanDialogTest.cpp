#include "views/scan/ScanDialog.h"

#include "DialogDriver.h"
#include "views/scan/ScanForm.h"
#include "views/scan/ScanPreview.h"
#include "views/scan/ScanUi.h"

#include <QCheckBox>
#include <QComboBox>
#include <QProgressBar>
#include <cmath>

namespace velmor::testing {
namespace {

constexpr QSizeF glass(200, 300);

CScannerAbilities Abilities() {
    return {75, 1200, {}, glass.width(), glass.height(), true};
}

/// A scan window whose user's deeds are written down.
class CScanDialogTest : public CDialogFixture {
protected:
    CScanDialog& Open(const CScannerAbilities& abilities = Abilities(), const CScanSettings& initial = {}) {
        ui.OpenScanWindow({"Maker One", abilities, initial},
                          {[this](const CScanSettings& settings) { previewed = settings; },
                           [this](const CScanSettings& settings) { scanned = settings; }, [this] { ++stops; },
                           [this] { ++closes; }});
        return *window.findChild<CScanDialog*>();
    }
    void Press(const char* button) { Child<QPushButton>(*window.findChild<CScanDialog*>(), button).click(); }

    CScanUi ui{window};
    std::optional<CScanSettings> previewed;
    std::optional<CScanSettings> scanned;
    int stops = 0;
    int closes = 0;
};

class CScanUiTest : public CDialogFixture {};

} // namespace

TEST(ScanFormTest, AreasAreKeptOnTheGlass) {
    EXPECT_EQ(FitArea({}, glass), (CScanArea{0, 0, 200, 300}));
    EXPECT_EQ(FitArea({10, 20, 30, 40}, glass), (CScanArea{10, 20, 30, 40}));
    EXPECT_EQ(FitArea({190, -5, 30, 400}, glass), (CScanArea{170, 0, 30, 300}));
    EXPECT_EQ(FitArea({0, 0, 1e-9, 1e9}, glass), (CScanArea{0, 0, 2, 300}));
    EXPECT_EQ(FitArea({NAN, 0, 10, 10}, glass), (CScanArea{0, 0, 200, 300}));
    EXPECT_EQ(FitArea({0, 0, INFINITY, 10}, glass), (CScanArea{0, 0, 200, 300}));
    for (std::size_t paper = 0; paper < Papers().size(); ++paper)
        EXPECT_EQ(PaperOf(AreaOf(Papers()[paper], {400, 400}), {400, 400}), static_cast<int>(paper));
    EXPECT_EQ(PaperOf({10, 20, 30, 40}, glass), -1);
    EXPECT_GT(GlassOf({}).width(), 200) << "a scanner that does not say";
}

TEST(ScanFormTest, ResolutionsAreThoseOfTheScanner) {
    EXPECT_EQ(ResolutionsOf(CScannerAbilities{100, 400, {}, 0, 0, false}),
              (std::vector<int>{100, 150, 200, 300, 400}));
    EXPECT_EQ(ResolutionsOf(CScannerAbilities{1, 1200, {90, 180}, 0, 0, false}), (std::vector<int>{90, 180}));
    EXPECT_EQ(ResolutionsOf(CScannerAbilities{5000, 9600, {}, 0, 0, false}), (std::vector<int>{5000}));
    EXPECT_EQ(NearestResolution(std::vector<int>{90, 180, 300}, 200), 1);
    EXPECT_EQ(SizeOf({0, 0, 25.4, 50.8}, 300).height, 600);
    EXPECT_FALSE(SizeOf({0, 0, 210, 297}, 2400).isPossible);
    EXPECT_TRUE(SizeOf({0, 0, 210, 297}, 1200).isPossible);
}

TEST(ScanFormTest, TheWindowAndTheGlassAgree) {
    const QRectF shown = GlassRectangle(glass, {320, 400});
    EXPECT_NEAR(shown.width() / shown.height(), glass.width() / glass.height(), 1e-6);
    EXPECT_TRUE(QRectF(0, 0, 320, 400).contains(shown));
    const CScanArea area{20, 30, 100, 150};
    const CScanArea back = ToGlass(ToWindow(area, glass, shown), glass, shown);
    EXPECT_NEAR(back.left, area.left, 1e-6);
    EXPECT_NEAR(back.height, area.height, 1e-6);
    const CScanArea outside = ToGlass(QRectF(-500, -500, 2000, 2000), glass, shown);
    EXPECT_NEAR(outside.width, 200, 1e-6);
    EXPECT_NEAR(outside.height, 300, 1e-6);
}

TEST_F(CScanDialogTest, ChoicesReachTheScanner) {
    CScanSettings initial;
    initial.mode = ScanMode::Color;
    CScanDialog& dialog = Open(Abilities(), initial);
    EXPECT_EQ(LabelOf(dialog, "mode"), "Color, for pictures");
    auto& resolution = Child<QComboBox>(dialog, "resolution");
    resolution.setCurrentIndex(resolution.findData(150));
    auto& paper = Child<QComboBox>(dialog, "paper");
    EXPECT_EQ(paper.currentText(), "Whole glass");
    paper.setCurrentIndex(3);
    emit paper.activated(3);
    EXPECT_EQ(TextOf(dialog, "width"), "148");
    Type(dialog, "left", "25.5");
    EXPECT_EQ(paper.currentText(), "Drawn area");
    Child<QCheckBox>(dialog, "feeder").setChecked(true);
    Press("scan");
    ASSERT_TRUE(scanned);
    EXPECT_EQ(scanned->mode, ScanMode::Color);
    EXPECT_EQ(scanned->resolution, 150);
    EXPECT_EQ(scanned->area, (CScanArea{25.5, 0, 148, 210}));
    EXPECT_TRUE(scanned->feeder);
    EXPECT_FALSE(previewed);
}

TEST_F(CScanDialogTest, TheMouseDrawsTheArea) {
    CScanDialog& dialog = Open();
    auto& picture = Child<CScanPreview>(dialog, "preview picture");
    const QRectF shown = GlassRectangle(glass, picture.size());
    const auto at = [&](double x, double y) {
        return (shown.topLeft() + QPointF(shown.width() * x, shown.height() * y)).toPoint();
    };
    QTest::mousePress(&picture, Qt::LeftButton, {}, at(0.25, 0.25));
    QTest::mouseMove(&picture, at(0.26, 0.26));
    QMouseEvent move(QEvent::MouseMove, at(0.75, 0.5), picture.mapToGlobal(at(0.75, 0.5)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&picture, &move);
    QTest::mouseRelease(&picture, Qt::LeftButton, {}, at(0.75, 0.5));
    Press("scan");
    ASSERT_TRUE(scanned);
    EXPECT_NEAR(scanned->area.left, 50, 2);
    EXPECT_NEAR(scanned->area.top, 75, 2);
    EXPECT_NEAR(scanned->area.width, 100, 3);
    EXPECT_NEAR(scanned->area.height, 75, 3);
}

TEST_F(CScanDialogTest, WhileTheScannerWorksItCanOnlyBeStopped) {
    CScanDialog& dialog = Open();
    Press("preview");
    EXPECT_TRUE(previewed);
    Press("scan");
    EXPECT_FALSE(scanned) << "one thing at a time";
    ui.ShowState({true, 30, "Scanning page 1..."});
    EXPECT_EQ(Child<QProgressBar>(dialog, "progress").value(), 30);
    EXPECT_EQ(LabelOf(dialog, "message"), "Scanning page 1...");
    Press("stop");
    EXPECT_EQ(stops, 1);
    ui.ShowState({false, 0, "Document feeder jammed"});
    EXPECT_FALSE(Child<QProgressBar>(dialog, "progress").isVisible());
    Press("scan");
    EXPECT_TRUE(scanned);
    Press("close");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(closes, 2);
    EXPECT_TRUE(dialog.isVisible()) << "its owner takes it away";
    ui.CloseScanWindow();
    EXPECT_EQ(window.findChild<CScanDialog*>(), nullptr);
}

TEST_F(CScanDialogTest, WhatCannotBeAnImageIsNotScanned) {
    CScannerAbilities abilities = Abilities();
    abilities.mostResolution = 2400;
    abilities.hasFeeder = false;
    CScanSettings initial;
    initial.resolution = 2400;
    initial.feeder = true;
    CScanDialog& dialog = Open(abilities, initial);
    EXPECT_FALSE(Child<QPushButton>(dialog, "scan").isEnabled());
    Type(dialog, "height", "50");
    Type(dialog, "width", "50");
    EXPECT_TRUE(Child<QPushButton>(dialog, "scan").isEnabled());
    Press("scan");
    EXPECT_FALSE(scanned->feeder) << "it has none";
}

TEST(ScanPreviewTest, PagesBecomePictures) {
    const QImage line = ImageOf({ScanMode::LineArt, 9, 2, {0x80, 0x00, 0x00, 0x80}});
    EXPECT_EQ(line.size(), QSize(9, 2));
    EXPECT_EQ(line.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(line.pixelColor(1, 0), QColor(Qt::white));
    EXPECT_EQ(line.pixelColor(8, 1), QColor(Qt::black));
    EXPECT_EQ(ImageOf({ScanMode::Color, 1, 1, {10, 20, 30}}).pixelColor(0, 0), QColor(30, 20, 10));
    EXPECT_TRUE(ImageOf({ScanMode::Color, 2, 2, {1, 2, 3}}).isNull()) << "rows that are not there";
    EXPECT_TRUE(ImageOf({ScanMode::Color, -1, 1, {}}).isNull());
}

TEST_F(CScanUiTest, AScannerIsSelectedFromTheList) {
    CScanUi ui(window);
    const std::vector<CScannerDevice> scanners = {{"usb:1", "One"}, {"usb:2", "Two"}, {"usb:3", "Three"}};
    std::optional<std::size_t> choice;
    WithDialog([&] { choice = ui.ChooseScanner(scanners, 1); },
               [&](QDialog& dialog) {
                   auto& list = Child<QListWidget>(dialog, "scanners");
                   EXPECT_EQ(list.currentRow(), 1);
                   list.setCurrentRow(2);
                   PressOk(dialog);
               });
    EXPECT_EQ(choice, 2U);
    WithDialog([&] { choice = ui.ChooseScanner(scanners, 1); }, [](QDialog&) {});
    EXPECT_FALSE(choice);
}

TEST_F(CScanUiTest, ALongWaitCanBeGivenUp) {
    CScanUi ui(window);
    bool waited = true;
    WithDialog([&] { waited = ui.Wait("Looking for scanners...", [] { return false; }); },
               [](QDialog& dialog) { Child<QPushButton>(dialog, "cancel").click(); });
    EXPECT_FALSE(waited);
    int polls = 0;
    EXPECT_TRUE(ui.Wait("Looking for scanners...", [&] { return ++polls > 2; })) << "a short one shows nothing";
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

} // namespace velmor::testing
