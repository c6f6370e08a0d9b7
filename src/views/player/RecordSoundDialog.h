#pragma once

#include "views/dialogs/Dialog.h"

#include <QTimer>

class QLabel;
class QProgressBar;

namespace velmor {

class CLevelMeter;
class CSoundRecorder;
class IPrompter;

/// The dialog "Record Sound": accepted when the recording is to be saved. However it closes, nothing records or
/// plays any more.
class CRecordSoundDialog final : public CDialog {
public:
    /// `recorder` and `prompter` outlive the dialog.
    CRecordSoundDialog(QWidget* parent, CSoundRecorder& recorder, IPrompter& prompter);

    void done(int result) override;

protected:
    bool Accepts() override;

private:
    void BuildDisplay();
    void BuildButtons();
    QPushButton* AddButton(const char* name, const QString& text);
    void Record();
    void Play();
    void Stop();
    void Poll();
    /// Brings everything shown up to date, and the timers to whether there is anything to follow.
    void Show();
    void ShowLevel();

    CSoundRecorder& m_recorder;
    IPrompter& m_prompter;
    QTimer m_poll;
    QTimer m_levelPoll;
    QLabel* m_status = nullptr;
    QProgressBar* m_progress = nullptr;
    CLevelMeter* m_level = nullptr;
    QPushButton* m_record = nullptr;
    QPushButton* m_stop = nullptr;
    QPushButton* m_play = nullptr;
};

} // namespace velmor
