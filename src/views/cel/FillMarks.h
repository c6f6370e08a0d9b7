#pragma once

#include "image/paint/MaskPlane.h"
#include "image/paint/Passage.h"
#include "views/ViewMapping.h"

#include <QTimer>

#include <functional>
#include <future>
#include <optional>
#include <vector>

namespace velmor {

struct CCelOverlay;

/// What fills have to show on the image under edit: the place where one was refused because of a leak and, on
/// request, the gaps between its lines. Those are found on a thread of their own while nobody draws: looking
/// through a page takes longer than a frame.
class CFillMarks {
public:
    /// What gaps are looked for, and in which state of the image.
    struct CState {
        int opened = 0; ///< images so far
        int changes = 0;
        int gap = 0;

        bool operator==(const CState&) const = default;
    };

    /// `state` tells what to look for now, nothing for not now; `lines` is asked for when that is news, and
    /// `changed` called when other gaps are known.
    CFillMarks(std::function<std::optional<CState>()> state, std::function<CMaskPlane()> lines,
               std::function<void()> changed);

    bool ShowsGaps() const { return m_showsGaps; }
    void ShowGaps(bool shown);
    /// The gaps that are known are not those any more, although the state is the same.
    void ForgetGaps();
    /// Marks a pixel; nothing takes the mark away.
    void SetLeak(std::optional<CPoint> leak);
    void AddTo(CCelOverlay& overlay, const CViewMapping& mapping) const;

private:
    void Look();
    void Take();

    std::function<std::optional<CState>()> m_state;
    std::function<CMaskPlane()> m_lines;
    std::function<void()> m_changed;
    bool m_showsGaps = false;
    std::optional<CPoint> m_leak;
    QTimer m_timer;
    std::optional<CState> m_known;
    std::optional<CState> m_sought;
    std::future<std::vector<CPassage>> m_search;
    std::vector<CPassage> m_gaps;
};

} // namespace velmor
