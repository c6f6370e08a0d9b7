#include "DialogDriver.h"
#include "TempFolder.h"
#include "scene/DialogRequests.h"
#include "scene/SceneManager.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <map>

namespace velmor::testing {
namespace {

/// What a dialog needs to open.
struct CStage {
    CQtPrompter& prompter;
    CProfile& profile;
    CSceneManager& manager;
};

struct CDialogRow {
    const char* name;
    void (*open)(CStage& stage);
};

const CCellIdentity cel{"12", "Fox", "Face", 3};
const std::vector<std::string> levels{"Ink", "Paint", "Sky"};

const CDialogRow dialogs[] = {
    {"message", [](CStage& s) { s.prompter.ShowVelmorMessage("Could not write to /a/b"); }},
    {"question", [](CStage& s) { static_cast<void>(s.prompter.Confirm("Are you sure?", Consequence::Undoable)); }},
    {"grave question", [](CStage& s) { static_cast<void>(s.prompter.Confirm("Are you sure?")); }},
    {"yes or no",
     [](CStage& s) { static_cast<void>(s.prompter.AskYesNo("Cel Exists, Do you want to overwrite it ?")); }},
    {"new scene",
     [](CStage& s) {
         s.prompter.Ask(CSceneSettingsRequest{true, {}, {}});
     }},
    {"scene settings",
     [](CStage& s) {
         s.prompter.Ask(CSceneSettingsRequest{false, {}, {}});
     }},
    {"open scene",
     [](CStage& s) {
         s.prompter.Ask(COpenSceneRequest{{"Run", "Walk"}});
     }},
    {"database folder", [](CStage& s) { s.prompter.Ask(CDatabaseFolderRequest{"/mnt/Database/"}); }},
    {"name",
     [](CStage& s) {
         s.prompter.Ask(CNameRequest{NameKind::Cel, "1", {}});
     }},
    {"new cel",
     [](CStage& s) {
         s.prompter.Ask(CNewCelRequest{{"1", {768, 576}}, {}});
     }},
    {"note",
     [](CStage& s) {
         s.prompter.Ask(CNoteRequest{"Fox, frame 12", true, {}, {}});
     }},
    {"frame note",
     [](CStage& s) {
         s.prompter.Ask(CNoteRequest{"Frame 12", false, {}, {}});
     }},
    {"note list",
     [](CStage& s) {
         s.prompter.Ask(CNoteListRequest{{{"Frame 12", {SheetMark::Key, NoteColor::Red, "Cut"}}}, 0});
     }},
    {"level",
     [](CStage& s) {
         s.prompter.Ask(CLevelRequest{"Delete which level?", levels});
     }},
    {"swap levels", [](CStage& s) { s.prompter.Ask(CSwapLevelsRequest{levels}); }},
    {"frame count",
     [](CStage& s) {
         s.prompter.Ask(CFrameCountRequest{"Add how many frames to the end ?", 1, {}});
     }},
    {"cel data",
     [](CStage& s) {
         s.prompter.Ask(CCellDataRequest{cel, {}, {}});
     }},
    {"blur",
     [](CStage& s) {
         s.prompter.Ask(CBlurRequest{cel, {}, {}});
     }},
    {"transparency",
     [](CStage& s) {
         s.prompter.Ask(CTransparencyRequest{cel, 50, {}});
     }},
    {"camera data",
     [](CStage& s) {
         s.prompter.Ask(CCameraDataRequest{3, {}});
     }},
    {"motion path", [](CStage& s) { s.prompter.Ask(CMotionPathRequest{1}); }},
    {"inbetween level",
     [](CStage& s) {
         s.prompter.Ask(CInbetweenRequest{false, "Face", 1, 25, {}});
     }},
    {"inbetween camera",
     [](CStage& s) {
         s.prompter.Ask(CInbetweenRequest{true, "", 1, 25, {}});
     }},
    {"line check",
     [](CStage& s) {
         s.prompter.RunLineCheck({100, 5, [](int) {}});
     }},
    {"color", [](CStage& s) { s.prompter.Ask(CColorRequest{}); }},
    {"replace color",
     [](CStage& s) {
         CReplaceColorRequest request;
         request.hasEdited = true;
         request.chosen = 2;
         request.all = 12;
         request.colors = {{{0, 0, 0, 255}, "Black"}, {{0, 0, 255, 255}, "A rather long name of a red"}};
         request.count = [](const CRecoloring&) { return std::int64_t{3145728}; };
         s.prompter.Ask(request);
     }},
    {"fill settings", [](CStage& s) { s.prompter.Ask(CFillSettingsRequest{}); }},
    {"import settings", [](CStage& s) { s.prompter.Ask(CImportSettingsRequest{128}); }},
    {"sheet export",
     [](CStage& s) {
         s.prompter.Ask(CSheetExportRequest{ExchangeFormat::Xdts, 3, 24, 1, {"The camera is not in the file"}});
     }},
    {"sheet import",
     [](CStage& s) {
         s.prompter.Ask(CSheetImportRequest{"cut.xdts", {"Cat", "Fox"}, "Fox", [](const std::string&) {
                                                CSheetImport import;
                                                import.tracks = {{ "Fox", true, 1, {"1"}, {{ "9", 2 }}, true }};
                                                import.changes = import.sheetChanges = {"Length: 8 before"};
                                                import.losses = import.sheetLosses = {"The camera is not taken"};
                                                return import;
                                            }});
     }},
    {"sound shape",
     [](CStage& s) {
         s.prompter.Ask(CSoundShapeRequest{"Meow", 3, 42.5, {1, 0.5, -6}, {}});
     }},
    {"dialogue",
     [](CStage& s) {
         s.prompter.Ask(CDialogueRequest{{2, 8, "Ann", "Hello"}, {"", "Ann"}, {}});
     }},
    {"mouths",
     [](CStage& s) {
         s.prompter.Ask(
             CMouthRequest{levels, {"Cat", "Fox"}, {1, "Fox", "a = 1\n", 2}, {}, [](const CMouthChoices&) {
                               return CMouthPreview{{}, {"Frames 1-2: 1"}, {"No drawing 9"}, true};
                           }});
     }},
    {"sequence",
     [](CStage& s) {
         CSequenceRequest request;
         request.initial.files = {"/in/d1.png", "/in/d2.png"};
         request.initial.isExposed = true;
         request.folders = {"Cat", "Fox"};
         request.levelNames = levels;
         s.prompter.Ask(request);
     }},
    {"clean up",
     [](CStage& s) {
         CCleanupRequest request;
         request.chosen = {"2"};
         request.all = {"1", "2", "3"};
         request.initial.cleanup.registers = true;
         s.prompter.Ask(request);
     }},
    {"flipbook",
     [](CStage& s) {
         s.prompter.Ask(CFlipbookRequest{levels, {{1}, 2, 9, 1, 50, 60, true}, {}, 10});
     }},
    {"render setup",
     [](CStage& s) {
         CRenderSetupRequest request;
         request.levelNames = levels;
         request.initial.directory = "/mnt/Database/Renders";
         request.initial.name = "Walk";
         s.prompter.Ask(request);
     }},
    {"rendered",
     [](CStage& s) {
         s.prompter.OfferRendered({"/mnt/Renders/Walk.avi", true, 100, {}});
     }},
    {"compressor",
     [](CStage& s) {
         s.prompter.Ask(CCompressorRequest{AvailableCompressors(), "MSVC"});
     }},
    {"rotate", [](CStage& s) { s.prompter.Ask(CRotationRequest{}); }},
    {"flip", [](CStage& s) { s.prompter.Ask(CFlipRequest{}); }},
    {"color key", [](CStage& s) { s.prompter.Ask(CColorKeyRequest{}); }},
    {"drop type",
     [](CStage& s) {
         CDropType choices(s.profile);
         static_cast<void>(s.prompter.Ask(CDropTypeRequest{{20, 20}, choices}));
     }},
    {"grid settings", [](CStage& s) { s.prompter.Ask(CGridSettingsRequest{}); }},
    {"pen settings", [](CStage& s) { s.prompter.Ask(CPenSettingsRequest{}); }},
    {"appearance",
     [](CStage& s) {
         s.prompter.Ask(CAppearanceRequest{Appearance::Light, [](Appearance) {}});
     }},
    {"onion skin",
     [](CStage& s) {
         s.prompter.Ask(COnionSkinRequest{{}, {}});
     }},
    {"history",
     [](CStage& s) {
         CHistoryEntry entry;
         entry.id = 1;
         entry.name = "Delete Cel";
         entry.canComeBack = true;
         s.prompter.RunHistory({"Walk", [entry] { return std::vector{entry}; }, {}, {}, {}, false});
     }},
    {"recovery",
     [](CStage& s) {
         CRecoveryRequest request;
         request.scene = "Walk";
         request.look = [] {};
         s.prompter.Ask(request);
     }},
    {"scene manager", [](CStage& s) { s.prompter.RunSceneManager(s.manager); }},
};

class CDialogTableTest : public CDialogFixture {
protected:
    void ForEach(const std::function<void(QDialog&)>& use) {
        for (const CDialogRow& row : dialogs) {
            SCOPED_TRACE(row.name);
            WithDialog([&] { row.open(stage); },
                       [&](QDialog& dialog) {
                           EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
                           use(dialog);
                       });
        }
    }
    template<class Widget>
    static std::vector<Widget*> Visible(QDialog& dialog) {
        std::vector<Widget*> found;
        for (Widget* widget : dialog.findChildren<Widget*>())
            if (widget->isVisible())
                found.push_back(widget);
        return found;
    }
    static std::string Described(const QWidget& widget) {
        return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString();
    }

