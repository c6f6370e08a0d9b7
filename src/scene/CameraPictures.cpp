#include "scene/CameraPictures.h"

#include "render/FrameRequests.h"

#include <utility>

namespace velmor {

CCameraPictures::CCameraPictures(CSceneContext context, CImageCache& cache) : m_context(context), m_worker(cache) {
    m_context.views.Add(*this);
}

CCameraPictures::~CCameraPictures() {
    m_context.views.Remove(*this);
}

CStatus CCameraPictures::CreateBitmap() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen) // what the text means is "with no scene open"
        return CStatus::Failure("Internal error : CreateBitmap called with scene open!");
    const CShot shot{model.Scene(), model.Paths().SceneFolder(), model.cameraAntialias};
    if (!m_worker.Start(RequestCameraPicture(shot, model.cursorFrame)))
        m_context.Show("The system did not start a new background process for rendering!");
    return {};
}

std::shared_ptr<const CCameraPicture> CCameraPictures::GetCameraBitmap(PictureErrors errors) {
    std::shared_ptr<const CCameraPicture> picture = m_worker.Picture();
    if (errors == PictureErrors::Show && picture && picture != m_shown) {
        m_shown = picture; // before the message, whose loop may ask again
        if (!picture->error.empty() && m_toldFaults.insert(picture->error).second)
            m_context.Show(picture->error);
    }
    return picture;
}

void CCameraPictures::SetCameraBitmapCallback(std::function<void()> finished) {
    m_worker.SetFinishedCallback(std::move(finished));
}

void CCameraPictures::OnUpdate(UpdateHint hint) {
    if (hint == everythingHint)
        m_toldFaults.clear();
}

} // namespace velmor
