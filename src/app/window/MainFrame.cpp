#include "app/window/MainFrame.h"

#include "app/window/Demonstration.h"

#include "app/window/AboutDialog.h"
#include "app/window/Capturing.h"
#include "app/window/MenuTable.h"
#include "app/window/OnlineManual.h"
#include "app/window/Printing.h"
#include "app/window/Scanning.h"
#include "app/window/Theme.h"
#include "app/window/WindowSettings.h"
#include "platform/files/SystemPaths.h"
#include "scene/Prompter.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/SceneSaving.h"
#include "scene/VelmorltDoc.h"
#include "scene/exposing/Exposing.h"
#include "scene/preview/ScenePreview.h"
#include "views/Icons.h"
#include "views/Text.h"
#include "views/camera/CamFrame.h"
#include "views/camera/CameraView.h"
#include "views/cel/CelFrame.h"
#include "views/cel/CelView.h"
#include "views/source/SourceView.h"
#include "views/xsheet/XSheetView.h"
#include "views/xsheet/XsheetFrame.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>
#include <QToolBar>
#include <utility>

namespace velmor {

namespace {

constexpr int leastSourceWidth = 80;
constexpr int usualSourceWidth = 160;
constexpr int mainToolBarIcon = 20; // in buttons of 25 x 25 and a little air
constexpr std::array<const char*, stackedPanes> paneKeys = {"Camera Height", "XSheet Height", "Cel Editor Height"};
constexpr const char* halvesKey = "Camera and XSheet Halves";

/// Actions that are in a menu count as those of the menu, and of the menu bar, so letters that are to choose there
/// would be keys of whichever view.
class CMenuLetters final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::ShortcutOverride)
            return false;
        const auto& key = *static_cast<QKeyEvent*>(event);
        const bool isLetter = key.key() >= Qt::Key_0 && key.key() <= Qt::Key_Z;
        const bool isPlain = (key.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
        event->setAccepted(isLetter && isPlain);
        return isLetter && isPlain;
    }
};

} // namespace

CMainFrame::CMainFrame(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile)
    : m_doc(doc),
      m_prompter(prompter),
      m_profile(profile),
      m_openedImages(doc.Model().openedImages),
      m_commands(*this),
      m_statusPanes(*statusBar()),
      m_printing(std::make_unique<CPrinting>(*this, doc, prompter)),
      m_scanning(std::make_unique<CScanning>(*this, doc, prompter, profile)),
      m_capturing(std::make_unique<CCapturing>(*this, doc, prompter, profile)) {
    // A quick stroke needs every point that the pen passes. Not before the application exists, which sets it again.
    QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    setWindowIcon(Icon("personal-velmor"));
    CreateViews();
    m_commands.SetTarget({m_doc, *this, m_cameraPane->View(), m_celPane->View()});
    CreateMenus();
    CreateToolBar();
    m_doc.Views().Add(*this);
    OnUpdate(everythingHint);
    RestoreLayout();
    m_panes->View(StackedPane::Xsheet).setFocus();
    UpdateCommands();
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { UpdateCommands(); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) { OnFocusMoved(now); });
}

CMainFrame::~CMainFrame() {
    m_doc.Views().Remove(*this);
}