    CTempFolder folder;
    CProfile profile;
    CSceneManager manager{folder.Path().string() + "/", prompter};
    CStage stage{prompter, profile, manager};
};

TEST_F(CDialogTableTest, EscapeLeavesAndReturnPressesOneButtonAtMost) {
    ForEach([](QDialog& dialog) {
        int defaults = 0;
        for (const QPushButton* button : Visible<QPushButton>(dialog))
            defaults += button->isDefault();
        EXPECT_LE(defaults, 1);
        ASSERT_NE(dialog.focusWidget(), nullptr);
        EXPECT_TRUE(dialog.focusWidget()->isEnabled());
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
}

TEST_F(CDialogTableTest, NoMnemonicBelongsToTwo) {
    ForEach([](QDialog& dialog) {
        std::map<QKeySequence, QString> owners;
        const auto take = [&](const QString& text) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            const bool isFree = key.isEmpty() || owners.emplace(key, text).second;
            EXPECT_TRUE(isFree) << text.toStdString() << " and " << owners[key].toStdString();
        };
        for (const QAbstractButton* button : Visible<QAbstractButton>(dialog))
            take(button->text());
        for (const QLabel* label : Visible<QLabel>(dialog))
            if (label->buddy() != nullptr)
                take(label->text());
    });
}

TEST_F(CDialogTableTest, EveryFieldSaysWhatItIs) {
    ForEach([](QDialog& dialog) {
        for (QWidget* widget : Visible<QWidget>(dialog)) {
            if ((widget->focusPolicy() & Qt::TabFocus) == 0 || widget->focusProxy() != nullptr)
                continue;
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            const auto names = [&](const QLabel* label) { return label->buddy() == widget; };
            const bool isNamed = !widget->accessibleName().isEmpty() ||
                                 (button != nullptr && !button->text().isEmpty()) ||
                                 std::ranges::any_of(Visible<QLabel>(dialog), names);
            EXPECT_TRUE(isNamed) << Described(*widget);
        }
    });
}

TEST_F(CDialogTableTest, NoTextIsCutOff) {
    ForEach([](QDialog& dialog) {
        const auto expectRoom = [](const QWidget& widget, QSize needed) {
            EXPECT_GE(widget.width(), needed.width()) << Described(widget);
            EXPECT_GE(widget.height(), needed.height()) << Described(widget);
        };
        for (const QAbstractButton* button : Visible<QAbstractButton>(dialog))
            expectRoom(*button, button->minimumSizeHint());
        for (const QLabel* label : Visible<QLabel>(dialog))
            expectRoom(*label, label->wordWrap() ? QSize(0, label->heightForWidth(label->width()))
                                                 : label->minimumSizeHint());
    });
}

} // namespace
} // namespace velmor::testing
