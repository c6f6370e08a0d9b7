#include "MainFrameFixture.h"
#include "PcmWave.h"
#include "RecordedOutput.h"
#include "qt/CelCanvas.h"
#include "qt/Patience.h"

#include "scene/PaletteOperations.h"
#include "scene/SceneSaving.h"
#include "scene/SheetExchange.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/preview/ScenePreview.h"
#include "views/cel/CelFrame.h"
#include "views/dialogs/MouthDialog.h"
#include "views/print/XSheetPrinter.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmor::testing {
namespace {

constexpr CSize page{320, 240};
constexpr int frameRate = 25;
constexpr int frames = 4 * frameRate;
constexpr int soundRate = 44100;    ///< as it was recorded
constexpr int transparentEntry = 2; ///< of every palette
constexpr ColorRef skin = MakeColorRef(250, 215, 160);

/// Four seconds of a voice, as far as a mouth has to know: it sounds where something is spoken.
const std::vector<CSpokenLine> spoken{
    {10, 21, "Fox", "hello"}, {30, 44, "Fox", "who"}, {60, 83, "Fox", "me a fool"}};

bool IsSpoken(int frame) {
    return std::ranges::any_of(
        spoken, [frame](const CSpokenLine& line) { return frame >= line.firstFrame && frame <= line.lastFrame; });
}

std::vector<CRealPoint> Ellipse(CRealPoint centre, double width, double height) {
    std::vector<CRealPoint> way;
    for (int i = 0; i <= 64; ++i) {
        const double angle = 2 * std::numbers::pi * i / 64;
        way.push_back({centre.x + width * std::cos(angle), centre.y + height * std::sin(angle)});
    }
    return way;
}

/// Makes a shot of somebody who speaks, as an animator does: from a sound and a text. With VELMOR_PICTURES naming a
/// folder, the pictures of docs/making-it-speak.md are written there.
class CLipSyncTest : public CMainFrameFixture {
protected:
    CLipSyncTest() {
        doc = std::make_unique<CVelmorltDoc>(prompter, profile, CDocumentFolders{folder.Path(), folder / "data"},
                                             std::make_unique<CRecordedAudio>(sound));
    }
    ~CLipSyncTest() override { EndFrame(); }

    CScenePreview& Preview() { return doc->Preview(); }
    const CXSheet& Sheet() { return doc->Model().Scene().xsheet; }
    CXSheetView& SheetView() { return Frame().XsheetPane().View(); }
    CCelCanvas Hand() { return {Frame().CelPane().View(), page}; }

    void Type(const char* text) {
        for (const char* letter = text; *letter != 0; ++letter)
            Key(*letter == '\n' ? static_cast<int>(Qt::Key_Return) : *letter);
    }
    void NewFolder(const char* name) {
        prompter.Answer(std::string(name));
        Run(CommandId::AssetsNewFolder);
    }
    void Pour(ColorRef color, CRealPoint at) {
        doc->Palette().SetFGColorValue(color);
        doc->Palette().SetFGAlpha(255);
        Hand().Click(at);
    }
    // Everything around it can be seen through.
    void CutOut() {
        Run(CommandId::CelBucket);
        doc->Palette().SetFGColor(transparentEntry);
        Hand().Click({3, 3});
    }

    void ImportVoice() {
        WriteBytes(folder / "voice.wav", PcmWave(soundRate, 2, 16, 4 * soundRate, [](int channel, int sample) {
                       const double seconds = static_cast<double>(sample) / soundRate;
                       const double voice = 0.5 * std::sin(2 * std::numbers::pi * (160 + 50 * channel) * seconds);
                       return IsSpoken(static_cast<int>(seconds * frameRate)) ? voice : 0;
                   }));
        prompter.Answer(std::vector<Path>{folder / "voice.wav"});
        prompter.Answer(std::string("voice"));
        Run(CommandId::SourcesImportSound);
        ASSERT_EQ(prompter.TakeMessages().size(), 1U) << "it asks whether to convert it";
        doc->Scenes().SetSourceMode(SourceMode::Sounds);
        doc->Scenes().SetSourceSelection({"voice"});
        doc->Sounds().DropSound(0);
        doc->Scenes().SetSourceMode(SourceMode::Cels);
    }

