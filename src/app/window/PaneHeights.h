#pragma once

#include <array>
#include <cstddef>

namespace velmor {

/// The stacked panes, from the top.
enum class StackedPane : std::size_t { Camera, Xsheet, CelEditor };
inline constexpr std::size_t stackedPanes = 3;

/// Heights of the three stacked panes.
using PaneHeights = std::array<int, stackedPanes>;

inline constexpr int leastPane = 20;
inline constexpr int collapsedPane = 10; ///< an ideal height at which a pane keeps its minimum
inline constexpr int greedyPane = 5000;  ///< larger than any screen: all the space that is left
inline constexpr int usualPaneHeight = 500;

/// Ideal heights of the view commands. The shared one divides `total` pixels; there the xsheet keeps the ideal
/// height that it has, unless it is collapsed: it is what the command is to show.
PaneHeights SharedHeights(const PaneHeights& ideal, int total);
inline constexpr PaneHeights cameraHeights = {greedyPane, collapsedPane, collapsedPane};
inline constexpr PaneHeights xsheetHeights = {collapsedPane, greedyPane, collapsedPane};
inline constexpr PaneHeights celEditorHeights = {collapsedPane, collapsedPane, greedyPane};
/// Ideal heights that open a collapsed pane beside those that are open: it gets half of `total` pixels, the others
/// share the rest.
PaneHeights OpenedHeights(const PaneHeights& ideal, StackedPane pane, int total);

/// What the panes get of `total` pixels: from the top each its ideal height, as long as all below keep their
/// minimum; what is left over goes to the lowest pane that is not collapsed.
PaneHeights DividePanes(const PaneHeights& ideal, int total);

} // namespace velmor
