#pragma once

#include "platform/files/Files.h"

#include <functional>

class QWidget;

namespace velmor {

class IPrompter;

/// Opens a PDF file with the system's reader; false when it has none.
bool OpenWithReader(const Path& pdf);

/// Opens "manual.pdf" of a folder with the reader. Where there is none, the manual's text, "manual.md", is shown in
/// a window of its own over `window`. Shows the message with the reason's number when nothing can be shown.
void OpenOnlineManual(QWidget& window, IPrompter& prompter, const Path& folder,
                      const std::function<bool(const Path&)>& openPdf = OpenWithReader);

} // namespace velmor
