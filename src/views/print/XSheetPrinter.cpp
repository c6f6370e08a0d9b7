#include "views/print/XSheetPrinter.h"

#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "views/Text.h"
#include "views/print/XSheetPagePainter.h"

#include <QFile>
#include <QPageRanges>
#include <QPaintEngine>
#include <QPainter>
#include <charconv>
#include <string_view>

namespace velmor {

namespace {

constexpr double pointsPerInch = 72;

bool IsWanted(const QPrinter& printer, int number) {
    if (printer.printRange() != QPrinter::PageRange)
        return true;
    if (!printer.pageRanges().isEmpty())
        return printer.pageRanges().contains(number);
    return (printer.fromPage() == 0 || number >= printer.fromPage()) &&
           (printer.toPage() == 0 || number <= printer.toPage());
}

/// The pages to be printed, in order, as often as the printer does not repeat them itself.
std::vector<int> PagesToPrint(const QPrinter& printer, int count) {
    std::vector<int> once;
    for (int index = 0; index < count; ++index)
        if (IsWanted(printer, index + 1))
            once.push_back(index);
    std::vector<int> pages;
    const int copies = printer.supportsMultipleCopies() ? 1 : std::max(1, printer.copyCount());
    for (int copy = 0; copy < copies; ++copy)
        pages.insert(pages.end(), once.begin(), once.end());
    return pages;
}

/// Half a document helps nobody. A preview leaves alone what an earlier print has written.
void Abort(QPainter& painter, QPrinter& printer) {
    const bool writesFile = painter.paintEngine()->type() == QPaintEngine::Pdf;
    printer.abort();
    painter.end();
    if (writesFile && !printer.outputFileName().isEmpty())
        QFile::remove(printer.outputFileName());
}

} // namespace

bool IsWholePdf(std::span<const std::uint8_t> bytes) {
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    constexpr std::string_view beforeStart = "startxref\n";
    const std::size_t at = text.rfind(beforeStart);
    if (at == std::string_view::npos || !text.ends_with("%%EOF\n"))
        return false;
    std::size_t start = 0;
    const char* number = text.data() + at + beforeStart.size();
    return std::from_chars(number, text.data() + text.size(), start).ec == std::errc() && start < at &&
           text.substr(start).starts_with("xref\n");
}

QRectF PrintableArea(const QPrinter& printer) {
    const QPageLayout layout = printer.pageLayout();
    return layout.fullRect(QPageLayout::Point).marginsRemoved(layout.margins(QPageLayout::Point));
}

// Qt does not say whether its file has reached the disk. What is no regular file may be a printer.
bool IsWritten(const QPrinter& printer, IPrompter& prompter) {
    const Path file = PathOf(printer.outputFileName().toStdString());
    if (printer.outputFormat() != QPrinter::PdfFormat || !FileExists(file))
        return true;
    const std::optional<CFileBytes> bytes = ReadWholeFile(file);
    if (bytes && IsWholePdf(bytes->Span()))
        return true;
    static_cast<void>(RemoveFile(file));
    prompter.ShowMessage(pagesNotWritten);
    return false;
}

bool PrintXSheet(const CSceneModel& model, IPrompter& prompter, QPrinter& printer,
                 const CSheetPrintChoices& choices) {
    if (!model.sceneOpen)
        return false;
    if (printer.pageLayout().orientation() != QPageLayout::Landscape) {
        prompter.ShowMessage("XSheet can only print in LANDSCAPE mode, please choose LANDSCAPE in print setup");
        return false;
    }
    const QRectF area = PrintableArea(printer);
    const CXSheetPages pages(area.width() * pagePoint, area.height() * pagePoint, ExtentOf(model));
    const std::vector<int> wanted = PagesToPrint(printer, pages.Count());
    if (printer.docName().isEmpty())
        printer.setDocName(ToQt(model.sceneName) + " xsheet");

    const CXSheetPagePainter pagePainter(model, pages, QDate::currentDate(), choices);
    const double dotsPerPoint = printer.resolution() / pointsPerInch;
    const QPointF origin = printer.fullPage() ? area.topLeft() * dotsPerPoint : QPointF();
    const std::unique_ptr<IProgress> progress = prompter.BeginProgress("Printing");
    QPainter painter;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const bool ready = i == 0 ? painter.begin(&printer) : printer.newPage();
        if (!ready) {
            prompter.ShowMessage("The xsheet could not be printed.");
            return false;
        }
        painter.save();
        painter.translate(origin);
        pagePainter.Paint(painter, dotsPerPoint, wanted[i]);
        painter.restore();
        progress->Report(static_cast<int>((i + 1) * 100 / wanted.size()),
                         "Printing page " + std::to_string(i + 1) + " of " + std::to_string(wanted.size()));
        if (progress->TakeStopRequest()) {
            Abort(painter, printer);
            return false;
        }
    }
    painter.end();
    return !wanted.empty() && IsWritten(printer, prompter);
}

} // namespace velmor
