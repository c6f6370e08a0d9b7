#include "xsheet/exchange/SheetCsv.h"
#include "xsheet/exchange/SheetExport.h"
#include "xsheet/exchange/SheetImport.h"
#include "xsheet/exchange/Xdts.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace velmor {
namespace {

using Texts = std::vector<std::string>;

std::span<const std::uint8_t> BytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

CXSheetCell CellOf(const std::string& folder, const std::string& name, double x = 32) {
    return CXSheetCell::FromFile(folder, name, {x, 24, 1, 1, 0}, 0, 1, 1, {10, 10});
}

/// A sheet of three levels and 8 frames; "." is an empty cell, a digit a drawing of folder "Fox", a letter one of
/// other kinds.
class SheetExchange : public ::testing::Test {
protected:
    SheetExchange() {
        assets.frame = {64, 48};
        assets.images = {{"Fox", {"1", "2", "3", "7"}}, {"Cat", {"1", "walk"}}, {"_Pictures_", {"Sky"}}};
        assets.sounds = {"Meow", "Tick", "x"};
        SetRow(0, "Fox", "..1123.1");
        SetRow(1, "Fox", "1wsC22..");
        SetRow(2, "Back", "ssssssss");
    }

    void SetRow(int level, const std::string& name, const std::string& row) {
        sheet.SetLevelName(level, name);
        for (int frame = 0; frame < 8; ++frame) {
            const char c = row[static_cast<std::size_t>(frame)];
            CXSheetCell& cell = sheet.MutableCell(level, frame);
            if (c == 'w')
                cell = CellOf("Cat", "walk");
            else if (c == 'C')
                cell = CellOf("Cat", "1");
            else if (c == 's')
                cell = CellOf("_Pictures_", "Sky");
            else if (c != '.')
                cell = CellOf("Fox", std::string(1, c), 10 + frame);
        }
    }

    static std::string Row(const CXSheet& xsheet, int level) {
        std::string row;
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
            row += xsheet.Cell(level, frame).IsUsed() ? xsheet.Cell(level, frame).CelName().front() : '.';
        return row;
    }

    CExchangeSheet Exported() const {
        return ExportSheet("Cut 12", sheet, sounds, [](const std::string&) { return 3; });
    }

    CSheetImport Imported(const CExchangeSheet& from) const {
        CSheetImport import;
        EXPECT_TRUE(ImportSheet(from, sheet, sounds, dialogue, assets, import));
        return import;
    }

