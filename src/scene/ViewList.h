#pragma once

#include "scene/UpdateHint.h"

#include <vector>

namespace velmor {

/// Anything that shows the document.
class IDocView {
public:
    virtual ~IDocView() = default;
    virtual void OnUpdate(UpdateHint hint) = 0;
};

/// The views of a document: the only way in which a change is announced. Does not own the views; a view takes
/// itself off before it dies.
class CViewList {
public:
    void Add(IDocView& view) { m_views.push_back(&view); }
    void Remove(IDocView& view) { std::erase(m_views, &view); }
    void UpdateAllViews(UpdateHint hint) const {
        // A copy: a view may add or remove views while it is told.
        for (IDocView* view : std::vector<IDocView*>(m_views))
            view->OnUpdate(hint);
    }

private:
    std::vector<IDocView*> m_views;
};

} // namespace velmor
