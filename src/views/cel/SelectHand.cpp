#include "views/cel/SelectHand.h"

#include "scene/CelSelection.h"
#include "views/cel/CelOverlay.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace velmor {

namespace {

constexpr std::uint64_t doubleClickTime = 400; ///< milliseconds
constexpr double doubleClickReach = 5;
constexpr double leastDrag = 3; ///< client pixels; less is a click
constexpr double turnStep = 15;
constexpr int longNudge = 10;

double DegreesOf(CRealPoint vector) {
    return std::atan2(vector.y, vector.x) * 180 / std::numbers::pi;
}

SelectMode ModeOf(Qt::KeyboardModifiers modifiers) {
    if (modifiers.testFlag(Qt::ShiftModifier))
        return SelectMode::Add;
    const bool takesAway = modifiers.testFlag(Qt::AltModifier) || modifiers.testFlag(Qt::ControlModifier);
    return takesAway ? SelectMode::Subtract : SelectMode::Replace;
}

double EvenDifference(double size, double from) {
    return from + 2 * std::round((size - from) / 2);
}

} // namespace

bool CSelectHand::Press(CelTool tool, const CHandPoint& at, const CViewMapping& mapping) {
    const bool isDouble = at.time - m_lastTime < doubleClickTime && at.time != 0 &&
                          std::hypot(at.at.x - m_lastPress.x, at.at.y - m_lastPress.y) < doubleClickReach;
    m_lastPress = at.at;
    m_lastTime = at.time;
    if (isDouble && m_selection.IsFloating()) {
        m_selection.Drop();
        return false;
    }
    m_tool = tool;
    m_mode = ModeOf(at.modifiers);
    m_grip = m_mode == SelectMode::Replace ? m_marks.GripAt(at.at, mapping) : CSelectGrip();
    m_start = m_selection.Placement();
    m_frame = m_selection.Frame();
    m_way = {mapping.ToImage(at.at)};
    m_pixel = mapping.PixelShownAt(at.Pixel());
    m_hasMoved = false;
    return true;
}

CPaintResult CSelectHand::Move(std::span<const CHandPoint> way, const CViewMapping& mapping) {
    if (m_way.empty() || way.empty())
        return {};
    for (const CHandPoint& point : way) {
        m_way.push_back(mapping.ToImage(point.at));
        const CRealPoint& at = point.at;
        m_hasMoved = m_hasMoved || std::hypot(at.x - m_lastPress.x, at.y - m_lastPress.y) >= leastDrag;
    }
    return m_hasMoved && m_grip.kind != SelectGrip::Nothing ? Drag(way.back(), mapping) : CPaintResult();
}

CPaintResult CSelectHand::Release(const CHandPoint& at, const CViewMapping& mapping) {
    CPaintResult result = Move({&at, 1}, mapping);
    if (!m_way.empty() && (m_grip.kind == SelectGrip::Nothing || (!m_hasMoved && m_tool == CelTool::SelectColor)))
        SelectShape();
    Cancel();
    return result;
}

void CSelectHand::Cancel() {
    m_way.clear();
    m_grip = {};
}

CPaintResult CSelectHand::Drag(const CHandPoint& to, const CViewMapping& mapping) {
    const CRealPoint at = mapping.ToImage(to.at);
    const bool isHeld = to.modifiers.testFlag(Qt::ShiftModifier);
    const bool wasFloating = m_selection.IsFloating();
    const CPiecePlacement placement = m_grip.kind == SelectGrip::Inside   ? MovedTo(at, isHeld)
                                      : m_grip.kind == SelectGrip::Handle ? ScaledTo(at, isHeld)
                                                                          : TurnedTo(at, isHeld);
    CPaintResult result = m_selection.Place(placement);
    if (!wasFloating && m_selection.IsFloating())
        m_frame = m_selection.Frame(); // as small as what there was to lift
    Tell();
    return result;
}

CPiecePlacement CSelectHand::MovedTo(CRealPoint to, bool isStraight) const {
    double dx = to.x - m_way.front().x;
    double dy = to.y - m_way.front().y;
    if (isStraight)
        (std::abs(dx) < std::abs(dy) ? dx : dy) = 0;
    CPiecePlacement placement = m_start;
    placement.move = {m_start.move.x + static_cast<int>(std::lround(dx)),
                      m_start.move.y + static_cast<int>(std::lround(dy))};
    return placement;
}

// The side or corner across from the handle stays where it is: sizes change by whole pairs of pixels, since the
// piece is placed by its middle.
CPiecePlacement CSelectHand::ScaledTo(CRealPoint to, bool keepsProportions) const {
    const double angle = m_start.degrees * std::numbers::pi / 180;
    const CRealPoint dragged{to.x - m_way.front().x, to.y - m_way.front().y};
    const double along = dragged.x * std::cos(angle) + dragged.y * std::sin(angle);
    const double across = dragged.y * std::cos(angle) - dragged.x * std::sin(angle);
    const double ownWidth = m_frame.endX - m_frame.x;
    const double ownHeight = m_frame.endY - m_frame.y;
    const double width = ownWidth * m_start.scaleX;
    const double height = ownHeight * m_start.scaleY;
    double newWidth = width + m_grip.x * along;
    double newHeight = height + m_grip.y * across;
    if (keepsProportions) {
        const double growthX = newWidth / width;
        const double growthY = newHeight / height;
        const double growth = m_grip.x == 0 ? growthY : m_grip.y == 0 ? growthX : std::max(growthX, growthY);
        newWidth = width * growth;
        newHeight = height * growth;
    } else {
        newWidth = EvenDifference(newWidth, width);
        newHeight = EvenDifference(newHeight, height);
    }
    CPiecePlacement placement = m_start;
    placement.scaleX = newWidth / ownWidth;
    placement.scaleY = newHeight / ownHeight;
    const double shiftX = m_grip.x * (newWidth - width) / 2;
    const double shiftY = m_grip.y * (newHeight - height) / 2;
    placement.move = {
        m_start.move.x + static_cast<int>(std::lround(shiftX * std::cos(angle) - shiftY * std::sin(angle))),
        m_start.move.y + static_cast<int>(std::lround(shiftX * std::sin(angle) + shiftY * std::cos(angle)))};
    return placement;
}

