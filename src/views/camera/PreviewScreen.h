#pragma once

#include "scene/preview/ScenePreview.h"
#include "views/ZoomLevel.h"

#include <QImage>
#include <QObject>
#include <QTimer>

namespace velmor {

/// What is played in place, on its way to the camera view: hands the document's preview the time while it plays,
/// and keeps the frame that is to be seen as an image. The last one stays until the view has the cursor's own
/// picture.
class CPreviewScreen {
public:
    /// The preview outlives the object.
    explicit CPreviewScreen(CScenePreview& preview);
    CPreviewScreen(const CPreviewScreen&) = delete;
    CPreviewScreen& operator=(const CPreviewScreen&) = delete;

    bool HasPicture() const { return !m_image.isNull(); }
    /// Ready for the zoom at which it was taken.
    const QImage& Picture() const { return m_image; }
    /// Takes the frame that is to be seen, of a scene of that width, for a view of that zoom.
    void Follow(int sceneWidth, CZoomLevel zoom, double pixelRatio);
    /// Drops the last picture, unless it plays.
    void LetGo();

private:
    CScenePreview& m_preview;
    QObject m_context;
    QTimer m_timer;
    PreviewPicture m_taken;
    QImage m_image;
};

} // namespace velmor