    CXSheet sheet{3, 8};
    std::vector<CSoundPlacement> sounds{{5, "Meow"}, {1, "x"}};
    CDialogue dialogue;
    CSceneAssets assets;
};

TEST_F(SheetExchange, AWayThereAndBackChangesNothing) {
    const CExchangeSheet exported = Exported();
    EXPECT_EQ(exported.tracks[1].cells[1], "Cat/walk");
    EXPECT_EQ(exported.tracks[2].cells[0], "_Pictures_/Sky");
    CExchangeSheet xdts, csv;
    ASSERT_TRUE(ReadXdts(BytesOf(WriteXdts(exported)), xdts));
    ASSERT_TRUE(ReadSheetCsv(BytesOf(WriteSheetCsv(exported)), csv));
    EXPECT_EQ(xdts, exported);
    csv.name = exported.name;
    EXPECT_EQ(csv, exported);
    const CSheetImport import = Imported(xdts);
    EXPECT_EQ(import.changes, Texts());
    EXPECT_EQ(import.losses, Texts());
    EXPECT_EQ(import.xsheet, sheet);
    EXPECT_EQ(import.sounds, sounds);
}

TEST_F(SheetExchange, DialogueGoesThereAndBackBesideTheSounds) {
    dialogue.Set({{0, 1, "Ann: a", "Hello"}, {2, 4, "", "x"}, {7, 7, "", std::string(250, 'a')}});
    sounds[0].trimIn = 100;
    CExchangeSheet exported = Exported();
    AddDialogue(dialogue, exported);
    CExchangeSheet xdts, csv;
    ASSERT_TRUE(ReadXdts(BytesOf(WriteXdts(exported)), xdts));
    ASSERT_TRUE(ReadSheetCsv(BytesOf(WriteSheetCsv(exported)), csv));
    EXPECT_EQ(xdts, exported);
    const std::string cut = xdts.spoken.back().text;
    EXPECT_EQ(cut, std::string(cut.size(), 'a'));
    dialogue.Set({{0, 1, "Ann: a", "Hello"}, {7, 7, "", cut}});
    CSheetImport import = Imported(xdts);
    EXPECT_EQ(import.changes, Texts{"Dialogue: 2 lines before, 3 after"}) << "though one is called like a sound";
    EXPECT_EQ(import.sounds, sounds) << "as they were trimmed";
    dialogue = import.dialogue;
    EXPECT_EQ(Imported(xdts).changes, Texts());

    exported.spoken.erase(exported.spoken.begin() + 1);
    ASSERT_TRUE(ReadSheetCsv(BytesOf(WriteSheetCsv(exported)), csv));
    dialogue.Set({});
    import = Imported(csv);
    EXPECT_EQ(import.dialogue.Lines().front(), (CSpokenLine{0, 1, "Ann", "a: Hello"}));
    EXPECT_EQ(import.sounds, sounds) << "of which a table with dialogue says nothing";
}

TEST_F(SheetExchange, InbetweenMarksTravelInADigitalTimeSheet) {
    const CXSheet bare = sheet;
    const CSheetNote inbetween{SheetMark::Inbetween, NoteColor::None, {}};
    for (const int frame : {0, 3, 7}) // empty, held, and where a drawing begins
        sheet.MutableCell(0, frame).SetNote(inbetween);
    sheet.MutableCell(2, 4).SetNote({SheetMark::Key, NoteColor::Red, "Sun"});
    const CExchangeSheet exported = Exported();
    EXPECT_EQ(exported.tracks[0].inbetweens, (std::set<int>{0, 3}));
    CExchangeSheet xdts;
    ASSERT_TRUE(ReadXdts(BytesOf(WriteXdts(exported)), xdts));
    EXPECT_EQ(xdts, exported);
    const CSheetImport same = Imported(xdts);
    EXPECT_EQ(same.changes, Texts());
    EXPECT_EQ(same.xsheet, sheet) << "what the file does not know stays";
    const Texts losses = LossesOfExport(sheet, {}, {64, 48});
    EXPECT_EQ(
        std::ranges::count_if(losses, [](const std::string& loss) { return loss.find("marks") != loss.npos; }), 2);
    sheet = bare;
    const CSheetImport import = Imported(xdts);
    EXPECT_EQ(import.changes, Texts{"Level \"Fox\": 2 cells change"});
    EXPECT_EQ(import.xsheet.Cell(0, 0).Note(), inbetween);
    EXPECT_EQ(import.xsheet.Cell(0, 3).Note(), inbetween);
    EXPECT_TRUE(import.xsheet.Cell(0, 7).Note().IsEmpty());
    for (const CExchangeTrack& track : Exported().tracks)
        EXPECT_TRUE(track.inbetweens.empty());
}

TEST_F(SheetExchange, WhatStaysKeepsItsPlaceAndTheRestIsSaid) {
    CExchangeSheet from = Exported();
    from.tracks[0].cells = {"1", "01", "1", "2", "3", "9", "", "1"};
    from.tracks.erase(from.tracks.begin() + 1); // leaves two tracks, one of its name
    from.tracks.insert(from.tracks.begin(), {" Cat ", {"1", "1", "", "", "", "", "", "2"}});
    from.tracks.push_back({"Sky/2", Texts(8)});
    from.lines = {{0, 2, "Fox", "Tick"}, {4, 8, "", "unknown"}};
    const CSheetImport import = Imported(from);
    EXPECT_EQ(import.changes, (Texts{"New level \"Sky/2\"", "New level \"Cat\"", "Level \"Cat\": 2 cells change",
                                     "Level \"Fox\": 5 cells change", "Sounds: 2 placed before, 1 after",
                                     "Dialogue: 0 lines before, 1 after"}));
    EXPECT_EQ(import.losses, (Texts{"Level \"Cat\": there is no drawing 2, 1 cell stays empty",
                                    "Level \"Fox\": there is no drawing 9, 1 cell stays empty"}));
    EXPECT_EQ(import.dialogue.Lines(), (std::vector<CSpokenLine>{{4, 7, "", "unknown"}}));
    ASSERT_EQ(import.xsheet.LevelCount(), 5);
    EXPECT_EQ(import.xsheet.LevelName(0), "Cat");
    EXPECT_EQ(import.xsheet.LevelName(1), "Sky/2");
    EXPECT_EQ(Row(import.xsheet, 2), "11123..1");
    EXPECT_EQ(import.xsheet.Cell(2, 2), sheet.Cell(0, 2)) << "the drawing stays";
    EXPECT_EQ(import.xsheet.Cell(2, 7), sheet.Cell(0, 7));
    EXPECT_EQ(import.xsheet.Cell(2, 0).PosX(), 12) << "where it is exposed nearest";
    EXPECT_EQ(import.xsheet.Cell(2, 4).PosX(), 15);
    EXPECT_EQ(import.xsheet.Cell(0, 0).FolderName(), "Cat");
    EXPECT_EQ(import.xsheet.Cell(0, 0).PosX(), 32) << "a new one is centred";
    for (int level = 1; level < 3; ++level)
        EXPECT_EQ(Row(import.xsheet, level + 2), Row(sheet, level)) << "levels without a track stay";
}

TEST_F(SheetExchange, LengthAndNumberOfLevelsHaveLimits) {
    CExchangeSheet from = Exported();
    from.frameCount = 5;
    for (CExchangeTrack& track : from.tracks)
        track.cells.resize(5);
    from.lines.clear();
    from.hasDialogue = false;
    const CSheetImport import = Imported(from);
    EXPECT_EQ(import.changes, Texts{"Length: 8 frames before, 5 after"});
    EXPECT_EQ(Row(import.xsheet, 0), "..112");
    EXPECT_EQ(import.sounds, (std::vector<CSoundPlacement>{{1, "x"}}));

    CSheetImport untouched;
    from.tracks.resize(50, {"New", Texts(5)});
    EXPECT_FALSE(ImportSheet(from, sheet, sounds, dialogue, assets, untouched));
    from.tracks.resize(3);
    from.frameCount = 2000;
    EXPECT_FALSE(ImportSheet(from, sheet, sounds, dialogue, assets, untouched));
}

TEST_F(SheetExchange, WhatAFileCannotHoldIsSaidBefore) {
    CCameraTrack camera;
    EXPECT_EQ(
        LossesOfExport(sheet, camera, {64, 48}),
        (Texts{"Level \"Fox\": positions, scales and rotations are not in the file",
               "Level \"Fox\": positions, scales and rotations are not in the file",
               "Level \"Fox\": pictures and drawings of other folders have names that other programs may not "
               "know",
               "Level \"Back\": pictures and drawings of other folders have names that other programs may not "
               "know"}));
    CXSheet plain(1, 4);
    plain.MutableCell(0, 1) = CXSheetCell::FromFile("Fox", "12a", {32, 24, 1, 1, 0}, 20, 1, 1, {10, 10});
    camera.MutableAt(2).zoom = 2;
    EXPECT_EQ(LossesOfExport(plain, camera, {64, 48}),
              (Texts{"Level \"\": transparency and blur are not in the file", "The camera is not in the file"}));
}

const std::string head = "exchangeDigitalTimeSheet Save Data\n";

TEST(Xdts, ReadsWhatOtherProgramsWrite) {
    CExchangeSheet sheet;
    ASSERT_TRUE(ReadXdts(BytesOf(R"(exchangeDigitalTimeSheet Save Data
{"timeTables":[{"duration":8,"name":"7","fields":[
 {"fieldId":0,"tracks":[
  {"trackNo":2,"frames":[{"frame":6,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]},
   {"frame":3,"data":[{"id":0,"values":["SYMBOL_TICK_1"]}]},{"frame":-3,"data":[{"id":0,"values":["1"]}]},
   {"frame":-1,"data":[{"id":0,"values":["2"]}]},{"frame":4,"data":[{"id":0,"values":["12a"]}]},
   {"frame":5,"data":[{"id":0,"values":["SYMBOL_HYPHEN"]}]},{"frame":99,"data":[{"id":0,"values":["3"]}]},
   {"frame":"x","data":7},{"frame":2,"data":[]},5]},
  {"trackNo":0,"frames":[{"frame":2,"data":[{"id":0,"values":["5"]}]}]},{"trackNo":-1},{}]},
 {"fieldId":3,"tracks":[{"trackNo":0,"frames":[{"frame":1,"data":[{"id":0,"values":["Fox","Meow"]}]},
   {"frame":3,"data":[{"id":0,"values":["SYMBOL_NULL_CELL"]}]},{"frame":5,"data":[{"id":0,"values":["Tick"]}]}]}]},
 {"fieldId":5,"tracks":[{"trackNo":0,"frames":[]}]},{"fieldId":"?"}],
 "timeTableHeaders":[{"fieldId":0,"names":["BG"," A ","A",3]}]}]})"),
                         sheet));
    EXPECT_EQ(sheet.frameCount, 8);
    ASSERT_EQ(sheet.tracks.size(), 4U);
    EXPECT_EQ(sheet.tracks[0].name, "Track 4");
    EXPECT_EQ(sheet.tracks[1], (CExchangeTrack{"A", {"2", "2", "2", "2", "12a", "12a", "", ""}, {3}}));
    EXPECT_EQ(sheet.tracks[2].name, " A ");
    EXPECT_EQ(sheet.tracks[3], (CExchangeTrack{"BG", {"", "", "5", "5", "5", "5", "5", "5"}}));
    EXPECT_EQ(sheet.lines, (std::vector<CExchangeLine>{{1, 3, "Fox", "Meow"}, {5, 8, "", "Tick"}}));
    EXPECT_TRUE(sheet.hasCamera);
}

