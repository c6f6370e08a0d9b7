#include "views/cel/CelFrame.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/Icons.h"
#include "views/cel/BrushBar.h"
#include "views/cel/CelView.h"
#include "views/cel/ColorList.h"
#include "views/cel/ColorPair.h"

#include <QAction>
#include <QActionGroup>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr QSize toolIconSize{20, 20};
constexpr int gap = 2;

} // namespace

CCelFrame::CCelFrame(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile, const CCelActions& actions,
                     QWidget* parent)
    : QMainWindow(parent, Qt::Widget),
      m_doc(doc),
      m_view(new CCelView(doc, prompter, profile)),
      m_colors(new CColorList(
          {[&doc](int index) { doc.SetFGColor(index); }, [&doc](int index) { doc.SetBGColor(index); },
           [&doc](int index) { doc.EditColor(index); }, [&doc](int index) { doc.DeleteColor(index); }})),
      m_colorPair(new CColorPair),
      m_brushBar(new CBrushBar(doc, actions.updateCamera)) {
    setObjectName("celFrame");
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(toolIconSize);
    setCentralWidget(m_view);
    AddToolBar(actions);
    AddColorBar();
    addToolBar(Qt::RightToolBarArea, m_brushBar);
    m_view->SetStateCallback([this] { ShowState(); });
    m_doc.Views().Add(*this);
    OnUpdate(everythingHint);
    ShowState();
}

CCelFrame::~CCelFrame() {
    m_view->SetStateCallback(nullptr);
    m_doc.Views().Remove(*this);
}

QAction* CCelFrame::AddViewAction(QToolBar& bar, const char* text, const char* icon, const char* tip, int key) {
    QAction* action = bar.addAction(Icon(icon), text);
    action->setObjectName(text);
    action->setToolTip(QString("%1 (%2)").arg(tip, QKeySequence(key).toString(QKeySequence::NativeText)));
    action->setCheckable(true);
    // A letter is a key of the view only, so that names can be typed everywhere else.
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(action);
    return action;
}

void CCelFrame::AddToolBar(const CCelActions& actions) {
    QToolBar* bar = addToolBar("Tool Bar");
    bar->setObjectName("celToolBar");
    bar->setFloatable(false);
    for (QAction* action : {actions.zoomOut, actions.zoomOneToOne, actions.zoomIn, actions.pan})
        if (action != nullptr)
            bar->addAction(action);
    bar->addSeparator();
    auto* group = new QActionGroup(this);
    const auto addTool = [&](CelTool tool, const char* text, const char* icon, const char* tip, int key) {
        QAction* action = group->addAction(AddViewAction(*bar, text, icon, tip, key));
        connect(action, &QAction::triggered, m_view, [this, tool] { m_view->SetTool(tool); });
        m_tools[static_cast<std::size_t>(tool)] = action;
    };
    addTool(CelTool::Bucket, "BUCKET", "bucket", "Bucket: fill areas", Qt::Key_B);
    addTool(CelTool::Pen, "PEN", "pen", "Pen: draw lines", Qt::Key_P);
    addTool(CelTool::Eraser, "ERASER", "eraser", "Eraser: turn lines into background color", Qt::Key_E);
    addTool(CelTool::LineBrush, "LINEBRUSH", "line-brush", "Line brush: color lines", Qt::Key_L);
    bar->addSeparator();
    m_pick = AddViewAction(*bar, "Pick Color", "pick-color", "Pick the foreground color from the image", Qt::Key_I);
    connect(m_pick, &QAction::triggered, m_view,
            [this](bool checked) { checked ? m_view->Pick() : m_view->CancelPick(); });
    m_colorKey = AddViewAction(*bar, "Color Key", "color-key", "Make a color picked from the picture transparent",
                               Qt::Key_K);
    connect(m_colorKey, &QAction::triggered, m_view,
            [this](bool checked) { checked ? m_view->ColorKey() : m_view->CancelPick(); });
}

QToolButton* CCelFrame::MakePaletteButton(const char* text, const char* icon, const char* tip) {
    auto* button = new QToolButton;
    button->setObjectName(text);
    button->setText(text);
    button->setAccessibleName(text);
    button->setIcon(Icon(icon));
    button->setIconSize(toolIconSize);
    button->setToolTip(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    m_paletteButtons.push_back(button);
    return button;
}

QWidget* CCelFrame::MakeColorPanel() {
    QToolButton* add = MakePaletteButton("Add Color", "add-color", "Add a color to the palette");
    QToolButton* edit = MakePaletteButton("Edit Color", "edit-color", "Edit the selected color");
    QToolButton* remove = MakePaletteButton("Delete Color", "delete-color", "Delete the selected color");
    connect(add, &QToolButton::clicked, this, [this] { m_doc.OnAddColor(); });
    connect(edit, &QToolButton::clicked, this, [this] { m_doc.EditColor(m_colors->Current()); });
    connect(remove, &QToolButton::clicked, this, [this] { m_doc.DeleteColor(m_colors->Current()); });
    auto* panel = new QWidget;
    auto* row = new QHBoxLayout;
    row->setSpacing(gap);
    row->addWidget(m_colorPair);
    row->addStretch();
    for (QToolButton* button : {add, edit, remove})
        row->addWidget(button);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(gap, gap, gap, gap);
    layout->setSpacing(2 * gap);
    layout->addLayout(row);
    layout->addWidget(m_colors);
    return panel;
}

void CCelFrame::AddColorBar() {
    auto* bar = new QToolBar("Colors");
    bar->setObjectName("colorBar");
    bar->setFloatable(false);
    bar->setAllowedAreas(Qt::LeftToolBarArea | Qt::RightToolBarArea);
    bar->addWidget(MakeColorPanel());
    addToolBar(Qt::LeftToolBarArea, bar);
}

void CCelFrame::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    m_brushBar->FitInto(size());
}

void CCelFrame::OnUpdate(UpdateHint hint) {
    if (Holds(hint, UpdateHint::Palette))
        m_colors->PrepareColorBitmaps(m_doc.Model().palette);
    if (Holds(hint, UpdateHint::Colors | UpdateHint::Palette))
        UpdateColors();
    if (Holds(hint, UpdateHint::Tools))
        UpdateBrushesandPens();
    if (Holds(hint, UpdateHint::Palette | UpdateHint::AssetLists))
        for (QToolButton* button : m_paletteButtons)
            button->setEnabled(m_doc.Model().HasFolder());
}

void CCelFrame::ShowState() {
    m_tools[static_cast<std::size_t>(m_view->Tool())]->setChecked(true);
    m_pick->setChecked(m_view->PendingPick() == CelPick::Foreground);
    m_colorKey->setChecked(m_view->PendingPick() == CelPick::ColorKey);
}

void CCelFrame::UpdateBrushesandPens() {
    m_brushBar->UpdateBrushesandPens();
    const bool isRound = m_doc.Model().paint.brush >= 0;
    m_tools[static_cast<std::size_t>(CelTool::Eraser)]->setIcon(Icon(isRound ? "eraser" : "eraser-rect"));
    m_tools[static_cast<std::size_t>(CelTool::LineBrush)]->setIcon(
        Icon(isRound ? "line-brush" : "line-brush-rect"));
}

void CCelFrame::UpdateColors() {
    m_colorPair->SetColors(m_doc.GetFGColor(), m_doc.GetBGColor());
}

} // namespace velmor
