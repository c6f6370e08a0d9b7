#include "scene/CleanupBatch.h"

#include "AssetScene.h"
#include "PunchedPage.h"
#include "scene/CleanupOperations.h"
#include "scene/Settings.h"

namespace velmor::testing {

namespace {

constexpr CColor black{0, 0, 0, 255};

class CleanupBatch : public CAssetScene {
protected:
    /// A cel with holes turned by so much, a line of three pixels and a speck.
    void MakeScan(const std::string& name, double degrees) {
        CPunchedPage page;
        page.size = {900, 700};
        page.dpi = 80;
        page.x = 440;
        page.y = 630;
        page.degrees = degrees;
        CCelImg cel = page.Draw();
        Draw(cel);
        cel.SetFilePath(CelFile(name));
        EXPECT_TRUE(cel.Save());
    }
    void MakeBare(const std::string& name) {
        CCelImg cel;
        EXPECT_TRUE(cel.CreateCel(300, 200, CelFile(name)));
        Draw(cel);
        EXPECT_TRUE(cel.Save());
    }
    static void Draw(CCelImg& cel) {
        for (int x = 50; x < 250; ++x)
            for (int y = 100; y < 103; ++y)
                CPunchedPage::SetBlack(cel, x, y);
        CPunchedPage::SetBlack(cel, 20, 20);
    }
    CCleanupOrder Order(std::vector<std::string> names) const {
        CCleanupOrder order;
        order.folder = "Man";
        order.names = std::move(names);
        return order;
    }
    double TurnOf(const std::string& name) const {
        CPegs pegs;
        EXPECT_TRUE(FindPegs(Load(CelFile(name)), {}, pegs)) << name;
        return pegs.degrees;
    }

    CCleanupBatch batch{Context()};
    CCleanupOperations cleanups{Context()};
};

} // namespace

TEST_F(CleanupBatch, PutsAllOnTheReferenceAsOneStep) {
    MakeScan("1", 1.5);
    MakeScan("2", -2);
    MakeBare("3");
    Expose(0, 0, "Man", "2");
    Expose(0, 1, "Man", "3");
    const auto before = ReadBytes(CelFile("2"));
    CCleanupOrder order = Order({"1", "2", "3"});
    order.cleanup.specks = 1;
    order.cleanup.registers = true;
    order.reference = "1";
    const auto cleaned = batch.Run(order);
    ASSERT_TRUE(cleaned && cleaned->size() == 3);
    EXPECT_NEAR(TurnOf("2"), 1.5, 0.1);
    EXPECT_TRUE((*cleaned)[1].done.registered);
    EXPECT_FALSE((*cleaned)[2].done.registered);
    EXPECT_FALSE(Load(CelFile("3")).IsLine(20, 20)) << "the rest is done";
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"1 of 3 cels could not be put on their pegs and stay where they are:\n3: No peg holes were "
                    "found: a round one between two slots, at the top or the bottom"});
    EXPECT_EQ(TakeHints(), (Hints{static_cast<int>(pictureHint | UpdateHint::AssetLists)}));
    EXPECT_NE(ReadBytes(CelFile("2")), before);
    ASSERT_EQ(model.history.Steps().size(), 1u);
    Undo();
    EXPECT_EQ(ReadBytes(CelFile("2")), before);
    EXPECT_TRUE(Load(CelFile("3")).IsLine(20, 20));
}

TEST_F(CleanupBatch, NeedsThePegsOfTheReference) {
    MakeScan("1", 1);
    MakeBare("2");
    const auto before = ReadBytes(CelFile("1"));
    CCleanupOrder order = Order({"1", "2"});
    order.cleanup.registers = true;
    for (const char* reference : {"2", "9"}) {
        order.reference = reference;
        EXPECT_FALSE(batch.Run(order).has_value());
        EXPECT_EQ(prompter.TakeMessages().size(), 1u);
    }
    EXPECT_EQ(ReadBytes(CelFile("1")), before);
}

TEST_F(CleanupBatch, GoesOnPastADamagedFileAndEndsAtOneThatCannotBeWritten) {
    for (const char* name : {"1", "2", "3"})
        MakeBare(name);
    std::filesystem::resize_file(CelFile("2"), 40);
    CCleanupOrder order = Order({"1", "2", "3"});
    order.cleanup.weight = 1;
    ASSERT_TRUE(batch.Run(order));
    for (const char* name : {"1", "3"})
        EXPECT_TRUE(Load(CelFile(name)).IsLine(100, 103)) << name;
    const Texts messages = prompter.TakeMessages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find("1 of 3 cels could not be cleaned up:\n" + CelFile("2").string()), std::string::npos)
        << messages[0];
}