void CMainFrame::CreateViews() {
    m_sourceView = new CSourceView(m_doc, m_prompter);
    m_sourceView->setMinimumWidth(leastSourceWidth);
    m_cameraPane = new CCamFrame(m_doc, m_commands.List(CameraToolBar()), m_commands.List(TransportBar()));
    m_xsheetPane = new CXsheetFrame(m_doc, m_prompter, m_commands.List(XsheetToolBar()));
    m_celPane = new CCelFrame(
        m_doc, m_prompter, m_profile,
        {m_commands.List(CelToolBar()),
         {Action(CommandId::CelBucket), Action(CommandId::CelPen), Action(CommandId::CelEraser),
          Action(CommandId::CelLineBrush), Action(CommandId::CelLine), Action(CommandId::CelCurve),
          Action(CommandId::CelRectangle), Action(CommandId::CelEllipse), Action(CommandId::CelAreaFill),
          Action(CommandId::CelSelectRect), Action(CommandId::CelLasso), Action(CommandId::CelSelectColor)},
         Action(CommandId::CelUpdateCamera)});

    m_panes = new CPaneStack({{
        {"Camera", m_cameraPane, &m_cameraPane->View(), [this] { ShowCamera(); }},
        {"XSheet", m_xsheetPane, &m_xsheetPane->View(), [this] { ShowXSheet(); }},
        {"Cel Editor", m_celPane, &m_celPane->View(), [this] { ShowCelEditor(); }},
    }});
    m_paneBars = {
        m_cameraPane->findChild<QToolBar*>("camera tools"), m_xsheetPane->findChild<QToolBar*>("xsheet tools"),
        m_celPane->findChild<QToolBar*>("celToolBar"),      m_celPane->findChild<QToolBar*>("colorBar"),
        m_celPane->findChild<QToolBar*>("brushBar"),        m_cameraPane->findChild<QToolBar*>("transport")};

    const auto play = [this] { Action(CommandId::PreviewPlay)->trigger(); };
    m_cameraPane->View().SetTapCallback(play);
    m_xsheetPane->View().SetSpaceCallback(play);
    // On an exposed cell the key is that of the command that opens its drawing.
    m_xsheetPane->View().SetEnterCallback([this] { Action(CommandId::ExposureNewDrawing)->trigger(); });

    m_outerSplitter = new QSplitter(Qt::Horizontal);
    m_outerSplitter->setChildrenCollapsible(false);
    m_outerSplitter->addWidget(m_sourceView);
    m_outerSplitter->addWidget(m_panes);
    m_outerSplitter->setStretchFactor(1, 1);
    setCentralWidget(m_outerSplitter);
}

void CMainFrame::CreateMenus() {
    for (const CMenu& menu : Menus())
        m_commands.FillMenu(*menuBar()->addMenu(menu.title), menu);
    auto* letters = new CMenuLetters(menuBar());
    menuBar()->installEventFilter(letters);

    // The same commands under the right mouse button.
    auto* assets = new QMenu(this);
    m_commands.FillMenu(*assets, AssetsMenu());
    m_sourceView->SetContextMenu(assets);
    auto* camera = new QMenu(this);
    m_commands.FillMenu(*camera, CameraMenu());
    m_cameraPane->View().SetContextMenu(camera);
    auto* canvas = new QMenu(this);
    m_commands.FillMenu(*canvas, CelCanvasMenu());
    m_celPane->View().SetContextMenu(canvas);
    CSheetMenus sheet;
    for (std::size_t part = 0; part < sheet.size(); ++part) {
        sheet[part] = new QMenu(this);
        m_commands.FillMenu(*sheet[part], SheetMenus()[part]);
    }
    m_xsheetPane->View().SetContextMenus(sheet);
    auto* exposing = new QMenu(this);
    exposing->setObjectName("exposing menu");
    m_commands.FillMenu(*exposing, TypedExposuresMenu());
    m_statusPanes.SetExposingMenu(*exposing);
    for (QMenu* menu : findChildren<QMenu*>())
        menu->installEventFilter(letters); // the one that is open gets the keys
}

void CMainFrame::CreateToolBar() {
    m_toolBar = addToolBar("Main Tools");
    m_toolBar->setObjectName("main tools");
    m_toolBar->setIconSize({mainToolBarIcon, mainToolBarIcon});
    FillToolBar(*m_toolBar, m_commands.List(MainToolBar()));
}

void CMainFrame::BringToFront() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget& front = dialog != nullptr ? *dialog : *this;
    front.raise();
    front.activateWindow();
}

void CMainFrame::UpdateCommands() {
    m_commands.Update();
    m_doc.History().TellFault();
    m_statusPanes.Update(m_doc.Model(), m_doc.Exposing().ChoicesText(), m_doc.Preview().Frame());
}

