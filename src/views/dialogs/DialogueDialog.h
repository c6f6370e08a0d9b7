#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QComboBox;
class QLineEdit;

namespace velmor {

class CNumberEdit;

/// "Dialogue": what is spoken over some frames.
class CDialogueDialog final : public CDialog {
public:
    CDialogueDialog(QWidget* parent, const CDialogueRequest& request);

    /// A frame that cannot be read is before the first.
    CSpokenLine Values() const;

protected:
    bool Accepts() override;

private:
    const CDialogueRequest& m_request;
    QLineEdit* m_text;
    QComboBox* m_speaker;
    CNumberEdit* m_first;
    CNumberEdit* m_last;
};

} // namespace velmor
