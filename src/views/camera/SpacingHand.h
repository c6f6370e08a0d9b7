#pragma once

#include "views/camera/CameraHand.h"
#include "views/camera/CameraMarks.h"
#include "xsheet/Inbetween.h"
#include "xsheet/Spacing.h"

#include <functional>
#include <optional>

namespace velmor {

class CVelmorltDoc;

/// The keys between which a frame's tick is dragged on the path of a level: the selection's, where the frame lies
/// within it, otherwise those that stand out on the path. Nothing for a frame that is a key itself.
std::optional<CInbetweenKeys> KeysAround(const CPathRun& run, int frame,
                                         const std::optional<CInbetweenKeys>& selected);

/// The ticks of motion paths: dragged along the path they change the pace from key to key; with Ctrl a tick goes
/// alone.
class CSpacingHand final : public ICameraHand {
public:
    /// `marks` are those that are shown. The document outlives the object.
    CSpacingHand(CVelmorltDoc& doc, std::function<const CCameraMarks&()> marks)
        : m_doc(doc), m_marks(std::move(marks)) {}

    std::string CursorAt(CRealPoint client, const CViewMapping& mapping) const override;
    [[nodiscard]] bool Press(const CCameraHandPoint& at, const CViewMapping& mapping) override;
    void Move(const CCameraHandPoint& to, const CViewMapping& mapping) override;
    void Release() override;
    void GiveUp() override;

private:
    struct CTick {
        int level = 0;
        int frame = 0;
        CInbetweenKeys keys;
    };
    std::optional<CTick> TickAt(CRealPoint client, const CViewMapping& mapping) const;
    std::optional<CInbetweenKeys> SelectedKeys(int level) const;

    CVelmorltDoc& m_doc;
    std::function<const CCameraMarks&()> m_marks;
    CTick m_tick;                      ///< that is dragged
    std::optional<CSpacing> m_spacing; ///< while one is
};

} // namespace velmor
