#include "DialogDriver.h"
#include "DocumentFixture.h"
#include "qt/Patience.h"
#include "scene/DialogRequests.h"
#include "scene/Settings.h"
#include "views/camera/CameraView.h"
#include "views/widgets/InbetweenPlot.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QComboBox>
#include <cmath>

namespace velmor::testing {
namespace {

using CCelDialogsTest = CDialogFixture;

const CCellIdentity eyes{"eyes0001", "Hero", "Face", 7};

CCellDataForm SampleForm() {
    return {384, 288.25, 1.5, 0.75, false, {-2, -5.5}, 3, 4, false, 12.5};
}

TEST_F(CCelDialogsTest, CelDataComesBackAsItWasShown) {
    std::optional<CCellDataForm> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CCellDataRequest{eyes, SampleForm(), {}});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Edit XSheet Cel Data");
            EXPECT_EQ(LabelOf(dialog, "name"), "eyes0001");
            EXPECT_EQ(LabelOf(dialog, "folder"), "Hero");
            EXPECT_EQ(LabelOf(dialog, "level"), "Face");
            EXPECT_EQ(LabelOf(dialog, "frame"), "7");
            EXPECT_EQ(dialog.focusWidget(), &Child<QLineEdit>(dialog, "posX"));
            EXPECT_EQ(Child<QLineEdit>(dialog, "posX").selectedText(), "384");
            PressOk(dialog);
        });
    EXPECT_EQ(answer, SampleForm());
}

TEST_F(CCelDialogsTest, TabGoesThroughTheCelDataAsItIsRead) {
    const CCellDataRequest request{eyes, SampleForm(), {}};
    WithDialog([&] { prompter.Ask(request); },
               [&](QDialog& dialog) {
                   for (const char* name : {"posX", "posY", "scaleX", "scaleY", "preserveScale", "turns", "degrees",
                                            "blurX", "blurY", "preserveBlur", "transparency"}) {
                       EXPECT_EQ(dialog.focusWidget()->objectName().toStdString(), name);
                       QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
                   }
                   EXPECT_EQ(dialog.focusWidget(), &dynamic_cast<CDialog&>(dialog).OkButton());
               });
}

TEST_F(CCelDialogsTest, CelDataTakesWhatIsTyped) {
    std::optional<CCellDataForm> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CCellDataRequest{eyes, {}, {}});
        },
        [&](QDialog& dialog) {
            const std::pair<const char*, const char*> entries[] = {
                {"posX", "384"},    {"posY", "288,25"}, {"scaleX", "1.5"},
                {"scaleY", "0.75"}, {"turns", "-2"},    {"degrees", "-5.5"},
                {"blurX", "3"},     {"blurY", "4"},     {"transparency", "12.5"}};
            Child<QCheckBox>(dialog, "preserveScale").setChecked(false);
            Child<QCheckBox>(dialog, "preserveBlur").setChecked(false);
            for (const auto& [name, text] : entries)
                Type(dialog, name, text);
            PressOk(dialog);
        });
    EXPECT_EQ(answer, SampleForm());
}

TEST_F(CCelDialogsTest, ScaleYFollowsWhileTheAspectIsPreserved) {
    CCellDataForm form = SampleForm();
    form.scaleY = form.scaleX;
    form.preserveScale = true;
    WithDialog(
        [&] {
            prompter.Ask(CCellDataRequest{eyes, form, {}});
        },
        [&](QDialog& dialog) {
            auto& preserve = Child<QCheckBox>(dialog, "preserveScale");
            auto& scaleY = Child<QLineEdit>(dialog, "scaleY");
            EXPECT_TRUE(preserve.isChecked());
            EXPECT_FALSE(scaleY.isEnabled());
            Type(dialog, "scaleX", "2");
            EXPECT_EQ(scaleY.text(), "2");
            preserve.click();
            EXPECT_TRUE(scaleY.isEnabled());
            Type(dialog, "scaleX", "3");
            EXPECT_EQ(scaleY.text(), "2");
            preserve.click();
            EXPECT_EQ(scaleY.text(), "3");
            EXPECT_TRUE(Child<QLineEdit>(dialog, "blurY").isEnabled());
        });
}

