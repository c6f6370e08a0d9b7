#include "scene/CelFilling.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace velmor {

namespace {

constexpr int gradientMode = 1;
constexpr int boxMode = 2;

CPaintResult NoMemory() {
    return {CStatus::Failure("Unable to allocate memory for cel!"), CRect{}};
}

// Memory is taken before the image is changed.
template<class Operation>
CPaintResult WithMemory(Operation operation) {
    try {
        return operation();
    } catch (const std::bad_alloc&) {
        return NoMemory();
    }
}

CPoint Between(CPoint from, CPoint to, int step, int steps) {
    const auto between = [&](int first, int last) {
        return first + static_cast<int>(std::int64_t{last - first} * step / steps);
    };
    return steps == 0 ? to : CPoint{between(from.x, to.x), between(from.y, to.y)};
}

} // namespace

bool CCelFilling::Begin(CelTool tool, CPoint at) {
    const CPaintChoices& paint = m_model.paint;
    if (m_isFilling || m_painting.IsPainting() || m_model.celImg.GetLoadState() != LoadState::Cel)
        return false;
    m_painting.Finish();
    m_form = tool == CelTool::AreaFill          ? ToolForm::Own
             : paint.bucketMode == gradientMode ? ToolForm::Line
             : paint.bucketMode == boxMode      ? ToolForm::Rectangle
             : paint.fill.overAreas             ? ToolForm::Stroke
                                                : ToolForm::Point;
    m_step = ToolOf(tool).step;
    m_press = m_last = at;
    m_isFilling = true;
    if (m_form == ToolForm::Own)
        m_loop = {at};
    return true;
}

CPaintResult CCelFilling::Move(CPoint to, bool force) {
    if (!m_isFilling)
        return {};
    if (m_form == ToolForm::Own && m_loop.back() != to)
        m_loop.push_back(to);
    const CPoint from = std::exchange(m_last, to);
    return m_form == ToolForm::Stroke ? FillAlong(from, to, force) : CPaintResult();
}

CPaintResult CCelFilling::End(CPoint at, bool force) {
    if (!m_isFilling)
        return {};
    if (m_form == ToolForm::Own)
        m_loop.push_back(at);
    CPaintResult result = m_form == ToolForm::Stroke ? FillAlong(m_last, at, force)
                                                     : WithMemory([&] { return FillAtEnd(at, force); });
    Finish();
    return result;
}

void CCelFilling::Cancel() {
    if (m_isFilling)
        Finish();
}

void CCelFilling::Finish() {
    m_isFilling = false;
    m_loop.clear();
    m_lines = {};
    m_done = {};
    m_painting.Finish();
}

CMaskPlane CCelFilling::LinesNow() {
    CMaskPlane lines(m_model.celImg);
    if (m_model.paint.fill.lines == FillLines::VisibleCels)
        lines.Add(m_visibleLines.Of(m_model));
    return lines;
}

CGapFillChoices CCelFilling::Choices(bool force) {
    const CFillChoices& fill = m_model.paint.fill;
    CGapFillChoices choices{fill.gap, fill.refuseLeaks && !force, fill.underLine, nullptr};
    if (fill.lines == FillLines::VisibleCels)
        choices.otherLines = &m_visibleLines.Of(m_model);
    return choices;
}

CPaintResult CCelFilling::Paint(const CFillArea& area, const std::function<CPaintResult(CCelImg& image)>& paint) {
    if (area.leak)
        return {CStatus(), {}, area.leak};
    return area.bounds.IsEmpty() ? CPaintResult() : m_painting.GoOn(m_step, area.bounds, paint);
}

CPaintResult CCelFilling::FillAt(CPoint at, bool force) {
    const CFillArea area = FindFillArea(m_model.celImg, at, Choices(force));
    if (!m_done.IsEmpty())
        m_done.Add(area.pixels);
    return Paint(area, [&](CCelImg& image) { return PaintArea(image, area, m_model.paint.foreground); });
}

// Each area that the way leads through is filled once.
CPaintResult CCelFilling::FillAlong(CPoint from, CPoint to, bool force) {
    return WithMemory([&] {
        if (m_done.IsEmpty()) {
            m_lines = LinesNow();
            m_done = CMaskPlane(m_lines.Width(), m_lines.Height());
        }
        CPaintResult all;
        const int steps = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
        for (int step = 0; step <= steps && all.status; ++step) {
            const CPoint at = Between(from, to, step, steps);
            if (!m_lines.Contains(at) || m_lines.Has(at.x, at.y) || m_done.Has(at.x, at.y))
                continue;
            const CPaintResult result = FillAt(at, force);
            all = {result.status, Union(all.changed, result.changed), result.leak ? result.leak : all.leak};
        }
        return all;
    });
}

CPaintResult CCelFilling::FillAtEnd(CPoint at, bool force) {
    const CPaintChoices& paint = m_model.paint;
    const CCelImg& image = m_model.celImg;
    const auto solid = [&](const CFillArea& area) {
        return Paint(area, [&](CCelImg& cel) { return PaintArea(cel, area, paint.foreground); });
    };
    switch (m_form) {
    case ToolForm::Own:
        return solid(FindLoopArea(image, m_loop, Choices(force)));
    case ToolForm::Rectangle:
        return solid(FindBoxArea(image, m_press, at, Choices(force)));
    case ToolForm::Line: {
        const CFillArea area = FindFillArea(image, m_press, Choices(force));
        return at == m_press ? solid(area) : Paint(area, [&](CCelImg& cel) {
            return PaintArea(cel, area, m_press, paint.foreground, at, paint.background);
        });
    }
    default:
        return FillAt(at, force);
    }
}

} // namespace velmor
