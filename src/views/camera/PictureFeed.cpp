#include "views/camera/PictureFeed.h"

#include "scene/CameraPictures.h"
#include "views/camera/PictureImage.h"

#include <QPointer>
#include <mutex>
#include <utility>

namespace velmor {

namespace {

constexpr int pollPeriod = 50; // ms

} // namespace

struct CPictureFeed::CDoor {
    std::mutex mutex;
    bool open = true;
};

CPictureFeed::CPictureFeed(const CSceneModel& model, CCameraPictures& pictures, std::function<void()> changed)
    : m_model(model), m_pictures(pictures), m_changed(std::move(changed)), m_door(std::make_shared<CDoor>()) {
    m_poll.setInterval(pollPeriod);
    m_lateTimer.setSingleShot(true);
    QObject::connect(&m_poll, &QTimer::timeout, &m_context, [this] { Take(); });
    QObject::connect(&m_lateTimer, &QTimer::timeout, &m_context, [this] { Tick(); });
    m_pictures.SetCameraBitmapCallback([this, door = m_door] {
        const std::lock_guard lock(door->mutex);
        if (door->open)
            QMetaObject::invokeMethod(
                &m_context, [this] { Take(); }, Qt::QueuedConnection);
    });
}

CPictureFeed::~CPictureFeed() {
    m_pictures.Forget();
    const std::lock_guard lock(m_door->mutex);
    m_door->open = false;
}

void CPictureFeed::Renew() {
    m_pictures.Renew();
    Refresh();
}

void CPictureFeed::Follow() {
    m_pictures.Follow();
    Refresh();
}

void CPictureFeed::Forget() {
    m_pictures.Forget();
    Refresh();
}

bool CPictureFeed::IsLate() const {
    return m_pictures.Orders().IsLate();
}

void CPictureFeed::Take() {
    // What is wrong with a picture is told in a loop of its own, in which the view may be closed.
    const QPointer<QObject> alive(&m_context);
    m_pictures.Take([this](const CCameraPicture& picture) {
        m_image = ToImage(picture.frame, m_model.Scene().geometry.width);
        Refresh();
        m_changed();
    });
    if (alive)
        Refresh();
}

void CPictureFeed::Tick() {
    if (m_pictures.Tick())
        m_changed();
    Refresh();
}

// Brings image and timers into step with the orders.
void CPictureFeed::Refresh() {
    const CPictureOrders& orders = m_pictures.Orders();
    if (!orders.IsComposing())
        m_poll.stop();
    else if (!m_poll.isActive())
        m_poll.start();
    const auto late = orders.UntilLate(CCameraPictures::Now());
    if (!late)
        m_lateTimer.stop();
    else if (!m_lateTimer.isActive())
        m_lateTimer.start(*late);
    if (!orders.Seen() && !std::exchange(m_image, {}).isNull())
        m_changed();
}

} // namespace velmor
