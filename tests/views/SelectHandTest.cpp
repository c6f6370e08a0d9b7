// Selecting, moving, scaling and turning with the mouse in the cel editor, and the clipboard.

#include "CelEditorFixture.h"
#include "image/select/PieceBytes.h"
#include "scene/CelSelection.h"
#include "views/cel/CelView.h"
#include "views/cel/PieceClipboard.h"

#include <QBuffer>
#include <QImage>
#include <QMimeData>
#include <QTest>

namespace velmor::testing {
namespace {

class SelectHand : public CCelEditorFixture {
protected:
    SelectHand() : view(*doc, prompter, profile), client(*view.viewport()) {
        view.resize(340, 320);
        view.show();
        EditCel();
        view.ZoomOneToOne();
        QApplication::processEvents();
        before = EditedImage();
    }
    /// Where the corner of four pixels is shown; the image stands in the middle, a pixel a point.
    QPoint At(int x, int y) {
        return {(client.width() - width) / 2 + x, (client.height() - height) / 2 + height - y};
    }
    void Drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
        Send(QEvent::MouseButtonPress, from, Qt::LeftButton, modifiers);
        Send(QEvent::MouseMove, (from + to) / 2, Qt::NoButton, modifiers);
        Send(QEvent::MouseMove, to, Qt::NoButton, modifiers);
        Send(QEvent::MouseButtonRelease, to, Qt::LeftButton, modifiers);
        m_time += 1000; // no double click
    }
    void Send(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
        const bool isDown = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, client.mapToGlobal(at), button, isDown ? Qt::LeftButton : Qt::NoButton,
                          modifiers);
        event.setTimestamp(m_time += 20);
        QApplication::sendEvent(&client, &event);
    }
    void Key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&view, &event);
    }
    CCelSelection& Selection() { return doc->Selection(); }
    /// The image before, with the pixels of a rectangle placed.
    CCelImg Expected(const CRect& rect, const CPiecePlacement& placement) {
        CCelImg image = before;
        const CPiece piece = LiftedFrom(image, SelectRectangle({width, height}, rect), Selection().What());
        static_cast<void>(TakeOut(image, piece));
        static_cast<void>(velmor::Drop(image, Placed(piece, placement)));
        return image;
    }
    void ExpectImage(const CCelImg& expected) { EXPECT_TRUE(Differences(doc->Model().celImg, expected).IsEmpty()); }

    CCelView view;
    QWidget& client;
    CCelImg before;

private:
    std::uint64_t m_time = 5000;
};

TEST_F(SelectHand, ADragSelectsAndOneInsideMoves) {
    view.SetTool(CelTool::SelectRect);
    Drag(At(20, 10), At(60, 50));
    EXPECT_EQ(Selection().OriginalBounds(), (CRect{20, 10, 60, 50}));
    Drag(At(60, 50), At(80, 60), Qt::ShiftModifier);
    EXPECT_EQ(Selection().OriginalBounds(), (CRect{20, 10, 80, 60}));
    EXPECT_FALSE(Selection().HasOriginal(70, 20));
    Drag(At(60, 10), At(80, 80), Qt::AltModifier);
    EXPECT_EQ(Selection().OriginalBounds(), (CRect{20, 10, 60, 50}));
    Drag(At(40, 30), At(47, 24));
    EXPECT_TRUE(Selection().IsFloating());
    ExpectImage(Expected({20, 10, 60, 50}, {{7, -6}}));
    Key(Qt::Key_Right);
    Key(Qt::Key_Up, Qt::ShiftModifier);
    ExpectImage(Expected({20, 10, 60, 50}, {{8, 4}}));
    Key(Qt::Key_Return);
    EXPECT_FALSE(Selection().IsFloating());
    EXPECT_EQ(doc->Model().history.Steps().size(), 1U);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(Selection().HasSelection());
    Key(Qt::Key_Left);
    ExpectImage(Expected({20, 10, 60, 50}, {{8, 4}}));
}

TEST_F(SelectHand, HandlesScaleAndCornersTurn) {
    view.SetTool(CelTool::SelectRect);
    const CRect rect{20, 10, 70, 60};
    Drag(At(20, 10), At(70, 60));
    Drag(At(70, 35), At(90, 35)); // the right side
    EXPECT_EQ(Selection().Placement(), (CPiecePlacement{{10, 0}, 0, 1.4, 1}));
    ExpectImage(Expected(rect, Selection().Placement()));
    Drag(At(90, 60), At(40, 40), Qt::NoModifier); // a corner, down to a smaller size
    EXPECT_EQ(Selection().Placement(), (CPiecePlacement{{-15, -10}, 0, 0.4, 0.6}));
    ExpectImage(Expected(rect, Selection().Placement()));
    Key(Qt::Key_Return);
    doc->History().Undo();
    ExpectImage(before);

    Drag(At(1, 75), At(5, 79)); // elsewhere
    Drag(At(20, 10), At(70, 60));
    Drag(At(78, 68), At(20 - 8, 60 + 8)); // around the middle by a quarter
    EXPECT_EQ(Selection().Placement(), (CPiecePlacement{{}, 90, 1, 1}));
    ExpectImage(Expected(rect, Selection().Placement()));
}

