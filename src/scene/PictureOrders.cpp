#include "scene/PictureOrders.h"

#include "scene/SceneModel.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace velmor {

CPictureSubject SubjectOf(const CSceneModel& model) {
    const CScene& scene = model.Scene();
    CPictureSubject subject{model.databaseFolder,  model.sceneName,
                            scene.geometry,        scene.camera.At(model.cursorFrame),
                            model.cameraAntialias, {}};
    for (int level = 0; level < scene.xsheet.LevelCount(); ++level)
        subject.cells.push_back(scene.xsheet.Cell(level, model.cursorFrame));
    return subject;
}

bool CPictureOrders::Renew(const CPictureSubject& subject, Time now) {
    ForgetOtherScene(subject);
    const bool isStuck = now - m_begun > stuckAfter;
    if (!IsComposing() || isStuck)
        return Begin(Order::Renew, subject, now);
    m_waiting = Order::Renew;
    AwaitFrom(now);
    return false;
}

bool CPictureOrders::Follow(const CPictureSubject& subject, Time now) {
    ForgetOtherScene(subject);
    if (m_subject == subject)
        return false;
    if (!IsComposing())
        return Begin(Order::Follow, subject, now);
    if (m_waiting == Order::None)
        m_waiting = Order::Follow;
    return false;
}

bool CPictureOrders::FollowUp(const CPictureSubject& subject, Time now) {
    if (IsComposing())
        return false;
    switch (std::exchange(m_waiting, Order::None)) {
    case Order::None:
        break;
    case Order::Follow:
        return Follow(subject, now);
    case Order::Renew:
        return Begin(Order::Renew, subject, now);
    }
    return false;
}

void CPictureOrders::Forget() {
    m_running = m_waiting = Order::None;
    m_subject.reset();
    m_seen.reset();
    m_awaitedSince.reset();
    m_isLate = false;
}

// A picture of another scene, or of another size, is not to be seen for a moment even.
void CPictureOrders::ForgetOtherScene(const CPictureSubject& subject) {
    const auto sceneOf = [](const CPictureSubject& of) {
        return std::tuple(of.folder, of.scene, of.geometry.Frame());
    };
    if (m_subject && sceneOf(*m_subject) != sceneOf(subject))
        Forget();
}

bool CPictureOrders::Begin(Order order, const CPictureSubject& subject, Time now) {
    m_running = order;
    m_waiting = Order::None;
    m_subject = subject;
    m_begun = now;
    ++m_newest;
    if (order == Order::Renew)
        AwaitFrom(now);
    return true;
}

bool CPictureOrders::Accept(unsigned number) {
    if (!IsComposing() || number != m_newest)
        return false;
    m_accepted = std::exchange(m_running, Order::None);
    m_seen = number;
    m_awaitedSince.reset();
    m_isLate = m_isLate && m_waiting == Order::Renew; // does not come and go while pictures lag behind
    return true;
}

bool CPictureOrders::IsNews(unsigned number, const std::string& fault) {
    const bool isLookedAt = std::exchange(m_lookedAt, number) == number;
    return !isLookedAt && !fault.empty() && m_toldFaults.insert(fault).second;
}

void CPictureOrders::AwaitFrom(Time now) {
    if (!m_isLate && !m_awaitedSince)
        m_awaitedSince = now;
}

std::optional<CPictureOrders::Time> CPictureOrders::UntilLate(Time now) const {
    if (!m_awaitedSince)
        return std::nullopt;
    return std::max(Time(0), *m_awaitedSince + lateAfter - now);
}

bool CPictureOrders::Tick(Time now) {
    if (UntilLate(now) != Time(0))
        return false;
    m_awaitedSince.reset();
    return m_isLate = true;
}

} // namespace velmor
