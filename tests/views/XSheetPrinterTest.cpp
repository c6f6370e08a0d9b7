#include "views/print/XSheetPrinter.h"
#include "SceneAccess.h"
#include "ScriptedPrompter.h"
#include "TempFolder.h"
#include "TestScene.h"
#include "platform/files/Files.h"
#include "platform/process/Interrupt.h"
#include "scene/SceneModel.h"
#include "views/print/XSheetNotation.h"
#include "views/print/XSheetPagePainter.h"
#include "views/print/XSheetPages.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPageRanges>
#include <QPainter>
#include <QPalette>
#include <QPrinter>
#include <algorithm>
#include <numbers>
#include <set>
#include <sys/resource.h>

namespace velmor::testing {
namespace {

// The printable area of a landscape A4 sheet, in points.
constexpr double a4Width = 785;
constexpr double a4Height = 538;

CXSheetPages A4Pages(const CXSheetExtent& extent) {
    return {a4Width * pagePoint, a4Height * pagePoint, extent};
}

TEST(XSheetPagesTest, EveryCellStandsOnOnePage) {
    for (const auto& [levels, frames] : {std::pair{1, 1}, {8, 100}, {13, 51}, {49, 1999}}) {
        const CXSheetPages pages = A4Pages({levels, frames, 25, 50 * pagePoint});
        std::set<std::pair<int, int>> seen;
        for (int i = 0; i < pages.Count(); ++i) {
            const CXSheetPage page = pages.At(i);
            EXPECT_EQ(page.number, i + 1);
            for (int level = page.firstLevel; level <= page.lastLevel; ++level)
                for (int frame = page.firstFrame; frame <= page.lastFrame; ++frame)
                    EXPECT_TRUE(seen.emplace(level, frame).second) << level << "," << frame;
        }
        EXPECT_EQ(seen.size(), static_cast<std::size_t>(levels) * static_cast<std::size_t>(frames));
    }
}

TEST(XSheetPagesTest, RunsAcrossTheLevelsAndThenDown) {
    const CXSheetPages pages = A4Pages({14, 100, 25, 60 * pagePoint});
    ASSERT_EQ(pages.Count(), 4);
    EXPECT_EQ(PageCoordinates(pages.At(0), 14, 100), "levels 1-7 of 14, frames 1-50 of 100");
    EXPECT_EQ(PageCoordinates(pages.At(1), 14, 100), "levels 8-14 of 14, frames 1-50 of 100");
    EXPECT_EQ(PageCoordinates(pages.At(2), 14, 100), "levels 1-7 of 14, frames 51-100 of 100");
    EXPECT_EQ(PageCoordinates({1, 0, 0, 3, 3}, 1, 4), "level 1 of 1, frame 4 of 4");
    EXPECT_EQ(PageCoordinates(A4Pages({0, 10, 25, 0}).At(0), 0, 10), "frames 1-10 of 10");
}

TEST(XSheetPagesTest, PagesHoldWholeOrHalfSeconds) {
    for (const auto& [rate, rows] : {std::pair{24, 48}, {25, 50}, {15, 45}, {60, 30}, {100, 50}})
        EXPECT_EQ(A4Pages({1, 1999, rate, 0}).At(0).Frames(), rows) << rate;
}

TEST(XSheetPagesTest, EverythingStaysInsideAnyPaper) {
    for (const auto& [width, height] :
         {std::pair{a4Width, a4Height}, {2300.0, 1600.0}, {300.0, 180.0}, {80.0, 400.0}})
        for (const int levels : {0, 1, 5, 49}) {
            const CXSheetPages pages(width * pagePoint, height * pagePoint, {levels, 300, 25, 70 * pagePoint});
            EXPECT_LE(pages.Width() * pages.Scale(), width * pagePoint + 0.001);
            EXPECT_LE(pages.RightFrames().Right(), pages.Width() + 0.001) << width << " wide, " << levels;
            EXPECT_LE(pages.Notes().Right(), pages.Width() + 0.001);
            EXPECT_LE(pages.RowTop(pages.At(0).Frames()), pages.FootTop() + 0.001) << height << " high";
            EXPECT_GE(pages.Level(0).width, 34 * pagePoint);
        }
}

TEST(XSheetPagesTest, SecondsAndTheirHalvesAreRuled) {
    EXPECT_EQ(RuleAbove(24, 24), FrameRule::Second);
    EXPECT_EQ(RuleAbove(36, 24), FrameRule::HalfSecond);
    EXPECT_EQ(RuleAbove(13, 25), FrameRule::HalfSecond);
    EXPECT_EQ(RuleAbove(12, 25), FrameRule::Plain);
    EXPECT_EQ(RuleAbove(7, 1), FrameRule::Second);
}

TEST(XSheetNotationTest, TellsWhatIsDoneToADrawing) {
    CXSheetCell cell = CXSheetCell::FromFile("A", "1", {0, 0, 1.5, 1, -std::numbers::pi / 8}, 50, 3, 3, {10, 10});
    EXPECT_EQ(CellMarks(cell), "T50 B3 S150/100 R-22.5");
    EXPECT_EQ(CellMarks(CXSheetCell::FromFile("A", "1", {}, 0, 1, 1, {10, 10})), "");
    CXSheet xsheet(1, 4);
    xsheet.MutableCell(0, 0) = xsheet.MutableCell(0, 1) = xsheet.MutableCell(0, 2) = cell;
    EXPECT_EQ(ChangedMarks(xsheet, 0, 1), "");
    xsheet.MutableCell(0, 2) = CXSheetCell::FromFile("A", "1", {}, 0, 1, 1, {10, 10});
    EXPECT_EQ(ChangedMarks(xsheet, 0, 2), "-");
    EXPECT_EQ(HeldName(xsheet, 0, 2), "A1");
    EXPECT_EQ(HeldName(xsheet, 0, 0), "");
    EXPECT_EQ(HeldName(xsheet, 0, 3), "");
    EXPECT_EQ(LengthText(119, 25), "119 frames = 4 s + 19 fr");
    EXPECT_EQ(PanText({-0.2, 12.6, 0, 1}), "   0,  13");
}

class XSheetPrinterTest : public ::testing::Test {
protected:
    XSheetPrinterTest() {
        model.sceneOpen = true;
        model.sceneName = "Test";
        sheet = scene.data;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(file.string()));
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageOrientation(QPageLayout::Landscape);
        printer.setFontEmbeddingEnabled(false);
    }

