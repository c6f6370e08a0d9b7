#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QComboBox;
class QPlainTextEdit;

namespace velmor {

/// "Note": the mark, the color and the comment of a cell, or the color and the comment of a frame.
class CNoteDialog final : public CDialog {
public:
    CNoteDialog(QWidget* parent, const CNoteRequest& request);

    CSheetNote Values() const;

protected:
    bool Accepts() override;

private:
    AcceptRule<CSheetNote> m_accept;
    QComboBox* m_mark;
    QComboBox* m_color;
    QPlainTextEdit* m_comment;
};

} // namespace velmor
