#include "scene/DialogueOperations.h"
#include "AssetScene.h"
#include "scene/SheetExchange.h"

#include <fstream>

namespace velmor::testing {
namespace {

class DialogueOperations : public CAssetScene {
protected:
    DialogueOperations() {
        SetLevels(2, 12);
        for (const char* name : {"1", "2", "3"})
            MakeCel(CelFile(name), {1, 2, 3});
    }
    void Select(int first, int last) {
        model.selection = {0, 0, first, last};
        model.cursorFrame = first;
    }
    std::string Write(const std::string& text) {
        std::ofstream(folder / "text.txt", std::ios::binary) << text;
        return (folder / "text.txt").string();
    }
    std::vector<CSpokenLine> Lines() const { return scene.dialogue.Lines(); }

    CSheetExchange exchange{Context()};
    CDialogueOperations dialogue{Context(), exchange};
};

TEST_F(DialogueOperations, ALineIsWrittenOverTheSelectionAndChangedAtTheCursor) {
    Select(2, 5);
    prompter.Answer(CSpokenLine{2, 5, " Ann ", "Hel\tlo"});
    dialogue.AskLine();
    EXPECT_EQ(Lines(), (std::vector<CSpokenLine>{{2, 5, "Ann", "Hel lo"}}));
    EXPECT_EQ(TakeHints(), Hints{static_cast<int>(UpdateHint::Cells)});
    Select(4, 4);
    prompter.Answer(CSpokenLine{1, 20, "Ann", "Hi"}); // beyond the sheet: asked again
    prompter.Answer(CSpokenLine{4, 8, "Ann", "Hi"});
    dialogue.AskLine();
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_EQ(Lines(), (std::vector<CSpokenLine>{{4, 8, "Ann", "Hi"}})) << "in the place of what it was";
    Undo();
    EXPECT_EQ(Lines().front().text, "Hel lo");
    Redo();
    prompter.Answer(CSpokenLine{4, 8, "Ann", " "});
    dialogue.AskLine();
    EXPECT_TRUE(Lines().empty()) << "without a text";
}

TEST_F(DialogueOperations, ATextIsImportedWholeOrNotAtAll) {
    EXPECT_TRUE(dialogue.Import(Write("1-3 Ann: Hello\n5 you\n")));
    EXPECT_EQ(Lines(), (std::vector<CSpokenLine>{{0, 2, "Ann", "Hello"}, {4, 4, "", "you"}}));
    TakeHints();
    for (const std::string text : {"1-3 a\nb\n", "11-13 a\n", "5-13 a\n"}) {
        EXPECT_FALSE(dialogue.Import(Write(text)));
        EXPECT_EQ(prompter.TakeMessages().size(), 1U) << text;
    }
    EXPECT_FALSE(dialogue.Import(folder / "none.txt"));
    EXPECT_EQ(Lines().size(), 2U);
    EXPECT_TRUE(hints.empty());
    Select(6, 9);
    EXPECT_TRUE(dialogue.Import(Write("ab\ncd\n")));
    EXPECT_EQ(scene.dialogue.At(8)->text, "cd") << "spread over what is selected";
}

TEST_F(DialogueOperations, MouthsGoIntoALevelInOneStep) {
    ASSERT_TRUE(dialogue.PutLine({2, 5, "", "mama"}));
    ASSERT_TRUE(Put(1, 3, "2").SetPos(10, 20));
    Put(1, 7, "3");
    const CXSheet before = scene.xsheet;
    const CMouthChoices choices{1, "Man", "m = 1\na = 2\n", 1};
    CSheetImport planned;
    ASSERT_TRUE(dialogue.PlanMouths(choices, planned));
    EXPECT_EQ(scene.xsheet, before) << "a plan is none";
    TakeHints();
    EXPECT_TRUE(dialogue.FillMouths(choices));
    EXPECT_EQ(Row(1, 10), "..1212.3..");
    EXPECT_EQ(Row(0, 10), "..........");
    EXPECT_EQ(scene.xsheet.Cell(1, 3).PosX(), 10) << "a drawing that stays keeps its place";
    EXPECT_EQ(scene.xsheet.Cell(1, 5).PosX(), 10) << "and gives it to the same one beside it";
    EXPECT_EQ(dialogue.ChartOf("Man"), choices.chart);
    EXPECT_FALSE(dialogue.FillMouths(choices)) << "it is done";
    Undo();
    EXPECT_EQ(scene.xsheet, before);

    Select(4, 7);
    EXPECT_TRUE(dialogue.FillMouths({1, "Man", "m = 1\na = 9\nrest = 3", 1}));
    EXPECT_EQ(Row(1, 10), "...21.33..") << "in the selected frames, without a drawing that there is not";
    CMouthChoices wrong = choices;
    wrong.chart = "nonsense";
    EXPECT_FALSE(dialogue.FillMouths(wrong));
    EXPECT_NE(prompter.TakeMessages().back().find("line 1"), std::string::npos);
    EXPECT_EQ(dialogue.ChartOf("Cat"), "") << "no drawings";
}

TEST_F(DialogueOperations, TheDialogShowsWhatWouldBecome) {
    ASSERT_TRUE(dialogue.PutLine({0, 3, "", "am"}));
    prompter.Cancel();
    dialogue.AskAndFillMouths();
    const auto request = std::any_cast<CMouthRequest>(prompter.lastRequest);
    EXPECT_EQ(request.levelNames, (Texts{"0", "1"}));
    EXPECT_EQ(request.initial.folder, "Man");
    EXPECT_EQ(request.initial.chart, "a i ah = 1\ne eh = 2\no oh oo = 3\n") << "to begin with";
    const CMouthPreview preview = request.preview({1, "Man", "a = 1\nm = 7", 1});
    EXPECT_TRUE(preview.changes);
    EXPECT_EQ(preview.lines, Texts{"Frames 1-2: 1"});
    EXPECT_EQ(preview.losses, Texts{"Level \"1\": there is no drawing Man/7, 2 cells stay empty"});
    EXPECT_FALSE(request.preview({1, "Man", "=", 1}).status);
    EXPECT_FALSE(request.preview({9, "Man", "a = 1", 1}).status);
}

} // namespace
} // namespace velmor::testing
