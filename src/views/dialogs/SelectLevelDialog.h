#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CLevelListWidget;

/// "Select Level": one of the levels.
class CSelectLevelDialog final : public CDialog {
public:
    CSelectLevelDialog(QWidget* parent, const CLevelRequest& request);

    /// Counted from 0; -1 for none.
    int Values() const;

private:
    CLevelListWidget* m_levels;
};

} // namespace velmor
