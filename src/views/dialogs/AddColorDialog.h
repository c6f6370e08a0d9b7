#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;
class QLineEdit;

namespace velmor {

class CColorSwatch;
class CNumberSlider;

/// "Add Color", for a new entry of the palette and for changing one.
class CAddColorDialog final : public CDialog {
public:
    CAddColorDialog(QWidget* parent, const CColorRequest& request);

    CColorValues Values() const;

protected:
    bool Accepts() override;

private:
    void ShowOpacity();

    AcceptRule<CColorValues> m_accept;
    CColorSwatch* m_swatch;
    CNumberSlider* m_opacity;
    QLineEdit* m_name;
    QCheckBox* m_repaints;
};

} // namespace velmor
