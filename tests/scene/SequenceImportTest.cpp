#include "scene/SequenceImport.h"

#include "AssetScene.h"
#include "platform/files/PngFile.h"
#include "scene/DialogRequests.h"
#include "scene/SequenceOperations.h"
#include "scene/Settings.h"

#include <limits>

namespace velmor::testing {
namespace {

class CSequenceImportTest : public CAssetScene {
protected:
    CSequenceImportTest() { SetLevels(2, 10); }

    /// A file of 6 x 4 grey pixels, with a black one in its bottom left corner.
    Path Make(const std::string& name) {
        std::vector<std::uint8_t> pixels(std::size_t{6} * 4 * 4, 200);
        for (std::size_t i = 3; i < pixels.size(); i += 4)
            pixels[i] = 255;
        std::fill_n(pixels.end() - 24, 3, std::uint8_t{0});
        EXPECT_TRUE(WritePng(folder / name, {6, 4, 4, pixels}));
        return folder / name;
    }
    Path MakeBroken(const std::string& name) {
        WriteBytes(folder / name, std::vector<std::uint8_t>{1, 2, 3});
        return folder / name;
    }
    static CSequence Of(std::vector<Path> files) {
        CSequence sequence;
        sequence.files = std::move(files);
        sequence.folder = "Man";
        return sequence;
    }
    static Texts NamesOf(const CSequence& sequence) {
        Texts names;
        for (const CSequenceImage& image : ImagesOf(sequence).value_or(std::vector<CSequenceImage>()))
            names.push_back(Utf8Of(image.file.filename()) + "=" + image.name);
        return names;
    }
    bool HasCel(const std::string& name) const { return FileExists(CelFile(name)); }

