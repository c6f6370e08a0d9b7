#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;

namespace velmor {

class CColorSwatch;
class CNumberSlider;
class CRadioGroup;

/// "Color Keyer Settings": which colour becomes transparent, and how.
class CColorKeyDialog final : public CDialog {
public:
    CColorKeyDialog(QWidget* parent, const CColorKeyRequest& request);

    /// The tolerance is -1 when it cannot be read.
    CColorKeyValues Values() const;

protected:
    bool Accepts() override;

private:
    void AddUnderKey(int chosen);

    AcceptRule<CColorKeyValues> m_accept;
    CNumberSlider* m_tolerance;
    CColorSwatch* m_color;
    CRadioGroup* m_process;
    QCheckBox* m_black;
    QCheckBox* m_white;
};

} // namespace velmor
