#pragma once

namespace velmor {

/// What of a scanned, filmed or imported drawing is a line of the cel: a grey level, (red + green + blue) / 3
/// rounded down, below the threshold (0 to 255).
class CLineThreshold {
public:
    explicit constexpr CLineThreshold(int threshold) : m_leastPaper(threshold * 3) {}

    constexpr bool IsLine(int red, int green, int blue) const { return red + green + blue < m_leastPaper; }

private:
    int m_leastPaper; ///< of the sum, so that nothing is divided
};

} // namespace velmor
