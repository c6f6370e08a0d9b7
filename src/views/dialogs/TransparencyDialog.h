#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CNumberSlider;

/// "Edit XSheet Transparency Data" of one cell.
class CTransparencyDialog final : public CDialog {
public:
    CTransparencyDialog(QWidget* parent, const CTransparencyRequest& request);

    /// Not a number when it cannot be read.
    double Values() const;

protected:
    bool Accepts() override;

private:
    AcceptRule<double> m_accept;
    CNumberSlider* m_transparency;
};

} // namespace velmor
