#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QComboBox;
class QLineEdit;

namespace velmor {

class CColorSwatch;
class CNumberEdit;

/// "New Scene" and "Scene Settings". Size and rate are the preset's, or with "Custom" the user's own.
class CSceneSettingsDialog final : public CDialog {
public:
    CSceneSettingsDialog(QWidget* parent, const CSceneSettingsRequest& request);

    CSceneSettings Values() const;

protected:
    bool Accepts() override;

private:
    void AddFields();
    QLayout* SizeFields();
    QLayout* RateFields();
    QLayout* BackgroundFields();
    /// Fills the preset's values in; with "Custom" what stands in the fields stays.
    void ChoosePreset(int preset);
    void SelectTypedRate();

    const CSceneSettingsRequest& m_request;
    QLineEdit* m_name;
    CNumberEdit* m_length;
    QComboBox* m_presets;
    CNumberEdit* m_width;
    CNumberEdit* m_height;
    CNumberEdit* m_rate;
    QComboBox* m_rates;
    CColorSwatch* m_background;
};

} // namespace velmor
