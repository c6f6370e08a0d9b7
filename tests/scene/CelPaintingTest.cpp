#include "scene/CelPainting.h"

#include "RandomImages.h"
#include "image/paint/ImageChange.h"

#include <gtest/gtest.h>
#include <random>

namespace velmor::testing {
namespace {

class CelPaintingTest : public ::testing::Test {
protected:
    // Larger than a tile and no multiple of one, with lines that stop fills here and there.
    void Edit(bool asPicture) {
        model.celImg = asPicture ? RandomPicture(random, 150, 130) : RandomCel(random, 150, 130);
        if (!asPicture)
            Sprinkle(model.celImg, random, 40);
    }
    CPoint Anywhere() {
        std::uniform_int_distribution<int> at(-20, 170);
        return {at(random), at(random)};
    }
    // What was kept leads back to the image before.
    bool HoldsAll(const CCelImg& before) {
        CCelImg restored = model.celImg;
        const CImageChange change(painting.PaintedOver(), restored);
        const bool isBack = change.Apply(restored, ChangeDirection::Back).has_value();
        restored.SetModified(before.IsModified());
        return isBack && AreSame(restored, before);
    }

    std::mt19937 random{11};
    CSceneModel model;
    CCelPainting painting{model};
};

TEST_F(CelPaintingTest, KeepsWhatEveryToolPaintsOver) {
    for (int round = 0; round < 300; ++round) {
        const CelTool tool = paintTools[static_cast<std::size_t>(round) % paintTools.size()].id;
        model.paint.brush = round % 7 - 1;
        model.paint.pen = round % 4;
        model.paint.bucketMode = round / 4 % 3;
        Edit(round % 5 == 0);
        const CCelImg before = model.celImg;
        if (!painting.Begin(tool, Anywhere()))
            continue;
        painting.Move(Anywhere());
        painting.End(Anywhere());
        EXPECT_TRUE(HoldsAll(before)) << round;
    }
}

TEST_F(CelPaintingTest, OnlyOneToolIsDownAndOnlyWhereItCanPaint) {
    EXPECT_FALSE(painting.Begin(CelTool::Pen, {1, 1})) << "there is no image";
    Edit(true);
    EXPECT_FALSE(painting.Begin(CelTool::Pen, {1, 1})) << "a picture has no lines";
    EXPECT_TRUE(painting.Begin(CelTool::Eraser, {1, 1}));
    EXPECT_FALSE(painting.Begin(CelTool::LineBrush, {1, 1}));
    painting.Cancel();
    const CCelImg before = model.celImg;
    EXPECT_TRUE(painting.Move({50, 50}).changed.IsEmpty());
    EXPECT_TRUE(painting.End({60, 60}).changed.IsEmpty());
    EXPECT_TRUE(AreSame(model.celImg, before));
    EXPECT_EQ(painting.PaintedOver().Count(), 0u);
}

} // namespace
} // namespace velmor::testing