TEST(Xdts, WritesNoEndAfterADrawingThatHoldsToTheEnd) {
    const std::string text =
        WriteXdts({"Cut 12345", 4, {{"A", {"", "1", "1", "1"}}, {"B", {"1", "1", "", ""}}}, {}, false, false});
    EXPECT_TRUE(text.starts_with(head));
    EXPECT_NE(text.find("\"cut\": \"1234\""), std::string::npos);
    const std::size_t first = text.find("SYMBOL_NULL_CELL");
    EXPECT_NE(first, std::string::npos);
    EXPECT_EQ(text.find("SYMBOL_NULL_CELL", first + 1), std::string::npos);
}

TEST(Xdts, RefusesWhatIsNoSheetAndKeepsTheOneBefore) {
    CExchangeSheet sheet;
    sheet.name = "before";
    const std::string deep = std::string(200000, '[');
    for (const std::string& text :
         {std::string(), std::string("{}"), head, head + "{", head + "[]", head + "{\"timeTables\":[]}",
          head + "{\"timeTables\":[{\"duration\":0}]}", head + "{\"timeTables\":[{\"duration\":2001}]}",
          head + "{\"timeTables\":[{\"duration\":1e9}]}",
          head + "{\"timeTables\":[{\"duration\":99999999999999999999}]}",
          head + R"({"timeTables":[{"duration":5,"fields":[{"fieldId":0,"tracks":[{"trackNo":1000000}]}]}]})",
          head + deep, head + "{\"timeTables\":[{\"duration\":5,\"name\":\"\xff\"}]}"}) {
        EXPECT_FALSE(ReadXdts(BytesOf(text), sheet)) << text.substr(0, 100);
        EXPECT_EQ(sheet.name, "before");
    }
}

