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

namespace {

// Where the window shows frames, on the screen. A window without a camera view counts as a whole.
QRect ShownPicture(const QWidget& window) {
    const QWidget* view = &window;
    for (const QWidget* child : window.findChildren<QWidget*>())
        if (dynamic_cast<const CCameraView*>(child) != nullptr && child->isVisible())
            view = child;
    return {view->mapToGlobal(QPoint()), view->size()};
}

} // namespace

void CQtPrompter::RunLineCheck(const CLineCheckRequest& request) {
    CLineCheckDialog dialog(Owner(), request);
    if (m_parent != nullptr)
        dialog.PlaceBeside(ShownPicture(*m_parent));
    dialog.exec();
}

void CQtPrompter::RunHistory(const CHistoryRequest& request) {
    CHistoryDialog dialog(Owner(), request);
    if (m_parent != nullptr)
        dialog.PlaceBeside(ShownPicture(*m_parent));
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
