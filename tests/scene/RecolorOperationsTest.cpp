#include "scene/RecolorOperations.h"

#include "AssetScene.h"
#include "platform/process/Interrupt.h"
#include "scene/Settings.h"

#include <sys/resource.h>

namespace velmor::testing {

namespace {

class RecolorOperations : public CAssetScene {
protected:
    RecolorOperations() {
        MakeCel(CelFile("1"), red);
        MakeCel(CelFile("2"), blue);
        MakeCel(CelFile("3"), red);
    }
    CColor Corner(const std::string& name) { return Load(CelFile(name)).ColorAt(0, 0); }
    std::vector<CColor> Corners() { return {Corner("1"), Corner("2"), Corner("3")}; }

    const CRecoloring redToGreen{red, {0, 255, 0, 255}};
    const CColor green{0, 255, 0, 255};
    CRecolorOperations recoloring{Context()};
};

} // namespace

TEST_F(RecolorOperations, AFolderIsOneStepWithTheImageUnderEdit) {
    Edit(CelFile("3"), red);
    const std::size_t steps = model.history.Steps().size();
    EXPECT_EQ(recoloring.Replace(recoloring.AllFiles(), redToGreen), 3) << "with the pixel that was not saved";
    EXPECT_EQ(Corners(), (std::vector{green, blue, green}));
    EXPECT_EQ(model.celImg.ColorAt(0, 0), green);
    EXPECT_EQ(model.celImg.ColorAt(1, 0), green);
    EXPECT_FALSE(model.celImg.IsModified());
    EXPECT_EQ(model.history.Steps().size(), steps + 1);
    Undo();
    EXPECT_EQ(Corners(), (std::vector{red, blue, red}));
    EXPECT_EQ(model.celImg.ColorAt(1, 0), red) << "what was painted before stays";
    Redo();
    EXPECT_EQ(Corners(), (std::vector{green, blue, green}));
    EXPECT_EQ(recoloring.Replace(recoloring.AllFiles(), redToGreen), 0);
    EXPECT_EQ(model.history.Steps().size(), steps + 1) << "nothing found is no step";
}

TEST_F(RecolorOperations, AStopOrADamagedFileLeavesEverything) {
    prompter.stopAtReport = 3;
    EXPECT_FALSE(recoloring.Replace(recoloring.AllFiles(), redToGreen));
    EXPECT_EQ(Corners(), (std::vector{red, blue, red}));
    prompter.stopAtReport = 0;
    std::filesystem::resize_file(CelFile("3"), 30);
    EXPECT_FALSE(recoloring.Replace(recoloring.AllFiles(), redToGreen));
    EXPECT_EQ(Corner("1"), red);
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_TRUE(model.history.Steps().empty());
}

TEST_F(RecolorOperations, AFileThatResistsTakesBackTheOthers) {
    MakeCel(CelFile("3"), red, 600, 600);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{20000, before.rlim_max}; // the third file does not fit, the others do
    SurviveFileSizeLimit();
    ::setrlimit(RLIMIT_FSIZE, &small);
    const bool isDone = recoloring.Replace(recoloring.AllFiles(), redToGreen).has_value();
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(isDone);
    EXPECT_EQ(Corners(), (std::vector{red, blue, red}));
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_TRUE(model.history.Steps().empty());
}

TEST_F(RecolorOperations, AsksAndRemembers) {
    Select(SourceMode::Cels, {"1", "2"});
    CReplaceColorValues values{{red, green, 3, SelectWhat::Paint, true}, RecolorWhere::Chosen};
    prompter.Answer(values);
    recoloring.AskAndReplace(red);
    const auto request = std::any_cast<CReplaceColorRequest>(prompter.lastRequest);
    EXPECT_EQ(request.initial.recoloring.from, red);
    EXPECT_EQ(request.chosen, 2);
    EXPECT_EQ(request.all, 3);
    EXPECT_EQ(Corners(), (std::vector{green, blue, red}));
    EXPECT_EQ(Get(profile, setting::lastRecolorTolerance), 3);

    Edit(CelFile("3"), red);
    values.where = RecolorWhere::Edited;
    prompter.Answer(values);
    recoloring.AskAndReplace();
    EXPECT_EQ(model.celImg.ColorAt(1, 0), green);
    EXPECT_EQ(Corner("3"), red) << "in memory alone";
    Undo();
    EXPECT_EQ(model.celImg.ColorAt(0, 0), red);

    values.recoloring.from = {1, 2, 3, 255};
    prompter.Answer(values);
    recoloring.AskAndReplace();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"No pixel has this color."});
}

} // namespace velmor::testing
