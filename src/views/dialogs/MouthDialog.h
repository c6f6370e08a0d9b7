#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QComboBox;
class QLabel;
class QPlainTextEdit;

namespace velmor {

class CTextLines;

/// "Mouths from Dialogue": the animator's table of sounds and drawings, and what a level would show by it.
class CMouthDialog final : public CDialog {
public:
    CMouthDialog(QWidget* parent, const CMouthRequest& request);

    CMouthChoices Values() const;

private:
    void AddChoices();
    void AddPreview();
    void ShowPreview();

    const CMouthRequest& m_request;
    QComboBox* m_level;
    QComboBox* m_folder;
    QComboBox* m_hold;
    QPlainTextEdit* m_chart;
    QLabel* m_fault;
    CTextLines* m_lines;
};

} // namespace velmor
