#include "views/Text.h"
#include "views/player/MoviePlayerDialog.h"
#include "views/player/RecordSoundDialog.h"
#include "views/prompter/PlayingWait.h"
#include "views/prompter/QtPrompter.h"

#include <QMainWindow>
#include <QStatusBar>

namespace velmor {

void CQtPrompter::ShowStatus(const std::string& text) {
    if (auto* window = qobject_cast<QMainWindow*>(m_parent)) {
        window->statusBar()->showMessage(ToQt(text));
        window->statusBar()->repaint();
    }
}

void CQtPrompter::WaitWhilePlaying(const std::string& status, const std::function<bool()>& isPlaying) {
    ShowStatus(status);
    CPlayingWait(isPlaying).Run();
}

bool CQtPrompter::RunRecorder(CSoundRecorder& recorder) {
    return CRecordSoundDialog(Owner(), recorder, *this).exec() == QDialog::Accepted;
}

void CQtPrompter::PlayMovie(CMovie& movie) {
    CMoviePlayerDialog(Owner(), movie, *this, *m_profile).Run();
}

} // namespace velmor