    void DrawHeads() {
        NewFolder("head");
        doc->Cursor().GoTo({0, 0});
        for (const bool areOpen : {true, false}) {
            if (areOpen) {
                Run(CommandId::ViewCameraAndXsheet);
                SheetView().setFocus();
                Key(Qt::Key_Return);
                Run(CommandId::ViewCelEditor);
            } else {
                Key(Qt::Key_N);
            }
            Run(CommandId::CelPen);
            Hand().Stroke(Ellipse({160, 125}, 80, 100));
            for (const double x : {130.0, 190.0})
                Hand().Stroke(Ellipse({x, 150}, 10, areOpen ? 14 : 1));
            CutOut();
            Pour(skin, {160, 120});
        }
    }
    void DrawMouths() {
        prompter.Answer(std::string("Mouth"));
        Run(CommandId::XsheetAddLevel);
        NewFolder("mouths");
        doc->Cursor().GoTo({0, 0});
        Run(CommandId::CelNewOnOnes);
        for (const CRealPoint& size : {CRealPoint{26, 1}, {22, 8}, {24, 20}, {12, 16}}) {
            Run(CommandId::CelNewDrawing);
            Run(CommandId::ViewCelEditor);
            Run(CommandId::CelPen);
            Hand().Stroke(Ellipse({160, 75}, size.x, size.y));
            CutOut();
            if (size.y > 2)
                Pour(MakeColorRef(150, 30, 40), {160, 75});
        }
        Run(CommandId::CelUpdateCamera);
    }

    std::string MouthAt(int frame) { return Sheet().Cell(0, frame).CelName(); }

    void PictureOfMouths(const CMouthChoices& choices) {
        const char* const pictures = PicturesFolder();
        if (pictures == nullptr)
            return;
        prompter.Cancel();
        Run(CommandId::XsheetMouths);
        auto request = std::any_cast<CMouthRequest>(prompter.lastRequest);
        request.initial = choices;
        CMouthDialog dialog(&Frame(), request);
        dialog.show();
        QApplication::processEvents();
        EXPECT_TRUE(dialog.grab().save(QString("%1/dialog-mouths.png").arg(pictures)));
    }

