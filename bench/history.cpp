// What keeping the history of a scene costs: while drawing, at every edit of a large sheet, when a scene is opened,
// and how long undo takes.

#include "BenchImages.h"
#include "image/DisplayBitmap.h"
#include "platform/files/Profile.h"
#include "scene/AssetOperations.h"
#include "scene/CelPainting.h"
#include "scene/CellOperations.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/Settings.h"
#include "scene/SilentPrompter.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/history/SceneJournal.h"
#include "xsheet/XSheetFile.h"

#include <array>
#include <benchmark/benchmark.h>
#include <random>

using namespace velmor;

namespace {

constexpr int pageWidth = 2048;
constexpr int pageHeight = 1536;
constexpr int levels = 49;
constexpr int frames = 1999;

class CQuietPrompter : public CSilentPrompter {
public:
    void ShowMessage(const std::string& text) override { message = text; }

    std::string message; ///< the last one; none where all goes well
};

/// A scene with a large cel in the editor, and a sheet as long and high as one gets.
class CBenchScene {
public:
    explicit CBenchScene(bool hasHistory)
        : m_database(WithSeparator((m_folder.Path() / "db").string())), m_hasHistory(hasHistory) {
        static_cast<void>(CreateFolder(Paths().CelFolder("Fox")));
        for (const char* name : {"1", "2"}) {
            CCelImg cel;
            static_cast<void>(cel.CreateCel(pageWidth, pageHeight, Paths().CelFile("Fox", name)));
            static_cast<void>(cel.SaveCel());
        }
        SaveSheet();
        Set(m_profile, setting::databaseDir, m_database);
        if (!hasHistory)
            Set(m_profile, setting::historyMegabytes, 0);
        Start();
    }

    void Start() {
        m_doc.reset();
        m_doc = std::make_unique<CVelmorltDoc>(
            m_prompter, m_profile,
            CDocumentFolders{.program = {}, .data = {}, .journals = m_hasHistory ? Journals() : Path()});
    }
    void Open(benchmark::State& state) {
        if (!m_doc->Scenes().OpenScene(title) || (m_hasHistory && !m_doc->Model().history.HasJournal()))
            state.SkipWithError("not opened");
    }
    void Edit() {
        m_doc->Scenes().SetFolderName("Fox");
        m_doc->Assets().EditCel("1");
    }
    void Check(benchmark::State& state) const {
        if (!m_prompter.message.empty())
            state.SkipWithError(m_prompter.message.c_str());
    }
    /// As after every event of the window.
    void Settle() { m_doc->History().Settle(); }

    CVelmorltDoc& Doc() { return *m_doc; }
    CScenePaths Paths() const { return {m_database, title}; }
    Path Journal() const { return JournalFile(Journals(), Paths(), title); }
    std::uint64_t JournalBytes() {
        m_doc.reset();
        return std::filesystem::file_size(Journal());
    }

private:
    static constexpr const char* title = "Bench";
    // Every cell is used, on twos.
    void SaveSheet() const {
        CScene scene;
        scene.xsheet = CXSheet(levels, frames);
        std::array<CXSheetCell, 2> cells;
        for (std::size_t cel = 0; cel < cells.size(); ++cel)
            static_cast<void>(cells[cel].Set(Paths().SceneFolder(), "Fox", std::to_string(cel + 1), {768, 576}));
        for (int level = 0; level < levels; ++level)
            for (int frame = 0; frame < frames; ++frame)
                scene.xsheet.MutableCell(level, frame) = cells[static_cast<std::size_t>(frame / 2 % 2)];
        static_cast<void>(SaveXSheet(Paths().XSheetFile(), scene));
    }
    Path Journals() const { return m_folder.Path() / "journals"; }

