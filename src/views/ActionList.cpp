#include "views/ActionList.h"

#include <QToolBar>

namespace velmor {

void FillToolBar(QToolBar& bar, const ActionList& actions) {
    for (QAction* action : actions) {
        if (action == nullptr)
            bar.addSeparator();
        else
            bar.addAction(action);
    }
}

} // namespace velmor
