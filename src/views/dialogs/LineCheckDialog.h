#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QLabel;
class QSlider;
class QTimer;

namespace velmor {

/// "Line Check!": steps through the frames with a slider. A frame is shown when the window has come to rest, so
/// that a fast drag shows the newest frame and never works off those it has passed.
class CLineCheckDialog final : public CDialog {
public:
    CLineCheckDialog(QWidget* parent, const CLineCheckRequest& request);

    void done(int result) override;

private:
    void ShowFrame();

    std::function<void(int)> m_showFrame;
    int m_shown; ///< the frame last shown, from 1
    QSlider* m_slider;
    QLabel* m_frame;
    QTimer* m_pending;
};

} // namespace velmor
