#include "views/camera/CamFrame.h"

#include "views/camera/CameraView.h"

#include <QLabel>
#include <QToolBar>

namespace velmor {

CCamFrame::CCamFrame(CVelmorltDoc& doc, const ActionList& toolBar, QWidget* parent)
    : QMainWindow(parent, Qt::Widget), m_view(new CCameraView(doc)), m_zoom(new QLabel) {
    auto* bar = addToolBar("Camera Tools");
    bar->setObjectName("camera tools");
    bar->setContextMenuPolicy(Qt::PreventContextMenu); // which would offer to hide it
    FillToolBar(*bar, toolBar);
    m_zoom->setObjectName("camera zoom");
    m_zoom->setToolTip("Zoom of the camera view");
    m_zoom->setMargin(4);
    bar->addSeparator();
    bar->addWidget(m_zoom);
    m_view->SetStateCallback([this] { ShowZoom(); });
    ShowZoom();
    setCentralWidget(m_view);
    setMinimumSize(20, 20); // a pane of the window is squeezed to so much
}

CCamFrame::~CCamFrame() {
    m_view->SetStateCallback(nullptr);
}

void CCamFrame::ShowZoom() {
    m_zoom->setText(QString("%1 %").arg(m_view->Zoom().Percent()));
}

} // namespace velmor
