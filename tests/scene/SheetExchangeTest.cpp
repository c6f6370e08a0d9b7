#include "scene/SheetExchange.h"

#include "AssetScene.h"
#include "scene/DialogRequests.h"
#include "scene/Settings.h"

namespace velmor::testing {
namespace {

class CSheetExchangeTest : public CAssetScene {
protected:
    CSheetExchangeTest() {
        SetLevels(2, 6);
        scene.xsheet.SetLevelName(0, "Man");
        MakeCel(CelFile("1"), red);
        MakeCel(CelFile("2"), red);
        MakeCel(model.Paths().CelFile("Cat", "7"), blue);
        Put(0, 0, "1");
        Put(0, 1, "1");
    }

    Path Write(const std::string& name, const std::string& text) {
        WriteBytes(folder / name, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        return folder / name;
    }

    static std::string TextOf(const Path& file) {
        const std::vector<std::uint8_t> bytes = ReadBytes(file);
        return {bytes.begin(), bytes.end()};
    }

    CSheetExchange exchange{Context()};
};

TEST_F(CSheetExchangeTest, ExportSaysWhatIsLostAndAsksForTheFile) {
    const Path file = folder / "out.csv";
    scene.camera.MutableAt(2).zoom = 2;
    prompter.Answer(ExchangeFormat::Csv);
    prompter.Answer(Path(file));
    exchange.AskAndExport();
    EXPECT_EQ(std::any_cast<CSaveFileRequest>(prompter.lastRequest).defaultName, "Test.csv");
    EXPECT_TRUE(TextOf(file).find("Frame,Man,1\r\n1,1,\r\n2,,\r\n3,x,\r\n") != std::string::npos) << TextOf(file);
    EXPECT_EQ(Get(profile, setting::lastSheetFormat), 1);

    // A file that is there stays until that is answered yes; the end of the name decides what it holds.
    const std::string before = TextOf(file);
    prompter.confirmations = {false, true};
    prompter.Answer(ExchangeFormat::Csv);
    prompter.Answer(Path(file));
    prompter.Cancel();
    exchange.AskAndExport();
    EXPECT_EQ(TextOf(file), before);
    prompter.Answer(ExchangeFormat::Csv);
    prompter.Answer(Path(Write("there.xdts", "x")));
    exchange.AskAndExport();
    EXPECT_TRUE(TextOf(folder / "there.xdts").starts_with("exchangeDigitalTimeSheet"));
    EXPECT_EQ(prompter.messages, Texts(2, "File Exists, Do you want to overwrite it ?"));

    prompter.Cancel();
    exchange.AskAndExport();
    const auto request = std::any_cast<CSheetExportRequest>(prompter.lastRequest);
    EXPECT_EQ(request.initial, ExchangeFormat::Csv);
    EXPECT_EQ(request.losses.back(), "The camera is not in the file");
    EXPECT_EQ(request.frameCount, 6);
    EXPECT_FALSE(exchange.Write(folder / "no" / "s.csv", ExchangeFormat::Csv));
}

TEST_F(CSheetExchangeTest, ImportIsShownFirstAndIsOneStep) {
    const Path file = Write("in.CSV", "Frame,New,Man\n1,7,1\n2,8,2\n3,,\n");
    prompter.Answer(std::vector<Path>{file});
    prompter.Cancel();
    exchange.AskAndImport();
    const auto request = std::any_cast<CSheetImportRequest>(prompter.lastRequest);
    EXPECT_EQ(request.file, "in.CSV");
    EXPECT_EQ(request.folders, (Texts{"Cat", "Man"}));
    EXPECT_EQ(request.initial, "Man");
    EXPECT_FALSE(CanUndo(model));
    EXPECT_EQ(TakeHints(), Hints());

    model.moveSelection.ToggleLevel(0, 2);
    prompter.Answer(std::vector<Path>{file});
    prompter.Answer(std::string("Cat"));
    exchange.AskAndImport();
    ASSERT_EQ(scene.xsheet.LevelCount(), 3);
    EXPECT_EQ(scene.xsheet.FrameCount(), 3);
    EXPECT_TRUE(scene.xsheet.Cell(0, 0).Shows("Cat", "7"));
    EXPECT_EQ(Row(1, 3), "122");
    EXPECT_EQ(scene.xsheet.Cell(1, 0).PosX(), 384) << "the drawing stays where it was";
    EXPECT_TRUE(model.moveSelection.IsLevelSelected(1)) << "the level has moved back";
    EXPECT_EQ(TakeHints(), Hints{static_cast<int>(structureAndPictureHint)});
    Undo();
    EXPECT_EQ(scene.xsheet.LevelCount(), 2);
    Redo();

    // Once more there is nothing to do.
    model.history.Close();
    prompter.Answer(std::vector<Path>{file});
    prompter.Answer(std::string("Cat"));
    exchange.AskAndImport();
    EXPECT_FALSE(CanUndo(model));
}

TEST_F(CSheetExchangeTest, ThePreviewTellsLevelsDrawingsAndTheFolderThatIsAskedFor) {
    const Path file = Write("in.csv", "Frame,New,Man,Dialogue\n1,7,1,Hello\n2,8,2,\n3,8,,\n");
    prompter.Answer(std::vector<Path>{file});
    CSheetImport import;
    CExchangeSheet sheetRead;
    ASSERT_TRUE(exchange.Read(file, ExchangeFormat::Csv, sheetRead));
    ASSERT_TRUE(exchange.Plan(sheetRead, "Cat", import));
    ASSERT_EQ(import.tracks.size(), 2U);
    const CImportedTrack& added = import.tracks[0];
    EXPECT_TRUE(added.isNew && added.usesGivenFolder && import.UsesGivenFolder());
    EXPECT_EQ(added.drawings, (std::set<std::string>{"7"}));
    EXPECT_EQ(added.missing, (std::map<std::string, int>{{"8", 2}}));
    EXPECT_EQ(added.changedCells, 1);
    EXPECT_FALSE(import.tracks[1].isNew || import.tracks[1].usesGivenFolder);
    EXPECT_EQ(import.tracks[1].changedCells, 2);
    EXPECT_EQ(import.sheetChanges,
              (Texts{"Length: 6 frames before, 3 after", "Dialogue: 0 lines before, 1 after"}));
    EXPECT_EQ(import.sheetLosses, Texts());
}

TEST_F(CSheetExchangeTest, WhatCannotBeReadOrHasNoRoomChangesNothing) {
    const CScene before = scene;
    std::string wide = "Frame";
    for (int level = 0; level < 48; ++level)
        wide += ",New " + std::to_string(level);
    for (const Path& file :
         {Write("a.csv", "nothing"), Write("b.xdts", "{}"), folder / "none.csv", Write("c.csv", wide + "\n1\n")}) {
        prompter.Answer(std::vector<Path>{file});
        exchange.AskAndImport();
        EXPECT_EQ(prompter.TakeMessages().size(), 1U) << file;
        EXPECT_EQ(scene, before);
    }
    EXPECT_FALSE(CanUndo(model));
}

} // namespace
} // namespace velmor::testing
