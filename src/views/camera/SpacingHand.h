#pragma once

#include "views/camera/CameraMarks.h"
#include "views/camera/CellHand.h"
#include "xsheet/Inbetween.h"
#include "xsheet/Spacing.h"

#include <functional>
#include <optional>

namespace velmor {

/// The keys between which a frame's tick is dragged on the path of a level: the selection's, where the frame lies
/// within it, otherwise those that stand out on the path. Nothing for a frame that is a key itself.
std::optional<CInbetweenKeys> KeysAround(const CPathRun& run, int frame,
                                         const std::optional<CInbetweenKeys>& selected);

/// The ticks of motion paths: dragged along the path they change the pace from key to key; with Ctrl a tick goes
/// alone.
class CSpacingHand final : public CCellHand {
public:
    /// `marks` are those that are shown. The document outlives the object.
    CSpacingHand(CVelmorltDoc& doc, std::function<const CCameraMarks&()> marks)
        : CCellHand(doc), m_marks(std::move(marks)) {}

    std::string CursorAt(CRealPoint client, const CViewMapping& mapping) const override;
    void Move(const CCameraHandPoint& to, const CViewMapping& mapping) override;

private:
    struct CTick {
        int level = 0;
        int frame = 0;
        CInbetweenKeys keys;
    };
    bool TakeHold(const CCameraHandPoint& at, const CViewMapping& mapping) override;
    void LetGo() override { m_spacing.reset(); }
    std::optional<CTick> TickAt(CRealPoint client, const CViewMapping& mapping) const;
    std::optional<CInbetweenKeys> SelectedKeys(int level) const;

    std::function<const CCameraMarks&()> m_marks;
    CTick m_tick;                      ///< that is dragged
    std::optional<CSpacing> m_spacing; ///< while one is
};

} // namespace velmor
