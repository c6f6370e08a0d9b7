#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CRadioGroup;

/// "Appearance": light, dark, or as the system has it. What is chosen is seen at once.
class CAppearanceDialog final : public CDialog {
public:
    CAppearanceDialog(QWidget* parent, const CAppearanceRequest& request);

    Appearance Values() const;
    void reject() override;

private:
    const CAppearanceRequest& m_request;
    CRadioGroup* m_choices;
};

} // namespace velmor
