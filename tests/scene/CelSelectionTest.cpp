#include "scene/CelSelection.h"

#include "AssetScene.h"
#include "RandomImages.h"
#include "scene/CelPainting.h"
#include "scene/EditedImage.h"

#include <random>

namespace velmor::testing {

namespace {

class CelSelection : public CAssetScene {
protected:
    CelSelection() {
        for (const char* name : {"1", "2"}) {
            CCelImg cel = RandomCel(random, width, height);
            Sprinkle(cel, random, 25);
            cel.SetFilePath(CelFile(name));
            EXPECT_TRUE(cel.Save());
        }
        model.celImg = Load(CelFile("1"));
    }
    CCelImg& Image() { return model.celImg; }
    /// The steps by their names.
    Texts Steps() const {
        Texts names;
        for (const CHistory::CStep& step : model.history.Steps())
            if (step.isDone)
                names.push_back(step.heading.name);
        return names;
    }
    /// What is left of the image without what is selected, and the piece.
    CCelImg Ground(const CRect& rect, CPiece& piece) {
        CCelImg ground = Image();
        piece = LiftedFrom(ground, SelectRectangle({width, height}, rect), selection.What());
        static_cast<void>(TakeOut(ground, piece));
        return ground;
    }
    void ExpectPixels(const CCelImg& expected) { EXPECT_TRUE(Differences(Image(), expected).IsEmpty()); }

    static constexpr int width = 150;
    static constexpr int height = 90;
    static constexpr CRect area{20, 10, 70, 60};