TEST_F(CCelDialogsTest, RefusedCelDataKeepsTheDialogOpen) {
    std::vector<CCellDataForm> asked;
    const auto rule = [&](const CCellDataForm& form) {
        asked.push_back(form);
        return static_cast<bool>(CheckCellDataForm(form));
    };
    std::optional<CCellDataForm> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CCellDataRequest{eyes, SampleForm(), rule});
        },
        [&](QDialog& dialog) {
            Type(dialog, "blurX", "51");
            PressOk(dialog);
            EXPECT_TRUE(dialog.isVisible());
            Type(dialog, "blurX", "50");
            Type(dialog, "turns", "");
            PressOk(dialog);
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_TRUE(Child<CNumberEdit>(dialog, "turns").IsMarked());
            Type(dialog, "turns", "1");
            PressOk(dialog);
            EXPECT_FALSE(dialog.isVisible());
        });
    EXPECT_EQ(asked.size(), 3U);
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->rotation.turns, 1);
}

TEST_F(CCelDialogsTest, CancelAnswersNothing) {
    const auto refuse = [](const auto&) { return ADD_FAILURE(), false; };
    const auto leave = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); };
    WithDialog([&] { EXPECT_FALSE(prompter.Ask(CCellDataRequest{eyes, SampleForm(), refuse})); }, leave);
    WithDialog([&] { EXPECT_FALSE(prompter.Ask(CBlurRequest{eyes, {}, refuse})); }, leave);
    WithDialog([&] { EXPECT_FALSE(prompter.Ask(CTransparencyRequest{eyes, 0, refuse})); }, leave);
    WithDialog([&] { EXPECT_FALSE(prompter.Ask(CCameraDataRequest{1, {}})); }, leave);
    WithDialog([&] { EXPECT_FALSE(prompter.Ask(CMotionPathRequest{1})); }, leave);
}

TEST_F(CCelDialogsTest, BlurSlidersAndFieldsGoTogether) {
    std::optional<CBlurForm> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CBlurRequest{eyes, {3, 3, true}, {}});
        },
        [&](QDialog& dialog) {
            auto& preserve = Child<QCheckBox>(dialog, "preserve");
            auto& sliderY = Child<QSlider>(dialog, "blurYSlider");
            EXPECT_TRUE(sliderY.isHidden());
            EXPECT_FALSE(Child<QLineEdit>(dialog, "blurY").isEnabled());
            Child<QSlider>(dialog, "blurXSlider").setValue(20);
            EXPECT_EQ(TextOf(dialog, "blurX"), "20");
            EXPECT_EQ(TextOf(dialog, "blurY"), "20");
            preserve.click();
            EXPECT_TRUE(sliderY.isVisible());
            EXPECT_EQ(sliderY.value(), 20);
            sliderY.setValue(8);
            EXPECT_EQ(TextOf(dialog, "blurY"), "8");
            preserve.click();
            EXPECT_TRUE(sliderY.isHidden());
            EXPECT_EQ(TextOf(dialog, "blurY"), "20");
            preserve.click();
            Type(dialog, "blurY", "8.75");
            EXPECT_EQ(sliderY.value(), 8);
            EXPECT_EQ(TextOf(dialog, "blurY"), "8.75");
            PressOk(dialog);
        });
    EXPECT_EQ(answer, (CBlurForm{20, 8.75, false}));
}

TEST_F(CCelDialogsTest, TransparencyIsRefusedByTheRuleNotByTheField) {
    std::vector<double> asked;
    const auto rule = [&](double value) {
        asked.push_back(value);
        return static_cast<bool>(CheckTransparency(value));
    };
    std::optional<double> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CTransparencyRequest{eyes, 12.34, rule});
        },
        [&](QDialog& dialog) {
            auto& slider = Child<QSlider>(dialog, "transparencySlider");
            EXPECT_EQ(slider.value(), 12);
            Type(dialog, "transparency", "99.9");
            EXPECT_EQ(slider.value(), 99);
            slider.setValue(40);
            EXPECT_EQ(TextOf(dialog, "transparency"), "40");
            for (const char* text : {"101", ""}) {
                Type(dialog, "transparency", text);
                PressOk(dialog);
                EXPECT_TRUE(dialog.isVisible()) << text;
            }
            EXPECT_TRUE(Child<CNumberEdit>(dialog, "transparency").IsMarked());
            Type(dialog, "transparency", "33,3");
            QTest::keyClick(&Child<QLineEdit>(dialog, "transparency"), Qt::Key_Return);
        });
    EXPECT_EQ(answer, 33.3);
    ASSERT_EQ(asked.size(), 3U);
    EXPECT_TRUE(std::isnan(asked[1]));
}

