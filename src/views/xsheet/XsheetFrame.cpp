#include "views/xsheet/XsheetFrame.h"

#include "views/xsheet/OtherSheetPane.h"
#include "views/xsheet/XSheetView.h"

#include <QDockWidget>
#include <QToolBar>

namespace velmor {

CXsheetFrame::CXsheetFrame(CVelmorltDoc& doc, IPrompter& prompter, const ActionList& toolBar, QWidget* parent)
    : QMainWindow(parent, Qt::Widget),
      m_view(new CXSheetView(doc, prompter)),
      m_otherSheet(new COtherSheetPane(doc)),
      m_dock(new QDockWidget("Other Scene", this)) {
    auto* bar = addToolBar("XSheet Tools");
    bar->setObjectName("xsheet tools");
    FillToolBar(*bar, toolBar);
    setCentralWidget(m_view);
    m_dock->setObjectName("other scene");
    m_dock->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    m_dock->setWidget(m_otherSheet);
    addDockWidget(Qt::RightDockWidgetArea, m_dock);
    m_dock->hide();
}

bool CXsheetFrame::ShowsOtherSheet() const {
    return !m_dock->isHidden();
}

void CXsheetFrame::ToggleOtherSheet() {
    m_dock->setVisible(!ShowsOtherSheet());
}

} // namespace velmor
