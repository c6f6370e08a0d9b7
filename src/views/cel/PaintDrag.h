#pragma once

#include "scene/CelPainting.h"
#include "views/ViewMapping.h"

namespace velmor {

struct CCelOverlay;

/// A drag that paints on the image under edit. Points are those of the viewport.
class CPaintDrag {
public:
    /// `painting` outlives the object.
    explicit CPaintDrag(CCelPainting& painting) : m_painting(painting) {}

    /// False when the tool cannot work there.
    [[nodiscard]] bool Begin(CelTool tool, CPoint at, const CViewMapping& mapping);
    CPaintResult Move(CPoint to, const CViewMapping& mapping);
    CPaintResult End(CPoint at, const CViewMapping& mapping);
    void Cancel() { m_painting.Cancel(); }
    /// Whether the tool paints on its way, so that its end is soon done.
    bool IsStroke() const { return m_painting.Form() == ToolForm::Stroke; }

    /// The image has been scrolled: what has been dragged out stays with it.
    void Scroll(int dx, int dy);
    /// Puts what has been dragged out into an overlay, for tools that show it.
    void Outline(CCelOverlay& overlay) const;

private:
    CCelPainting& m_painting;
    CPoint m_press;
    CPoint m_last; ///< up to where the drag has been worked off
};

} // namespace velmor
