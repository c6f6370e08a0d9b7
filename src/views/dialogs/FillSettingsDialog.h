#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;
class QComboBox;

namespace velmor {

class CNumberSlider;

/// "Fill Settings": gaps, leaks, whose lines, and what a dragged bucket does.
class CFillSettingsDialog final : public CDialog {
public:
    CFillSettingsDialog(QWidget* parent, const CFillSettingsRequest& request);

    CFillChoices Values() const;

protected:
    bool Accepts() override;

private:
    void EnableWhatCounts();

    CNumberSlider* m_gap; // children, all of them
    QCheckBox* m_refuseLeaks;
    QComboBox* m_lines;
    CNumberSlider* m_underLine;
    QCheckBox* m_overAreas;
};

} // namespace velmor
