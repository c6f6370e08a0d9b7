#include "views/camera/CamFrame.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/preview/ScenePreview.h"
#include "views/camera/CameraView.h"

#include <QLabel>
#include <QToolBar>

namespace velmor {

namespace {

constexpr int transportIcon = 16;

} // namespace

CCamFrame::CCamFrame(CVelmorltDoc& doc, const ActionList& toolBar, const ActionList& transport, QWidget* parent)
    : QMainWindow(parent, Qt::Widget),
      m_doc(doc),
      m_view(new CCameraView(doc)),
      m_zoom(new QLabel),
      m_played(new QLabel) {
    auto* bar = addToolBar("Camera Tools");
    bar->setObjectName("camera tools");
    bar->setContextMenuPolicy(Qt::PreventContextMenu); // which would offer to hide it
    FillToolBar(*bar, toolBar);
    m_zoom->setObjectName("camera zoom");
    m_zoom->setToolTip("Zoom of the camera view");
    m_zoom->setMargin(4);
    bar->addSeparator();
    bar->addWidget(m_zoom);
    AddTransport(transport);
    m_view->SetStateCallback([this] { ShowState(); });
    ShowState();
    setCentralWidget(m_view);
    setMinimumSize(20, 20); // a pane of the window is squeezed to so much
}

CCamFrame::~CCamFrame() {
    m_view->SetStateCallback(nullptr);
}

void CCamFrame::AddTransport(const ActionList& transport) {
    auto* bar = new QToolBar("Transport");
    bar->setObjectName("transport");
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setMovable(false);
    bar->setIconSize({transportIcon, transportIcon});
    FillToolBar(*bar, transport);
    m_played->setObjectName("played");
    m_played->setToolTip("Speed, and the frames that are played");
    m_played->setMargin(4);
    bar->addSeparator();
    bar->addWidget(m_played);
    addToolBar(Qt::BottomToolBarArea, bar);
}

void CCamFrame::ShowState() {
    m_zoom->setText(QString("%1 %").arg(m_view->Zoom().Percent()));
    const CScenePreview& preview = m_doc.Preview();
    QString played = QString("%1 %").arg(preview.Choices().speed);
    if (m_doc.Model().sceneOpen && (preview.IsPlaying() || preview.HasSetRange()))
        played += QString("   %1 - %2").arg(preview.Range().first + 1).arg(preview.Range().last + 1);
    if (m_played->text() != played)
        m_played->setText(played);
}

} // namespace velmor
