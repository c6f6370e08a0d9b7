#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QButtonGroup;

namespace velmor {

class CNumberEdit;

/// "Rotate Cel(s) / Picture(s)".
class CRotateDialog final : public CDialog {
public:
    explicit CRotateDialog(QWidget* parent, const CRotationRequest& request = {});

    CRotationValues Values() const;

protected:
    /// Every angle is taken.
    bool Accepts() override;

private:
    void AddKinds();
    RotationKind Kind() const;

    QButtonGroup* m_kinds;
    CNumberEdit* m_angle;
};

} // namespace velmor
