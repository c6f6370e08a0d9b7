#include "DialogDriver.h"
#include "TempFolder.h"
#include "scene/DialogRequests.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QTableWidget>

namespace velmor::testing {
namespace {

class CExchangeDialogsTest : public CDialogFixture {
protected:
    static std::string Cell(QDialog& dialog, const char* table, int row, int column) {
        return Child<QTableWidget>(dialog, table).item(row, column)->text().toStdString();
    }
    static std::string Row(QDialog& dialog, const char* table, int row) {
        QStringList texts;
        for (int column = 0; column < Child<QTableWidget>(dialog, table).columnCount(); ++column)
            texts.append(Child<QTableWidget>(dialog, table).item(row, column)->text());
        return texts.join('|').toStdString();
    }
};

CSheetImportRequest SheetRequest() {
    CSheetImportRequest request{"cut.xdts", {"Cat", "Fox"}, "Fox", {}};
    request.preview = [](const std::string& folder) {
        CSheetImport import;
        import.tracks.push_back({"Fox", false, 1, {"1", "2"}, {{"9", 2}, { "10", 1 }}, false});
        import.tracks.push_back({"New", true, 24, {"1"}, {}, true});
        if (folder == "Cat")
            return import; // nothing changes
        import.changes = {"Length: 8 frames before, 24 after", "New level \"New\""};
        import.sheetChanges = {import.changes.front()};
        import.losses = {"x", "The camera work of the file is not taken"};
        import.sheetLosses = {import.losses.back()};
        return import;
    };
    return request;
}

TEST_F(CExchangeDialogsTest, AnImportIsSeenLevelByLevelBeforeItHappens) {
    std::optional<std::string> folder;
    WithDialog([&] { folder = prompter.Ask(SheetRequest()); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(Row(dialog, "tracks", 0),
                             "Fox|1 cell changes|2 in the scene|10, 9 (3 cells stay empty)");
                   EXPECT_EQ(Row(dialog, "tracks", 1), "New|new level, 24 cells|1 in the scene|");
                   EXPECT_EQ(LabelOf(dialog, "changes"), "Length: 8 frames before, 24 after");
                   auto& losses = Child<QListWidget>(dialog, "losses");
                   EXPECT_TRUE(losses.isVisible() && losses.count() == 1);
                   EXPECT_TRUE(dynamic_cast<CDialog&>(dialog).OkButton().isEnabled());
                   auto& box = Child<QComboBox>(dialog, "folder");
                   EXPECT_TRUE(box.isVisible());
                   box.setCurrentText("Cat");
                   EXPECT_EQ(LabelOf(dialog, "changes"), "Nothing changes");
                   EXPECT_FALSE(losses.isVisible());
                   EXPECT_FALSE(dynamic_cast<CDialog&>(dialog).OkButton().isEnabled());
                   box.setCurrentText("Fox");
                   PressOk(dialog);
               });
    EXPECT_EQ(folder, "Fox");
}

TEST_F(CExchangeDialogsTest, AFolderIsAskedForOnlyWhereOneIsNeeded) {
    CSheetImportRequest request = SheetRequest();
    request.preview = [](const std::string&) { return CSheetImport{}; };
    WithDialog([&] { prompter.Ask(request); },
               [](QDialog& dialog) {
                   EXPECT_FALSE(Child<QComboBox>(dialog, "folder").isVisible());
                   dialog.reject();
               });
}

TEST_F(CExchangeDialogsTest, AnExportSaysWhatIsLostAndAsksForTheFormat) {
    std::optional<ExchangeFormat> format;
    WithDialog(
        [&] {
            format = prompter.Ask(CSheetExportRequest{ExchangeFormat::Xdts, 3, 1, 0, {"The camera is not in it"}});
        },
        [&](QDialog& dialog) {
            EXPECT_EQ(LabelOf(dialog, "extent"), "3 levels, 1 frame, 0 sounds");
            EXPECT_EQ(Child<QListWidget>(dialog, "losses").item(0)->text(), "The camera is not in it");
            Choose(dialog, "format", 1);
            PressOk(dialog);
        });
    EXPECT_EQ(format, ExchangeFormat::Csv);
}

class CSequenceDialogTest : public CExchangeDialogsTest {
protected:
    CSequenceDialogTest() {
        request.initial.files = {"/in/d9.png", "/in/d10.png", "/in/d2.png"};
        request.initial.folder = "Dog";
        request.initial.pictures = "d";
        request.initial.level = 1;
        request.initial.frame = 4;
        request.folders = {"Cat", "Dog"};
        request.levelNames = {"Ink", "Paint"};
        request.read = [this](const CSequence& sequence, const Path& file) {
            reads.push_back(Utf8Of(file.filename()) + " " + std::to_string(sequence.lines.threshold));
            CImportedImage read;
            if (file == "/in/d9.png")
                read.status = CStatus::Failure("Error : d9.png is corrupted!");
            else
                static_cast<void>(read.image.CreateCel(40, 30, "x"));
            read.specks = sequence.lines.specks;
            return read;
        };
        request.exists = [](const CSequence&, const std::string& name) { return name == "10"; };
        request.exposure = [](const CSequence& sequence) {
            return sequence.isExposed ? "From frame " + std::to_string(sequence.frame + 1) : std::string();
        };
    }

