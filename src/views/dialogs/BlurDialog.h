#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;

namespace velmor {

class CNumberSlider;

/// "Edit XSheet Blur Data" of one cell.
class CBlurDialog final : public CDialog {
public:
    CBlurDialog(QWidget* parent, const CBlurRequest& request);

    /// What cannot be read is not a number.
    CBlurForm Values() const;

protected:
    bool Accepts() override;

private:
    AcceptRule<CBlurForm> m_accept;
    CNumberSlider* m_blurX;
    CNumberSlider* m_blurY;
    QCheckBox* m_preserve;
};

} // namespace velmor
