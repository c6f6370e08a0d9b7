#pragma once

#include "acquire/CaptureSession.h"
#include "platform/files/Files.h"
#include "scene/ScenePaths.h"
#include "views/dialogs/Dialog.h"

#include <QImage>
#include <functional>

class QCheckBox;
class QLabel;
class QRadioButton;
class QSlider;

namespace velmor {

class CCapturePreview;
class CNumberSlider;

struct CCaptureRequest {
    SourceMode kind = SourceMode::Cels; ///< cels or pictures
    CCaptureChoice camera;              ///< as chosen in setup
    int threshold = 0;                  ///< 0 to 255
    /// Takes a grabbed frame's bitmap file; false when nothing was kept.
    std::function<bool(const Path& bitmapFile, int threshold)> handOver;
    QImage lastImage; ///< the first onion skin; null for none
};

/// "Capture Cels" and "Capture Pictures": the camera's live picture, of which frames are grabbed one by one.
class CCaptureDialog final : public CDialog {
public:
    /// The session outlives the dialog, which disconnects it in the end.
    CCaptureDialog(QWidget* parent, CCaptureSession& session, CCaptureRequest request);

    /// 0 to 255; what was last entered that is.
    int Threshold() const { return m_request.threshold; }

    void done(int result) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    bool ForCels() const { return m_request.kind == SourceMode::Cels; }
    void MakeCaptureButton();
    QLayout* Controls();
    QWidget* DisplayGroup();
    QWidget* LineGroup();
    QWidget* OnionGroup();
    QLayout* StatusFields();
    /// Once the dialog is to be seen: what there is to say stands over it.
    void Open();
    void Capture();
    void TakeThreshold();
    void ShowState();

    CCaptureSession& m_session;
    CCaptureRequest m_request;
    bool m_isOpened = false;
    CCapturePreview* m_preview;
    QPushButton* m_capture;
    QRadioButton* m_overlayMode;
    QRadioButton* m_previewMode;
    CNumberSlider* m_threshold;
    QCheckBox* m_showLines;
    QSlider* m_onion;
    QLabel* m_deviceStatus;
    QLabel* m_countStatus;
};

} // namespace velmor
