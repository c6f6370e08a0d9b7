#pragma once

#include <vector>

class QAction;
class QToolBar;

namespace velmor {

/// The actions of a toolbar, in order; null for a separator. They belong to the main frame and outlive every view.
using ActionList = std::vector<QAction*>;

void FillToolBar(QToolBar& bar, const ActionList& actions);

} // namespace velmor
