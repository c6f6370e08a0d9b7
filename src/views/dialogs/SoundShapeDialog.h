#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QLabel;

namespace velmor {

class CNumberEdit;
class CNumberSlider;

/// "Sound Trim and Level" of a sound that is placed on the xsheet.
class CSoundShapeDialog final : public CDialog {
public:
    CSoundShapeDialog(QWidget* parent, const CSoundShapeRequest& request);

    /// What cannot be read is not a number.
    CSoundShape Values() const;

protected:
    bool Accepts() override;

private:
    void ShowHeard();

    const CSoundShapeRequest& m_request;
    CNumberEdit* m_trimIn;
    CNumberEdit* m_trimOut;
    CNumberSlider* m_level;
    QLabel* m_heard;
};

} // namespace velmor
