#pragma once

#include <QDialog>

namespace velmor {

/// "Looking for scanners..." and the like: what is waited for, and a button to give it up.
class CScanWaitDialog final : public QDialog {
public:
    CScanWaitDialog(QWidget* parent, const QString& text);
};

} // namespace velmor
