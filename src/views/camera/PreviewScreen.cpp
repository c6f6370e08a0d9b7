#include "views/camera/PreviewScreen.h"

#include "views/camera/PictureImage.h"

#include <chrono>
#include <utility>

namespace velmor {

namespace {

constexpr int passPeriod = 4; // ms; a frame lasts ten times as long

Milliseconds Now() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

CPreviewScreen::CPreviewScreen(CScenePreview& preview) : m_preview(preview) {
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(passPeriod);
    QObject::connect(&m_timer, &QTimer::timeout, &m_context, [this] { m_preview.Pass(Now()); });
}

void CPreviewScreen::Follow(int sceneWidth, CZoomLevel zoom, double pixelRatio) {
    if (!m_preview.IsPlaying()) {
        m_timer.stop();
        return;
    }
    if (!m_timer.isActive())
        m_timer.start();
    const PreviewPicture picture = m_preview.Picture();
    if (!picture || picture->pixels.empty() || picture == m_taken)
        return;
    m_taken = picture;
    m_image = ToImage(*picture, picture->width);
    if (picture->width == sceneWidth) // others have been composed for the view
        m_image = ReadyForZoom(m_image, zoom, pixelRatio);
}

void CPreviewScreen::LetGo() {
    if (m_preview.IsPlaying())
        return;
    m_taken.reset();
    m_image = {};
}

} // namespace velmor
