#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CNumberSlider;

/// "Import Settings": which greys become lines when an image becomes a cel.
class CImportSettingsDialog final : public CDialog {
public:
    CImportSettingsDialog(QWidget* parent, const CImportSettingsRequest& request);

    /// 0 to 255, once accepted.
    int Values() const;

protected:
    bool Accepts() override;

private:
    CNumberSlider* m_threshold;
};

} // namespace velmor
