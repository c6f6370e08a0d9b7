#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

namespace velmor {

class CColorSwatch;
class CGridSample;
class CNumberEdit;

/// "Cel View Settings": the checkerboard behind transparent pixels.
class CGridSettingsDialog final : public CDialog {
public:
    CGridSettingsDialog(QWidget* parent, const CGridSettingsRequest& request);

    /// The size is 0 when it cannot be read.
    CGridSettings Values() const;

protected:
    bool Accepts() override;

private:
    void FollowChanges();
    void ShowSample();

    AcceptRule<CGridSettings> m_accept;
    CNumberEdit* m_size;
    CColorSwatch* m_color1;
    CColorSwatch* m_color2;
    CGridSample* m_sample;
};

} // namespace velmor