TEST_F(CCelDialogsTest, ResetPutsTheCameraBackWithoutClosing) {
    std::optional<CCameraForm> answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CCameraDataRequest{9, {10, -20.5, 125, {1, 30}}});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Edit Current Frame Camera Parameters");
            EXPECT_EQ(LabelOf(dialog, "frame"), "9");
            EXPECT_EQ(TextOf(dialog, "zoom"), "125");
            Child<QPushButton>(dialog, "reset").click();
            EXPECT_TRUE(dialog.isVisible());
            EXPECT_EQ(TextOf(dialog, "zoom"), "100");
            EXPECT_EQ(TextOf(dialog, "turns"), "0");
            Type(dialog, "posY", "-");
            PressOk(dialog);
            EXPECT_TRUE(Child<CNumberEdit>(dialog, "posY").IsMarked());
            Type(dialog, "posY", "-4,5");
            PressOk(dialog);
        });
    EXPECT_EQ(answer, (CCameraForm{0, -4.5, 100, {0, 0}}));
}

TEST_F(CCelDialogsTest, MotionPathSetupIsTheChosenRow) {
    std::optional<int> answer;
    WithDialog([&] { answer = prompter.Ask(CMotionPathRequest{1}); },
               [&](QDialog& dialog) {
                   EXPECT_TRUE(Child<QWidget>(dialog, "setup").findChildren<QRadioButton*>().at(1)->isChecked());
                   Choose(dialog, "setup", 2);
                   PressOk(dialog);
               });
    EXPECT_EQ(answer, 2);
}

TEST_F(CCelDialogsTest, InbetweenAnswersItsChoicesHoweverItIsClosed) {
    CInbetweenAnswer answer;
    const auto ask = [&](bool camera, bool confirm) {
        WithDialog(
            [&] {
                answer = prompter.Ask(CInbetweenRequest{camera, "Face", 3, 12, {1, 3}});
            },
            [&](QDialog& dialog) {
                EXPECT_EQ(LabelOf(dialog, "startFrame"), "3");
                EXPECT_EQ(LabelOf(dialog, "endFrame"), "12");
                EXPECT_EQ(dialog.findChild<QLabel*>("level") == nullptr, camera);
                Choose(dialog, "source", 2);
                if (!camera)
                    Choose(dialog, "type", 4);
                if (confirm)
                    PressOk(dialog);
            });
    };
    ask(false, true);
    EXPECT_TRUE(answer.confirmed);
    EXPECT_EQ(answer.choice.source, 2);
    EXPECT_EQ(answer.choice.type, 4);
    ask(true, false);
    EXPECT_FALSE(answer.confirmed);
    EXPECT_EQ(answer.choice.source, 2);
    EXPECT_EQ(answer.choice.type, 3);
}