    std::mt19937 random{5};
    CCelPainting painting{model};
    CCelSelection selection{Context(), painting};
};

} // namespace

TEST_F(CelSelection, FloatsAboveWhatIsUnderIt) {
    for (const SelectWhat what : {SelectWhat::Line, SelectWhat::Paint, SelectWhat::Both}) {
        selection.SetWhat(what);
        selection.SelectRectangle(area, SelectMode::Replace);
        CPiece piece;
        const CCelImg ground = Ground(area, piece);
        for (const CPiecePlacement placement :
             {CPiecePlacement{{7, -3}}, {{60, 45}, 30, 1.5, 1}, {{-200, 0}}, {{11, 12}, 90, -1, 1}}) {
            const CCelImg before = Image();
            const CPaintResult result = selection.Place(placement);
            CCelImg expected = ground;
            static_cast<void>(Drop(expected, Placed(piece, placement)));
            ExpectPixels(expected);
            const CRect differences = Differences(before, Image());
            EXPECT_EQ(Intersection(result.changed, differences), differences);
        }
        EXPECT_TRUE(model.history.Steps().empty()) << "while it floats";
        const CCelImg before = Load(CelFile("1"));
        EXPECT_TRUE(CanUndo(model));
        Undo();
        ExpectPixels(before);
        EXPECT_FALSE(selection.IsFloating());
        Redo();
        CCelImg expected = ground;
        static_cast<void>(Drop(expected, Placed(piece, {{11, 12}, 90, -1, 1})));
        ExpectPixels(expected);
        Undo();
        model.history.Close();
        Image().SetModified(false);
    }
}

TEST_F(CelSelection, IsOneStepHoweverOftenItIsMoved) {
    selection.SelectRectangle(area, SelectMode::Replace);
    for (int nudge = 0; nudge < 5; ++nudge)
        static_cast<void>(selection.MoveBy(1, nudge % 2));
    EXPECT_EQ(selection.Placement().move, (CPoint{5, 2}));
    selection.Drop();
    EXPECT_EQ(Steps(), Texts{"Move Selection on Man 1"});
    EXPECT_TRUE(selection.HasOriginal(area.x + 5, area.y + 2)) << "it stays selected where it is";
    EXPECT_FALSE(selection.HasOriginal(area.x + 4, area.y + 2));

    static_cast<void>(selection.MirrorX());
    static_cast<void>(selection.MirrorX());
    selection.Drop();
    EXPECT_EQ(Steps().size(), 1U) << "nothing has changed";
    static_cast<void>(selection.TurnBy(90));
    static_cast<void>(selection.MoveBy(3, 0));
    ASSERT_TRUE(painting.Begin(CelTool::Pen, {140, 80})) << "puts it down";
    painting.End({141, 80});
    EXPECT_EQ(Steps(), (Texts{"Move Selection on Man 1", "Transform Selection on Man 1", "Stroke on Man 1"}));
    const CCelImg last = Image();
    while (CanUndo(model))
        Undo();
    ExpectPixels(Load(CelFile("1")));
    while (CanRedo(model))
        Redo();
    ExpectPixels(last);
}

TEST_F(CelSelection, TurningBackAndForthCostsNothing) {
    const CCelImg before = Image();
    selection.SelectRectangle(area, SelectMode::Replace);
    for (const double degrees : {17.0, 45.0, -31.0, 300.0, 29.0})
        static_cast<void>(selection.TurnBy(degrees)); // a whole turn
    ExpectPixels(before);
    static_cast<void>(selection.MirrorX());
    static_cast<void>(selection.MirrorY());
    static_cast<void>(selection.TurnBy(180));
    ExpectPixels(before);
    EXPECT_TRUE(selection.Place({{}, 0, 1e9, 1e9}).changed.IsEmpty()) << "there is no room for that";
    ExpectPixels(before);
}

TEST_F(CelSelection, WhateverSavesOrLeavesTheImagePutsItDown) {
    selection.SelectAll();
    static_cast<void>(selection.MoveBy(4, 0));
    const CCelImg moved = Image();
    EXPECT_TRUE(CEditedImage(Context()).Save());
    EXPECT_FALSE(selection.IsFloating());
    EXPECT_EQ(Steps().size(), 1U);
    EXPECT_TRUE(Differences(Load(CelFile("1")), moved).IsEmpty());
    static_cast<void>(selection.MoveBy(4, 0));
    EXPECT_TRUE(CEditedImage(Context()).Close());
    EXPECT_EQ(Steps().size(), 2U);
    EXPECT_FALSE(selection.HasSelection());
    model.celImg = Load(CelFile("2"));
    EXPECT_FALSE(selection.HasSelection()) << "it was of another cel";
    EXPECT_TRUE(selection.MoveBy(1, 0).changed.IsEmpty());
    EXPECT_FALSE(selection.Copied());
}

TEST_F(CelSelection, CutCopyAndPasteGoFromCelToCel) {
    selection.SelectRectangle(area, SelectMode::Replace);
    const std::optional<CPiece> piece = selection.Copied();
    ASSERT_TRUE(piece);
    const CCelImg before = Image();
    CPiece lifted;
    const CCelImg ground = Ground(area, lifted);
    static_cast<void>(selection.Delete("Cut"));
    ExpectPixels(ground);
    EXPECT_FALSE(selection.HasSelection());
    EXPECT_EQ(Steps(), Texts{"Cut on Man 1"});
    Undo();
    ExpectPixels(before);
    selection.SelectAgain();
    EXPECT_EQ(selection.OriginalBounds(), area);

    ASSERT_TRUE(CEditedImage(Context()).Close());
    model.celImg = Load(CelFile("2"));
    CCelImg expected = Image();
    static_cast<void>(Drop(expected, *piece, {9, 9}));
    static_cast<void>(selection.Paste(*piece));
    static_cast<void>(selection.MoveBy(9, 9));
    ExpectPixels(expected);
    static_cast<void>(selection.Delete());
    ExpectPixels(Load(CelFile("2")));
    static_cast<void>(selection.Paste(*piece));
    selection.Drop();
    EXPECT_EQ(Steps().back(), "Paste on Man 2");

    CPiece aside = *piece;
    aside.place = {5000, 0, 5000 + aside.Width(), aside.Height()};
    static_cast<void>(selection.Paste(aside));
    EXPECT_EQ(selection.Frame(), (CRect{50, 20, 100, 70})) << "where it can be seen";
}

TEST_F(CelSelection, ShiftAddsAndColorsAreFound) {
    selection.SelectRectangle({0, 0, 10, 10}, SelectMode::Replace);
    selection.SelectRectangle({5, 0, 20, 10}, SelectMode::Add);
    selection.SelectRectangle({0, 0, 150, 5}, SelectMode::Subtract);
    EXPECT_EQ(selection.OriginalBounds(), (CRect{0, 5, 20, 10}));
    selection.Invert();
    EXPECT_TRUE(selection.HasOriginal(0, 0));
    EXPECT_FALSE(selection.HasOriginal(3, 7));
    selection.SelectColor({3, 7}, SelectMode::Replace);
    EXPECT_TRUE(selection.HasOriginal(3, 7));
    EXPECT_EQ(selection.Color(), Image().ColorAt(3, 7));
    selection.SelectNone();
    EXPECT_FALSE(selection.HasSelection());
    EXPECT_FALSE(selection.Color());
}

} // namespace velmor::testing
