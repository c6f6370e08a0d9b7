#include "scene/ImportOperations.h"

#include "SceneFixture.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"

#include <sstream>

using namespace velmor;
using Bytes = std::vector<std::uint8_t>;
using Hints = std::vector<int>;
using Texts = std::vector<std::string>;

namespace {

class CImportOperationsTest : public velmor::testing::CSceneFixture {
protected:
    CImportOperationsTest() {
        model.folderName = "Walk";
        static_cast<void>(CreateFolder(model.Paths().CelFolder("Walk")));
    }

    /// A grey Targa file, all of one value.
    Path MakeTarga(const std::string& name, std::uint8_t width, std::uint8_t height, std::uint8_t grey) {
        Bytes file{0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, width, 0, height, 0, 8, 0};
        file.insert(file.end(), static_cast<std::size_t>(width) * height, grey);
        velmor::testing::WriteBytes(folder / name, file);
        return folder / name;
    }
    CCelImg Load(SourceMode kind, const std::string& name) {
        CCelImg image;
        EXPECT_TRUE(image.Load(model.Paths().AssetFile(kind, "Walk", name)));
        return image;
    }

    CPaletteOperations palettes{Context()};
    CSoundOperations sounds{Context()};
    CSceneSaving saving{Context()};
    CSceneLifecycle lifecycle{Context(), palettes, sounds, saving};
    CImportOperations imports{Context(), lifecycle};
};

} // namespace

TEST_F(CImportOperationsTest, CelsAreNamedOneByOne) {
    model.sourceMode = SourceMode::Pictures;
    model.importThreshold = 100;
    const Path dark = MakeTarga("dark.tga", 4, 3, 99), light = MakeTarga("light.TGA", 2, 2, 100);
    prompter.Answer(std::vector<Path>{dark, dark, light, dark, dark});
    prompter.Answer(std::string("12"));
    prompter.Cancel(); // this file only
    prompter.Answer(std::string("012"));
    prompter.Answer(std::string("13"));
    prompter.Cancel(); // all that are left
    prompter.confirmations = {false, false, true};
    imports.AskAndImportCels();

    const std::string cancel = "Do you want to cancel the import operation ?";
    EXPECT_EQ((Texts{cancel, "Cel Exists, Do you want to overwrite it ?", cancel}), prompter.messages);
    EXPECT_EQ("14", std::any_cast<CNameRequest>(prompter.lastRequest).initial);
    EXPECT_EQ((Hints{2, 2}), TakeHints());
    EXPECT_EQ(SourceMode::Cels, model.sourceMode);
    const CCelImg lines = Load(SourceMode::Cels, "12"), paper = Load(SourceMode::Cels, "13");
    EXPECT_TRUE(lines.GetLoadState() == LoadState::Cel && lines.Width() == 4 && lines.IsLine(3, 2));
    EXPECT_FALSE(paper.IsLine(1, 1));
}

TEST_F(CImportOperationsTest, PicturesGoToTheirOwnFolder) {
    model.folderName.clear();
    prompter.Answer(std::vector<Path>{MakeTarga("sky.tga", 4, 3, 77)});
    prompter.Answer(std::string("blue sky"));
    prompter.Answer(std::string("Sky"));
    imports.AskAndImportPictures();
    EXPECT_EQ((CColor{77, 77, 77, 255}), Load(SourceMode::Pictures, "Sky").ColorAt(3, 2));
    EXPECT_EQ(SourceMode::Pictures, model.sourceMode);
    prompter.confirmations = {false};
    EXPECT_FALSE(imports.AcceptPictureName("Sky"));
    EXPECT_EQ((Texts{"The picture name should only consist of letters and numbers",
                     "Picture Exists, Do you want to overwrite it ?"}),
              prompter.messages);
}

// The first filter of the cels hides every drawing that can be read.
TEST_F(CImportOperationsTest, TheFileDialogStartsWithAllThatCanBeRead) {
    for (const bool cels : {true, false}) {
        cels ? imports.AskAndImportCels() : imports.AskAndImportPictures();
        const auto request = std::any_cast<COpenFilesRequest>(prompter.lastRequest);
        Texts parts;
        std::istringstream filter(request.filter);
        for (std::string part; std::getline(filter, part, '|');)
            parts.push_back(part);
        ASSERT_EQ(2 * (request.firstFilter + 1), parts.size() - 1) << "the last one";
        EXPECT_EQ("*.tga;*.bmp;*.png;*.tif;*.tiff", parts[2 * request.firstFilter + 1]);
    }
}

TEST_F(CImportOperationsTest, WhatCannotBeReadChangesNothing) {
    const Path file = MakeTarga("good.tga", 2, 2, 0);
    ASSERT_TRUE(imports.ImportCel(file, "1"));
    model.celImg = Load(SourceMode::Cels, "1");
    TakeHints();
    std::filesystem::resize_file(file, 19);
    EXPECT_FALSE(imports.ImportCel(file, "1"));
    EXPECT_FALSE(imports.ImportPicture(file, "Sky"));
    EXPECT_FALSE(imports.ImportCel(MakeTarga("drawing.vlw", 2, 2, 0), "1"));
    EXPECT_FALSE(imports.ImportPicture(file, ""));
    EXPECT_FALSE(imports.ImportCel(MakeTarga("drawing", 2, 2, 0), "1"));
    model.sceneOpen = false;
    imports.AskAndImportPictures();
    EXPECT_EQ(
        (Texts{"Error : good.tga is corrupted!", "Error in import", "Error : good.tga is corrupted!",
               "Error in import", "Error in import", "The picture name should only consist of letters and numbers",
               "Error in import", "Internal Error : OnSourcesImportcels called with no scene open"}),
        prompter.messages);
    EXPECT_TRUE(Load(SourceMode::Cels, "1").IsLine(1, 1));
    EXPECT_EQ(LoadState::Cel, model.celImg.GetLoadState());
    EXPECT_FALSE(FolderExists(model.Paths().PicturesFolder()));
    EXPECT_TRUE(hints.empty());
}

TEST_F(CImportOperationsTest, AReplacedCelIsReplacedEverywhere) {
    ASSERT_TRUE(imports.ImportCel(MakeTarga("old.tga", 4, 4, 0), "1"));
    model.celImg = Load(SourceMode::Cels, "1");
    model.celImg.SetModified(true);
    EXPECT_TRUE(scene.xsheet.MutableCell(0, 5).Set(model.Paths().SceneFolder(), "Walk", "1", {100, 100}));
    TakeHints();
    ASSERT_TRUE(imports.ImportCel(MakeTarga("new.tga", 6, 7, 255), "01"));
    EXPECT_EQ(LoadState::Nothing, model.celImg.GetLoadState());
    EXPECT_EQ(7, Load(SourceMode::Cels, "1").Height());
    EXPECT_EQ((CSize{6, 7}), scene.xsheet.Cell(0, 5).Size());
    EXPECT_EQ((Hints{1, 260, 2}), TakeHints());
}

TEST_F(CImportOperationsTest, TheThresholdIsRemembered) {
    for (const int threshold : {255, 0, 256, -1}) {
        prompter.Answer(threshold);
        imports.EditImportSettings();
    }
    EXPECT_EQ(0, model.importThreshold);
    EXPECT_EQ(0, Get(profile, setting::importThreshold));
    EXPECT_EQ(2U, prompter.messages.size());
}
