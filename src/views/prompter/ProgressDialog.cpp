#include "views/prompter/ProgressDialog.h"

#include "views/Text.h"
#include "views/prompter/TimeLeft.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

namespace velmor {

namespace {

constexpr qint64 showAfter = 300;   // milliseconds
constexpr qint64 refreshEvery = 33; // milliseconds

} // namespace

CProgressDialog::CProgressDialog(QWidget* parent, const QString& title)
    : QDialog(parent), m_text(new QLabel), m_bar(new QProgressBar), m_timeLeft(new QLabel) {
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    auto* stop = new QPushButton("STOP");
    stop->setObjectName("stop");
    stop->setToolTip("Asks whether to stop the work");
    connect(stop, &QPushButton::clicked, this, &CProgressDialog::reject);

    m_text->setObjectName("text");
    m_text->setTextFormat(Qt::PlainText);
    m_bar->setObjectName("bar");
    m_bar->setRange(0, 100);
    m_timeLeft->setObjectName("timeLeft");
    m_timeLeft->setForegroundRole(QPalette::PlaceholderText);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_timeLeft, 1);
    bottom->addWidget(stop);
    auto* all = new QVBoxLayout(this);
    all->setSpacing(10);
    all->addWidget(m_text);
    all->addWidget(m_bar);
    all->addLayout(bottom);
    all->setSizeConstraint(QLayout::SetFixedSize);
    m_bar->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    m_text->setMaximumWidth(m_bar->minimumWidth());
}

void CProgressDialog::SetState(int percent, const QString& text, const QString& timeLeft) {
    m_text->setText(text);
    m_bar->setValue(percent);
    m_timeLeft->setText(timeLeft);
}

bool CProgressDialog::TakeStopRequest() {
    return std::exchange(m_stopRequested, false);
}

CWindowProgress::CWindowProgress(QWidget* parent, const QString& title)
    : m_dialog(parent, title), m_wait(std::in_place) {
    m_clock.start();
}

void CWindowProgress::Report(int percent, const std::string& text) {
    const qint64 now = m_clock.elapsed();
    if (m_askedAt >= 0)
        m_rested += now - std::exchange(m_askedAt, -1);
    if (m_handlingEvents || now < showAfter || (m_dialog.isVisible() && now - m_lastShown < refreshEvery))
        return;
    m_lastShown = now;
    m_dialog.SetState(percent, ToQt(text), ToQt(TimeLeftText(percent, now - m_rested)));
    if (!m_dialog.isVisible()) {
        m_wait.reset();
        m_noWait.emplace();
        m_dialog.show();
    }
    HandleEvents();
}

void CWindowProgress::HandleEvents() {
    // What runs meanwhile may report as well: events are handled one level deep only.
    m_handlingEvents = true;
    QApplication::processEvents();
    m_handlingEvents = false;
}

bool CWindowProgress::TakeStopRequest() {
    const bool stop = m_dialog.TakeStopRequest();
    if (stop)
        m_askedAt = m_clock.elapsed();
    return stop;
}

} // namespace velmor
