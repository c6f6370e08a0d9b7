#pragma once

#include "acquire/CaptureSession.h"
#include "views/dialogs/Dialog.h"

class QLineEdit;
class QListWidget;
class QRadioButton;

namespace velmor {

class CCapturePreview;

/// "Capture Setup": chooses the capture driver and reaches its settings, with its picture beside.
class CCaptureSetupDialog final : public CDialog {
public:
    /// The session outlives the dialog, which disconnects it in the end.
    CCaptureSetupDialog(QWidget* parent, CCaptureSession& session, CCaptureChoice saved);

    void done(int result) override;

protected:
    bool Accepts() override;
    void showEvent(QShowEvent* event) override;

private:
    QLayout* DriverColumn();
    QLayout* PreviewColumn();
    QPushButton* Button(const char* name, const QString& text, const QString& toolTip,
                        std::function<void()> onClick);
    QRadioButton* ModeButton(const char* name, const QString& text, const QString& toolTip,
                             std::function<void()> onClick);
    /// Once the dialog is to be seen: what there is to say stands over it.
    void Open();
    void Select(const QString& description);
    void ShowState();
    void ShowWindow();
    void OpenVideoSource();
    void OpenVideoFormat();

    CCaptureSession& m_session;
    CCaptureChoice m_saved;
    bool m_isOpened = false;
    CCapturePreview* m_preview;
    QListWidget* m_drivers = nullptr;
    QLineEdit* m_selected = nullptr;
    QPushButton* m_videoSource = nullptr;
    QPushButton* m_videoFormat = nullptr;
    QRadioButton* m_overlayMode = nullptr;
    QRadioButton* m_previewMode = nullptr;
};

} // namespace velmor