CPiecePlacement CSelectHand::TurnedTo(CRealPoint to, bool bySteps) const {
    const CRealPoint middle{(m_frame.x + m_frame.endX) / 2.0 + m_start.move.x,
                            (m_frame.y + m_frame.endY) / 2.0 + m_start.move.y};
    const double turn = DegreesOf({to.x - middle.x, to.y - middle.y}) -
                        DegreesOf({m_way.front().x - middle.x, m_way.front().y - middle.y});
    CPiecePlacement placement = m_start;
    placement.degrees = std::remainder(m_start.degrees + turn, 360);
    placement.degrees =
        bySteps ? turnStep * std::round(placement.degrees / turnStep) : std::round(placement.degrees * 10) / 10;
    return placement;
}

CRect CSelectHand::Dragged() const {
    const auto [x, endX] = std::minmax(m_way.front().x, m_way.back().x);
    const auto [y, endY] = std::minmax(m_way.front().y, m_way.back().y);
    return {static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y)), static_cast<int>(std::ceil(endX)),
            static_cast<int>(std::ceil(endY))};
}

void CSelectHand::SelectShape() {
    if (m_tool == CelTool::SelectColor && m_pixel) {
        m_selection.SelectColor(*m_pixel, m_mode);
    } else if (!m_hasMoved) {
        if (m_mode == SelectMode::Replace)
            m_selection.SelectNone();
    } else if (m_tool == CelTool::Lasso) {
        m_selection.SelectLasso(m_way, m_mode);
    } else {
        m_selection.SelectRectangle(Dragged(), m_mode);
    }
}

void CSelectHand::Outline(CCelOverlay& overlay, const CViewMapping& mapping) const {
    if (m_way.empty() || m_grip.kind != SelectGrip::Nothing || !m_hasMoved || m_tool == CelTool::SelectColor)
        return;
    const auto add = [&mapping](QPolygonF& line, double x, double y) {
        const CRealPoint at = mapping.ToClient(CRealPoint{x, y});
        line.append(QPointF(at.x, at.y));
    };
    QPolygonF line;
    if (m_tool == CelTool::Lasso) {
        for (const CRealPoint& point : m_way)
            add(line, point.x, point.y);
    } else {
        const CRect rect = Dragged();
        for (const auto& [x, y] : {std::pair(rect.x, rect.y),
                                   {rect.endX, rect.y},
                                   {rect.endX, rect.endY},
                                   {rect.x, rect.endY},
                                   {rect.x, rect.y}})
            add(line, x, y);
    }
    overlay.outlines.push_back(line);
}

void CSelectHand::Tell() const {
    if (!m_tell || !m_selection.IsFloating())
        return;
    const CPiecePlacement placement = m_selection.Placement();
    const double width = (m_frame.endX - m_frame.x) * std::abs(placement.scaleX);
    const double height = (m_frame.endY - m_frame.y) * std::abs(placement.scaleY);
    std::array<char, 160> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(),
                                    "Size %.0f x %.0f (%.1f %% x %.1f %%), angle %.1f, moved by %d, %d", width,
                                    height, placement.scaleX * 100, placement.scaleY * 100, placement.degrees,
                                    placement.move.x, placement.move.y));
    m_tell(text.data());
}

std::optional<CPaintResult> CSelectHand::Key(const QKeyEvent& key, const CViewMapping& mapping) {
    if (!m_selection.HasSelection() || !m_way.empty())
        return std::nullopt;
    const int pixels = key.modifiers().testFlag(Qt::ShiftModifier) ? longNudge : 1;
    CRealPoint way;
    switch (key.key()) {
    case Qt::Key_Left:
        way = {-1, 0};
        break;
    case Qt::Key_Right:
        way = {1, 0};
        break;
    case Qt::Key_Up:
        way = {0, -1};
        break;
    case Qt::Key_Down:
        way = {0, 1};
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_selection.Drop();
        return CPaintResult();
    case Qt::Key_Escape:
        m_selection.SelectNone();
        return CPaintResult();
    default:
        return std::nullopt;
    }
    // The way of the image that goes there most as the view is turned and mirrored.
    const CRealPoint from = mapping.ToImage({0, 0});
    const CRealPoint to = mapping.ToImage(way);
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const bool isAlongX = std::abs(dx) >= std::abs(dy);
    const auto step = [pixels](double towards) { return towards < 0 ? -pixels : pixels; };
    const CPaintResult result = m_selection.MoveBy(isAlongX ? step(dx) : 0, isAlongX ? 0 : step(dy));
    m_frame = m_selection.Frame();
    Tell();
    return result;
}

} // namespace velmor