    CBenchFolder m_folder;
    std::string m_database;
    bool m_hasHistory;
    CProfile m_profile;
    CQuietPrompter m_prompter;
    std::unique_ptr<CVelmorltDoc> m_doc;
};

/// Somewhere on the page, with room for a stroke.
class CPlaces {
public:
    CPoint Next() {
        return {std::uniform_int_distribution(0, pageWidth - 300)(m_random),
                std::uniform_int_distribution(0, pageHeight - 200)(m_random)};
    }

private:
    std::mt19937 m_random{5};
};

// Bent, of twenty segments.
CPoint OnStroke(CPoint start, int segment) {
    return {start.x + 12 * segment, start.y + segment * segment / 3};
}

// Whether there is a history says the argument.
void StrokeSegment(benchmark::State& state) {
    CBenchScene scene(state.range(0) != 0);
    scene.Open(state);
    scene.Edit();
    CCelPainting& painting = scene.Doc().Painting();
    CPlaces places;
    CPoint start;
    int segment = 20;
    for (auto _ : state) {
        if (++segment > 20) {
            state.PauseTiming();
            painting.End(OnStroke(start, 20));
            scene.Settle();
            start = places.Next();
            segment = 1;
            if (!painting.Begin(CelTool::Pen, start))
                state.SkipWithError("no pen");
            state.ResumeTiming();
        }
        painting.Move(OnStroke(start, segment));
        scene.Settle();
    }
    scene.Check(state);
}

void Draw(CBenchScene& scene, CPoint start) {
    CCelPainting& painting = scene.Doc().Painting();
    static_cast<void>(painting.Begin(CelTool::Pen, start));
    for (int segment = 1; segment < 20; ++segment) {
        painting.Move(OnStroke(start, segment));
        scene.Settle();
    }
    painting.End(OnStroke(start, 20));
    scene.Settle();
}

void WholeStroke(benchmark::State& state) {
    CBenchScene scene(state.range(0) != 0);
    scene.Open(state);
    scene.Edit();
    CPlaces places;
    for (auto _ : state)
        Draw(scene, places.Next());
    scene.Check(state);
}

/// Undoes and does again in turn, and brings what the cel editor shows up to date.
template<class Refresh>
void MoveInTurn(benchmark::State& state, CBenchScene& scene, Refresh refresh) {
    bool isDone = true;
    for (auto _ : state) {
        if (isDone)
            scene.Doc().History().Undo();
        else
            scene.Doc().History().Redo();
        isDone = !isDone;
        refresh();
        scene.Settle();
    }
    scene.Check(state);
}

void UndoOfStroke(benchmark::State& state) {
    CBenchScene scene(true);
    scene.Open(state);
    scene.Edit();
    Draw(scene, {900, 700});
    CDisplayBitmap bitmap;
    MoveInTurn(state, scene, [&] {
        benchmark::DoNotOptimize(static_cast<bool>(CreateBitmap(scene.Doc().Model().celImg, {}, bitmap)));
    });
}

void SelectAll(CVelmorltDoc& doc) {
    doc.Cursor().GoTo({0, 0});
    doc.Cursor().SetSelEndX(levels - 1);
    doc.Cursor().SetSelEndY(frames - 1);
}

// Of one cell, or of every one.
void UndoOfSheetEdit(benchmark::State& state) {
    CBenchScene scene(true);
    scene.Open(state);
    scene.Edit();
    CVelmorltDoc& doc = scene.Doc();
    if (state.range(0) != 0)
        SelectAll(doc);
    doc.XSheet().Cut();
    MoveInTurn(state, scene, [] {});
}

/// Drops, cuts and drops of single cells, all over the sheet.
void TenThousandEdits(benchmark::State& state) {
    constexpr int edits = 10000;
    CBenchScene scene(state.range(0) != 0);
    scene.Open(state);
    scene.Edit();
    CVelmorltDoc& doc = scene.Doc();
    std::mt19937 random(7);
    for (auto _ : state)
        for (int edit = 0; edit < edits; ++edit) {
            const CSheetCell cell{std::uniform_int_distribution(0, levels - 1)(random),
                                  std::uniform_int_distribution(0, frames - 1)(random)};
            doc.Cursor().GoTo(cell);
            doc.Scenes().SetSourceSelection({edit % 2 == 0 ? "1" : "2"});
            if (edit % 3 == 0)
                doc.XSheet().DropCels(cell.level, cell.frame, 1, false);
            else if (edit % 3 == 1)
                doc.XSheet().Cut();
            else
                doc.XSheet().Paste();
            scene.Settle();
        }
    scene.Check(state);
    state.SetItemsProcessed(state.iterations() * edits);
    if (state.range(0) != 0) {
        state.counters["steps"] = static_cast<double>(doc.Model().history.Steps().size());
        state.counters["journalBytes"] = static_cast<double>(scene.JournalBytes());
    }
}

CHistoryPicture PictureOfDrawing(CBenchScene& scene, benchmark::State& state) {
    scene.Open(state);
    scene.Edit();
    CPlaces places;
    for (int stroke = 0; stroke < 300; ++stroke)
        Draw(scene, places.Next());
    CHistoryPicture picture = CHistory::PictureOf(*scene.Doc().Model().history.NextUndo());
    scene.Start();
    std::filesystem::remove(scene.Journal());
    return picture;
}

// Steps of a tenth of a megabyte, as painting leaves them.
void FillJournal(const Path& file, const CHistoryPicture& picture, std::int64_t megabytes) {
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    if (!CJournal::Open(file, journal, contents))
        return;
    std::mt19937 random(9);
    JournalBytes body(std::size_t{100} << 10);
    for (std::uint8_t& byte : body)
        byte = static_cast<std::uint8_t>(random());
    CStepHeading heading;
    heading.name = "Stroke on Fox 1";
    heading.image = "Fox/1.bit";
    heading.picture = picture;
    const JournalBytes written = WriteHeading(heading);
    for (std::int64_t id = 1; id <= megabytes * 10; ++id) {
        body[static_cast<std::size_t>(id)] ^= 1;
        journal->Write({{{id, written, body}}, {}, {}, 0, {}});
        if (id % 100 == 0)
            journal->WaitUntilWritten();
    }
}

// With a journal of so many megabytes; below none without any.
void OpenScene(benchmark::State& state) {
    CBenchScene scene(state.range(0) >= 0);
    if (state.range(0) > 0)
        FillJournal(scene.Journal(), PictureOfDrawing(scene, state), state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        scene.Start();
        state.ResumeTiming();
        scene.Open(state);
    }
    scene.Check(state);
    if (state.range(0) > 0)
        state.counters["journalBytes"] = static_cast<double>(scene.JournalBytes());
}

} // namespace

// The writing is done by a thread of its own, whose time counts.
BENCHMARK(StrokeSegment)->Arg(0)->Arg(1)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(WholeStroke)->Arg(0)->Arg(1)->Iterations(1000)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(UndoOfStroke)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(UndoOfSheetEdit)->Arg(0)->Arg(1)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(TenThousandEdits)->Arg(0)->Arg(1)->Iterations(1)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(OpenScene)->Arg(-1)->Arg(0)->Arg(1000)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
