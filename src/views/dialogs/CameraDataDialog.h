#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"
#include "views/widgets/TurnsEdit.h"

namespace velmor {

class CNumberEdit;

/// "Edit Current Frame Camera Parameters".
class CCameraDataDialog final : public CDialog {
public:
    CCameraDataDialog(QWidget* parent, const CCameraDataRequest& request);

    CCameraForm Values() const;

protected:
    /// Every number is taken.
    bool Accepts() override;

private:
    void AddFields(int frame);
    void Show(const CCameraForm& form);

    CNumberEdit* m_posX;
    CNumberEdit* m_posY;
    CNumberEdit* m_zoom;
    CTurnsEdit m_rotation;
};

} // namespace velmor
