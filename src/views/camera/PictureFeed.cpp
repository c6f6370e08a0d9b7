#include "views/camera/PictureFeed.h"

#include "render/FrameWorker.h"
#include "scene/CameraPictures.h"
#include "scene/Prompter.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/camera/PictureImage.h"

#include <QPointer>
#include <mutex>
#include <utility>

namespace velmor {

namespace {

constexpr int pollPeriod = 50;    // ms
constexpr int lateAfter = 100;    // ms; stepping through frames stays below it and does not flicker
constexpr int stuckAfter = 10000; // ms

} // namespace

struct CPictureFeed::CDoor {
    std::mutex mutex;
    bool open = true;
};

CPictureFeed::CPictureFeed(CVelmorltDoc& doc, IPrompter& prompter, std::function<void()> changed)
    : m_doc(doc), m_prompter(prompter), m_changed(std::move(changed)), m_door(std::make_shared<CDoor>()) {
    m_poll.setInterval(pollPeriod);
    m_lateTimer.setInterval(lateAfter);
    m_lateTimer.setSingleShot(true);
    QObject::connect(&m_poll, &QTimer::timeout, &m_context, [this] { Take(); });
    QObject::connect(&m_lateTimer, &QTimer::timeout, &m_context, [this] {
        m_late = true;
        m_changed();
    });
    m_doc.CameraPictures().SetCameraBitmapCallback([this, door = m_door] {
        const std::lock_guard lock(door->mutex);
        if (door->open)
            QMetaObject::invokeMethod(
                &m_context, [this] { Take(); }, Qt::QueuedConnection);
    });
}

CPictureFeed::~CPictureFeed() {
    const std::lock_guard lock(m_door->mutex);
    m_door->open = false;
}

void CPictureFeed::Renew() {
    ForgetOtherScene();
    if (m_running != Order::None && !IsStuck()) {
        m_pending = Order::Renew;
        if (!m_late && !m_lateTimer.isActive())
            m_lateTimer.start();
    } else {
        Start(Order::Renew);
    }
}

void CPictureFeed::Follow() {
    ForgetOtherScene();
    if (m_contents == CurrentContents())
        return;
    if (m_running == Order::None)
        Start(Order::Follow);
    else if (m_pending == Order::None)
        m_pending = Order::Follow;
}

void CPictureFeed::Forget() {
    m_poll.stop();
    m_lateTimer.stop();
    m_running = m_pending = Order::None;
    m_contents.reset();
    m_scene.reset();
    m_late = false;
    if (!std::exchange(m_image, {}).isNull())
        m_changed();
}

CPictureFeed::CContents CPictureFeed::CurrentContents() const {
    const CSceneModel& model = m_doc.Model();
    CContents contents{
        model.Scene().geometry, model.Scene().camera.At(model.cursorFrame), model.cameraAntialias, {}};
    for (int level = 0; level < model.Scene().xsheet.LevelCount(); ++level)
        contents.cells.push_back(model.Scene().xsheet.Cell(level, model.cursorFrame));
    return contents;
}

// A picture of another scene, or of another size, is not to be seen for a moment even.
void CPictureFeed::ForgetOtherScene() {
    const CSceneModel& model = m_doc.Model();
    CScene scene{model.databaseFolder, model.sceneName, model.Scene().geometry.Frame()};
    if (m_scene == scene)
        return;
    Forget();
    m_scene = std::move(scene);
}

void CPictureFeed::Start(Order order) {
    m_pending = Order::None;
    m_contents = CurrentContents();
    if (const CStatus started = m_doc.CameraPictures().CreateBitmap(); !started) {
        Forget();
        m_prompter.ShowMessage(started.Message());
        m_prompter.ShowMessage("Internal error : Could not update mem dc");
        return;
    }
    m_running = order;
    m_runningSince.start();
    m_poll.start();
    if (order == Order::Renew && !m_late && !m_lateTimer.isActive())
        m_lateTimer.start();
}

void CPictureFeed::StartPending() {
    switch (std::exchange(m_pending, Order::None)) {
    case Order::None:
        break;
    case Order::Follow:
        Follow();
        break;
    case Order::Renew:
        Start(Order::Renew);
        break;
    }
}

void CPictureFeed::Take() {
    if (m_running == Order::None)
        return;
    const std::shared_ptr<const CCameraPicture> picture =
        m_doc.CameraPictures().GetCameraBitmap(PictureErrors::Keep);
    if (!picture)
        return;
    const Order taken = std::exchange(m_running, Order::None);
    m_poll.stop();
    m_lateTimer.stop();
    m_late = m_late && m_pending == Order::Renew; // does not come and go while pictures lag behind
    m_image = ToImage(picture->frame, m_doc.Model().Scene().geometry.width);
    m_changed();
    if (taken == Order::Renew && !picture->error.empty()) {
        // The message runs a loop of its own, in which all of this may happen again and the view may be closed.
        const QPointer<QObject> alive(&m_context);
        m_doc.CameraPictures().GetCameraBitmap();
        if (!alive)
            return;
    }
    if (m_running == Order::None)
        StartPending();
}

// Where no thread could be started a picture never comes.
bool CPictureFeed::IsStuck() const {
    return m_runningSince.hasExpired(stuckAfter);
}

} // namespace velmor
