#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CNumberEdit;

/// "How many frames ?"
class CFrameCountDialog final : public CDialog {
public:
    CFrameCountDialog(QWidget* parent, const CFrameCountRequest& request);

    int Values() const;

protected:
    bool Accepts() override;

private:
    const CFrameCountRequest& m_request;
    CNumberEdit* m_count;
};

} // namespace velmor
