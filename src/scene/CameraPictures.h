#pragma once

#include "platform/Status.h"
#include "render/FrameWorker.h"
#include "scene/SceneContext.h"

#include <functional>
#include <memory>
#include <set>
#include <string>

namespace velmor {

class CImageCache;

/// Whether taking a camera picture shows what went wrong with it.
enum class PictureErrors { Show, Keep };

/// The picture of the current frame through the camera, composed on a thread of its own.
class CCameraPictures final : private IDocView {
public:
    /// `cache` outlives the object.
    CCameraPictures(CSceneContext context, CImageCache& cache);
    ~CCameraPictures() override;
    CCameraPictures(const CCameraPictures&) = delete;
    CCameraPictures& operator=(const CCameraPictures&) = delete;

    /// Starts composing the current frame. Fails, with the text, when no scene is open.
    CStatus CreateBitmap();
    /// Null while a picture is being composed. The error of a picture is shown once; Keep leaves that to a later
    /// call.
    std::shared_ptr<const CCameraPicture> GetCameraBitmap(PictureErrors errors = PictureErrors::Show);
    /// `finished` is called on another thread each time a picture is there.
    void SetCameraBitmapCallback(std::function<void()> finished);

private:
    void OnUpdate(UpdateHint hint) override;

    CSceneContext m_context;
    CFrameWorker m_worker;
    std::shared_ptr<const CCameraPicture> m_shown; ///< the last one whose error has been looked at
    /// Faults that the user has been told. Stepping through a scene meets the same broken file at every frame; it
    /// is told once, and again after the scene was opened anew.
    std::set<std::string> m_toldFaults;
};

} // namespace velmor
