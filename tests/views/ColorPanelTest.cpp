#include "CelEditorFixture.h"
#include "qt/ModalDriver.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneHistory.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/cel/ColorList.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

namespace velmor::testing {
namespace {

constexpr int usedRole = Qt::UserRole + 1;

/// The cel editor's frame with six colours in the palette.
class ColorPanelTest : public CCelEditorFixture {
protected:
    ColorPanelTest() : frame(*doc, prompter, profile, {}) {
        doc->Palette().AddColor({10, 20, 200, 255}, "Shirt red");
        doc->Palette().AddColor({200, 20, 10, 255}, "Sea");
        doc->Palette().AddColor({10, 200, 20, 255}, "Shirt green");
        frame.resize(700, 500);
        frame.show();
        QApplication::processEvents();
    }

    CColorList& Colors() { return static_cast<CColorList&>(Child<QListWidget>(frame, "colorList")); }
    QLineEdit& Search() { return Child<QLineEdit>(frame, "colorSearch"); }
    std::string Shown() {
        std::string text;
        for (int row = 0; row < Colors().count(); ++row)
            if (!Colors().isRowHidden(row))
                text += Colors().item(row)->text().toStdString() + ";";
        return text;
    }

    CCelFrame frame;
};

TEST_F(ColorPanelTest, TheSearchShowsNamesAndNumbersAndReturnTakesTheFirst) {
    Search().setText("shirt");
    EXPECT_EQ(Shown(), "Shirt red;Shirt green;");
    doc->Palette().AddColor({1, 2, 3, 255}, "A shirt's shadow");
    EXPECT_EQ(Shown(), "Shirt red;Shirt green;A shirt's shadow;") << "the search goes on";
    Search().setText("#0a14");
    EXPECT_EQ(Shown(), "Sea;");
    QTest::keyClick(&Search(), Qt::Key_Return);
    EXPECT_EQ(doc->Model().paint.foregroundEntry, 4);
    Search().clear();
    EXPECT_EQ(Shown(), "Black;White;TRANS;Shirt red;Sea;Shirt green;A shirt's shadow;");
}

TEST_F(ColorPanelTest, EntriesAreMovedByKeysInOneStepEach) {
    Colors().setCurrentRow(4);
    QTest::keyClick(&Colors(), Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(Shown(), "Black;White;TRANS;Sea;Shirt red;Shirt green;");
    EXPECT_EQ(Colors().Current(), 3);
    QTest::keyClick(&Colors(), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&Colors(), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&Colors(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(Shown(), "Black;White;TRANS;Shirt red;Shirt green;Sea;") << "the last one stays there";
    doc->History().Undo();
    EXPECT_EQ(Shown(), "Black;White;TRANS;Shirt red;Sea;Shirt green;");
}

TEST_F(ColorPanelTest, WhatIsUsedIsMarkedWhenItIsKnown) {
    const CColor used{7, 7, 200, 255};
    doc->Palette().AddColor(used, "Used");
    doc->Palette().AddColor({7, 8, 200, 255}, "Not used");
    CCelImg cel;
    const Path file = doc->Model().Paths().CelFile("A", "1");
    ASSERT_TRUE(cel.Load(file));
    cel.SetColorAt(3, 3, used);
    ASSERT_TRUE(cel.Save());
    EXPECT_FALSE(Colors().item(6)->data(usedRole).isValid());
    doc->Views().UpdateAllViews(UpdateHint::AssetLists);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Colors().item(6)->data(usedRole).isValid(); }));
    EXPECT_TRUE(Colors().item(6)->data(usedRole).toBool());
    EXPECT_FALSE(Colors().item(7)->data(usedRole).toBool());
    EXPECT_TRUE(Colors().item(7)->toolTip().contains("No cel of the folder"));
    EditCel(); // what is painted counts before it is saved
    EditedImage().SetColorAt(4, 4, {7, 8, 200, 255});
    EditedImage().SetModified(true);
    doc->Views().UpdateAllViews(UpdateHint::EditedImage);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Colors().item(7)->data(usedRole).toBool(); }));
}

TEST_F(ColorPanelTest, AnEditedColorRepaintsWhenItIsAskedTo) {
    EditCel();
    const CColor before{10, 20, 200, 255};
    const CColor after{60, 70, 80, 255};
    EditedImage().SetColorAt(5, 5, before);
    prompter.Answer(CColorValues{"Shirt", after, false});
    doc->Palette().EditColor(3);
    EXPECT_EQ(doc->Model().celImg.ColorAt(5, 5), before);
    const std::string question = std::any_cast<CColorRequest>(prompter.lastRequest).repaintText;
    EXPECT_EQ(question, "&Repaint what is painted with it in the drawing under edit");
    prompter.Answer(CColorValues{"Shirt", before, false});
    doc->Palette().EditColor(3);
    prompter.Answer(CColorValues{"Shirt", after, true});
    doc->Palette().EditColor(3);
    EXPECT_EQ(doc->Model().celImg.ColorAt(5, 5), after);
    doc->History().Undo();
    EXPECT_EQ(doc->Model().celImg.ColorAt(5, 5), before);
    EXPECT_EQ(doc->Model().palette.At(3).color, after) << "the palette has a step of its own";
    doc->History().Undo();
    EXPECT_EQ(doc->Model().palette.At(3).color, before);
}

TEST_F(ColorPanelTest, AColorIsPickedAnywhereInTheWindow) {
    QLabel elsewhere;
    elsewhere.setStyleSheet("background: rgb(12, 134, 56)");
    elsewhere.resize(60, 40);
    elsewhere.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&elsewhere));
    elsewhere.raise();
    CCelView& view = frame.View();
    view.PickFromWindow();
    EXPECT_TRUE(view.IsPickingFromWindow());
    QTest::mouseClick(&elsewhere, Qt::LeftButton, {}, {20, 20});
    EXPECT_FALSE(view.IsPickingFromWindow());
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{56, 134, 12, 255}));
    for (const bool byKey : {true, false}) {
        view.PickFromWindow();
        if (byKey)
            QTest::keyClick(&view, Qt::Key_Escape);
        else
            QTest::mouseClick(&elsewhere, Qt::RightButton, {}, {20, 20});
        EXPECT_FALSE(view.IsPickingFromWindow());
    }
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{56, 134, 12, 255}));
}

} // namespace
} // namespace velmor::testing
