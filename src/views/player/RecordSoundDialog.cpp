#include "views/player/RecordSoundDialog.h"

#include "scene/Prompter.h"
#include "sound/SoundRecorder.h"
#include "views/Icons.h"
#include "views/Text.h"
#include "views/widgets/LevelMeter.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int pollMilliseconds = 200;
constexpr int levelMilliseconds = 40;
constexpr int iconSize = 20;
constexpr int leastWidth = 380;

} // namespace

CRecordSoundDialog::CRecordSoundDialog(QWidget* parent, CSoundRecorder& recorder, IPrompter& prompter)
    : CDialog(parent, "Record Sound"), m_recorder(recorder), m_prompter(prompter) {
    setObjectName("recordSound");
    setMinimumWidth(leastWidth);
    BuildDisplay();
    BuildButtons();
    m_poll.setInterval(pollMilliseconds);
    m_levelPoll.setInterval(levelMilliseconds);
    connect(&m_poll, &QTimer::timeout, this, [this] { Poll(); });
    connect(&m_levelPoll, &QTimer::timeout, this, [this] { ShowLevel(); });
    Show();
    m_record->setFocus();
}

void CRecordSoundDialog::BuildDisplay() {
    Body().addWidget(new QLabel("Press record when ready, press stop to end."));
    m_status = new QLabel;
    m_status->setObjectName("status");
    QFont font = m_status->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    m_status->setFont(font);
    Body().addWidget(m_status);
    m_progress = new QProgressBar;
    m_progress->setObjectName("progress");
    m_progress->setRange(0, CSoundRecorder::mostSeconds);
    m_progress->setTextVisible(false);
    m_progress->setFixedHeight(10);
    m_progress->setToolTip("Length, up to a minute");
    m_progress->setAccessibleName("Length");
    m_level = new CLevelMeter;
    m_level->setToolTip("How loud it is");
    m_level->setAccessibleName("Level");
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(8);
    grid->addWidget(m_progress, 0, 0);
    grid->addWidget(new QLabel("max"), 0, 1);
    grid->addWidget(m_level, 1, 0);
    Body().addLayout(grid);
}

QPushButton* CRecordSoundDialog::AddButton(const char* name, const QString& text) {
    auto* button = new QPushButton(Icon(name), text);
    button->setObjectName(name);
    button->setIconSize({iconSize, iconSize});
    button->setMinimumHeight(36);
    return button;
}

void CRecordSoundDialog::BuildButtons() {
    m_record = AddButton("record", "&Record");
    m_stop = AddButton("stop", "S&top");
    m_play = AddButton("play", "&Play");
    m_record->setToolTip("Record anew");
    m_stop->setToolTip("Stop recording or playing");
    m_play->setToolTip("Listen to the recording");
    Body().addSpacing(4);
    auto* row = new QHBoxLayout;
    for (QPushButton* button : {m_record, m_stop, m_play})
        row->addWidget(button, 1);
    Body().addLayout(row);
    OkButton().setText("&Save");
    OkButton().setToolTip("Save the recording as a sound of the scene");
    CancelButton().setText("Cancel");
    CancelButton().setToolTip("Discard the recording");
    connect(m_record, &QPushButton::clicked, this, [this] { Record(); });
    connect(m_stop, &QPushButton::clicked, this, [this] { Stop(); });
    connect(m_play, &QPushButton::clicked, this, [this] { Play(); });
}

void CRecordSoundDialog::Record() {
    const CStatus started = m_recorder.Record();
    Show();
    if (started)
        m_stop->setFocus();
    else
        m_prompter.ShowMessage(started.Message());
}

void CRecordSoundDialog::Play() {
    const CStatus started = m_recorder.Play([this](const std::string& text) { m_prompter.ShowMessage(text); });
    Show();
    if (started)
        m_stop->setFocus();
    else
        m_prompter.ShowMessage(started.Message());
}

void CRecordSoundDialog::Stop() {
    m_recorder.Stop();
    Show();
    (m_recorder.CanUseRecording() ? m_play : m_record)->setFocus();
}

void CRecordSoundDialog::Poll() {
    m_recorder.Poll();
    Show();
    if (!m_recorder.CanStop())
        (m_recorder.CanUseRecording() ? m_play : m_record)->setFocus();
}

void CRecordSoundDialog::Show() {
    m_status->setText(ToQt(m_recorder.StatusText()));
    m_progress->setValue(m_recorder.ProgressSeconds());
    m_record->setEnabled(m_recorder.CanRecord());
    m_stop->setEnabled(m_recorder.CanStop());
    m_play->setEnabled(m_recorder.CanUseRecording());
    OkButton().setEnabled(m_recorder.CanUseRecording());
    if (m_recorder.CanStop() == m_poll.isActive())
        return;
    for (QTimer* timer : {&m_poll, &m_levelPoll})
        m_recorder.CanStop() ? timer->start() : timer->stop();
    m_level->Clear();
}

void CRecordSoundDialog::ShowLevel() {
    m_level->SetLevel(m_recorder.LevelPercent());
}

bool CRecordSoundDialog::Accepts() {
    return m_recorder.CanUseRecording();
}

void CRecordSoundDialog::done(int result) {
    m_poll.stop();
    m_levelPoll.stop();
    m_recorder.Stop();
    CDialog::done(result);
}

} // namespace velmor
