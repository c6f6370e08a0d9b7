#include "xsheet/MoveSelection.h"

#include <algorithm>
#include <utility>

namespace velmor {

void CMoveSelection::Reset() {
    *this = CMoveSelection{};
}

void CMoveSelection::ToggleLevel(int level, int levelCount) {
    bool& selected = m_levels[static_cast<std::size_t>(level)];
    if (selected) {
        if (m_multiple && std::count(m_levels.begin(), m_levels.begin() + levelCount, true) > 1)
            selected = false;
        return;
    }
    m_camera = false;
    if (!m_multiple)
        m_levels.fill(false);
    selected = true;
}

void CMoveSelection::SelectCamera() {
    m_camera = true;
    m_levels.fill(false);
}

bool CMoveSelection::ToggleMultiple() {
    m_multiple = !m_multiple;
    if (m_multiple || m_camera)
        return false;
    const auto first = std::ranges::find(m_levels, true);
    if (first != m_levels.end())
        std::fill(first + 1, m_levels.end(), false);
    return true;
}

void CMoveSelection::InsertLevel(int levelCountBefore) {
    const int moved = std::min(levelCountBefore, capacity - 1);
    std::copy_backward(m_levels.begin(), m_levels.begin() + moved, m_levels.begin() + moved + 1);
}

void CMoveSelection::DeleteLevel(int level, int levelCountBefore) {
    const auto end = m_levels.begin() + levelCountBefore;
    std::copy(m_levels.begin() + level + 1, end, m_levels.begin() + level);
    *(end - 1) = false;
}

void CMoveSelection::ClampToLevels(int levelCount) {
    std::fill(m_levels.begin() + std::min(levelCount, capacity), m_levels.end(), false);
    m_camera = m_camera || std::ranges::find(m_levels, true) == m_levels.end();
}

void CMoveSelection::Arrange(std::span<const int> order) {
    const std::array<bool, capacity> before = m_levels;
    for (std::size_t level = 0; level < order.size(); ++level)
        m_levels[level] = before[static_cast<std::size_t>(order[level])];
}

void CMoveSelection::SwapLevels(int a, int b) {
    std::swap(m_levels[static_cast<std::size_t>(a)], m_levels[static_cast<std::size_t>(b)]);
}

} // namespace velmor
