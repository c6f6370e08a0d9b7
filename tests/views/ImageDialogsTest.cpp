#include "DialogDriver.h"
#include "scene/DialogRequests.h"
#include "views/widgets/ColorSwatch.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QListWidget>

namespace velmor::testing {
namespace {

using CImageDialogsTest = CDialogFixture;

TEST_F(CImageDialogsTest, AddColorTakesNameAndOpacity) {
    std::optional<CColorValues> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CColorRequest{{"Skin", {30, 20, 10, 255}},
                                                [](const CColorValues& values) { return values.name != "no"; }});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Add Color");
            EXPECT_EQ(Child<QLineEdit>(dialog, "name").selectedText(), "Skin");
            WithDialog([&] { Child<QPushButton>(dialog, "swatchChooser").click(); },
                       [](QDialog& chooser) {
                           dynamic_cast<QColorDialog&>(chooser).setCurrentColor(QColor(40, 50, 60));
                           chooser.accept();
                       });
            Child<QSlider>(dialog, "opacitySlider").setValue(128);
            EXPECT_EQ(Child<CColorSwatch>(dialog, "swatch").Color().alpha, 128);
            for (const char* text : {"256", "-1", ""}) {
                Type(dialog, "opacity", text);
                PressOk(dialog);
                EXPECT_TRUE(dialog.isVisible()) << text;
                EXPECT_TRUE(Child<CNumberEdit>(dialog, "opacity").IsMarked());
            }
            Type(dialog, "opacity", "7");
            Type(dialog, "name", "no");
            PressOk(dialog);
            EXPECT_TRUE(dialog.isVisible());
            Type(dialog, "name", "Shadow");
            PressOk(dialog);
        });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->name, "Shadow");
    EXPECT_EQ(answer->color, (CColor{60, 50, 40, 7}));
}

TEST_F(CImageDialogsTest, ImportThresholdIsAWholeNumberUpTo255) {
    std::optional<int> answer;
    WithDialog([&] { answer = prompter.Ask(CImportSettingsRequest{200}); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(dialog.windowTitle(), "Import Settings");
                   EXPECT_EQ(Child<QSlider>(dialog, "thresholdSlider").value(), 200);
                   Type(dialog, "threshold", "256");
                   PressOk(dialog);
                   EXPECT_TRUE(dialog.isVisible());
                   Type(dialog, "threshold", "255");
                   PressOk(dialog);
               });
    EXPECT_EQ(answer, 255);
}

TEST_F(CImageDialogsTest, OnlyAFreeRotationHasAnAngle) {
    std::optional<CRotationValues> answer;
    const auto ask = [&](const std::function<void(QDialog&)>& use) {
        WithDialog([&] { answer = prompter.Ask(CRotationRequest{}); }, use);
    };
    ask([&](QDialog& dialog) {
        EXPECT_FALSE(Child<QLineEdit>(dialog, "angle").isEnabled());
        Child<QRadioButton>(dialog, "kind3").click();
        Type(dialog, "angle", "");
        PressOk(dialog);
        EXPECT_TRUE(dialog.isVisible());
        Type(dialog, "angle", "-12,5");
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->kind, RotationKind::Free);
    EXPECT_EQ(answer->freeDegrees, -12.5);
    ask([&](QDialog& dialog) {
        Child<QRadioButton>(dialog, "kind3").click();
        Type(dialog, "angle", "");
        Child<QRadioButton>(dialog, "kind2").click();
        PressOk(dialog);
    });
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->kind, RotationKind::HalfTurn);
    ask([](QDialog&) {});
    EXPECT_FALSE(answer);
}

TEST_F(CImageDialogsTest, FlipHasTwoDirections) {
    std::optional<FlipDirection> answer;
    for (const auto direction : {FlipDirection::Horizontal, FlipDirection::Vertical}) {
        WithDialog([&] { answer = prompter.Ask(CFlipRequest{}); },
                   [&](QDialog& dialog) {
                       Choose(dialog, "direction", direction == FlipDirection::Horizontal ? 0 : 1);
                       PressOk(dialog);
                   });
        EXPECT_EQ(answer, direction);
    }
}

TEST_F(CImageDialogsTest, BlackAndWhiteExcludeEachOtherAndMayBothBeOff) {
    std::vector<int> tolerances;
    const auto rule = [&](const CColorKeyValues& values) {
        tolerances.push_back(values.tolerance);
        return values.tolerance >= 0;
    };
    std::optional<CColorKeyValues> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CColorKeyRequest{{{1, 2, 3, 255}, 5, 2, 1}, rule});
        },
        [&](QDialog& dialog) {
            auto& black = Child<QCheckBox>(dialog, "black");
            auto& white = Child<QCheckBox>(dialog, "white");
            EXPECT_TRUE(black.isChecked());
            white.click();
            EXPECT_FALSE(black.isChecked());
            black.click();
            EXPECT_FALSE(white.isChecked());
            black.click();
            EXPECT_FALSE(black.isChecked() || white.isChecked());
            Choose(dialog, "process", 1);
            Type(dialog, "tolerance", "");
            PressOk(dialog);
            EXPECT_TRUE(dialog.isVisible());
            Type(dialog, "tolerance", "31");
            PressOk(dialog);
        });
    EXPECT_EQ(tolerances, (std::vector<int>{-1, 31}));
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->process, 1);
    EXPECT_EQ(answer->underKey, 0);
    EXPECT_EQ(answer->color, (CColor{1, 2, 3, 255}));
}