    CSequenceImport sequences{Context(), lifecycle, imports};
    CSequenceOperations operations{Context(), sequences};
};

TEST_F(CSequenceImportTest, NumbersComeFromNamesOrAreCounted) {
    CSequence sequence = Of({"a_010.png", "b9.tga", "shot2_0002.PNG"});
    EXPECT_EQ(NamesOf(sequence), (Texts{"shot2_0002.PNG=2", "b9.tga=9", "a_010.png=10"}));
    EXPECT_EQ(MissingNumbers(*ImagesOf(sequence)), "3-8");
    sequence.files.push_back("5.bmp");
    sequence.files.push_back("7.bmp");
    EXPECT_EQ(MissingNumbers(*ImagesOf(sequence)), "3-4, 6, 8");
    std::vector<CSequenceImage> onTwos;
    for (int number = 1; number < 60; number += 2)
        onTwos.push_back({{}, number, {}});
    EXPECT_EQ(MissingNumbers(onTwos), "2, 4, 6, 8, 10, 12, 14, 16, 18, 20, ...");
    for (const char* refused : {"x.png", "0.png", "00.png", "c09.png", "99999999999.png"}) {
        sequence.files.back() = refused;
        EXPECT_FALSE(ImagesOf(sequence)) << refused;
    }
    sequence.firstNumber = 20;
    sequence.kind = SourceMode::Pictures;
    sequence.pictures = "sky";
    EXPECT_EQ(NamesOf(sequence), (Texts{"a_010.png=sky20", "b9.tga=sky21", "shot2_0002.PNG=sky22", "5.bmp=sky23",
                                        "99999999999.png=sky24"}));
    sequence.firstNumber = std::numeric_limits<int>::max() - 2;
    EXPECT_FALSE(ImagesOf(sequence));
    sequence.firstNumber = 0;
    EXPECT_FALSE(ImagesOf(sequence));

    EXPECT_EQ(SequenceStem({"/in/The_Dog-_0010.png"}), "The Dog");
    EXPECT_EQ(SequenceStem({"0010.png"}), "");
    EXPECT_EQ(SequenceStem({"\xC3\x84l1.png"}), "l");
}

TEST_F(CSequenceImportTest, IsExposedAtTheCursorInOneStep) {
    CSequence sequence = Of({Make("d2.png"), Make("d5.png"), Make("d1.png")});
    sequence.isExposed = true;
    sequence.level = 1;
    sequence.frame = 7;
    sequence.hold = 2;
    Put(1, 8, "9");
    EXPECT_EQ(ExposureText(sequence, scene.xsheet),
              "Frames 8 to 13, in place of 1 cell; the xsheet grows from 10 frames");
    EXPECT_TRUE(sequences.Import(sequence));
    EXPECT_EQ(Row(1, scene.xsheet.FrameCount()), ".......112255");
    EXPECT_EQ(scene.xsheet.Cell(1, 7).Size(), (CSize{6, 4}));
    EXPECT_EQ(model.history.NextUndo()->heading.name, "Import Sequence");
    Undo();
    EXPECT_EQ(scene.xsheet.FrameCount(), 10);
    EXPECT_EQ(Row(1, 10), "........9.");
    EXPECT_FALSE(HasCel("1") || HasCel("2") || HasCel("5"));
    EXPECT_FALSE(CanUndo(model));
    Redo();
    EXPECT_EQ(Row(1, scene.xsheet.FrameCount()), ".......112255");
    EXPECT_TRUE(HasCel("1") && HasCel("2") && HasCel("5"));

    sequence.level.reset();
    sequence.levelName = "Dog";
    sequence.frame = 0;
    sequence.holdsGaps = true;
    EXPECT_TRUE(sequences.Import(sequence));
    ASSERT_EQ(scene.xsheet.LevelCount(), 3);
    EXPECT_EQ(scene.xsheet.LevelName(0), "Dog");
    EXPECT_EQ(Row(0, 13), "11222222"
                          "55...")
        << "2 stays for 3 and 4 as well";
    EXPECT_EQ(prompter.messages, Texts());
}

TEST_F(CSequenceImportTest, WhatFailsIsToldWithItsNameAndTheRestComes) {
    CSequence sequence = Of({Make("d1.png"), MakeBroken("d2.png"), MakeBroken("d3.gif"), Make("d4.png")});
    sequence.isExposed = true;
    sequence.level = 0;
    Put(0, 1, "9");
    EXPECT_FALSE(sequences.Import(sequence));
    ASSERT_EQ(prompter.messages.size(), 1U);
    EXPECT_EQ(prompter.messages.front(),
              "2 of 4 files could not be imported:\nd2.png: Error : d2.png is corrupted!\n"
              "d3.gif: Not a Targa, bitmap, PNG or TIFF file");
    EXPECT_EQ(Row(0, 5), "19.4.");
    EXPECT_FALSE(HasCel("2"));
}

TEST_F(CSequenceImportTest, StoppedItKeepsWhatIsDoneAndLeavesTheSheet) {
    CSequence sequence = Of({Make("d1.png"), Make("d2.png"), Make("d3.png")});
    sequence.isExposed = true;
    sequence.level = 0;
    prompter.stopAtReport = 2;
    EXPECT_FALSE(sequences.Import(sequence));
    EXPECT_EQ(prompter.progressTexts, (Texts{"d1.png", "d2.png"}));
    EXPECT_TRUE(HasCel("1") && !HasCel("2"));
    EXPECT_EQ(Row(0, 3), "...");
    EXPECT_FALSE(model.history.NextUndo()->heading.changesScene);
    Undo();
    EXPECT_FALSE(HasCel("1"));
}

TEST_F(CSequenceImportTest, LinesFollowThresholdAndSpecksOfCelsAlone) {
    CSequence sequence = Of({Make("d1.png")});
    EXPECT_TRUE(sequences.Import(sequence));
    EXPECT_TRUE(Load(CelFile("1")).IsLine(0, 0));
    sequence.lines.specks = 1;
    EXPECT_TRUE(sequences.Import(sequence));
    EXPECT_FALSE(Load(CelFile("1")).IsLine(0, 0));
    sequence.lines = {210, 1};
    EXPECT_TRUE(sequences.Import(sequence));
    EXPECT_TRUE(Load(CelFile("1")).IsLine(3, 2));
    sequence.kind = SourceMode::Pictures;
    sequence.pictures = "sky";
    EXPECT_TRUE(sequences.Import(sequence));
    EXPECT_EQ(Load(PictureFile("sky1")).ColorAt(0, 0), (CColor{0, 0, 0, 255}));
    EXPECT_EQ(model.sourceMode, SourceMode::Pictures);
    EXPECT_EQ(ListFiles(folder.Path(), ".png"), Texts{"d1.png"});
    EXPECT_TRUE(ReadImportedImage(folder / "d1.png", SourceMode::Cels, {128, 1}).status)
        << "the file itself is as it was";
}

TEST_F(CSequenceImportTest, TheDialogProposesAndItsRuleRefuses) {
    const std::vector<Path> files{Make("cat_3.png"), Make("cat_4.png")};
    cursor.SetCursorX(1);
    cursor.SetCursorY(4);
    model.importThreshold = 99;
    prompter.Answer(files);
    prompter.Cancel();
    operations.AskAndImport();
    const auto request = std::any_cast<CSequenceRequest>(prompter.lastRequest);
    EXPECT_EQ(request.initial.folder, "Cat") << "called like the files";
    EXPECT_EQ(request.initial.pictures, "cat");
    EXPECT_EQ(request.initial.lines, (CLineRules{99, 0}));
    EXPECT_EQ(request.initial.frame, 4);
    EXPECT_EQ(request.initial.level, 1);
    EXPECT_FALSE(request.initial.isExposed);
    EXPECT_EQ(request.folders, (Texts{"Cat", "Man"}));

    for (const auto& [file, proposed] :
         {std::pair("scan_3.png", "Man"), {"scan_1.png", "scan"}, {"1.png", "Man"}}) {
        MakeCel(CelFile("1"), red);
        prompter.Answer(std::vector<Path>{folder / file});
        prompter.Cancel();
        operations.AskAndImport();
        EXPECT_EQ(std::any_cast<CSequenceRequest>(prompter.lastRequest).initial.folder, proposed) << file;
    }

    std::vector<CSequence> refused(7, request.initial);
    refused[0].folder = "a/b";
    refused[1].firstNumber = 0;
    refused[2].lines.threshold = -1;
    refused[3].lines.specks = 101;
    for (CSequence& sequence : refused)
        sequence.isExposed = true;
    refused[4].hold = 0;
    refused[5].frame = 1998;
    refused[6].frame = -1;
    for (const CSequence& sequence : refused) {
        prompter.TakeMessages();
        EXPECT_FALSE(request.accept(sequence));
        EXPECT_EQ(prompter.messages.size(), 1U);
        EXPECT_EQ(ExposureText(sequence, scene.xsheet), "");
    }
    prompter.TakeMessages();
    CSequence chosen = request.initial;
    chosen.folder = "New One";
    chosen.lines = {120, 2};
    chosen.hold = 3;
    prompter.Answer(files);
    prompter.Answer(CSequence(chosen));
    operations.AskAndImport();
    EXPECT_EQ(model.folderName, "New One");
    EXPECT_EQ(ListCelTitles(model.Paths(), "New One"), (Texts{"3", "4"}));
    EXPECT_EQ(model.importThreshold, 120);
    EXPECT_EQ(Get(profile, setting::importSpecks), 2);
    EXPECT_EQ(Get(profile, setting::lastSequenceHold), 3);
    EXPECT_EQ(prompter.messages, Texts());
    EXPECT_TRUE(request.exists(chosen, "3"));
    prompter.confirmations = {false};
    EXPECT_FALSE(request.accept(chosen));
    EXPECT_EQ(prompter.messages, Texts{"2 Cels Exist, Do you want to overwrite them ?"});
}

} // namespace
} // namespace velmor::testing
