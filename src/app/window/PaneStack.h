#pragma once

#include "app/window/PaneHeights.h"

#include <QSplitter>
#include <functional>

namespace velmor {

class CPane;

/// The stacked panes with their heights. They keep their arrangement when the window gets another size, and where
/// one collapses, the keyboard goes to one that is open.
class CPaneStack final : public QSplitter {
public:
    /// What a pane is made of: the view in its contents, which becomes a child, takes the keyboard. `open` is
    /// called by a click on the strip of the collapsed pane.
    struct CContents {
        QString title;
        QWidget* contents = nullptr;
        QWidget* view = nullptr;
        std::function<void()> open;
    };
    /// From the top.
    explicit CPaneStack(std::array<CContents, stackedPanes> contents);

    /// Gives the panes their ideal heights.
    void Arrange(const PaneHeights& ideal);
    /// Camera and xsheet, each with half of the height, whatever that will be.
    void ArrangeHalves();
    bool IsOpen(StackedPane pane) const;
    /// Whether of all panes only these are open.
    bool IsArrangement(bool camera, bool xsheet, bool celEditor) const;
    /// Opens a collapsed pane beside those that are open.
    void Open(StackedPane pane);
    QWidget& View(StackedPane pane) const { return *m_views[static_cast<std::size_t>(pane)]; }

    const PaneHeights& IdealHeights() const { return m_ideal; }
    bool HasHalves() const { return m_halves; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Divide();
    void KeepKeyboardInSight();

    PaneHeights m_ideal = {usualPaneHeight, usualPaneHeight, leastPane + 1};
    bool m_halves = false;
    std::array<CPane*, stackedPanes> m_panes{};   // children
    std::array<QWidget*, stackedPanes> m_views{}; // likewise
};

} // namespace velmor
