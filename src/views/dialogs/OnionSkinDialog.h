#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;
class QGridLayout;
class QGroupBox;

namespace velmor {

class CColorSwatch;
class CNumberSlider;
class CRadioGroup;

/// "Onion Skin": which drawings shine through the one under edit, and in which colours. What is chosen is seen at
/// once.
class COnionSkinDialog final : public CDialog {
public:
    COnionSkinDialog(QWidget* parent, const COnionSkinRequest& request);

    /// A number that cannot be read is as it was.
    COnionSettings Values() const;

protected:
    bool Accepts() override;

private:
    QGroupBox* MakeSkins(const COnionSettings& initial);
    QGroupBox* MakeLook(const COnionSettings& initial);
    QGroupBox* MakeTable(const COnionSettings& initial);
    void FollowChanges();
    void Show();

    const COnionSkinRequest& m_request;
    QCheckBox* m_shown;
    QCheckBox* m_inCamera;
    CRadioGroup* m_order;
    CNumberSlider* m_before;
    CNumberSlider* m_after;
    CColorSwatch* m_tintBefore;
    CColorSwatch* m_tintAfter;
    CNumberSlider* m_strength;
    CNumberSlider* m_kept;
    QCheckBox* m_withPaint;
    QCheckBox* m_over;
    CColorSwatch* m_tintTable;
    CNumberSlider* m_strengthTable;
};

} // namespace velmor