TEST_F(CImageDialogsTest, GridColoursKeepTheirOrder) {
    const CGridSettings grid{MakeColorRef(1, 2, 3), MakeColorRef(4, 5, 6), 16};
    std::optional<CGridSettings> answer;
    const auto rule = [](const CGridSettings& values) { return values.size >= 1; };
    WithDialog(
        [&] {
            answer = prompter.Ask(CGridSettingsRequest{grid, rule});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Cel View Settings");
            Type(dialog, "size", "99999999999");
            PressOk(dialog);
            EXPECT_TRUE(Child<CNumberEdit>(dialog, "size").IsMarked());
            Type(dialog, "size", "16");
            // Square 1 stands at the bottom left; red and blue change places as in the editor.
            auto& sample = Child<QWidget>(dialog, "sample");
            const QImage drawn = sample.grab().toImage();
            EXPECT_EQ(drawn.pixelColor(8, sample.height() - 8), QColor(3, 2, 1));
            EXPECT_EQ(drawn.pixelColor(24, sample.height() - 8), QColor(6, 5, 4));
            PressOk(dialog);
        });
    EXPECT_EQ(answer, grid);
}

CFlipbookRequest FlipbookRequest() {
    return {
        {"Face", "Body", "Ground"},
        {{1}, 2, 9, 1, 50, 60, true},
        [](const CFlipbookSettings& settings) { return static_cast<bool>(CheckFlipbookSettings(settings, 10)); },
        10};
}

TEST_F(CImageDialogsTest, FlipbookTakesLevelsFramesAndQuality) {
    CFlipbookAnswer answer;
    WithDialog([&] { answer = prompter.Ask(FlipbookRequest()); },
               [&](QDialog& dialog) {
                   auto& levels = Child<QListWidget>(dialog, "levels");
                   EXPECT_TRUE(levels.item(1)->isSelected());
                   Child<QPushButton>(dialog, "none").click();
                   PressOk(dialog);
                   EXPECT_TRUE(dialog.isVisible());
                   Child<QPushButton>(dialog, "all").click();
                   QTest::mouseClick(levels.viewport(), Qt::LeftButton, {},
                                     levels.visualItemRect(levels.item(1)).center());
                   Type(dialog, "end", "");
                   PressOk(dialog);
                   EXPECT_TRUE(Child<CNumberEdit>(dialog, "end").IsMarked());
                   Child<QPushButton>(dialog, "allFrames").click();
                   EXPECT_EQ(TextOf(dialog, "start"), "1");
                   EXPECT_EQ(TextOf(dialog, "end"), "10");
                   Type(dialog, "start", "2");
                   Type(dialog, "step", "2");
                   Child<QSlider>(dialog, "scalingSlider").setValue(75);
                   Type(dialog, "quality", "101");
                   PressOk(dialog);
                   EXPECT_TRUE(dialog.isVisible());
                   Type(dialog, "quality", "100");
                   Choose(dialog, "antialias", 0);
                   PressOk(dialog);
               });
    EXPECT_TRUE(answer.confirmed);
    EXPECT_EQ(answer.settings.levels, (std::vector<int>{0, 2}));
    EXPECT_EQ(answer.settings.firstFrame, 2);
    EXPECT_EQ(answer.settings.lastFrame, 10);
    EXPECT_EQ(answer.settings.step, 2);
    EXPECT_EQ(answer.settings.scaling, 75);
    EXPECT_EQ(answer.settings.quality, 100);
    EXPECT_FALSE(answer.settings.antialias);
}

TEST_F(CImageDialogsTest, ACancelledFlipbookAnswersWhatCanBeRemembered) {
    CFlipbookAnswer answer;
    WithDialog([&] { answer = prompter.Ask(FlipbookRequest()); },
               [](QDialog& dialog) {
                   Type(dialog, "step", "");
                   Type(dialog, "quality", "80");
               });
    EXPECT_FALSE(answer.confirmed);
    EXPECT_EQ(answer.settings.step, 1);
    EXPECT_EQ(answer.settings.quality, 80);
    EXPECT_TRUE(answer.settings.antialias);
}

} // namespace
} // namespace velmor::testing
