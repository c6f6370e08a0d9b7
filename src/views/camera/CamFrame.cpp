#include "views/camera/CamFrame.h"

#include "views/camera/CameraView.h"

#include <QToolBar>

namespace velmor {

CCamFrame::CCamFrame(CVelmorltDoc& doc, IPrompter& prompter, const ActionList& toolBar, QWidget* parent)
    : QMainWindow(parent, Qt::Widget), m_view(new CCameraView(doc, prompter)) {
    auto* bar = addToolBar("Camera Tools");
    bar->setObjectName("camera tools");
    bar->setContextMenuPolicy(Qt::PreventContextMenu); // which would offer to hide it
    FillToolBar(*bar, toolBar);
    setCentralWidget(m_view);
    setMinimumSize(20, 20); // a pane of the window is squeezed to so much
}

} // namespace velmor
