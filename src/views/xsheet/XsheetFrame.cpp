#include "views/xsheet/XsheetFrame.h"

#include "views/xsheet/XSheetView.h"

#include <QToolBar>

namespace velmor {

CXsheetFrame::CXsheetFrame(CVelmorltDoc& doc, IPrompter& prompter, const ActionList& toolBar, QWidget* parent)
    : QMainWindow(parent, Qt::Widget), m_view(new CXSheetView(doc, prompter)) {
    auto* bar = addToolBar("XSheet Tools");
    bar->setObjectName("xsheet tools");
    FillToolBar(*bar, toolBar);
    setCentralWidget(m_view);
}

} // namespace velmor