TEST(SheetCsv, IsWhatASpreadsheetShows) {
    CExchangeSheet sheet{"c", 4,     {{"A, \"1\"", {"", "1", "1", ""}}, {"Dialogue", {"2", "2", "2", "2"}}},
                         {},  false, false};
    const std::string text = WriteSheetCsv(sheet);
    EXPECT_EQ(text, "\xEF\xBB\xBF"
                    "Frame,\"A, \"\"1\"\"\",Dialogue,Dialogue\r\n1,,2,\r\n2,1,,\r\n3,,,\r\n4,x,,\r\n");
    CExchangeSheet read;
    ASSERT_TRUE(ReadSheetCsv(BytesOf(text), read));
    EXPECT_EQ(read.tracks, sheet.tracks);
    ASSERT_TRUE(ReadSheetCsv(BytesOf("Frame;A;B\n1;\"1\";\n2; X ;3\n3\n\n"), read));
    EXPECT_EQ(read.tracks, (std::vector<CExchangeTrack>{{"A", {"1", "", ""}}, {"B", {"", "3", "3"}}}));
}

TEST(SheetCsv, TitlesMayHoldAnything) {
    const CExchangeSheet sheet{"", 1, {{";;;\n;", {"1"}}, {"a\tb", {"2"}}, {" Dialogue", {"3"}}}, {}, false, false};
    CExchangeSheet read;
    ASSERT_TRUE(ReadSheetCsv(BytesOf(WriteSheetCsv(sheet)), read));
    EXPECT_EQ(read.tracks, sheet.tracks);
}

TEST(SheetCsv, RefusesWhatIsNoTable) {
    CExchangeSheet sheet;
    std::string rows;
    for (int i = 0; i < 2001; ++i)
        rows += "1\n";
    for (const std::string& text :
         {std::string(), std::string("Frame"), std::string("Level,A\n1,2\n"), std::string("Frame,A\n1,\"2\n"),
          std::string("Frame,A\n1,\"2\"x\n"), "Frame" + std::string(60, ',') + "\n1\n",
          "Frame,A\n1," + std::string(300, 'a') + "\n", "Frame,A\n" + rows})
        EXPECT_FALSE(ReadSheetCsv(BytesOf(text), sheet)) << text.substr(0, 100);
}

} // namespace
} // namespace velmor
