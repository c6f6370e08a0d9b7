#include "views/cel/CelFrame.h"
#include "CelEditorFixture.h"
#include "qt/ModalDriver.h"
#include "qt/Patience.h"
#include "scene/AssetOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "views/cel/CelCaption.h"
#include "views/cel/CelView.h"
#include "views/cel/ColorList.h"
#include "views/widgets/ColorSwatch.h"

#include <QAction>
#include <QCheckBox>
#include <QRadioButton>
#include <QSplitter>
#include <QTest>
#include <QToolButton>

namespace velmor::testing {
namespace {

class CelFrameTest : public CCelEditorFixture {
protected:
    CelFrameTest() : frame(*doc, prompter, profile, {}) {
        frame.resize(700, 500);
        frame.show();
        QApplication::processEvents();
    }

    template<class Widget>
    Widget& Get(const char* name) {
        return Child<Widget>(frame, name);
    }
    CColorList& Colors() { return static_cast<CColorList&>(Get<QListWidget>("colorList")); }
    void Click(int row, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Colors().viewport(), button, {}, Colors().visualItemRect(Colors().item(row)).center());
    }
    CColor SwatchOf(int row) {
        const QColor color = Colors().item(row)->data(Qt::UserRole).value<QColor>();
        return {static_cast<std::uint8_t>(color.blue()), static_cast<std::uint8_t>(color.green()),
                static_cast<std::uint8_t>(color.red()), 255};
    }

    CCelFrame frame;
};

TEST_F(CelFrameTest, TheColorListChoosesAndEdits) {
    ASSERT_EQ(Colors().count(), 3);
    Click(1);
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{255, 255, 255, 255}));
    Click(2, Qt::RightButton);
    EXPECT_EQ(doc->Model().paint.background, (CColor{128, 128, 128, 0}));
    EXPECT_EQ(Colors().Current(), 1) << "the right button leaves the selection";
    prompter.Answer(CColorValues{"Sky", {200, 100, 50, 255}});
    Get<QToolButton>("Add Color").click();
    ASSERT_EQ(Colors().count(), 4);
    EXPECT_EQ(Colors().Current(), 3);
    EXPECT_EQ(SwatchOf(3), (CColor{200, 100, 50, 255}));
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{200, 100, 50, 255})) << "a new color is there to paint with";
    prompter.Answer(CColorValues{"Night", {80, 10, 20, 255}});
    QTest::mouseDClick(Colors().viewport(), Qt::LeftButton, {}, Colors().visualItemRect(Colors().item(3)).center());
    EXPECT_EQ(Colors().item(3)->text(), "Night");
    EXPECT_EQ(SwatchOf(3), (CColor{80, 10, 20, 255}));
    EXPECT_EQ(doc->Model().paint.foreground, (CColor{80, 10, 20, 255})) << "follows its entry";
    prompter.Answer(CColorValues{"Dusk", {81, 10, 20, 255}});
    Get<QToolButton>("Edit Color").click();
    EXPECT_EQ(doc->Palette().GetColorName(3), "Dusk");
    prompter.confirmations = {false};
    Get<QToolButton>("Delete Color").click();
    EXPECT_EQ(doc->Model().palette.Count(), 4) << "asked first";
    Get<QToolButton>("Delete Color").click();
    EXPECT_EQ(doc->Model().palette.Count(), 3);
    EXPECT_EQ(Colors().Current(), 2);
    EXPECT_EQ(doc->Model().paint.foreground, doc->Palette().GetColor(2)) << "what is lit paints";
    Colors().setCurrentRow(0); // with the keyboard
    QTest::keyClick(&Colors(), Qt::Key_Delete);
    EXPECT_EQ(Colors().Current(), 1);
    EXPECT_EQ(doc->Model().paint.foreground, doc->Palette().GetColor(1)) << "what is lit paints";
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(&Colors(), Qt::Key_Delete);
    EXPECT_EQ(Colors().count(), 0);
    EXPECT_EQ(prompter.TakeMessages().size(), 5u) << "questions";
    Get<QToolButton>("Delete Color").click();
    EXPECT_EQ(prompter.TakeMessages(),
              std::vector<std::string>{"Internal error : no colors to delete in DeleteColor"});
}

