#include "views/dialogs/SceneManagerDialog.h"

#include "views/Text.h"
#include "views/dialogs/SceneManagerSide.h"
#include "views/widgets/WaitCursor.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace velmor {

CSceneManagerDialog::CSceneManagerDialog(QWidget* parent, CSceneManager& manager)
    : CDialog(parent, "Scene Manager"),
      m_manager(manager),
      m_left(new CSceneManagerSide("&Left Scene", "left", manager, CSceneManagerSide::Use::From,
                                   [this] { EnableButtons(); })),
      m_right(new CSceneManagerSide("R&ight Scene", "right", manager, CSceneManagerSide::Use::Into,
                                    [this] { EnableButtons(); })) {
    setObjectName("SceneManager");
    auto* row = new QHBoxLayout;
    row->setSpacing(14);
    row->addWidget(m_left, 1);
    row->addLayout(Middle());
    row->addWidget(m_right, 1);
    Body().addLayout(row, 1);

    RemoveCancel();
    OkButton().setText("&Close");
    OkButton().setAutoDefault(false);

    m_left->RefreshScenes();
    m_right->RefreshScenes();
    ShowKind(SourceMode::Cels);
    resize(860, 560);
}

void CSceneManagerDialog::showEvent(QShowEvent* event) {
    CDialog::showEvent(event);
    // Enter in a list is not to close the dialog.
    OkButton().setDefault(false);
}

QLayout* CSceneManagerDialog::Middle() {
    auto* kinds = new QGroupBox("Asset Type");
    auto* kindRow = new QHBoxLayout(kinds);
    kindRow->addWidget(KindButton("SND", "Sounds", SourceMode::Sounds));
    kindRow->addWidget(KindButton("PIC", "Pictures", SourceMode::Pictures));
    kindRow->addWidget(KindButton("CEL", "Cels of a folder", SourceMode::Cels));

    m_transferAssets = Button("transferAssets", "&Transfer Assets >>",
                              "Copies the selected assets to the right scene", [this] { TransferAssets(); });
    m_transferPalette =
        Button("transferPalette", "Transfer &Palette >>",
               "Replaces the palette of the right folder by that of the left one", [this] { TransferPalette(); });
    m_mergePalette =
        Button("mergePalette", "&Merge Palette >>",
               "Adds the colours of the left folder to the palette of the right one", [this] { MergePalette(); });
    m_deleteScene = Button("deleteScene", "<< &Delete Scene", "Deletes the left scene with all its files",
                           [this] { DeleteScene(); });
    QPushButton* backup = Button("backupScene", "<< Backup Scene", "Scenes cannot be backed up from here", {});
    QPushButton* restore = Button("restoreScene", "Restore Scene", "Scenes cannot be restored from here", {});
    backup->setEnabled(false);
    restore->setEnabled(false);

    auto* column = new QVBoxLayout;
    column->addWidget(kinds);
    column->addSpacing(12);
    for (QPushButton* button : {m_transferAssets, m_transferPalette, m_mergePalette})
        column->addWidget(button);
    column->addStretch(1);
    for (QPushButton* button : {m_deleteScene, backup, restore})
        column->addWidget(button);
    return column;
}

QRadioButton* CSceneManagerDialog::KindButton(const char* text, const QString& toolTip, SourceMode kind) {
    auto* button = new QRadioButton(text);
    button->setObjectName(text);
    button->setToolTip(toolTip);
    button->setChecked(kind == m_kind);
    connect(button, &QRadioButton::toggled, this, [this, kind](bool on) {
        if (on)
            ShowKind(kind);
    });
    return button;
}

QPushButton* CSceneManagerDialog::Button(const char* name, const QString& text, const QString& toolTip,
                                         std::function<void()> onClick) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    if (onClick)
        connect(button, &QPushButton::clicked, this, std::move(onClick));
    return button;
}

void CSceneManagerDialog::ShowKind(SourceMode kind) {
    m_kind = kind;
    m_left->ShowKind(kind);
    m_right->ShowKind(kind);
    EnableButtons();
}

void CSceneManagerDialog::EnableButtons() {
    const CSceneManager::CSide left = m_left->Chosen();
    const CSceneManager::CSide right = m_right->Chosen();
    const bool showsCels = m_kind == SourceMode::Cels;
    const bool bothFolders = showsCels && !left.folder.empty() && !right.folder.empty();
    m_transferAssets->setEnabled(!m_left->SelectedAssets().empty() &&
                                 (showsCels ? bothFolders : !right.scene.empty()));
    m_transferPalette->setEnabled(bothFolders);
    m_mergePalette->setEnabled(bothFolders);
    m_deleteScene->setEnabled(!left.scene.empty());
}

void CSceneManagerDialog::TransferAssets() {
    const CWaitCursor wait;
    m_manager.TransferAssets(m_kind, m_left->Chosen(), m_right->Chosen(), m_left->SelectedAssets(),
                             [this](const std::string& title) { setWindowTitle(ToQt(title)); });
    m_right->RefreshAssets();
}

void CSceneManagerDialog::TransferPalette() {
    m_manager.TransferPalette(m_left->Chosen(), m_right->Chosen());
}

void CSceneManagerDialog::MergePalette() {
    m_manager.MergePalette(m_left->Chosen(), m_right->Chosen());
}

void CSceneManagerDialog::DeleteScene() {
    static_cast<void>(m_manager.DeleteScene(m_left->Chosen().scene));
    // Also after a failure: part of the scene may be gone.
    m_left->RefreshScenes();
    m_right->RefreshScenes();
    EnableButtons();
}

} // namespace velmor
