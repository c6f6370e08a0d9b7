#pragma once

#include "image/paint/KeptTiles.h"
#include "scene/PaintTools.h"
#include "scene/SceneModel.h"

#include <functional>
#include <optional>
#include <string>

namespace velmor {

/// Painting on the image under edit: the only way in which its pixels change. From press to release it is one step
/// of the history. Whoever paints tells its own view what has changed; nothing is announced. All coordinates are
/// those of the image (row 0 at the bottom) and may lie outside it.
class CCelPainting {
public:
    /// The model outlives the object.
    explicit CCelPainting(CSceneModel& model) : m_model(model) {}

    /// Whether Begin() would be true.
    bool CanBegin(CelTool tool) const;
    /// What a tool would make of its way now.
    ToolForm FormOf(CelTool tool) const { return ToolOf(tool).form(m_model.paint); }
    /// A tool comes down at a pixel. False when there is no image, when the tool cannot work on it, or while
    /// another is down.
    [[nodiscard]] bool Begin(CelTool tool, CPoint at);
    /// It moves on. Only strokes paint on their way.
    CPaintResult Move(CPoint to);
    /// Instead: a round tip of the tool's kind is led to a place, from where it was led before. Nothing for tools
    /// without one.
    CPaintResult Sweep(const CTipPlace& to);
    /// The tip of the tool that is down.
    std::optional<CToolTip> Tip() const;
    /// It is lifted: the rest of a stroke, and all that the other forms do.
    CPaintResult End(CPoint at);
    /// It is lifted without painting any more. What a stroke has painted stays.
    void Cancel();

    bool IsPainting() const { return m_tool.has_value(); }
    /// What the tool that is down, or was down last, has painted over.
    const CKeptTiles& PaintedOver() const { return m_paintedOver; }
    /// Between Begin() and End().
    ToolForm Form() const { return m_form; }

    /// What no tool does: a filter, a drawing made by the program. Nothing happens without an image.
    CPaintResult Change(const std::string& name, const std::function<CPaintResult(CCelImg& image)>& change);

    /// Something that goes on over several events and is one step when it ends, by Finish() or by whatever is done
    /// to the image, its file or the history next. `change` may change the pixels of `touched` alone. The last
    /// call names it. Nothing happens without an image.
    CPaintResult GoOn(const std::string& name, const CRect& touched,
                      const std::function<CPaintResult(CCelImg& image)>& change);
    bool IsGoingOn() const { return m_model.unfinished.has_value(); }
    void Finish() { m_model.FinishPainting(); }

private:
    /// False when there is no memory to keep what is there.
    bool Keep(const CRect& touched);
    CPaintResult Paint(CelTool tool, CPoint from, CPoint to);

    void LeaveStep();

    CSceneModel& m_model;
    CKeptTiles m_paintedOver;
    std::optional<CelTool> m_tool; ///< that is down
    std::optional<CRoundTip> m_tip;
    const char* m_step = ""; ///< what undo will call what it does
    ToolForm m_form = ToolForm::Point;
    CPoint m_from; ///< the press, for a stroke the end of what is painted
};

} // namespace velmor
