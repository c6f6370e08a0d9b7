#pragma once

#include "platform/files/Files.h"

#include <QDialog>

namespace velmor {

/// The manual beside the work: a page to scroll in, which stays open while the program is used.
class CManualWindow final : public QDialog {
public:
    /// Brings the window up over `parent`, whose only one it is. False when the file cannot be read.
    static bool Show(QWidget& parent, const Path& markdown);

private:
    CManualWindow(QWidget& parent, const QString& text);
};

} // namespace velmor
