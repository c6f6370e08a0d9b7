#pragma once

#include "image/paint/GapFill.h"
#include "scene/CelPainting.h"
#include "scene/SceneModel.h"
#include "scene/VisibleLines.h"

#include <functional>
#include <optional>
#include <vector>

namespace velmor {

/// Fills of the image under edit that do more than a plain one: they close gaps, look at the lines of other cels,
/// go on over several areas, or fill what a loop is drawn round. From press to release each is one step of the
/// history. A fill that would leak is refused unless it is forced, and the result says where. All coordinates are
/// those of the image and may lie outside it.
class CCelFilling {
public:
    /// Both outlive the object.
    CCelFilling(CSceneModel& model, CCelPainting& painting) : m_model(model), m_painting(painting) {}

    /// Of the bucket or the area fill. False when there is no cel, or while another tool is down.
    [[nodiscard]] bool Begin(CelTool tool, CPoint at);
    CPaintResult Move(CPoint to, bool force);
    CPaintResult End(CPoint at, bool force);
    /// What has been filled stays.
    void Cancel();

    bool IsFilling() const { return m_isFilling; }
    ToolForm Form() const { return m_form; }
    /// The loop that is being drawn, or nothing.
    const std::vector<CPoint>& Loop() const { return m_loop; }

    /// All lines that the fills stop at now. May throw std::bad_alloc.
    CMaskPlane LinesNow();

private:
    CGapFillChoices Choices(bool force);
    CPaintResult FillAt(CPoint at, bool force);
    CPaintResult FillAlong(CPoint from, CPoint to, bool force);
    CPaintResult FillAtEnd(CPoint at, bool force);
    CPaintResult Paint(const CFillArea& area, const std::function<CPaintResult(CCelImg& image)>& paint);
    void Finish();

    CSceneModel& m_model;
    CCelPainting& m_painting;
    CVisibleLines m_visibleLines;
    bool m_isFilling = false;
    ToolForm m_form = ToolForm::Point;
    const char* m_step = "";
    CPoint m_press;
    CPoint m_last;
    std::vector<CPoint> m_loop;
    CMaskPlane m_lines; ///< of this fill, for finding areas on the way
    CMaskPlane m_done;  ///< what this fill has painted, or has been refused
};

} // namespace velmor
