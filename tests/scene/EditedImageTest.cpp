#include "scene/EditedImage.h"

#include "AssetScene.h"

namespace velmor::testing {

namespace {

class EditedImage : public CAssetScene {};

} // namespace

TEST_F(EditedImage, IsWrittenOnceAndStaysOpen) {
    EXPECT_TRUE(CEditedImage(Context()).Save()) << "nothing is open, so nothing is left unsaved";
    MakeCel(CelFile("1"), white);
    Edit(CelFile("1"), red);
    EXPECT_TRUE(CEditedImage(Context()).Save());
    EXPECT_EQ(TakeHints(), std::vector<int>{260});
    EXPECT_EQ(Load(CelFile("1")).ColorAt(1, 0), red);
    EXPECT_EQ(model.celImg.GetLoadState(), LoadState::Cel);

    EXPECT_TRUE(CEditedImage(Context()).Save());
    EXPECT_TRUE(TakeHints().empty()) << "the picture shows it already";
}

TEST_F(EditedImage, ThatCannotBeWrittenNamesItsFile) {
    MakeCel(CelFile("1"), white);
    Edit(CelFile("1"), red);
    PutInTheWay(CelFile("1"));
    EXPECT_FALSE(CEditedImage(Context()).Save());
    EXPECT_EQ(
        prompter.TakeMessages(),
        std::vector<std::string>{"Problem opening file for writing:: Writing file ->" + Utf8Of(CelFile("1"))});
    EXPECT_TRUE(TakeHints().empty());
    EXPECT_TRUE(model.celImg.IsModified());
    model.celImg.SetModified(false);
}

} // namespace velmor::testing
