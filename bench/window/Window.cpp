// What an animator feels: how long the window takes to answer. Runs without a screen; what the window system adds
// is not in the figures.

#include "BenchImages.h"
#include "app/cli/Commands.h"
#include "app/window/MainFrame.h"
#include "image/paint/Tools.h"
#include "platform/process/Memory.h"
#include "render/FrameWorker.h"
#include "scene/AssetOperations.h"
#include "scene/CameraPictures.h"
#include "scene/CelPainting.h"
#include "scene/PaletteOperations.h"
#include "scene/PenSettings.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/SilentPrompter.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/paper/DrawingSteps.h"
#include "scene/paper/Onion.h"
#include "scene/paper/Paper.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"
#include "xsheet/XSheetFile.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QScrollBar>
#include <QTabletEvent>
#include <QTest>
#include <benchmark/benchmark.h>
#include <fstream>

namespace velmor {
namespace {

constexpr int celWidth = 2048;
constexpr int celHeight = 1536;

class CQuietPrompter final : public CSilentPrompter {
public:
    void ShowMessage(const std::string&) override {}
};

/// The program on a database, its window shown.
class CProgram {
public:
    CProgram(const Path& database, const std::string& scene, const std::string& folder,
             const CPenSettings& pen = {}) {
        WritePenSettings(m_profile, pen);
        Set(m_profile, setting::databaseDir, WithSeparator(Utf8Of(database)));
        Set(m_profile, setting::lastScene, scene);
        Set(m_profile, setting::lastFolder, folder);
        doc = std::make_unique<CVelmorltDoc>(m_prompter, m_profile, CDocumentFolders{database, database});
        frame = std::make_unique<CMainFrame>(*doc, m_prompter, m_profile);
        frame->resize(1920, 1130);
        doc->Scenes().ReopenLastScene();
        frame->show();
        static_cast<void>(QTest::qWaitForWindowExposed(frame.get()));
        Settle();
    }
    static void Settle() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

private:
    CQuietPrompter m_prompter;
    CProfile m_profile;

public:
    std::unique_ptr<CVelmorltDoc> doc;
    std::unique_ptr<CMainFrame> frame;
};

/// 200 scenes; one with a folder of 500 cels and an xsheet of 49 levels and 1999 frames, all used.
void MakeLargeDatabase(const Path& database) {
    for (int scene = 0; scene < 200; ++scene)
        static_cast<void>(CreateFolder(
            CScenePaths(WithSeparator(Utf8Of(database)), "Scene " + std::to_string(scene)).SceneFolder()));
    const CScenePaths paths(WithSeparator(Utf8Of(database)), "Scene 77");
    static_cast<void>(CreateFolder(paths.CelFolder("walk")));
    CCelImg cel;
    static_cast<void>(cel.CreateCel(64, 48, paths.CelFile("walk", "1")));
    static_cast<void>(cel.SaveCel());
    for (int number = 2; number <= 500; ++number)
        std::filesystem::copy_file(paths.CelFile("walk", "1"), paths.CelFile("walk", std::to_string(number)));
    CScene data;
    data.xsheet = CXSheet(CXSheet::mostLevels, CXSheet::mostFrames);
    for (int level = 0; level < CXSheet::mostLevels; ++level) {
        data.xsheet.SetLevelName(level, "level " + std::to_string(level + 1));
        for (int number = 0; number < CXSheet::mostFrames; ++number)
            static_cast<void>(data.xsheet.MutableCell(level, number)
                                  .Set(paths.SceneFolder(), "walk", std::to_string(1 + (number / 2 + level) % 500),
                                       data.geometry.Frame()));
    }
    static_cast<void>(SaveXSheet(paths.XSheetFile(), data));
}

void OpenLargeDatabase(benchmark::State& state) {
    const CBenchFolder folder;
    MakeLargeDatabase(folder.Path());
    for ([[maybe_unused]] auto _ : state) {
        CProgram program(folder.Path(), "Scene 77", "walk");
        if (program.doc->Model().Scene().xsheet.LevelCount() != CXSheet::mostLevels)
            state.SkipWithError("the scene was not opened");
    }
}
BENCHMARK(OpenLargeDatabase)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From choosing a folder of 500 cels to its list on the screen; with thumbnails (1), as much of them as there are
/// then.
void ChooseLargeFolder(benchmark::State& state) {
    const CBenchFolder folder;
    MakeLargeDatabase(folder.Path());
    CProgram program(folder.Path(), "Scene 77", "walk");
    program.frame->SourceView().ShowThumbnails(state.range(0) != 0);
    for ([[maybe_unused]] auto _ : state) {
        program.doc->Scenes().SetFolderName("");
        program.doc->Scenes().SetFolderName("walk");
        CProgram::Settle();
    }
}
BENCHMARK(ChooseLargeFolder)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();

void ScrollLargeXsheet(benchmark::State& state) {
    const CBenchFolder folder;
    MakeLargeDatabase(folder.Path());
    CProgram program(folder.Path(), "Scene 77", "walk");
    program.frame->ShowXSheet();
    CProgram::Settle();
    QScrollBar* bar = program.frame->XsheetPane().View().verticalScrollBar();
    for ([[maybe_unused]] auto _ : state) {
        bar->setValue((bar->value() + 3) % bar->maximum());
        CProgram::Settle();
    }
}
BENCHMARK(ScrollLargeXsheet)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Lets go of what was drawn, so that nothing is saved.
void Forget(CProgram& program) {
    program.doc->Painting().Change("Stroke", [](CCelImg& image) {
        image.SetModified(false);
        return CPaintResult();
    });
}

/// A scene "Drawings" with a folder "walk" of cels 1 to `count`, each with its lines, on twos in its only level.
void MakeDrawings(const Path& database, int count, CSize size) {
    const CScenePaths paths(WithSeparator(Utf8Of(database)), "Drawings");
    static_cast<void>(CreateFolder(paths.CelFolder("walk")));
    CScene scene;
    scene.geometry.width = size.width;
    scene.geometry.height = size.height;
    scene.xsheet = CXSheet(1, 2 * count);
    for (int number = 1; number <= count; ++number) {
        CCelImg cel;
        static_cast<void>(cel.CreateCel(size.width, size.height, paths.CelFile("walk", std::to_string(number))));
        for (int line = 0; line < 60; ++line) {
            const int y = (line * 97 + number * 11) % size.height;
            PenStroke(cel, {10 + line * 7, y}, {size.width - 10 - line * 5, (y * 3 + number * 40) % size.height},
                      1);
        }
        static_cast<void>(cel.SaveCel());
        for (const int frame : {2 * number - 2, 2 * number - 1})
            static_cast<void>(
                scene.xsheet.MutableCell(0, frame).Set(paths.SceneFolder(), "walk", std::to_string(number), size));
    }
    static_cast<void>(SaveXSheet(paths.XSheetFile(), scene));
}

/// With three skins each way.
void ShowOnionSkin(CVelmorltDoc& doc) {
    COnionSettings settings;
    settings.shown = true;
    settings.before = settings.after = 3;
    doc.Onion().Change(settings);
}

/// What the display of a piece of a pen's way costs a page of 3840 x 2160 pixels, with the onion skin (1) and
/// without.
void DisplayPenSegment(benchmark::State& state) {
    constexpr CSize size{3840, 2160};
    const CBenchFolder folder;
    MakeDrawings(folder.Path(), 7, size);
    CProgram program(folder.Path(), "Drawings", "walk");
    CVelmorltDoc& doc = *program.doc;
    if (state.range(0) != 0)
        ShowOnionSkin(doc);
    doc.Cursor().GoTo({0, 6});
    doc.Drawings().Step(DrawingDirection::Next);
    doc.Paper().Refresh();
    const CCelImg& image = doc.Model().celImg;
    CDisplayBitmap bitmap;
    static_cast<void>(CreateBitmap(image, {}, bitmap, doc.Paper().Sheet()));
    if (state.range(0) != 0 && doc.Paper().Sheet().under.empty())
        state.SkipWithError("no onion skin");
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        step = (step + 37) % 3000;
        UpdateBitmap(image, {}, {step, step / 2, step + 24, step / 2 + 24}, bitmap, doc.Paper().Sheet());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(DisplayPenSegment)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

/// From the key to the next drawing on the screen, with six skins, at 2048 x 1536; all have been seen before.
void OpenNextDrawing(benchmark::State& state) {
    const CBenchFolder folder;
    MakeDrawings(folder.Path(), 12, {celWidth, celHeight});
    CProgram program(folder.Path(), "Drawings", "walk");
    ShowOnionSkin(*program.doc);
    program.frame->ShowCelEditor();
    CCelView& view = program.frame->CelPane().View();
    view.OpenNext();
    for (int i = 0; i < 12; ++i)
        view.OpenNext();
    CProgram::Settle();
    bool forward = false;
    for ([[maybe_unused]] auto _ : state) {
        const Path before = program.doc->Model().celImg.FilePath();
        forward ? view.OpenNext() : view.OpenPrevious();
        if (program.doc->Model().celImg.FilePath() == before) {
            forward = !forward;
            forward ? view.OpenNext() : view.OpenPrevious();
        }
        CProgram::Settle();
    }
}
BENCHMARK(OpenNextDrawing)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From the key to the neighbour on the screen, and back.
void FlipToNextDrawing(benchmark::State& state) {
    const CBenchFolder folder;
    MakeDrawings(folder.Path(), 3, {celWidth, celHeight});
    CProgram program(folder.Path(), "Drawings", "walk");
    program.frame->ShowCelEditor();
    CCelView& view = program.frame->CelPane().View();
    view.OpenNext();
    CProgram::Settle();
    for ([[maybe_unused]] auto _ : state) {
        view.FlipToNext();
        CProgram::Settle();
        QTest::keyRelease(&view, Qt::Key_Period);
        CProgram::Settle();
    }
}
BENCHMARK(FlipToNextDrawing)->Unit(benchmark::kMillisecond)->UseRealTime();

void PaintPenSegment(benchmark::State& state) {
    const CBenchFolder folder;
    const CScenePaths paths(WithSeparator(Utf8Of(folder.Path())), "Pen");
    static_cast<void>(CreateFolder(paths.CelFolder("walk")));
    CCelImg cel;
    static_cast<void>(cel.CreateCel(celWidth, celHeight, paths.CelFile("walk", "1")));
    static_cast<void>(cel.SaveCel());
    CProgram program(folder.Path(), "Pen", "walk");
    program.doc->Assets().EditCel("1");
    program.frame->ShowCelEditor();
    CProgram::Settle();
    CCelView& view = program.frame->CelPane().View();
    view.SetTool(CelTool::Pen);
    program.doc->Palette().SetPen(3);
    QWidget* area = view.viewport();
    QTest::mousePress(area, Qt::LeftButton, {}, QPoint(100, 100));
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        step = (step + 1) % 200;
        const QPoint point(100 + 4 * step, 100 + 3 * step % 500);
        QMouseEvent move(QEvent::MouseMove, point, area->mapToGlobal(point), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(area, &move);
        CProgram::Settle();
    }
    QTest::mouseRelease(area, Qt::LeftButton, {}, QPoint(100, 100));
    Forget(program);
}
BENCHMARK(PaintPenSegment)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From positions of a tablet's pen, as many as come in a frame, to the view painted with what they have drawn; on
/// a page of some size, as the program comes (0), with pressure and a stabilizer (1), and with six skins as well
/// (2).
void DrawWithTablet(benchmark::State& state) {
    const CBenchFolder folder;
    const bool hasSkins = state.range(2) == 2;
    MakeDrawings(folder.Path(), hasSkins ? 7 : 1,
                 {static_cast<int>(state.range(0)), static_cast<int>(state.range(1))});
    CPenSettings settings;
    if (state.range(2) != 0) {
        settings.pens = {true, 50, 400};
        settings.stabilizer = StabilizerKind::Weighted;
    }
    CProgram program(folder.Path(), "Drawings", "walk", settings);
    if (hasSkins) {
        ShowOnionSkin(*program.doc);
        program.doc->Cursor().GoTo({0, 6});
    }
    program.doc->Assets().EditCel(hasSkins ? "4" : "1");
    program.frame->ShowCelEditor();
    CProgram::Settle();
    if (hasSkins && program.doc->Paper().Sheet().under.empty())
        state.SkipWithError("no onion skin");
    CCelView& view = program.frame->CelPane().View();
    view.SetTool(CelTool::Pen);
    program.doc->Palette().SetPen(3);
    QWidget* area = view.viewport();
    const QPointingDevice device("pen", 7001, QInputDevice::DeviceType::Stylus, QPointingDevice::PointerType::Pen,
                                 QInputDevice::Capability::Position | QInputDevice::Capability::Pressure, 1, 3);
    const auto send = [&](QEvent::Type type, QPointF at, double pressure, Qt::MouseButton button) {
        QTabletEvent event(type, &device, at, area->mapToGlobal(at), pressure, 0, 0, 0, 0, 0, {}, button,
                           type == QEvent::TabletRelease ? Qt::NoButton : Qt::LeftButton);
        QApplication::sendEvent(area, &event);
    };
    constexpr int positionsInFrame = 4;
    send(QEvent::TabletPress, {100, 100}, 0.5, Qt::LeftButton);
    int step = 0;
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < positionsInFrame; ++i, ++step)
            send(QEvent::TabletMove, {100 + 2.3 * (step % 300), 100 + 1.7 * (step % 230)},
                 0.5 + 0.4 * (step % 50) / 50.0, Qt::NoButton);
        CProgram::Settle(); // the hand
        CProgram::Settle(); // the paint
    }
    send(QEvent::TabletRelease, {100, 100}, 0, Qt::LeftButton);
    Forget(program);
}
BENCHMARK(DrawWithTablet)
    ->ArgsProduct({{celWidth}, {celHeight}, {0, 1, 2}})
    ->ArgsProduct({{3840}, {2160}, {0, 1, 2}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

/// A database with the demonstration scene, made once.
class CDemoDatabase {
public:
    CDemoDatabase() {
        CSceneArguments arguments;
        arguments.database = Utf8Of(m_folder.Path());
        m_made = RunDemo(arguments);
    }
    bool IsMade() const { return m_made; }
    const Path& Folder() const { return m_folder.Path(); }

private:
    CBenchFolder m_folder;
    bool m_made = false;
};

/// From setting the cursor's frame to the new picture on the screen.
void StepThroughDemo(benchmark::State& state) {
    static const CDemoDatabase demo;
    if (!demo.IsMade()) {
        state.SkipWithError("no demonstration scene");
        return;
    }
    CProgram program(demo.Folder(), "Demo", "Fox");
    CVelmorltDoc& doc = *program.doc;
    const auto hasPicture = [&doc] { return doc.CameraPictures().GetCameraBitmap() != nullptr; };
    static_cast<void>(QTest::qWaitFor(hasPicture));
    for ([[maybe_unused]] auto _ : state) {
        doc.Cursor().SetCursorY((doc.Model().cursorFrame + 1) % doc.Model().Scene().xsheet.FrameCount());
        while (!hasPicture())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        CProgram::Settle();
    }
}
BENCHMARK(StepThroughDemo)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace velmor

int main(int argc, char** argv) {
    velmor::KeepFreedMemory();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