TEST_F(SelectHand, IsRightInAViewThatIsMirrored) {
    view.SetTool(CelTool::SelectRect);
    view.MirrorView();
    QApplication::processEvents();
    const auto mirrored = [this](int x, int y) { return At(width - x, y); };
    Drag(mirrored(20, 10), mirrored(60, 50));
    EXPECT_EQ(Selection().OriginalBounds(), (CRect{20, 10, 60, 50}));
    Drag(mirrored(40, 30), mirrored(35, 30));
    EXPECT_EQ(Selection().Placement().move, (CPoint{-5, 0}));
    Key(Qt::Key_Left); // as it is seen
    EXPECT_EQ(Selection().Placement().move, (CPoint{-4, 0}));
}

TEST_F(SelectHand, LassoColorAndOtherTools) {
    view.SetTool(CelTool::Lasso);
    Send(QEvent::MouseButtonPress, At(10, 10), Qt::LeftButton, {});
    for (const QPoint point : {At(50, 10), At(50, 50), At(10, 50)})
        Send(QEvent::MouseMove, point, Qt::NoButton, {});
    Send(QEvent::MouseButtonRelease, At(10, 50), Qt::LeftButton, {});
    EXPECT_EQ(Selection().OriginalBounds(), (CRect{10, 10, 50, 50}));
    view.SetTool(CelTool::SelectColor);
    Drag(At(80, 70), At(80, 70));
    const QPoint pixel = At(80, 70);
    EXPECT_TRUE(Selection().HasSelection()) << pixel.x();
    EXPECT_TRUE(Selection().HasOriginal(80, 69));
    view.SetTool(CelTool::Eraser);
    EXPECT_TRUE(Selection().HasSelection());
    Drag(At(30, 30), At(31, 30));
    EXPECT_FALSE(Selection().HasSelection()) << "it would not hold a stroke back";
}

TEST_F(SelectHand, TheClipboardKeepsLinesAndAlpha) {
    Selection().SelectRectangle({20, 10, 60, 50}, SelectMode::Replace);
    const std::optional<CPiece> piece = Selection().Copied();
    ASSERT_TRUE(piece);
    const std::unique_ptr<QMimeData> data = MimeOf(*piece);
    const std::optional<CPiece> taken = PieceOf(*data, {});
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->pixels, piece->pixels);
    EXPECT_EQ(taken->place, piece->place);
    EXPECT_TRUE(taken->HasLines());
    // What another program gets, and gives back.
    const QImage picture = qvariant_cast<QImage>(data->imageData());
    ASSERT_EQ(picture.size(), QSize(40, 40));
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    ASSERT_TRUE(picture.save(&buffer, "png"));
    QMimeData other;
    other.setData("image/png", png);
    const std::optional<CPiece> pasted = PieceOf(other, {50, 40});
    ASSERT_TRUE(pasted);
    EXPECT_EQ(pasted->place, (CRect{30, 20, 70, 60}));
    EXPECT_TRUE(pasted->isPicture);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 40; ++x)
            if (piece->ColorAt(x, y).alpha > 0) {
                ASSERT_EQ(pasted->ColorAt(x, y), piece->ColorAt(x, y));
            }
}

TEST_F(SelectHand, TheClipboardIsNotBelieved) {
    QMimeData text;
    text.setText("no picture");
    EXPECT_FALSE(PieceOf(text, {}));
    std::mt19937 random(4);
    const std::vector<std::uint8_t> piece = BytesOf(*[this] {
        Selection().SelectAll();
        return Selection().Copied();
    }());
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImage(9, 7, QImage::Format_RGBA8888).save(&buffer, "png");
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = round % 2 == 0 ? png
                                          : QByteArray(reinterpret_cast<const char*>(piece.data()),
                                                       static_cast<qsizetype>(piece.size()));
        for (int change = RandomBetween(random, 1, 4); change > 0; --change)
            bytes[RandomBetween(random, 0, static_cast<int>(bytes.size()) - 1)] =
                static_cast<char>(RandomBetween(random, 0, 255));
        bytes.truncate(RandomBetween(random, 0, 3) == 0 ? RandomBetween(random, 0, static_cast<int>(bytes.size()))
                                                        : bytes.size());
        QMimeData data;
        data.setData(round % 2 == 0 ? "image/png" : "application/x-personal-velmor-piece", bytes);
        if (std::optional<CPiece> taken = PieceOf(data, {50, 40})) {
            view.ShowEdit(Selection().Paste(std::move(*taken)));
            view.ShowEdit(Selection().TurnBy(30));
        }
    }
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>());
}

} // namespace
} // namespace velmor::testing