TEST_F(CCelDialogsTest, ACurveIsDrawnByItsHandles) {
    CInbetweenAnswer answer;
    WithDialog(
        [&] {
            answer = prompter.Ask(CInbetweenRequest{false, "Face", 3, 12, {0, 0, 2, {{0.4, 0}, {0.6, 1}}}});
        },
        [&](QDialog& dialog) {
            auto& plot = Child<CInbetweenPlot>(dialog, "plot");
            auto& hold = Child<QComboBox>(dialog, "hold");
            EXPECT_EQ(hold.currentText(), "On twos");
            QTest::mouseClick(&plot, Qt::LeftButton, {}, {20, 20});
            EXPECT_EQ(plot.Curve(), (CPaceCurve{{0.4, 0}, {0.6, 1}})) << "a straight line has no handles";
            Choose(dialog, "type", 5);
            plot.setFocus();
            QTest::keyClick(&plot, Qt::Key_Right);
            QTest::keyClick(&plot, Qt::Key_End);
            QTest::keyClick(&plot, Qt::Key_Up, Qt::ShiftModifier);
            EXPECT_NEAR(plot.Curve().first.x, 0.41, 1e-9);
            EXPECT_NEAR(plot.Curve().second.y, 1.1, 1e-9);
            QTest::mousePress(&plot, Qt::LeftButton, {}, {17, plot.height() / 2}); // nearer to the first
            QTest::mouseMove(&plot, {-400, 4000});
            hold.setCurrentIndex(2);
            PressOk(dialog);
        });
    EXPECT_EQ(answer.choice.type, 5);
    EXPECT_EQ(answer.choice.hold, 3);
    EXPECT_EQ(answer.choice.curve.first, (CRealPoint{0, -0.5}));
}

TEST_F(CCelDialogsTest, EffectsAreShownAsTheyAreSet) {
    std::vector<double> shown;
    WithDialog(
        [&] {
            prompter.Ask(CTransparencyRequest{eyes, 20, {}, [&](double value) { shown.push_back(value); }});
        },
        [&](QDialog& dialog) {
            EXPECT_TRUE(shown.empty()) << "as it is";
            Child<QSlider>(dialog, "transparencySlider").setValue(45);
            Type(dialog, "transparency", "7.5");
            dialog.reject();
        });
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.front(), 45);
    EXPECT_EQ(shown.back(), 7.5);
    CBlurForm blur;
    WithDialog(
        [&] {
            prompter.Ask(CBlurRequest{eyes, {3, 3, true}, {}, [&](const CBlurForm& form) { blur = form; }});
        },
        [&](QDialog& dialog) {
            Child<QSlider>(dialog, "blurXSlider").setValue(9);
            EXPECT_EQ(blur, (CBlurForm{9, 9, true}));
            Child<QCheckBox>(dialog, "preserve").setChecked(false);
            Child<QSlider>(dialog, "blurYSlider").setValue(4);
            dialog.reject();
        });
    EXPECT_EQ(blur, (CBlurForm{9, 4, false}));
    CCellDataForm data = SampleForm();
    data.preserveBlur = true;
    std::vector<CCellDataForm> forms;
    WithDialog(
        [&] {
            prompter.Ask(
                CCellDataRequest{eyes, data, {}, [&](const CCellDataForm& form) { forms.push_back(form); }});
        },
        [&](QDialog& dialog) {
            EXPECT_TRUE(forms.empty());
            for (const char* name : {"posX", "posY", "scaleX", "scaleY", "turns", "degrees", "transparency"}) {
                forms.clear();
                Type(dialog, name, "1");
                EXPECT_FALSE(forms.empty()) << name;
            }
            Type(dialog, "blurX", "7");
            EXPECT_EQ(std::pair(forms.back().blurX, forms.back().blurY), std::pair(7.0, 7.0));
            EXPECT_EQ(forms.back().rotation, (CTurns{1, 1}));
            dialog.reject();
        });
}

TEST_F(CCelDialogsTest, LineCheckShowsTheNewestFrameOnly) {
    std::vector<int> shown;
    const auto isShown = [&](int frame) {
        return WaitFor([&] { return !shown.empty() && shown.back() == frame; });
    };
    WithDialog(
        [&] {
            prompter.RunLineCheck({100, 5, [&](int frame) { shown.push_back(frame); }});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Line Check!");
            auto& slider = Child<QSlider>(dialog, "slider");
            EXPECT_EQ(slider.minimum(), 1);
            EXPECT_EQ(slider.maximum(), 100);
            EXPECT_EQ(dialog.focusWidget(), &slider);
            const std::pair<Qt::Key, int> steps[] = {{Qt::Key_Right, 6},     {Qt::Key_Left, 5},
                                                     {Qt::Key_PageDown, 15}, {Qt::Key_PageUp, 5},
                                                     {Qt::Key_End, 100},     {Qt::Key_Home, 1}};
            for (const auto& [key, frame] : steps) {
                QTest::keyClick(&slider, key);
                EXPECT_TRUE(isShown(frame)) << frame;
                EXPECT_EQ(LabelOf(dialog, "frame"), std::to_string(frame));
            }
            shown.clear();
            for (int frame = 2; frame <= 60; ++frame)
                slider.setSliderPosition(frame);
            EXPECT_TRUE(isShown(60));
            EXPECT_EQ(shown.size(), 1U);
            slider.setValue(70);
            PressOk(dialog);
        });
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.size(), 1U); // the document puts its own frame back, nothing comes after that
}

