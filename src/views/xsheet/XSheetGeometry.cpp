#include "views/xsheet/XSheetGeometry.h"

#include <algorithm>

namespace velmor {

namespace {

// Pixels of mouse beyond the client area for one more frame of scrolling.
constexpr int pixelsPerScrollStep = 5;

// Rounds up; both above 0.
int DividedUp(int length, int unit) {
    return (std::max(0, length) + unit - 1) / unit;
}

} // namespace

int CXSheetGeometry::VisibleLevels() const {
    int visible = 0;
    for (int width = WidthOf(firstLevel); width <= LevelsRoom(); width += WidthOf(firstLevel + visible))
        ++visible;
    return visible;
}

int CXSheetGeometry::VisibleFrames() const {
    return std::max(0, (client.height() - headerHeight) / rowHeight);
}

int CXSheetGeometry::MostFirstLevel() const {
    int first = levelCount;
    int width = 0;
    while (first > 0 && width + WidthOf(first - 1) <= LevelsRoom())
        width += WidthOf(--first);
    return first;
}

int CXSheetGeometry::MostFirstFrame() const {
    const int hidden = frameCount - VisibleFrames();
    return hidden > 0 ? hidden + 1 : 0;
}

void CXSheetGeometry::ClampScroll() {
    firstLevel = std::clamp(firstLevel, 0, MostFirstLevel());
    firstFrame = std::clamp(firstFrame, 0, MostFirstFrame());
}

CXSheetGeometry CXSheetGeometry::Showing(CSheetCell cell) const {
    CXSheetGeometry shown = *this;
    const int frames = std::max(1, VisibleFrames());
    shown.firstLevel = std::min(firstLevel, cell.level);
    while (shown.firstLevel < cell.level && shown.ColumnX(cell.level + 1) - frameColumnWidth > LevelsRoom())
        ++shown.firstLevel;
    shown.firstFrame = std::clamp(firstFrame, cell.frame - frames + 1, cell.frame);
    shown.ClampScroll();
    return shown;
}

int CXSheetGeometry::ColumnX(int level) const {
    int x = frameColumnWidth;
    for (int passed = firstLevel; passed < level; ++passed)
        x += WidthOf(passed);
    for (int passed = level; passed < firstLevel; ++passed)
        x -= WidthOf(passed);
    return x;
}

int CXSheetGeometry::LevelAtX(int x) const {
    if (x < frameColumnWidth)
        return (x - frameColumnWidth) / levelWidth + firstLevel;
    int level = firstLevel;
    for (int end = frameColumnWidth + WidthOf(level); level < levelCount && x >= end; end += WidthOf(level))
        ++level;
    return level;
}

int CXSheetGeometry::XToLevel(int x) const {
    return std::max(0, std::min(LevelAtX(x), levelCount - 1));
}

int CXSheetGeometry::YToFrame(int y) const {
    return std::max(0, std::min((y - headerHeight) / rowHeight + firstFrame, frameCount - 1));
}

std::optional<CSheetCell> CXSheetGeometry::DropTarget(QPoint point) const {
    const int level = LevelAtX(point.x());
    const std::optional<int> frame = DropFrame(point.y());
    if (!frame || level < 0 || level >= levelCount)
        return std::nullopt;
    return CSheetCell{level, *frame};
}

std::optional<int> CXSheetGeometry::DropFrame(int y) const {
    const int frame = (y - headerHeight) / rowHeight + firstFrame;
    return frame >= 0 && frame < frameCount ? std::optional(frame) : std::nullopt;
}

std::optional<CHeaderHit> CXSheetGeometry::HeaderButtonAt(int x) const {
    const int cameraX = client.width() - cameraColumnWidth;
    if (x > frameColumnWidth && x < cameraX) {
        const int level = LevelAtX(x);
        const int button = (x - ColumnX(level)) / buttonSize;
        if (level >= levelCount || IsFolded(level) || button > static_cast<int>(HeaderButton::Move))
            return std::nullopt;
        return CHeaderHit{static_cast<HeaderButton>(button), level};
    }
    if (levelCount > 0 && x > cameraX && x < client.width() - soundWidth && (x - cameraX) / buttonSize == 0)
        return CHeaderHit{HeaderButton::Camera, 0};
    return std::nullopt;
}

std::optional<int> CXSheetGeometry::LevelAt(QPoint point) const {
    const int level = LevelAtX(point.x());
    const bool seen = point.x() >= frameColumnWidth && point.x() < client.width() - cameraColumnWidth &&
                      point.y() >= 0 && point.y() < client.height();
    return seen && level < levelCount ? std::optional(level) : std::nullopt;
}

std::optional<CSheetCell> CXSheetGeometry::CellAt(QPoint point) const {
    return GridArea().contains(point) ? DropTarget(point) : std::nullopt;
}

std::optional<int> CXSheetGeometry::CameraFrameAt(QPoint point) const {
    const bool seen = CameraColumn().contains(point) && point.x() < client.width() - soundWidth;
    return seen && point.y() >= headerHeight ? DropFrame(point.y()) : std::nullopt;
}

std::optional<int> CXSheetGeometry::SoundFrameAt(QPoint point) const {
    const bool seen = CameraColumn().contains(point) && point.x() >= client.width() - soundWidth;
    return seen && point.y() >= headerHeight ? DropFrame(point.y()) : std::nullopt;
}

QRect CXSheetGeometry::GridArea() const {
    return {frameColumnWidth, headerHeight, std::max(0, client.width() - frameColumnWidth - cameraColumnWidth),
            std::max(0, client.height() - headerHeight)};
}

QRect CXSheetGeometry::CameraColumn() const {
    return {client.width() - cameraColumnWidth, 0, cameraColumnWidth, client.height()};
}

QRect CXSheetGeometry::ButtonRect(const CHeaderHit& hit) const {
    const int x = hit.button == HeaderButton::Camera
                      ? client.width() - cameraColumnWidth
                      : ColumnX(hit.level) + static_cast<int>(hit.button) * buttonSize;
    return {x, 0, buttonSize, buttonSize};
}

QRect CXSheetGeometry::CameraRect(int frame) const {
    return {client.width() - cameraColumnWidth, RowY(frame), cameraColumnWidth - soundWidth, rowHeight};
}

QRect CXSheetGeometry::SoundRect(int frame) const {
    return {client.width() - soundWidth, RowY(frame), soundWidth, rowHeight};
}

int CXSheetGeometry::EndLevel() const {
    int end = firstLevel;
    for (int x = 0; end < levelCount && x < GridArea().width(); ++end)
        x += WidthOf(end);
    return end;
}

int CXSheetGeometry::EndFrame() const {
    return std::clamp(firstFrame + DividedUp(GridArea().height(), rowHeight), firstFrame,
                      std::max(firstFrame, frameCount));
}

QPoint CXSheetGeometry::SelectionScroll(QPoint point) const {
    QPoint steps;
    if (point.y() >= client.height())
        steps.setY((point.y() - client.height()) / pixelsPerScrollStep + 1);
    else if (point.y() < headerHeight)
        steps.setY(-((headerHeight - point.y()) / pixelsPerScrollStep + 1));
    if (point.x() >= client.width())
        steps.setX(1);
    else if (point.x() < frameColumnWidth)
        steps.setX(-1);
    return steps;
}

QPoint CXSheetGeometry::DropScroll(QPoint point) const {
    const QRect grid = GridArea();
    QPoint steps;
    if (point.y() >= grid.bottom() + 1 - rowHeight)
        steps.setY(1);
    else if (point.y() < grid.top() + rowHeight / 2)
        steps.setY(-1);
    if (point.x() >= grid.right() + 1 - rowHeight && grid.contains(point))
        steps.setX(1);
    else if (point.x() < grid.left() + rowHeight / 2)
        steps.setX(-1);
    return steps;
}

} // namespace velmor
