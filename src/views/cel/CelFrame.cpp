#include "views/cel/CelFrame.h"

#include "scene/CelFilling.h"
#include "scene/PaintTools.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/Icons.h"
#include "views/cel/BrushBar.h"
#include "views/cel/CelCaption.h"
#include "views/cel/CelView.h"
#include "views/cel/ColorList.h"
#include "views/cel/ColorPair.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace velmor {

namespace {

constexpr QSize toolIconSize{20, 20};
constexpr int gap = 2;
constexpr int untilLook = 1200;  ///< milliseconds without a change
constexpr int betweenPolls = 50; ///< milliseconds

} // namespace

CCelFrame::CCelFrame(CVelmorltDoc& doc, IPrompter& prompter, CProfile& profile, const CCelActions& actions,
                     QWidget* parent)
    : QMainWindow(parent, Qt::Widget),
      m_doc(doc),
      m_view(new CCelView(doc, prompter, profile)),
      m_colors(new CColorList({[&doc](int index) { doc.Palette().SetFGColor(index); },
                               [&doc](int index) { doc.Palette().SetBGColor(index); },
                               [&doc](int index) { doc.Palette().EditColor(index); },
                               [&doc](int index) { doc.Palette().AskAndDeleteColor(index); },
                               [&doc](int from, int to) { doc.Palette().MoveColor(from, to); }})),
      m_colorPair(new CColorPair),
      m_brushBar(new CBrushBar(doc.Model(), doc.Palette(), doc.Assets(), actions.updateCamera)),
      m_caption(new CCelCaption),
      m_tools(actions.tools) {
    setObjectName("celFrame");
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(toolIconSize);
    setCentralWidget(m_view);
    AddToolBar(actions.toolBar);
    AddColorBar();
    addToolBar(Qt::RightToolBarArea, m_brushBar);
    m_view->SetStateCallback([this] {
        UpdateCaption();
        m_beforeLook.start();
    });
    m_beforeLook.setSingleShot(true);
    m_beforeLook.setInterval(untilLook);
    connect(&m_beforeLook, &QTimer::timeout, this, [this] { LookForUsedColors(); });
    m_whileLooking.setInterval(betweenPolls);
    connect(&m_whileLooking, &QTimer::timeout, this, [this] { ShowUsedColors(); });
    m_doc.Views().Add(*this);
    OnUpdate(everythingHint);
}

CCelFrame::~CCelFrame() {
    m_view->SetStateCallback(nullptr);
    m_doc.Views().Remove(*this);
}

void CCelFrame::AddToolBar(const ActionList& actions) {
    QToolBar* bar = addToolBar("Tool Bar");
    bar->setObjectName("celToolBar");
    bar->setFloatable(false);
    FillToolBar(*bar, actions);
    bar->addSeparator();
    bar->addWidget(m_caption);
    for (const CPaintTool& tool : paintTools)
        if (QAction* action = m_tools[RowOf(tool.id)])
            action->setIconText(tool.name);
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
    connect(add, &QToolButton::clicked, this, [this] { m_doc.Palette().AskAndAddColor(); });
    connect(edit, &QToolButton::clicked, this, [this] { m_doc.Palette().EditColor(m_colors->Current()); });
    connect(remove, &QToolButton::clicked, this,
            [this] { m_doc.Palette().AskAndDeleteColor(m_colors->Current()); });
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
    layout->addWidget(MakeColorSearch());
    layout->addWidget(m_colors);
    return panel;
}

QLineEdit* CCelFrame::MakeColorSearch() {
    auto* search = new QLineEdit;
    search->setObjectName("colorSearch");
    search->setAccessibleName("Search colors");
    search->setPlaceholderText("Search");
    search->setToolTip("Shows the colors whose name has this in it. Return: the first one becomes the foreground");
    search->setClearButtonEnabled(true);
    connect(search, &QLineEdit::textChanged, m_colors, [this](const QString& text) { m_colors->SetFilter(text); });
    connect(search, &QLineEdit::returnPressed, this, [this] {
        if (const int first = m_colors->FirstShown(); first >= 0)
            m_doc.Palette().SetFGColor(first);
        m_view->setFocus(); // the tools' keys are wanted again
    });
    return search;
}

void CCelFrame::LookForUsedColors() {
    const CSceneModel& model = m_doc.Model();
    if (m_doc.Painting().IsPainting() || m_doc.Filling().IsFilling()) {
        m_beforeLook.start();
        return;
    }
    if (!m_colors->isVisible() || !model.HasFolder())
        return;
    std::vector<Path> files;
    for (const std::string& title : ListCelTitles(model.Paths(), model.folderName))
        files.push_back(model.Paths().CelFile(model.folderName, title));
    std::optional<CCelImg> edited;
    if (model.celImg.GetLoadState() == LoadState::Cel && model.celImg.IsModified())
        edited = model.celImg;
    m_usedColors.Look(std::move(files), std::move(edited));
    m_whileLooking.start();
}

void CCelFrame::ShowUsedColors() {
    if (m_usedColors.Poll())
        m_colors->SetUsed([this](CColor color) { return m_usedColors.IsUsed(color); });
    if (!m_usedColors.IsLooking())
        m_whileLooking.stop();
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
    if (Holds(hint, UpdateHint::Palette)) {
        m_colors->PrepareColorBitmaps(m_doc.Model().palette, m_doc.Model().paint.foregroundEntry);
        m_colors->SetUsed([this](CColor color) { return m_usedColors.IsUsed(color); });
    }
    if (Holds(hint, UpdateHint::EditedImage | UpdateHint::AssetLists | UpdateHint::CameraRedraw))
        m_beforeLook.start();
    if (Holds(hint, UpdateHint::Colors | UpdateHint::Palette))
        UpdateColors();
    if (Holds(hint, UpdateHint::Tools | UpdateHint::EditedImage))
        UpdateBrushesandPens();
    if (Holds(hint, UpdateHint::Palette | UpdateHint::AssetLists))
        for (QToolButton* button : m_paletteButtons)
            button->setEnabled(m_doc.Model().HasFolder());
    UpdateCaption();
}

void CCelFrame::UpdateCaption() {
    const CCelFlip& flipped = m_view->Flipped();
    m_caption->SetText(flipped.IsOn() ? FlippedCaptionOf(flipped.Shown(), flipped.IsPlaying())
                                      : CaptionOf(m_doc.Model(), m_view->Zoom(), m_view->Turn()));
}

void CCelFrame::UpdateBrushesandPens() {
    m_brushBar->UpdateBrushesandPens();
    const bool isRound = m_doc.Model().paint.brush >= 0;
    for (const CPaintTool& tool : paintTools) {
        QAction* action = m_tools[RowOf(tool.id)];
        if (action != nullptr && *tool.rectangleIcon != '\0')
            action->setIcon(Icon(isRound ? tool.icon : tool.rectangleIcon));
    }
}

void CCelFrame::UpdateColors() {
    m_colorPair->SetColors(m_doc.Model().paint.foreground, m_doc.Model().paint.background);
    const int entry = m_doc.Model().paint.foregroundEntry;
    if (std::exchange(m_foregroundEntry, entry) != entry)
        m_colors->Light(entry);
}

} // namespace velmor
