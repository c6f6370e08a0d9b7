#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"
#include "views/widgets/TurnsEdit.h"

class QCheckBox;

namespace velmor {

class CNumberEdit;

/// "Edit XSheet Cel Data": placement and effects of one cell.
class CCellDataDialog final : public CDialog {
public:
    CCellDataDialog(QWidget* parent, const CCellDataRequest& request);

    /// What cannot be read is not a number.
    CCellDataForm Values() const;

protected:
    bool Accepts() override;

private:
    void AddFields();
    void Show(const CCellDataForm& form);

    AcceptRule<CCellDataForm> m_accept;
    CNumberEdit* m_posX;
    CNumberEdit* m_posY;
    CNumberEdit* m_scaleX;
    CNumberEdit* m_scaleY;
    QCheckBox* m_preserveScale;
    CTurnsEdit m_rotation;
    CNumberEdit* m_blurX;
    CNumberEdit* m_blurY;
    QCheckBox* m_preserveBlur;
    CNumberEdit* m_transparency;
};

} // namespace velmor
