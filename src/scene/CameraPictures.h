#pragma once

#include "platform/Status.h"
#include "render/FrameWorker.h"
#include "scene/PictureOrders.h"
#include "scene/SceneContext.h"

#include <functional>
#include <memory>

namespace velmor {

class CImageCache;

/// The picture of the current frame through the camera, composed on a thread of its own by the rules of its orders.
class CCameraPictures final : private IDocView {
public:
    /// `cache` outlives the object.
    CCameraPictures(CSceneContext context, CImageCache& cache);
    ~CCameraPictures() override;
    CCameraPictures(const CCameraPictures&) = delete;
    CCameraPictures& operator=(const CCameraPictures&) = delete;

    /// Orders a picture of the current frame in any case, and one when it has changed. What was seen before may be
    /// gone afterwards. Without a scene, which is shown, nothing is seen any more.
    void Renew();
    void Follow();
    /// Drops the picture and whatever is under way.
    void Forget();
    /// Has the picture that was waited for seen if it is there, shows its error, and begins the next.
    void Take(const std::function<void(const CCameraPicture& picture)>& see);
    /// Time has passed. True when the picture that is waited for has become late by it.
    bool Tick();
    const CPictureOrders& Orders() const { return m_orders; }
    /// The clock of the orders.
    static CPictureOrders::Time Now();

    /// Starts composing the current frame, whatever was ordered. Fails, with the text, when no scene is open.
    CStatus CreateBitmap();
    /// Null while a picture is being composed. The error of a picture is shown once.
    std::shared_ptr<const CCameraPicture> GetCameraBitmap();
    /// `finished` is called on another thread each time a picture is there.
    void SetCameraBitmapCallback(std::function<void()> finished);

private:
    void OnUpdate(UpdateHint hint) override;
    CStatus Compose();
    void Begin();
    std::shared_ptr<const CCameraPicture> Newest() const;
    void ShowError(const CCameraPicture& picture);

    CSceneContext m_context;
    CPictureOrders m_orders;
    CFrameWorker m_worker;
};

} // namespace velmor
