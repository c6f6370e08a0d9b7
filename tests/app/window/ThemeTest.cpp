#include "app/window/Theme.h"

#include "DocumentFixture.h"
#include "qt/PaletteChange.h"
#include "scene/Settings.h"
#include "views/Brightness.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>

namespace velmor::testing {
namespace {

class CThemeTest : public ::testing::Test {
protected:
    ~CThemeTest() override { QApplication::setStyle("Fusion"); }

    void Apply(const char* theme) {
        Set(profile, setting::theme, theme);
        ApplyTheme(profile);
    }
    static bool IsDarkNow() { return IsDark(QApplication::palette()); }

    const CPaletteChange before{QApplication::palette()};
    CProfile profile;
    CScriptedPrompter prompter;
};

/// The pixel of a widget's outline or inside that differs most from the ground it stands on.
int Contrast(QWidget& widget, const QRect& where) {
    QWidget ground;
    widget.setParent(&ground);
    widget.setGeometry(10, 10, 120, 24);
    ground.resize(140, 44);
    ground.show();
    const QImage image = ground.grab().toImage();
    const int plain = image.pixelColor(2, 2).lightness();
    int most = 0;
    for (int y = where.top(); y <= where.bottom(); ++y)
        for (int x = where.left(); x <= where.right(); ++x)
            most = std::max(most, std::abs(image.pixelColor(10 + x, 10 + y).lightness() - plain));
    widget.setParent(nullptr);
    return most;
}

} // namespace

TEST_F(CThemeTest, TheChoiceIsSeenAtOnceAndKept) {
    Apply("light");
    EXPECT_FALSE(IsDarkNow());
    prompter.Answer(Appearance::Dark);
    ChooseTheme(prompter, profile);
    EXPECT_EQ(Get(profile, setting::theme), "dark");
    const auto request = std::any_cast<CAppearanceRequest>(prompter.lastRequest);
    EXPECT_EQ(request.initial, Appearance::Light);
    request.show(Appearance::Dark);
    EXPECT_TRUE(IsDarkNow());
    request.show(Appearance::Light);
    EXPECT_FALSE(IsDarkNow());

    ApplyTheme(profile); // the next start
    EXPECT_TRUE(IsDarkNow());
    prompter.Cancel();
    ChooseTheme(prompter, profile);
    EXPECT_EQ(Get(profile, setting::theme), "dark");
    prompter.Answer(Appearance::System);
    ChooseTheme(prompter, profile);
    EXPECT_EQ(Get(profile, setting::theme), "system");
}

TEST_F(CThemeTest, TheSystemsChoiceIsFoundAgainBehindOurs) {
    Apply("system");
    const QPalette system = QApplication::palette();
    Apply("dark");
    Apply("system");
    EXPECT_EQ(QApplication::palette(), system);
    Apply("");
    EXPECT_EQ(QApplication::palette(), system);
}

TEST_F(CThemeTest, OutlinesAreSeenInTheDark) {
    Apply("dark");
    constexpr int leastContrast = 45;
    const QRect middle(60, 0, 1, 24);
    const QRect mark(0, 0, 16, 24);
    QLineEdit edit;
    QComboBox choice;
    QListWidget list;
    QCheckBox check;
    QRadioButton radio;
    for (const auto& [widget, where] : {std::pair<QWidget*, QRect>(&edit, middle),
                                        {&choice, middle},
                                        {&list, middle},
                                        {&check, mark},
                                        {&radio, mark}})
        EXPECT_GE(Contrast(*widget, where), leastContrast) << widget->metaObject()->className();
}

TEST_F(CThemeTest, AChosenRadioIsFilledWithTheHighlight) {
    Apply("dark");
    QRadioButton radio;
    const auto filled = [&radio] {
        const QImage image = radio.grab().toImage();
        int count = 0;
        for (int i = 0; i < image.width() * image.height(); ++i)
            count += image.pixelColor(i % image.width(), i / image.width()) ==
                     QApplication::palette().color(QPalette::Highlight);
        return count;
    };
    EXPECT_EQ(filled(), 0);
    radio.setChecked(true);
    EXPECT_GT(filled(), 20);
}

} // namespace velmor::testing