TEST_F(CelFrameTest, SwatchesShowTheColorInABlackFrame) {
    prompter.Answer(CColorValues{"Sky", {200, 100, 50, 255}});
    Get<QToolButton>("Add Color").click(); // selected: its color must not be tinted
    const QImage list = Colors().viewport()->grab().toImage();
    const QRect row = Colors().visualItemRect(Colors().item(3));
    const QPoint corner(row.left() + 3, row.top() + 3);
    EXPECT_EQ(list.pixel(corner), qRgb(0, 0, 0));
    EXPECT_EQ(list.pixel(corner + QPoint(1, 1)), qRgb(50, 100, 200));
    EXPECT_EQ(list.pixel(corner + QPoint(18, 18)), qRgb(50, 100, 200));
    EXPECT_EQ(list.pixel(corner + QPoint(19, 19)), qRgb(0, 0, 0));
}

TEST_F(CelFrameTest, TransparentColorsHaveTheSameSignEverywhere) {
    const CColor trans = doc->Palette().GetColor(2);
    const auto isSigned = [](const QImage& image, const QRect& area) {
        int checks = 0;
        for (int x = area.center().x(); x < area.right(); ++x)
            checks += image.pixel(x, area.bottom() - 1) == qRgb(255, 255, 255);
        return checks > 0 && image.pixel(area.topLeft() + QPoint(1, 1)) == qRgb(128, 128, 128);
    };
    const QRect row = Colors().visualItemRect(Colors().item(2));
    EXPECT_TRUE(isSigned(Colors().viewport()->grab().toImage(), {row.left() + 4, row.top() + 4, 18, 18}));
    Click(2);
    EXPECT_TRUE(isSigned(Get<QWidget>("colorPair").grab().toImage(), {2, 2, 18, 18}));
    CColorSwatch swatch("Color", trans);
    swatch.resize(60, 30);
    EXPECT_TRUE(isSigned(swatch.grab().toImage(), {1, 1, 58, 28}));
}

TEST_F(CelFrameTest, TheToolRowTellsWhatIsShown) {
    auto& caption = static_cast<CCelCaption&>(Get<QWidget>("celCaption"));
    EXPECT_EQ(caption.Text(), "");
    EditCel();
    EXPECT_EQ(caption.Text(), "100 %   A / 1   100 x 80 pixels");
    frame.View().ZoomOut();
    frame.View().SetTool(CelTool::Pen);
    QWidget& canvas = *frame.View().viewport();
    Drag(canvas, canvas.rect().center(), canvas.rect().center(), canvas.rect().center());
    EXPECT_EQ(caption.Text(), "50 %   A / 1 *   100 x 80 pixels");
    doc->Assets().UpdateCamera();
    EXPECT_EQ(caption.Text(), "50 %   A / 1   100 x 80 pixels") << "saved";
    frame.View().TurnLeft();
    frame.View().MirrorView();
    EXPECT_EQ(caption.Text(), QString("50 %   15\u00b0   mirrored   A / 1   100 x 80 pixels"));
    frame.View().TurnUpright();
    EditPicture();
    EXPECT_EQ(caption.Text(), "100 %   Picture back   100 x 80 pixels");
}

TEST_F(CelFrameTest, ToolBrushPenAndModeComeBackAtTheNextStart) {
    frame.View().SetTool(CelTool::LineBrush);
    doc->Palette().SetBrush(4);
    doc->Palette().SetPen(3);
    doc->Palette().SetBucketMode(2);
    CVelmorltDoc next(prompter, profile, {folder.Path(), folder / "data"});
    CCelFrame nextFrame(next, prompter, profile, {});
    EXPECT_EQ(nextFrame.View().Tool(), CelTool::LineBrush);
    EXPECT_TRUE(Child<QRadioButton>(nextFrame, "brush5").isChecked());
    EXPECT_TRUE(Child<QRadioButton>(nextFrame, "pen4").isChecked());
    EXPECT_TRUE(Child<QRadioButton>(nextFrame, "bucketMode2").isChecked());
    for (const CIntSetting& changed :
         {setting::lastBrush, setting::lastPen, setting::lastBucketMode, setting::lastCelTool})
        Set(profile, changed, 77);
    CVelmorltDoc last(prompter, profile, {folder.Path(), folder / "data"});
    EXPECT_EQ(last.Model().paint.brush, 5) << "what a hand has written is held to the range";
    EXPECT_EQ(CCelView(last, prompter, profile).Tool(), CelTool::Bucket) << "no tool has that number";
}