    /// Number of pages in the file; 0 when there is none.
    qsizetype PrintedPages() const {
        QFile pdf(QString::fromStdString(file.string()));
        return pdf.open(QIODevice::ReadOnly) ? pdf.readAll().count("/Type /Page\n") : 0;
    }
    QImage PaintPage(const CXSheetPages& pages, int index) const {
        QImage image(static_cast<int>(a4Width), static_cast<int>(a4Height), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        CXSheetPagePainter(model, pages, QDate(2024, 3, 5)).Paint(painter, 1, index);
        return image;
    }

    CTempFolder folder;
    CTestScene scene{folder.Path()};
    const Path file = folder / "sheet.pdf";
    CSceneModel model;
    CScene& sheet = CSceneAccess::Of(model);
    CScriptedPrompter prompter;
    QPrinter printer;
};

TEST_F(XSheetPrinterTest, PrintsEveryPage) {
    sheet.xsheet = CXSheet(20, 120);
    EXPECT_TRUE(PrintXSheet(model, prompter, printer));
    EXPECT_EQ(PrintedPages(), 6);
    EXPECT_EQ(prompter.progressTexts.size(), 6u);
}

TEST_F(XSheetPrinterTest, PrintsTheChosenPagesOnly) {
    sheet.xsheet = CXSheet(1, 200);
    printer.setPrintRange(QPrinter::PageRange);
    printer.setFromTo(2, 3);
    EXPECT_TRUE(PrintXSheet(model, prompter, printer));
    EXPECT_EQ(PrintedPages(), 2);
}

TEST_F(XSheetPrinterTest, RefusesPortraitAndNoScene) {
    printer.setPageOrientation(QPageLayout::Portrait);
    EXPECT_FALSE(PrintXSheet(model, prompter, printer));
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{"XSheet can only print in LANDSCAPE mode, please "
                                                                "choose LANDSCAPE in print setup"});
    printer.setPageOrientation(QPageLayout::Landscape);
    model.sceneOpen = false;
    EXPECT_FALSE(PrintXSheet(model, prompter, printer));
    EXPECT_FALSE(FileExists(file));
}

TEST_F(XSheetPrinterTest, StoppingLeavesNoFile) {
    sheet.xsheet = CXSheet(49, 1999);
    prompter.stopAtReport = 3;
    EXPECT_FALSE(PrintXSheet(model, prompter, printer));
    EXPECT_EQ(prompter.progressTexts.size(), 3u);
    EXPECT_FALSE(FileExists(file));
}

TEST_F(XSheetPrinterTest, AFileThatMayNotGrowIsToldAndRemoved) {
    SurviveFileSizeLimit();
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit little{2048, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &little);
    const bool printed = PrintXSheet(model, prompter, printer);
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(printed);
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{pagesNotWritten});
    EXPECT_FALSE(FileExists(file));
}

