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

CPictureOrders::Time CCameraPictures::Now() {
    return std::chrono::duration_cast<CPictureOrders::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

void CCameraPictures::Renew() {
    if (m_orders.Renew(SubjectOf(m_context.model), Now()))
        Begin();
}

void CCameraPictures::Follow() {
    if (m_orders.Follow(SubjectOf(m_context.model), Now()))
        Begin();
}

void CCameraPictures::Forget() {
    m_orders.Forget();
}

void CCameraPictures::Take(const std::function<void(const CCameraPicture& picture)>& see) {
    const std::shared_ptr<const CCameraPicture> picture = Newest();
    if (!picture || !m_orders.Accept(picture->number))
        return;
    see(*picture);
    if (m_orders.IsOutspoken())
        ShowError(*picture); // whose loop may come here again
    if (m_orders.FollowUp(SubjectOf(m_context.model), Now()))
        Begin();
}

bool CCameraPictures::Tick() {
    return m_orders.Tick(Now());
}

CStatus CCameraPictures::CreateBitmap() {
    m_orders.Replace();
    return Compose();
}

std::shared_ptr<const CCameraPicture> CCameraPictures::GetCameraBitmap() {
    std::shared_ptr<const CCameraPicture> picture = Newest();
    if (picture)
        ShowError(*picture);
    return picture;
}

void CCameraPictures::SetCameraBitmapCallback(std::function<void()> finished) {
    m_worker.SetFinishedCallback(std::move(finished));
}

void CCameraPictures::OnUpdate(UpdateHint hint) {
    if (hint == everythingHint)
        m_orders.ForgetFaults();
}

void CCameraPictures::Begin() {
    if (const CStatus begun = Compose(); !begun) {
        Forget();
        m_context.Show(begun.Message());
        m_context.Show("Internal error : Could not update mem dc");
    }
}

CStatus CCameraPictures::Compose() {
    const CSceneModel& model = m_context.model;
    if (!model.sceneOpen) // what the text means is "with no scene open"
        return CStatus::Failure("Internal error : CreateBitmap called with scene open!");
    const CShot shot{model.Scene(), model.Paths().SceneFolder(), model.cameraAntialias};
    if (!m_worker.Start(RequestCameraPicture(shot, model.cursorFrame), m_orders.Newest()))
        m_context.Show("The system did not start a new background process for rendering!");
    return {};
}

std::shared_ptr<const CCameraPicture> CCameraPictures::Newest() const {
    std::shared_ptr<const CCameraPicture> picture = m_worker.Picture();
    return picture && picture->number == m_orders.Newest() ? picture : nullptr;
}

void CCameraPictures::ShowError(const CCameraPicture& picture) {
    if (m_orders.IsNews(picture.number, picture.error))
        m_context.Show(picture.error);
}

} // namespace velmor
