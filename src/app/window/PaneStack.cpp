#include "app/window/PaneStack.h"

#include "app/window/Pane.h"

#include <algorithm>

namespace velmor {

CPaneStack::CPaneStack(std::array<CContents, stackedPanes> contents) : QSplitter(Qt::Vertical) {
    setChildrenCollapsible(false);
    for (std::size_t pane = 0; pane < stackedPanes; ++pane) {
        CContents& parts = contents[pane];
        m_views[pane] = parts.view;
        m_panes[pane] = new CPane(parts.title, parts.contents, std::move(parts.open));
        addWidget(m_panes[pane]);
    }
    connect(this, &QSplitter::splitterMoved, this, [this] {
        m_halves = false;
        const QList<int> heights = sizes();
        std::ranges::copy(heights, m_ideal.begin());
        KeepKeyboardInSight();
    });
}

void CPaneStack::Arrange(const PaneHeights& ideal) {
    m_ideal = ideal;
    m_halves = false;
    Divide();
}

void CPaneStack::ArrangeHalves() {
    m_halves = true;
    Divide();
}

void CPaneStack::Divide() {
    if (m_halves)
        m_ideal = SharedHeights(m_ideal, height());
    const PaneHeights heights =
        DividePanes(m_ideal, height() - handleWidth() * (static_cast<int>(stackedPanes) - 1));
    setSizes({heights.begin(), heights.end()});
    KeepKeyboardInSight();
}

bool CPaneStack::IsOpen(StackedPane pane) const {
    return m_panes[static_cast<std::size_t>(pane)]->IsOpen();
}

bool CPaneStack::IsArrangement(bool camera, bool xsheet, bool celEditor) const {
    return IsOpen(StackedPane::Camera) == camera && IsOpen(StackedPane::Xsheet) == xsheet &&
           IsOpen(StackedPane::CelEditor) == celEditor;
}

void CPaneStack::Open(StackedPane pane) {
    if (!IsOpen(pane))
        Arrange(OpenedHeights(m_ideal, pane, height()));
}

void CPaneStack::KeepKeyboardInSight() {
    const QWidget* focus = window()->focusWidget();
    const bool lost = focus != nullptr && std::ranges::any_of(m_panes, [focus](const CPane* pane) {
                          return !pane->IsOpen() && pane->isAncestorOf(focus);
                      });
    const auto open = std::ranges::find_if(m_panes, &CPane::IsOpen);
    if (lost && open != m_panes.end())
        m_views[static_cast<std::size_t>(open - m_panes.begin())]->setFocus();
}

void CPaneStack::resizeEvent(QResizeEvent* event) {
    QSplitter::resizeEvent(event);
    Divide();
}

} // namespace velmor