void CMainFrame::OnUpdate(UpdateHint) {
    const int opened = m_doc.Model().openedImages;
    if (std::exchange(m_openedImages, opened) != opened) {
        ShowPane(StackedPane::CelEditor);
        m_celPane->View().setFocus();
    }
    const QString title = ToQt(m_doc.GetTitle()) + " - Personal Velmor";
    if (windowTitle() != title)
        setWindowTitle(title);
}

// The cel editor is left when another widget of the program gets the keyboard: not for another program, nor for a
// menu.
void CMainFrame::OnFocusMoved(const QWidget* focus) {
    if (focus == nullptr || focus->window()->windowType() == Qt::Popup)
        return;
    const bool isInEditor = m_celPane->isAncestorOf(focus);
    if (std::exchange(m_isInCelEditor, isInEditor) && !isInEditor)
        QMetaObject::invokeMethod(
            this, [this] { SaveLeftImage(); }, Qt::QueuedConnection); // no message amid a press of the mouse
}

// A file that cannot be written is told of once, and again when there is something new to lose.
void CMainFrame::SaveLeftImage() {
    const CCelImg& image = m_doc.Model().celImg;
    const CUnsavedImage unsaved{image.FilePath(), image.Changes()};
    if (image.IsModified() && m_reported != unsaved && !m_doc.EditedImage().Save())
        m_reported = unsaved;
}

void CMainFrame::PrintXSheet() {
    m_printing->Print();
}

void CMainFrame::PreviewPrint() {
    m_printing->Preview();
}

void CMainFrame::PreviewGuides() {
    m_printing->PreviewGuides();
}

bool CMainFrame::PrintsDialogue() const {
    return m_printing->Choices().dialogue;
}

void CMainFrame::TogglePrintDialogue() {
    CSheetPrintChoices choices = m_printing->Choices();
    choices.dialogue = !choices.dialogue;
    m_printing->SetChoices(choices);
}

void CMainFrame::SetUpPrinter() {
    m_printing->Setup();
}

void CMainFrame::Exit() {
    close();
}

void CMainFrame::SelectScanSource() {
    m_scanning->SelectSource();
}

void CMainFrame::ScanCels() {
    m_scanning->ScanCels();
}

void CMainFrame::ScanPicture() {
    m_scanning->ScanPicture();
}

void CMainFrame::ShowAlone(StackedPane pane, const PaneHeights& heights) {
    m_panes->Arrange(heights);
    m_panes->View(pane).setFocus();
}

void CMainFrame::ShowCameraAndXSheet() {
    m_panes->ArrangeHalves();
    m_panes->View(StackedPane::Xsheet).setFocus();
}

void CMainFrame::ShowCamera() {
    ShowAlone(StackedPane::Camera, cameraHeights);
}

void CMainFrame::ShowXSheet() {
    ShowAlone(StackedPane::Xsheet, xsheetHeights);
}

void CMainFrame::ShowCelEditor() {
    ShowAlone(StackedPane::CelEditor, celEditorHeights);
}

void CMainFrame::ToggleToolBar() {
    m_toolBar->setVisible(!IsToolBarShown());
}

void CMainFrame::ToggleStatusBar() {
    statusBar()->setVisible(!IsStatusBarShown());
}

void CMainFrame::TogglePaneBar(PaneBar bar) {
    m_paneBars[static_cast<std::size_t>(bar)]->setVisible(!IsPaneBarShown(bar));
}

bool CMainFrame::IsPaneBarShown(PaneBar bar) const {
    return !m_paneBars[static_cast<std::size_t>(bar)]->isHidden();
}

void CMainFrame::ChooseAppearance() {
    ChooseTheme(m_prompter, m_profile);
}

bool CMainFrame::IsToolBarShown() const {
    return m_toolBar != nullptr && !m_toolBar->isHidden();
}

