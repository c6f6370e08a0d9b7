#include "scene/DialogRequests.h"
#include "views/Text.h"
#include "views/camera/CameraView.h"
#include "views/dialogs/HistoryDialog.h"
#include "views/dialogs/LineCheckDialog.h"
#include "views/dialogs/RenderedDialog.h"
#include "views/dialogs/SceneManagerDialog.h"
#include "views/player/MoviePlayerDialog.h"
#include "views/player/RecordSoundDialog.h"
#include "views/prompter/PlayingWait.h"
#include "views/prompter/QtPrompter.h"

#include <QMainWindow>
#include <QStatusBar>

// What is opened to be worked or played with.

namespace velmor {

void CQtPrompter::PlaceBesidePicture(CDialog& dialog, const QWidget* instead) const {
    const QWidget* view = instead;
    if (m_parent != nullptr)
        for (const QWidget* child : m_parent->findChildren<QWidget*>())
            if (dynamic_cast<const CCameraView*>(child) != nullptr && child->isVisible())
                view = child;
    if (view != nullptr)
        dialog.PlaceBeside({view->mapToGlobal(QPoint()), view->size()});
}

void CQtPrompter::RunLineCheck(const CLineCheckRequest& request) {
    CLineCheckDialog dialog(Owner(), request);
    PlaceBesidePicture(dialog, m_parent);
    dialog.exec();
}

void CQtPrompter::RunHistory(const CHistoryRequest& request) {
    CHistoryDialog dialog(Owner(), request);
    PlaceBesidePicture(dialog, m_parent);
    dialog.exec();
}

void CQtPrompter::RunSceneManager(CSceneManager& manager) {
    CSceneManagerDialog(Owner(), manager).exec();
}

void CQtPrompter::OfferRendered(const CRenderedRequest& request) {
    CRenderedDialog(Owner(), request).exec();
}

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