TEST_F(CleanupBatch, StoppedItKeepsWhatIsDone) {
    for (const char* name : {"1", "2", "3"})
        MakeBare(name);
    CCleanupOrder order = Order({"1", "2", "3"});
    order.cleanup.weight = -1;
    prompter.stopAtReport = 2;
    const auto cleaned = batch.Run(order);
    ASSERT_TRUE(cleaned && cleaned->size() == 1);
    EXPECT_FALSE(Load(CelFile("1")).IsLine(100, 102));
    EXPECT_TRUE(Load(CelFile("2")).IsLine(100, 102));
    Undo();
    EXPECT_TRUE(Load(CelFile("1")).IsLine(100, 102));
}

TEST_F(CleanupBatch, ChangesTheCelUnderEditWithWhatIsNotSavedYet) {
    MakeBare("1");
    Edit(CelFile("1"), blue);
    CCelImg read;
    CCleanupOrder order = Order({"1"});
    ASSERT_TRUE(batch.Read(order, "1", read));
    EXPECT_EQ(read.ColorAt(1, 0), blue);
    order.cleanup.specks = 1;
    ASSERT_TRUE(batch.Run(order));
    EXPECT_EQ(model.celImg.ColorAt(1, 0), blue);
    EXPECT_FALSE(model.celImg.IsLine(20, 20));
    EXPECT_FALSE(model.celImg.IsModified());
    EXPECT_TRUE(AreSame(Load(CelFile("1")), model.celImg));
    EXPECT_TRUE(Holds(static_cast<UpdateHint>(TakeHints().back()), UpdateHint::EditedImage));
}

TEST_F(CleanupBatch, AsksWithWhatWasChosenLastAndRemembersIt) {
    MakeBare("1");
    MakeBare("2");
    Select(SourceMode::Cels, {"2"});
    CCleanupValues values;
    values.cleanup.specks = 101;
    prompter.Answer(values); // refused
    values.cleanup.specks = 2;
    values.cleanup.weight = 9;
    prompter.Answer(values); // refused
    values.cleanup.weight = 1;
    values.cleanup.dpi = 300;
    prompter.Answer(values);
    cleanups.AskAndCleanUp();
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"The size of specks must be a whole number from 0 to 100",
                     "Lines must be made thinner or thicker by a whole number from -8 to 8"}));
    const auto first = std::any_cast<CCleanupRequest>(prompter.lastRequest);
    EXPECT_EQ(first.chosen, Texts{"2"});
    EXPECT_EQ(first.all, (Texts{"1", "2"}));
    EXPECT_FALSE(first.initial.all);
    EXPECT_TRUE(Load(CelFile("2")).IsLine(100, 103));
    EXPECT_FALSE(Load(CelFile("1")).IsLine(100, 103));
    Select(SourceMode::Cels, {});
    cleanups.AskAndCleanUp(); // cancelled
    const auto second = std::any_cast<CCleanupRequest>(prompter.lastRequest);
    EXPECT_EQ(second.initial.cleanup, values.cleanup);
    EXPECT_TRUE(second.initial.all);
    std::filesystem::remove(CelFile("1"));
    std::filesystem::remove(CelFile("2"));
    cleanups.AskAndCleanUp();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"There is nothing here to clean up."});
}

TEST_F(CleanupBatch, CommandsChangeTheCelUnderEditAlone) {
    cleanups.DespeckleEdited();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Internal Error: No cel is open to change"});
    MakeBare("1");
    model.celImg = Load(CelFile("1"));
    cleanups.DespeckleEdited();
    EXPECT_FALSE(model.celImg.IsLine(20, 20));
    EXPECT_EQ(TakeHints(), Hints{static_cast<int>(UpdateHint::EditedImage)});
    cleanups.DespeckleEdited();
    EXPECT_EQ(TakeHints(), Hints{}) << "there are none left";
    cleanups.ThinEdited();
    EXPECT_FALSE(model.celImg.IsLine(100, 102));
    EXPECT_TRUE(model.celImg.IsLine(100, 101));
    cleanups.ThickenEdited();
    EXPECT_TRUE(model.celImg.IsLine(100, 102));
    EXPECT_EQ(model.celImg.ColorAt(100, 102), black);
    EXPECT_EQ(model.history.Steps().size(), 3u);
    EXPECT_TRUE(Load(CelFile("1")).IsLine(20, 20)) << "the file is as it was";
    Undo();
    Undo();
    Undo();
    EXPECT_TRUE(model.celImg.IsLine(20, 20));
}

} // namespace velmor::testing
