#pragma once

#include "xsheet/CameraTrack.h"
#include "xsheet/XSheetCell.h"
#include "xsheet/XSheetFile.h"

#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace velmor {

struct CSceneModel;

/// What a camera picture is ordered of.
struct CPictureSubject {
    std::string folder; ///< of the database
    std::string scene;
    CSceneGeometry geometry;
    CCameraFrame camera;
    bool antialias = false;
    std::vector<CXSheetCell> cells;

    bool operator==(const CPictureSubject&) const = default;
};

/// The current frame as it is now, files aside.
CPictureSubject SubjectOf(const CSceneModel& model);

/// Which camera pictures are composed, which of them are seen, and what the user is told of them. One at a time is
/// composed; what is ordered meanwhile waits for it and is then composed as things stand, so that pictures keep
/// appearing however fast the orders come. A picture stays until the next one is there, and one that comes late,
/// when another has been begun or the scene is gone, is dropped.
///
/// Knows no thread and no clock: whoever composes says what has come, and when.
class CPictureOrders {
public:
    using Time = std::chrono::milliseconds; ///< since any moment that stays the same

    /// After this, what is waited for counts as late; stepping through frames stays below it and does not flicker.
    static constexpr Time lateAfter{100};
    /// After this, no picture is expected any more: where no thread could be started it never comes.
    static constexpr Time stuckAfter{10000};

    /// Orders a picture in any case: files may have changed. What is wrong with it the user is told. True when it
    /// is to be begun now.
    [[nodiscard]] bool Renew(const CPictureSubject& subject, Time now);
    /// Orders a picture if the last one was ordered of something else. What is wrong with it is not told: such
    /// pictures follow the mouse.
    [[nodiscard]] bool Follow(const CPictureSubject& subject, Time now);
    /// Once nothing is composed any more: whether what waited is to be begun.
    [[nodiscard]] bool FollowUp(const CPictureSubject& subject, Time now);
    /// Numbers a picture that is begun whatever else is under way, which is dropped.
    void Replace() { ++m_newest; }
    /// Drops the picture that is seen and whatever is under way.
    void Forget();

    /// The number of the picture that was begun last.
    unsigned Newest() const { return m_newest; }
    bool IsComposing() const { return m_running != Order::None; }
    /// The picture that is to be seen; nothing while there is none.
    std::optional<unsigned> Seen() const { return m_seen; }

    /// A picture has come. False when it is not waited for, and thus not to be seen.
    [[nodiscard]] bool Accept(unsigned number);
    /// Whether what is wrong with the accepted picture is to be told.
    bool IsOutspoken() const { return m_accepted == Order::Renew; }
    /// Whether the user is to be told of a picture's fault; an empty text is none. Stepping through a scene meets
    /// the same broken file at every frame; it is told once.
    [[nodiscard]] bool IsNews(unsigned number, const std::string& fault);
    /// The scene was opened anew: faults are told again.
    void ForgetFaults() { m_toldFaults.clear(); }

    bool IsLate() const { return m_isLate; }
    /// How long until what is waited for counts as late; nothing when it never will, or does already.
    std::optional<Time> UntilLate(Time now) const;
    /// Time has passed. True when what is waited for has become late by it.
    bool Tick(Time now);

private:
    enum class Order { None, Follow, Renew };

    void ForgetOtherScene(const CPictureSubject& subject);
    bool Begin(Order order, const CPictureSubject& subject, Time now);
    void AwaitFrom(Time now);

    std::optional<CPictureSubject> m_subject; ///< of the last picture that was begun
    Order m_running = Order::None;
    Order m_waiting = Order::None;
    Order m_accepted = Order::None;
    unsigned m_newest = 0;
    std::optional<unsigned> m_seen;
    Time m_begun{};
    std::optional<Time> m_awaitedSince; ///< while it is not late yet
    bool m_isLate = false;
    unsigned m_lookedAt = 0; ///< the last picture whose fault has been looked at
    std::set<std::string> m_toldFaults;
};

} // namespace velmor