    std::shared_ptr<CRecordedSound> sound = std::make_shared<CRecordedSound>();
};

TEST_F(CLipSyncTest, AShotOfFourSecondsSpeaks) {
    CSceneSettings settings;
    settings.name = "Speak";
    settings.length = frames;
    settings.geometry = {page.width, page.height, frameRate, MakeColorRef(190, 215, 235)};
    settings.preset = customPreset;
    prompter.Answer(settings);
    Run(CommandId::FileNewScene);
    BeginPictures();
    ImportVoice();
    DrawHeads();
    ASSERT_EQ(Utf8Of(doc->Model().celImg.FilePath().stem()), "2");

    // Typed: open eyes, a blink, open eyes again.
    Run(CommandId::ViewCameraAndXsheet);
    SheetView().setFocus();
    doc->Cursor().GoTo({0, 0});
    Type("1\n");
    doc->Cursor().GoTo({0, 0});
    Key(Qt::Key_4, Qt::ControlModifier);
    Type("8\n2\n1\n");
    doc->Cursor().GoTo({0, 50});
    Key(Qt::Key_5, Qt::ControlModifier);
    Type("0\n");
    for (int frame = 0; frame < frames; ++frame)
        ASSERT_EQ(Sheet().Cell(0, frame).CelName(), frame == 48 || frame == 49 ? "2" : "1") << frame;

    DrawMouths();
    Run(CommandId::ViewCameraAndXsheet);
    for (const CSpokenLine& line : spoken) {
        doc->Cursor().GoTo({0, line.firstFrame});
        doc->Cursor().SetSelEndY(line.lastFrame);
        prompter.Answer(line);
        Run(CommandId::XsheetDialogue);
    }
    EXPECT_EQ(doc->Model().Scene().dialogue.Lines(), spoken);
    doc->Cursor().GoTo({0, 0});
    const CMouthChoices mouths{0, "mouths", "rest m f b p = 1\nh l = 2\na e = 3\no u w = 4\n", 2};
    PictureOfMouths(mouths);
    prompter.Answer(mouths);
    Run(CommandId::XsheetMouths);
    for (int frame = 0; frame < frames; ++frame) {
        if (!IsSpoken(frame)) {
            ASSERT_EQ(MouthAt(frame), "1") << frame;
        }
    }
    EXPECT_EQ(MouthAt(10), "2") << "h";
    EXPECT_EQ(MouthAt(13), "3") << "e";
    EXPECT_EQ(MouthAt(21), "4") << "o";
    EXPECT_EQ(MouthAt(60), "1") << "m";
    EXPECT_EQ(MouthAt(83), "2") << "l";
    doc->Cursor().GoTo({0, 17});
    Picture("speak-sheet");
    doc->Cursor().GoTo({0, 0});

    // Whatever of the sound has been heard, the frame that goes with it is seen.
    Run(CommandId::PreviewPlay);
    ASSERT_TRUE(WaitFor([this] { return Preview().Frame().has_value(); }));
    ASSERT_FALSE(sound->playedStereo.empty()) << "in the quality that it was recorded in";
    const int rate = sound->stereoRate;
    const std::vector<float>& heard = sound->playedStereo.back();
    ASSERT_EQ(heard.size() % static_cast<std::size_t>(2 * rate * frames / frameRate), 0U) << "whole loops";
    PreviewPicture shut;
    PreviewPicture open;
    for (int frame = 3; frame < frames; frame += 7) {
        const double middle = (frame + 0.5) * rate / frameRate;
        sound->heard = static_cast<std::size_t>(middle);
        ASSERT_TRUE(WaitFor([&] { return Preview().Frame() == frame; })) << frame;
        const auto around = heard.begin() + 2 * static_cast<std::ptrdiff_t>(middle);
        const bool sounds = std::any_of(around - 500, around + 500, [](float value) { return value > 0.2F; });
        EXPECT_EQ(sounds, IsSpoken(frame)) << frame;
        if (frame == 3)
            shut = Preview().Picture();
        if (frame == 17)
            open = Preview().Picture();
    }
    ASSERT_TRUE(shut && open);
    EXPECT_NE(shut->pixels, open->pixels);
    Preview().Stop();

    Run(CommandId::FilePrintDialogue);
    EXPECT_TRUE(Frame().PrintsDialogue());
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString((folder / "speak.pdf").string()));
    printer.setPageOrientation(QPageLayout::Landscape);
    EXPECT_TRUE(PrintXSheet(doc->Model(), prompter, printer, {.dialogue = true}));
    EXPECT_TRUE(IsWholePdf(ReadBytes(folder / "speak.pdf")));

    prompter.Answer(ExchangeFormat::Xdts);
    prompter.Answer(Path(folder / "speak.xdts"));
    Run(CommandId::FileExportXsheet);
    CExchangeSheet sheet;
    ASSERT_TRUE(doc->Exchange().Read(folder / "speak.xdts", ExchangeFormat::Xdts, sheet));
    ASSERT_EQ(sheet.spoken.size(), spoken.size());
    for (std::size_t i = 0; i < spoken.size(); ++i)
        EXPECT_EQ(sheet.spoken[i],
                  (CExchangeLine{spoken[i].firstFrame, spoken[i].lastFrame + 1, "Fox", spoken[i].text}));

    ASSERT_TRUE(doc->Saving().SaveAll());
    ASSERT_TRUE(doc->Scenes().OpenScene("Speak"));
    EXPECT_EQ(doc->Model().Scene().dialogue.Lines(), spoken) << "and it is there the next day";
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>());
}

} // namespace
} // namespace velmor::testing
