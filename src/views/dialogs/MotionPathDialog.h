#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CRadioGroup;

/// "Motion Path Setup": the levels whose motion paths are shown.
class CMotionPathDialog final : public CDialog {
public:
    CMotionPathDialog(QWidget* parent, const CMotionPathRequest& request);

    /// 0 all levels, 1 movement-selected levels, 2 none.
    int Values() const;

private:
    CRadioGroup* m_setup;
};

} // namespace velmor
