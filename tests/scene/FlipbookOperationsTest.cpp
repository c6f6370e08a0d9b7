#include "DocumentFixture.h"

#include "scene/FlipbookOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

namespace velmor {
namespace {

using testing::CDocumentFixture;
using testing::ReadBytes;
using testing::WriteBytes;
using Texts = std::vector<std::string>;

class FlipbookOperations : public CDocumentFixture {
protected:
    FlipbookOperations() { NewScene("S", 10); }

    static CFlipbookAnswer Answer(bool confirmed, std::vector<int> levels, int start, int end, int step) {
        return {confirmed, {std::move(levels), start, end, step, 40, 30, true}};
    }
};

TEST_F(FlipbookOperations, DialogStartsFromTheSelectionAndRemembersItsChoicesEitherWay) {
    doc->Cursor().SetSelStartY(2);
    doc->Cursor().SetSelEndY(6);
    prompter.Answer(Answer(false, {}, 1, 1, 3));
    EXPECT_FALSE(doc->Flipbooks().MakeFlipbook());
    const auto& first = std::any_cast<const CFlipbookRequest&>(prompter.lastRequest);
    EXPECT_EQ(first.levelNames, Texts{"Default"});
    EXPECT_EQ(first.initial.levels, std::vector<int>{0});
    EXPECT_EQ(first.initial.firstFrame, 3);
    EXPECT_EQ(first.initial.lastFrame, 7);
    EXPECT_EQ(first.initial.step, 1);
    EXPECT_EQ(first.initial.scaling, 50);
    EXPECT_EQ(first.initial.quality, 50);
    EXPECT_FALSE(first.initial.antialias);

    EXPECT_FALSE(doc->Flipbooks().MakeFlipbook()); // no answer: cancelled
    const auto& second = std::any_cast<const CFlipbookRequest&>(prompter.lastRequest);
    EXPECT_EQ(second.initial.step, 3);
    EXPECT_EQ(second.initial.scaling, 40);
    EXPECT_EQ(second.initial.quality, 30);
    EXPECT_TRUE(second.initial.antialias);
    EXPECT_FALSE(doc->Flipbooks().HasLastFlipbook());
}

TEST_F(FlipbookOperations, RefusesInItsOwnDialogUntilTheValuesAreGood) {
    prompter.Answer(Answer(true, {}, 1, 10, 1));
    prompter.Answer(Answer(true, {0}, 5, 11, 1));
    prompter.Answer(Answer(true, {0}, 1, 10, 6));
    prompter.Answer(Answer(true, {0}, 1, 10, 2));
    EXPECT_TRUE(doc->Flipbooks().MakeFlipbook());
    EXPECT_EQ(prompter.velmorMessages, (Texts{"You should select at least one level to generate a flipbook!",
                                              "Invalid start or end frame!", "Invalid step value!"}));
    EXPECT_EQ(prompter.progressTexts, (Texts{"Generating FlipBook...", "Preparing Frame : 1", "Preparing Frame : 3",
                                             "Preparing Frame : 5", "Preparing Frame : 7", "Preparing Frame : 9"}));
    EXPECT_TRUE(FileExists(Database() / "flipbook.avi"));
    EXPECT_EQ(doc->Flipbooks().LastFlipbookToPlay(), Database() / "flipbook.avi");
}

TEST_F(FlipbookOperations, StopButtonAsksAndKeepsWhatIsDone) {
    prompter.Answer(Answer(true, {0}, 1, 10, 1));
    prompter.stopAtReport = 4; // the first report is the opening text
    prompter.confirmations = {true};
    EXPECT_TRUE(doc->Flipbooks().MakeFlipbook());
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Do you want to stop generating flipbook?", "Stopped after Frame : 3"}));
    EXPECT_TRUE(doc->Flipbooks().HasLastFlipbook());
}

TEST_F(FlipbookOperations, SavesTheLastFlipbookOverNothing) {
    EXPECT_EQ(doc->Flipbooks().LastFlipbookToPlay(), std::nullopt);
    EXPECT_EQ(prompter.TakeMessages(), Texts{"There is no last flipbook!"});
    prompter.Answer(Answer(true, {0}, 1, 3, 1));
    ASSERT_TRUE(doc->Flipbooks().MakeFlipbook());
    prompter.Answer(Path(folder / "movie.avi"));
    doc->Flipbooks().SaveLastFlipbook();
    EXPECT_EQ(ReadBytes(folder / "movie.avi"), ReadBytes(Database() / "flipbook.avi"));
    EXPECT_TRUE(prompter.TakeMessages().empty());

    WriteBytes(folder / "movie.avi", std::vector<std::uint8_t>{1});
    prompter.Answer(Path(folder / "movie.avi"));
    doc->Flipbooks().SaveLastFlipbook();
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"Could not save preview, disk full or a file already exists with the same name!"});
    EXPECT_EQ(ReadBytes(folder / "movie.avi").size(), 1U);
}

} // namespace
} // namespace velmor
