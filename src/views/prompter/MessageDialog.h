#pragma once

#include "views/dialogs/Dialog.h"

namespace velmor {

/// The program's own message, "Velmor Message!": a text with OK, or as a question with OK and Cancel.
/// Return answers a grave question with Cancel.
class CMessageDialog final : public CDialog {
public:
    enum class Kind { Message, Question, GraveQuestion };

    CMessageDialog(QWidget* parent, const QString& text, Kind kind);
};

} // namespace velmor