TEST_F(CelFrameTest, WithoutAFolderThereIsNoPaletteToEdit) {
    EXPECT_TRUE(Get<QToolButton>("Add Color").isEnabled());
    NewScene("Other");
    EXPECT_FALSE(Get<QToolButton>("Add Color").isEnabled());
}

TEST_F(CelFrameTest, BrushesPensAndModesFollowTheDocumentAndSetIt) {
    for (int brush = 0; brush < 6; ++brush) {
        Get<QRadioButton>(qPrintable(QString("brush%1").arg(brush + 1))).click();
        EXPECT_EQ(doc->Model().paint.brush, brush);
    }
    Get<QCheckBox>("brushRectangle").click();
    EXPECT_EQ(doc->Model().paint.brush, -1);
    for (int brush = 1; brush <= 6; ++brush)
        EXPECT_FALSE(Get<QRadioButton>(qPrintable(QString("brush%1").arg(brush))).isChecked());
    Get<QCheckBox>("brushRectangle").click();
    EXPECT_EQ(doc->Model().paint.brush, 5) << "back to the last round brush";
    EXPECT_TRUE(Get<QRadioButton>("brush6").isChecked());
    for (int pen = 0; pen < 4; ++pen) {
        Get<QRadioButton>(qPrintable(QString("pen%1").arg(pen + 1))).click();
        EXPECT_EQ(doc->Model().paint.pen, pen);
    }
    for (const int mode : {1, 2, 0}) {
        Get<QRadioButton>(qPrintable(QString("bucketMode%1").arg(mode))).click();
        EXPECT_EQ(doc->Model().paint.bucketMode, mode);
    }
    doc->Palette().SetBrush(2);
    doc->Palette().SetPen(1);
    doc->Palette().SetBucketMode(2);
    EXPECT_TRUE(Get<QRadioButton>("brush3").isChecked());
    EXPECT_FALSE(Get<QRadioButton>("brush6").isChecked());
    EXPECT_FALSE(Get<QCheckBox>("brushRectangle").isChecked());
    EXPECT_TRUE(Get<QRadioButton>("pen2").isChecked());
    EXPECT_TRUE(Get<QRadioButton>("bucketMode2").isChecked());
}

TEST_F(CelFrameTest, APictureHasNoPensAndNoBucket) {
    const auto areOffered = [this](bool expected, const char* state) {
        for (const char* name : {"pen1", "pen4", "bucketMode0", "bucketMode2"})
            EXPECT_EQ(Get<QRadioButton>(name).isEnabled(), expected) << name << " with " << state;
    };
    areOffered(true, "nothing");
    EditPicture();
    areOffered(false, "a picture");
    EXPECT_TRUE(Get<QRadioButton>("brush1").isEnabled());
    EditCel();
    areOffered(true, "a cel");
}

TEST_F(CelFrameTest, UpdateCameraSavesTheImage) {
    EditCel();
    EditedImage().SetModified(true);
    Get<QToolButton>("updateCamera").click();
    EXPECT_FALSE(doc->Model().celImg.IsModified());
}

TEST_F(CelFrameTest, APaneMayBeAsLowAsTwentyPixels) {
    QSplitter splitter(Qt::Vertical);
    splitter.addWidget(new QWidget);
    auto* pane = new CCelFrame(*doc, prompter, profile, {});
    splitter.addWidget(pane);
    splitter.resize(600, 400);
    splitter.show();
    for (const int paneHeight : {20, 60, 120, 390}) {
        splitter.setSizes({400 - paneHeight, paneHeight});
        QApplication::processEvents();
        EXPECT_NEAR(pane->height(), paneHeight, splitter.handleWidth()) << paneHeight;
        EXPECT_LE(pane->View().geometry().right(), pane->width());
    }
    // Beside each other in a low pane, below each other in a high one.
    const auto leftOf = [pane](const char* name) {
        auto& button = Child<QRadioButton>(*pane, name);
        return button.mapTo(pane, QPoint()).x();
    };
    EXPECT_LT(leftOf("pen1"), leftOf("brush3"));
    splitter.resize(900, 400);
    splitter.setSizes({200, 200});
    EXPECT_TRUE(WaitFor([&] { return leftOf("pen1") > leftOf("brush3"); }));
}

} // namespace
} // namespace velmor::testing
