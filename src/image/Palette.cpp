#include "image/Palette.h"

namespace velmor {

CPalette CPalette::Default() {
    return CPalette({{CColor{0, 0, 0, 255}, "Black"},
                     {CColor{255, 255, 255, 255}, "White"},
                     {CColor{128, 128, 128, 0}, "TRANS"}});
}

bool CPalette::Add(CNamedColor color) {
    if (IsFull())
        return false;
    m_colors.push_back(std::move(color));
    return true;
}

void CPalette::Remove(int index) {
    if (Contains(index))
        m_colors.erase(m_colors.begin() + index);
}

void CPalette::Append(const CPalette& other) {
    // Taken first, so that a palette can be appended to itself.
    const std::size_t count = other.m_colors.size();
    m_colors.reserve(m_colors.size() + count);
    for (std::size_t i = 0; i < count; ++i)
        m_colors.push_back(other.m_colors[i]);
}

} // namespace velmor
