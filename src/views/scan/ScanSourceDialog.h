#pragma once

#include "platform/scanner/Scanner.h"
#include "views/dialogs/Dialog.h"

#include <span>

class QListWidget;

namespace velmor {

/// "Select Source": the scanners of this machine.
class CScanSourceDialog final : public CDialog {
public:
    /// There is at least one scanner; the list opens on number `current`.
    CScanSourceDialog(QWidget* parent, std::span<const CScannerDevice> scanners, std::size_t current);

    std::size_t Values() const;

private:
    QListWidget* m_list;
};

} // namespace velmor
