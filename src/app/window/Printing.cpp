#include "app/window/Printing.h"

#include "scene/CameraAids.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/Text.h"
#include "views/print/GuidesPrinter.h"
#include "views/print/XSheetPrinter.h"

#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace velmor {

CPrinting::CPrinting(QWidget& parent, CVelmorltDoc& doc, IPrompter& prompter)
    : m_parent(parent), m_doc(doc), m_prompter(prompter) {}

CPrinting::~CPrinting() = default;

QPrinter& CPrinting::Printer() {
    if (!m_printer) {
        const std::shared_ptr<void> wait = m_prompter.BeginWait();
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
        m_printer->setPageOrientation(QPageLayout::Landscape);
    }
    m_printer->setDocName(ToQt(m_doc.GetTitle()));
    return *m_printer;
}

void CPrinting::Print() {
    QPrintDialog dialog(&Printer(), &m_parent);
    if (dialog.exec() == QDialog::Accepted)
        static_cast<void>(PrintXSheet(m_doc.Model(), m_prompter, Printer(), m_choices)); // it has shown why not
}

void CPrinting::Preview() {
    PreviewPages([this](QPrinter& printer) {
        static_cast<void>(PrintXSheet(m_doc.Model(), m_prompter, printer, m_choices)); // as above
    });
}

void CPrinting::PreviewGuides() {
    PreviewPages([this](QPrinter& printer) {
        static_cast<void>(PrintGuides(m_doc.Model(), m_doc.CameraAids().Choices(), m_prompter, printer));
    });
}

void CPrinting::PreviewPages(const std::function<void(QPrinter&)>& print) {
    QPrintPreviewDialog dialog(&Printer(), &m_parent);
    dialog.resize(m_parent.size() * 0.9);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&print](QPrinter* printer) { print(*printer); });
    dialog.exec();
}

void CPrinting::Setup() {
    QPageSetupDialog(&Printer(), &m_parent).exec();
}

} // namespace velmor