TEST_F(XSheetPrinterTest, AFileWithAHoleIsNotWhole) {
    ASSERT_TRUE(PrintXSheet(model, prompter, printer));
    std::vector<std::uint8_t> bytes = ReadBytes(file);
    EXPECT_TRUE(IsWholePdf(bytes));
    bytes.erase(bytes.begin() + 700, bytes.begin() + 900);
    EXPECT_FALSE(IsWholePdf(bytes));
    EXPECT_FALSE(IsWholePdf({}));
}

TEST_F(XSheetPrinterTest, CellsShowInTheirColumnsOnly) {
    const CXSheetPages pages = A4Pages(ExtentOf(model));
    const QImage full = PaintPage(pages, 0);
    sheet.xsheet.MutableCell(1, 4) = sheet.xsheet.Cell(0, 0);
    const QImage changed = PaintPage(pages, 0);
    const QRectF cell(pages.Level(1).left / pagePoint, pages.RowTop(4) / pagePoint,
                      pages.Level(1).width / pagePoint, pages.RowHeight() / pagePoint);
    int inside = 0;
    for (int y = 0; y < full.height(); ++y)
        for (int x = 0; x < full.width(); ++x)
            if (full.pixel(x, y) != changed.pixel(x, y)) {
                ++inside;
                EXPECT_TRUE(cell.adjusted(-1, -1, 1, 1).contains(QPointF(x, y))) << x << "," << y;
            }
    EXPECT_GT(inside, 5) << "the cell's text is printed";
}

TEST_F(XSheetPrinterTest, MarksShowInTheirCellsAndCommentsBesideThem) {
    const CXSheetPages pages = A4Pages(ExtentOf(model));
    const QImage plain = PaintPage(pages, 0);
    const auto inkIn = [&](const CPageColumn& column, int frame) {
        const QRectF place(column.left / pagePoint, pages.RowTop(frame) / pagePoint, column.width / pagePoint,
                           pages.RowHeight() / pagePoint);
        const QImage now = PaintPage(pages, 0);
        int inside = 0;
        int outside = 0;
        for (int y = 0; y < plain.height(); ++y)
            for (int x = 0; x < plain.width(); ++x)
                if (plain.pixel(x, y) != now.pixel(x, y))
                    ++(place.adjusted(-1, -1, 1, 1).contains(QPointF(x, y)) ? inside : outside);
        EXPECT_EQ(outside, 0);
        return inside;
    };
    sheet.xsheet.MutableCell(1, 4).SetNote({SheetMark::Key, NoteColor::Red, {}});
    EXPECT_GT(inkIn(pages.Level(1), 4), 5) << "at an empty cell as well";
    sheet.xsheet.MutableCell(1, 4).SetNote({});
    sheet.xsheet.MutableCell(0, 6).SetNote({{}, {}, "Blink"});
    sheet.frameNotes.Set(6, {{}, {}, "Cut"});
    EXPECT_GT(inkIn(pages.Notes(), 6), 5);
}

TEST_F(XSheetPrinterTest, IsTheSameInEveryTheme) {
    const CXSheetPages pages = A4Pages(ExtentOf(model));
    const QImage light = PaintPage(pages, 0);
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(40, 40, 40));
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    EXPECT_EQ(PaintPage(pages, 0), light);
    QApplication::setPalette(before);
    EXPECT_EQ(light.pixelColor(1, light.height() - 1), QColor(Qt::white)) << "the paper is left alone";
}

} // namespace
} // namespace velmor::testing
