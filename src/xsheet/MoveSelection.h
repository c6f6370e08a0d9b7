#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace velmor {

/// Which levels, or the camera, mouse input in the camera view moves. Kept beside the grid, not in it: undo does
/// not touch it.
class CMoveSelection {
public:
    static constexpr int capacity = 50;

    void Reset();
    /// `level` 0 to capacity - 1.
    bool IsLevelSelected(int level) const { return m_levels[static_cast<std::size_t>(level)]; }
    bool IsCameraSelected() const { return m_camera; }
    bool IsMultiple() const { return m_multiple; }

    /// Selects a level (alone, unless several may be selected); a selected one is given up only while several may
    /// be selected and more than one is.
    void ToggleLevel(int level, int levelCount);
    /// Selects the camera and no level.
    void SelectCamera();
    /// Switches whether several levels may be selected. Switching it off keeps the lowest selected level only,
    /// unless the camera is selected. Returns whether it was switched off with the camera not selected (the views
    /// then redraw).
    bool ToggleMultiple();

    /// The grid's structural edits. A level inserted at 0 keeps the flag that level 0 had.
    void InsertLevel(int levelCountBefore);
    void DeleteLevel(int level, int levelCountBefore);
    void SwapLevels(int a, int b);
    /// order[i] is the level that becomes level i.
    void Arrange(std::span<const int> order);
    /// Forgets the levels from `levelCount` on. The camera is selected when nothing else is left to move.
    void ClampToLevels(int levelCount);

private:
    std::array<bool, capacity> m_levels{};
    bool m_camera = true;
    bool m_multiple = false;
};

} // namespace velmor