bool CMainFrame::IsStatusBarShown() const {
    const auto* bar = findChild<QStatusBar*>();
    return bar != nullptr && !bar->isHidden();
}

void CMainFrame::ToggleAssetThumbnails() {
    m_sourceView->ShowThumbnails(!m_sourceView->ShowsThumbnails());
}

void CMainFrame::ToggleSoundWaves() {
    CXSheetView& view = m_xsheetPane->View();
    view.ShowSoundWaves(!view.ShowsSoundWaves());
}

void CMainFrame::ShowManual() {
    OpenOnlineManual(*this, m_prompter, ProgramFolder());
}

void CMainFrame::OpenDemonstration() {
    static_cast<void>(velmor::OpenDemonstration(m_doc, m_prompter)); // it has said why not
}

void CMainFrame::ShowAbout() {
    CAboutDialog(this).exec();
}

bool CMainFrame::event(QEvent* event) {
    // Something modal is about to open, perhaps for the cell at the cursor, which must not move now.
    if (event->type() == QEvent::WindowBlocked)
        m_doc.Preview().GoBack();
    return QMainWindow::event(event);
}

void CMainFrame::closeEvent(QCloseEvent* event) {
    // Leaving a scene saves it, as opening another one does.
    if (m_doc.Model().sceneOpen && !m_doc.Saving().SaveAllOrAsk("exit")) {
        event->ignore();
        return;
    }
    SaveLayout();
    event->accept();
}

void CMainFrame::RestoreLayout() {
    const CWindowSettings settings(m_profile);
    if (!settings.RestoreGeometry(*this, "Main Frame"))
        resize(1280, 860);
    settings.RestoreState(*this, "Main Tools");
    settings.RestoreState(*m_cameraPane, "Camera Tools");
    settings.RestoreState(*m_xsheetPane, "XSheet Tools");
    settings.RestoreState(*m_celPane, "Cel Tools");
    m_outerSplitter->setSizes({settings.Number("Source Width", usualSourceWidth), width()});
    PaneHeights heights = m_panes->IdealHeights();
    for (std::size_t pane = 0; pane < heights.size(); ++pane)
        heights[pane] = settings.Number(paneKeys[pane], heights[pane]);
    m_panes->Arrange(heights);
    if (settings.Number(halvesKey, 0) != 0)
        m_panes->ArrangeHalves();
    statusBar()->setVisible(settings.Number("Status Bar", 1) != 0);
    m_sourceView->ShowThumbnails(settings.Number("Asset Thumbnails", 0) != 0);
    m_xsheetPane->View().ShowSoundWaves(settings.Number("Sound Waves", 1) != 0);
    m_printing->SetChoices({.dialogue = settings.Number("Print Dialogue", 0) != 0});
}

void CMainFrame::SaveLayout() {
    CWindowSettings settings(m_profile);
    settings.SaveGeometry(*this, "Main Frame");
    settings.SaveState(*this, "Main Tools");
    settings.SaveState(*m_cameraPane, "Camera Tools");
    settings.SaveState(*m_xsheetPane, "XSheet Tools");
    settings.SaveState(*m_celPane, "Cel Tools");
    settings.SetNumber("Source Width", m_outerSplitter->sizes().front());
    for (std::size_t pane = 0; pane < stackedPanes; ++pane)
        settings.SetNumber(paneKeys[pane], m_panes->IdealHeights()[pane]);
    settings.SetNumber(halvesKey, m_panes->HasHalves() ? 1 : 0);
    settings.SetNumber("Status Bar", IsStatusBarShown() ? 1 : 0);
    settings.SetNumber("Asset Thumbnails", m_sourceView->ShowsThumbnails() ? 1 : 0);
    settings.SetNumber("Sound Waves", m_xsheetPane->View().ShowsSoundWaves() ? 1 : 0);
    settings.SetNumber("Print Dialogue", PrintsDialogue() ? 1 : 0);
}

} // namespace velmor
