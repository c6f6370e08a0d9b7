#pragma once

#include "platform/files/Profile.h"

namespace velmor {

/// How dropped cels are exposed: on ones to fours, or on any number of frames, and whether they are inserted. Each
/// choice is written to the settings as it is made; a dialog shows the values and calls the setters.
class CDropType {
public:
    static constexpr int free = 4; ///< the type whose step the user enters
    static constexpr int mostStep = 1999;

    explicit CDropType(CProfile& profile);

    int Type() const { return m_type; } ///< 0 to 3 for on ones to on fours, or `free`
    int Step() const { return m_step; } ///< frames of one exposure, 1 to mostStep
    bool Insert() const { return m_insert; }
    /// Whether the step can be entered.
    bool HasFreeStep() const { return m_type == free; }

    /// Ones to fours set the step; `free` keeps the one that stands. Other types do nothing.
    void ChooseType(int type);
    /// False, and nothing changed, when there is no free step or `step` is out of range.
    [[nodiscard]] bool EnterStep(int step);
    void ChooseInsert(bool insert);

private:
    CProfile& m_profile;
    int m_type = 0;
    int m_step = 1;
    bool m_insert = true;
};

} // namespace velmor