TEST(CameraDialogTest, LeavesTheCameraViewInSight) {
    CTempFolder folder;
    CProfile profile;
    CScriptedPrompter script;
    CVelmorltDoc doc(script, profile, {folder.Path(), folder / "data"});
    QWidget window;
    window.resize(700, 500);
    auto* view = new CCameraView(doc, &window);
    view->setGeometry(0, 250, 700, 250);
    window.show();
    CQtPrompter prompter(window);
    const std::function<void()> openers[] = {[&] {
                                                 prompter.RunLineCheck({100, 5, {}});
                                             },
                                             [&] {
                                                 prompter.Ask(CTransparencyRequest{eyes, 20, {}});
                                             },
                                             [&] {
                                                 prompter.Ask(CBlurRequest{eyes, {}, {}});
                                             },
                                             [&] {
                                                 prompter.Ask(CCellDataRequest{eyes, {}, {}});
                                             }};
    for (const std::function<void()>& open : openers)
        WithDialog(open, [&](QDialog& dialog) {
            const QRect shown(view->mapToGlobal(QPoint()), view->size());
            EXPECT_FALSE(dialog.frameGeometry().intersects(shown)) << dialog.windowTitle().toStdString();
        });
    view->hide();
    WithDialog(openers[1], [&](QDialog& dialog) {
        EXPECT_TRUE(dialog.frameGeometry().contains(window.geometry().center())) << "where it always was";
    });
}

TEST_F(CCelDialogsTest, DropChoicesAreRememberedAsTheyAreMade) {
    CProfile profile;
    CDropType choices(profile);
    bool dropped = true;
    WithDialog(
        [&] {
            dropped = prompter.Ask(CDropTypeRequest{{100, 100}, choices});
        },
        [&](QDialog& dialog) {
            auto& step = Child<QLineEdit>(dialog, "step");
            EXPECT_EQ(step.text(), "1");
            EXPECT_FALSE(step.isEnabled());
            Child<QRadioButton>(dialog, "type2").click();
            EXPECT_EQ(step.text(), "3");
            Child<QRadioButton>(dialog, "type4").click();
            EXPECT_TRUE(step.isEnabled());
            Type(dialog, "step", "12");
            Child<QCheckBox>(dialog, "insert").click();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
    EXPECT_FALSE(dropped);
    EXPECT_EQ(Get(profile, setting::lastDropType), 4);
    EXPECT_EQ(Get(profile, setting::lastOnWhich), 12);
    EXPECT_EQ(Get(profile, setting::insertCels), 0);
}

TEST_F(CCelDialogsTest, ADropWaitsForAStepThatCanBe) {
    CProfile profile;
    CDropType choices(profile);
    choices.ChooseType(CDropType::free);
    static_cast<void>(choices.EnterStep(7));
    bool dropped = false;
    WithDialog(
        [&] {
            dropped = prompter.Ask(CDropTypeRequest{{100000, 100000}, choices});
        },
        [&](QDialog& dialog) {
            EXPECT_TRUE(dialog.screen()->geometry().contains(dialog.geometry()));
            Type(dialog, "step", "0");
            EXPECT_TRUE(Child<CNumberEdit>(dialog, "step").IsMarked());
            EXPECT_EQ(choices.Step(), 7);
            QTest::keyClick(&dialog, Qt::Key_Return);
            EXPECT_TRUE(dialog.isVisible());
            Type(dialog, "step", "9");
            QTest::keyClick(&Child<QLineEdit>(dialog, "step"), Qt::Key_Return);
        });
    EXPECT_TRUE(dropped);
    EXPECT_EQ(choices.Step(), 9);
}

} // namespace
} // namespace velmor::testing
