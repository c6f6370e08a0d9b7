#pragma once

#include "views/dialogs/Dialog.h"

namespace velmor {

/// The program's name and version.
class CAboutDialog final : public CDialog {
public:
    explicit CAboutDialog(QWidget* parent);
};

} // namespace velmor
