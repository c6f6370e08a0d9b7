#include "views/print/XSheetPages.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr double pt = pagePoint;
constexpr double leastPageWidth = 400 * pt;
constexpr double leastPageHeight = 240 * pt;

constexpr double headHeight = 44 * pt;
constexpr double columnHeadHeight = 24 * pt;
constexpr double footHeight = 26 * pt;
constexpr double leastRow = 7.8 * pt;
constexpr double largestRow = 13 * pt;

constexpr double frameWidth = 24 * pt;
constexpr double soundWidth = 56 * pt;
constexpr double panWidth = 52 * pt;
constexpr double zoomWidth = 30 * pt;
constexpr double rotationWidth = 30 * pt;
constexpr double leastLevel = 40 * pt;
constexpr double largestLevel = 96 * pt;
constexpr double narrowedLevel = 0.85;
constexpr double leastNotes = 60 * pt;
constexpr double besideLevels = 2 * frameWidth + soundWidth + panWidth + zoomWidth + rotationWidth;

int CeilDiv(int value, int by) {
    return (value + by - 1) / by;
}

std::string Range(const char* what, int first, int last, int count) {
    std::string text = what;
    text += first == last ? " " : "s ";
    text += std::to_string(first + 1);
    if (first != last)
        text.append("-").append(std::to_string(last + 1));
    return text.append(" of ").append(std::to_string(count));
}

} // namespace

CXSheetPages::CXSheetPages(double width, double height, const CXSheetExtent& extent)
    : m_extent(extent), m_width(width), m_height(height) {
    m_scale = std::min({1.0, width / leastPageWidth, height / leastPageHeight});
    m_width /= m_scale;
    m_height /= m_scale;
    m_gridTop = headHeight + columnHeadHeight;
    m_levelsLeft = frameWidth;
    DivideLevels();
    DivideFrames();
}

// As few pages across as legible columns allow (texts can be narrowed a little), and then the levels evenly on
// them.
void CXSheetPages::DivideLevels() {
    const double space = m_width - besideLevels;
    const int levels = std::max(1, m_extent.levels);
    const double wanted = std::clamp(m_extent.levelWidth, leastLevel, largestLevel);
    m_across = CeilDiv(levels, std::max(1, static_cast<int>(space / (wanted * narrowedLevel))));
    m_levelsPerPage = CeilDiv(levels, m_across);
    m_across = CeilDiv(levels, m_levelsPerPage);
    m_levelWidth = std::min(space / m_levelsPerPage, wanted * 1.25);
    if (space - m_levelsPerPage * m_levelWidth < leastNotes)
        m_levelWidth = std::min(space / m_levelsPerPage, largestLevel);
}

void CXSheetPages::DivideFrames() {
    const double space = m_height - m_gridTop - footHeight;
    const int rate = std::max(1, m_extent.framesPerSecond);
    const int most = std::max(1, static_cast<int>(space / leastRow));
    const int half = rate / 2;
    m_framesPerPage = most;
    if (most >= rate)
        m_framesPerPage = most / rate * rate;
    else if (rate % 2 == 0 && most >= half)
        m_framesPerPage = half;
    m_rowHeight = std::min(largestRow, space / m_framesPerPage);
    m_down = CeilDiv(std::max(1, m_extent.frames), m_framesPerPage);
}

CXSheetPage CXSheetPages::At(int index) const {
    CXSheetPage page;
    page.number = index + 1;
    page.firstLevel = index % m_across * m_levelsPerPage;
    page.lastLevel = std::min(page.firstLevel + m_levelsPerPage, m_extent.levels) - 1;
    page.firstFrame = index / m_across * m_framesPerPage;
    page.lastFrame = std::min(page.firstFrame + m_framesPerPage, m_extent.frames) - 1;
    return page;
}

double CXSheetPages::HeaderTop() const {
    return headHeight;
}

double CXSheetPages::FootTop() const {
    return m_height - footHeight;
}

CPageColumn CXSheetPages::LeftFrames() const {
    return {0, frameWidth};
}

// The columns beside the levels stand at the same place on every page.
CPageColumn CXSheetPages::Sound() const {
    return {Level(m_levelsPerPage).left, soundWidth};
}

CPageColumn CXSheetPages::Pan() const {
    return {Sound().Right(), panWidth};
}

CPageColumn CXSheetPages::Zoom() const {
    return {Pan().Right(), zoomWidth};
}

CPageColumn CXSheetPages::Rotation() const {
    return {Zoom().Right(), rotationWidth};
}

CPageColumn CXSheetPages::RightFrames() const {
    return {Rotation().Right(), frameWidth};
}

CPageColumn CXSheetPages::Notes() const {
    const double left = RightFrames().Right();
    return {left, m_width - left < leastNotes ? 0 : m_width - left};
}

FrameRule RuleAbove(int frame, int framesPerSecond) {
    const int rate = std::max(1, framesPerSecond);
    if (frame % rate == 0)
        return FrameRule::Second;
    // Where the second has an odd number of frames its first half gets the frame more.
    return frame % rate == CeilDiv(rate, 2) ? FrameRule::HalfSecond : FrameRule::Plain;
}

std::string PageCoordinates(const CXSheetPage& page, int levels, int frames) {
    const std::string down = Range("frame", page.firstFrame, page.lastFrame, frames);
    return page.Levels() < 1 ? down : Range("level", page.firstLevel, page.lastLevel, levels) + ", " + down;
}

} // namespace velmor
