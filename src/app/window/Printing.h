#pragma once

#include "views/print/XSheetPagePainter.h"

#include <functional>
#include <memory>

class QPrinter;
class QWidget;

namespace velmor {

class CVelmorltDoc;
class IPrompter;

/// The print commands: the system's dialogs around the printing of the xsheet, and the printer that they set up.
class CPrinting {
public:
    CPrinting(QWidget& parent, CVelmorltDoc& doc, IPrompter& prompter);
    ~CPrinting();

    void Print();
    void Preview();
    void Setup();
    /// Shows the page with the guides of the camera view, to be printed from there.
    void PreviewGuides();
    const CSheetPrintChoices& Choices() const { return m_choices; }
    void SetChoices(const CSheetPrintChoices& choices) { m_choices = choices; }

private:
    void PreviewPages(const std::function<void(QPrinter&)>& print);
    /// Looked for at the first use: asking the system for its printers takes a moment.
    QPrinter& Printer();

    QWidget& m_parent;
    CVelmorltDoc& m_doc;
    IPrompter& m_prompter;
    CSheetPrintChoices m_choices;
    std::unique_ptr<QPrinter> m_printer;
};

} // namespace velmor