    static bool Shows(QDialog& dialog, const std::string& text) {
        return QTest::qWaitFor([&] { return LabelOf(dialog, "previewText") == text; });
    }

    CSequenceRequest request;
    std::vector<std::string> reads;
};

TEST_F(CSequenceDialogTest, ListsWhatTheFilesBecomeAndShowsThem) {
    WithDialog([&] { prompter.Ask(request); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(Row(dialog, "files", 0), "d2.png|2|");
                   EXPECT_EQ(Row(dialog, "files", 1), "d9.png|9|");
                   EXPECT_EQ(Row(dialog, "files", 2), "d10.png|10|replaces one");
                   EXPECT_EQ(LabelOf(dialog, "gaps"), "3 files, missing: 3-8");
                   EXPECT_TRUE(Shows(dialog, "40 x 30 pixels"));
                   EXPECT_EQ(reads.front(), "d2.png 128");
                   Type(dialog, "threshold", "50");
                   Type(dialog, "specks", "1");
                   EXPECT_TRUE(Shows(dialog, "40 x 30 pixels, 1 speck left out"));
                   EXPECT_EQ(reads.back(), "d2.png 50");
                   Child<QTableWidget>(dialog, "files").setCurrentCell(1, 0);
                   EXPECT_TRUE(Shows(dialog, "Error : d9.png is corrupted!"));
                   Choose(dialog, "kind", 1);
                   EXPECT_EQ(Row(dialog, "files", 0), "d2.png|d2|");
                   Child<QCheckBox>(dialog, "counts").click();
                   Type(dialog, "firstNumber", "0");
                   EXPECT_EQ(Cell(dialog, "files", 0, 1), "?");
                   Type(dialog, "firstNumber", "7");
                   EXPECT_EQ(Row(dialog, "files", 0), "d9.png|d7|") << "as they were chosen";
                   dialog.reject();
               });
}

TEST_F(CSequenceDialogTest, AnswersWhatWasChosen) {
    std::vector<CSequence> offered;
    request.accept = [&](const CSequence& sequence) {
        offered.push_back(sequence);
        return sequence.hold == 2;
    };
    std::optional<CSequence> answer;
    WithDialog([&] { answer = prompter.Ask(request); },
               [&](QDialog& dialog) {
                   EXPECT_EQ(LabelOf(dialog, "result"), "");
                   EXPECT_FALSE(Child<QLineEdit>(dialog, "frame").isEnabled());
                   auto& exposure = Child<QGroupBox>(dialog, "exposure");
                   exposure.setChecked(true);
                   EXPECT_EQ(LabelOf(dialog, "result"), "From frame 5");
                   Type(dialog, "frame", "8");
                   Type(dialog, "hold", "");
                   Child<QCheckBox>(dialog, "holdsGaps").click();
                   PressOk(dialog);
                   EXPECT_TRUE(dialog.isVisible()) << "refused";
                   Type(dialog, "hold", "2");
                   Child<QComboBox>(dialog, "folder").setEditText(" New ");
                   Child<QComboBox>(dialog, "level").setCurrentIndex(2);
                   PressOk(dialog);
               });
    ASSERT_TRUE(answer);
    EXPECT_EQ(offered.front().hold, 0);
    CSequence expected = request.initial;
    expected.folder = expected.levelName = "New";
    expected.isExposed = expected.holdsGaps = true;
    expected.level.reset();
    expected.frame = 7;
    expected.hold = 2;
    EXPECT_EQ(*answer, expected);
}

} // namespace
} // namespace velmor::testing
