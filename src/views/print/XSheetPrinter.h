#pragma once

#include "platform/files/Files.h"
#include "views/print/XSheetPagePainter.h"

#include <QPrinter>

namespace velmor {

class IPrompter;
struct CSceneModel;

inline constexpr const char* pagesNotWritten = "The pages could not be written. Disk full or write protected?";

/// Whether the bytes of a PDF file are all there: its table of contents is where its end says.
bool IsWholePdf(std::span<const std::uint8_t> bytes);

/// The area inside the margins, in points.
QRectF PrintableArea(const QPrinter& printer);
/// Whether what was printed to a PDF file is all there; one that is not is removed, after a message. True for what
/// is no such file.
[[nodiscard]] bool IsWritten(const QPrinter& printer, IPrompter& prompter);

/// Prints the xsheet as an exposure sheet that a camera operator can shoot from. Landscape only: for another
/// orientation a message is shown and nothing printed; false then, and when there is no scene.
/// A PDF file that could not be written to its end is removed, after a message.
[[nodiscard]] bool PrintXSheet(const CSceneModel& model, IPrompter& prompter, QPrinter& printer,
                               const CSheetPrintChoices& choices = {});

} // namespace velmor
