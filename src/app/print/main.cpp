// Prints an xsheet to a PDF file, for the command-line tool:
//
//     velmor-print DATABASE SCENE FILE.pdf PAPER [dialogue]
//
// PAPER is a4, a3 or letter; with "dialogue" what is spoken is printed as well.

#include "app/cli/ConsolePrompter.h"
#include "app/cli/SceneReader.h"
#include "platform/files/ClaimedFile.h"
#include "platform/files/SystemPaths.h"
#include "platform/process/Interrupt.h"
#include "views/Text.h"
#include "views/print/XSheetPrinter.h"

#include <QGuiApplication>
#include <QPrinter>

namespace {

using namespace velmor;

QPageSize::PageSizeId PaperNamed(const QString& name) {
    if (name == "a3")
        return QPageSize::A3;
    return name == "letter" ? QPageSize::Letter : QPageSize::A4;
}

// The printer writes to a file of its own, whose bytes then replace the wanted one at once.
bool Print(const CReadScene& scene, IPrompter& prompter, const QString& paper, const Path& target,
           const CSheetPrintChoices& choices) {
    const std::optional<CClaimedFolder> own = CClaimedFolder::Make(TemporaryFolder());
    if (!own) {
        prompter.ShowMessage(pagesNotWritten);
        return false;
    }
    const Path pages = own->File("pages.pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(ToQt(Utf8Of(pages)));
    printer.setPageSize(QPageSize(PaperNamed(paper)));
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(ToQt(scene.model.sceneName));
    if (!PrintXSheet(scene.model, prompter, printer, choices))
        return false;
    const std::optional<CFileBytes> bytes = ReadWholeFile(pages);
    if (bytes && WriteFileAtomically(target, bytes->Span()))
        return true;
    prompter.ShowMessage("Could not write " + Utf8Of(target));
    return false;
}

} // namespace

int main(int argc, char** argv) {
    SurviveFileSizeLimit();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 5)
        return 2;
    CConsolePrompter prompter;
    const auto scene = ReadScene(arguments[1].toStdString(), arguments[2].toStdString(), prompter);
    const CSheetPrintChoices choices{.dialogue = arguments.mid(5).contains("dialogue")};
    return scene && Print(*scene, prompter, arguments[4], PathOf(arguments[3].toStdString()), choices) ? 0 : 1;
}
