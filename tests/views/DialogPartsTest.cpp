#include "qt/ModalDriver.h"
#include "views/dialogs/DialogPlacement.h"
#include "views/widgets/ColorSwatch.h"
#include "views/widgets/InbetweenPlot.h"
#include "views/widgets/NumberEdit.h"
#include "views/widgets/NumberText.h"

#include <QColorDialog>
#include <QTest>
#include <cmath>

namespace velmor::testing {
namespace {

TEST(NumberTextTest, ReadsPointsAndCommasAndNothingElse) {
    EXPECT_EQ(ParseNumber(" -12,5 "), -12.5);
    EXPECT_EQ(ParseNumber("1.5e3"), 1500);
    for (const char* text : {"", "-", "1.2.3", "12px", "nan", "inf", "1e999"})
        EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
    EXPECT_EQ(ParseWhole(" -7 "), -7);
    for (const char* text : {"", "7.5", "4294967296"})
        EXPECT_EQ(ParseWhole(text), std::nullopt) << text;
}

TEST(NumberTextTest, ShowsNoRoundingNoise) {
    EXPECT_EQ(NumberText(std::floor(0.57000001 * 100) * 0.01), "0.57");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(12345.67), "12345.67");
    EXPECT_EQ(NumberText(-90), "-90");
}

TEST(NumberEditTest, GivesBackWhatItWasSetToUntilItIsEdited) {
    const double floored = 57 * 0.01; // not the number that its text reads as
    CNumberEdit edit("", NumberKind::Decimal);
    edit.SetValue(floored);
    EXPECT_EQ(edit.Value(), floored);
    edit.setText("0.58");
    EXPECT_EQ(edit.Value(), 0.58);
    edit.setText("");
    EXPECT_TRUE(std::isnan(edit.ValueOrNan()));
}

TEST(NumberEditTest, IsMarkedUntilItsTextChanges) {
    CNumberEdit edit("", NumberKind::Whole);
    edit.SetValue(256);
    EXPECT_FALSE(edit.Require(0, 255));
    EXPECT_TRUE(edit.IsMarked());
    edit.SetValue(255);
    EXPECT_FALSE(edit.IsMarked());
    EXPECT_TRUE(edit.Require(0, 255));
    edit.setText("2.5");
    EXPECT_FALSE(edit.Require(0, 255));
}

TEST(NumberEditTest, ArrowsStepTheNumber) {
    CNumberEdit edit("", NumberKind::Decimal);
    edit.SetStep(0.05);
    edit.SetValue(1);
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(edit.Value(), 1.05);
    QTest::keyClick(&edit, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(edit.Value(), 0.55);
    edit.setText("-");
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(edit.text(), "-");
}

TEST(DialogPlacementTest, KeepsAWindowOnItsScreen) {
    const QRect screen(100, 50, 800, 600);
    EXPECT_EQ(KeptOnScreen({300, 200}, {100, 80}, screen), QPoint(300, 200));
    EXPECT_EQ(KeptOnScreen({880, 640}, {100, 80}, screen), QPoint(800, 570));
    EXPECT_EQ(KeptOnScreen({0, 0}, {100, 80}, screen), QPoint(100, 50));
    EXPECT_EQ(KeptOnScreen({300, 200}, {2000, 80}, screen).x(), 100);
}

TEST(DialogPlacementTest, LeavesTheViewInSightWhereThereIsRoom) {
    const QRect screen(0, 0, 1000, 800);
    const QSize size(300, 100);
    for (const QRect view : {QRect(200, 100, 500, 400), QRect(200, 300, 500, 500), QRect(0, 0, 600, 800),
                             QRect(400, 0, 600, 800), QRect(0, 0, 100, 690)}) {
        const QRect placed(PlacedBeside(view, size, screen), size);
        EXPECT_FALSE(placed.intersects(view));
        EXPECT_TRUE(screen.contains(placed));
    }
    const QRect crowded(PlacedBeside(screen, size, screen), size);
    EXPECT_TRUE(screen.contains(crowded));
    EXPECT_GT(crowded.y(), 600);
    const QRect tall(PlacedBeside(screen, {100, 300}, screen), QSize(100, 300));
    EXPECT_TRUE(screen.contains(tall));
    EXPECT_GT(tall.x(), 800);
}

TEST(InbetweenPlotTest, ShowsWhatIsWritten) {
    const CInbetweenKeys keys{90, 103};
    for (const InbetweenType type : {InbetweenType::Linear, InbetweenType::SlowOut, InbetweenType::SlowIn,
                                     InbetweenType::SlowOutSlowIn, InbetweenType::Constant}) {
        CCameraTrack camera;
        camera.MutableAt(keys.first).rotation = 0;
        camera.MutableAt(keys.last).rotation = 1;
        InbetweenCamera(camera, keys, CameraSource::Tilt, type);
        const std::vector<double> shape = InbetweenShape(type, keys);
        ASSERT_EQ(shape.size(), 14U);
        for (int frame = keys.first; frame <= keys.last; ++frame)
            EXPECT_EQ(shape[static_cast<std::size_t>(frame - keys.first)], camera.At(frame).rotation)
                << static_cast<int>(type) << ' ' << frame;
    }
}

TEST(ColorSwatchTest, TheChooserChangesTheColourAndLeavesAlpha) {
    CColorSwatch swatch("Ink", {1, 2, 3, 40});
    int changes = 0;
    swatch.changed = [&] { ++changes; };
    const auto choose = [&](const QColor& color, bool confirm) {
        WithDialog([&] { swatch.click(); },
                   [&](QDialog& chooser) {
                       dynamic_cast<QColorDialog&>(chooser).setCurrentColor(color);
                       if (confirm)
                           chooser.accept();
                   });
    };
    choose(QColor(10, 20, 30), false);
    EXPECT_EQ(swatch.Color(), (CColor{1, 2, 3, 40}));
    choose(QColor(10, 20, 30), true);
    EXPECT_EQ(swatch.Color(), (CColor{30, 20, 10, 40}));
    EXPECT_EQ(changes, 1);
}

QWidget& PartOf(QWidget& chooser, const char* className) {
    for (QWidget* part : chooser.findChildren<QWidget*>())
        if (QByteArray(part->metaObject()->className()).endsWith(className))
            return *part;
    throw std::runtime_error(std::string("the chooser has no ") + className);
}

TEST(ColorSwatchTest, AHueThatIsChosenInBlackIsSeen) {
    CColorSwatch swatch("Ink", {0, 0, 0, 255});
    const auto choose = [&](const std::function<void(QColorDialog&)>& use) {
        WithDialog([&] { swatch.click(); },
                   [&](QDialog& dialog) {
                       EXPECT_EQ(dialog.windowTitle(), "Ink");
                       use(dynamic_cast<QColorDialog&>(dialog));
                       dialog.accept();
                   });
        return QColor(swatch.Color().red, swatch.Color().green, swatch.Color().blue);
    };
    EXPECT_EQ(choose([](QColorDialog&) {}), QColor(Qt::black)) << "nothing has been chosen";
    const QColor hue = choose([](QColorDialog& chooser) {
        QWidget& picker = PartOf(chooser, "QColorPicker");
        QTest::mouseClick(&picker, Qt::LeftButton, {}, {picker.width() / 3, picker.height() / 4});
    });
    EXPECT_EQ(hue.value(), 255);
    EXPECT_GT(hue.saturation(), 100);
    EXPECT_EQ(choose([](QColorDialog& chooser) { chooser.setCurrentColor(Qt::black); }), QColor(Qt::black));
}

} // namespace
} // namespace velmor::testing
