#include "views/dialogs/SceneManagerSide.h"

#include "views/Text.h"

#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace velmor {

namespace {

QStringList ToQtList(const std::vector<std::string>& names) {
    QStringList list;
    for (const std::string& name : names)
        list.append(ToQt(name));
    return list;
}

// A database may hold thousands of scenes: neither the box nor its list is to measure them all.
QComboBox* NewNameBox(const QString& name, const QString& placeholder) {
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->setPlaceholderText(placeholder);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(16);
    auto* list = new QListView;
    list->setUniformItemSizes(true);
    box->setView(list);
    return box;
}

// Another list of names; `preferred` is chosen when it is among them, otherwise the name at `otherwise`.
void Refill(QComboBox& box, const std::vector<std::string>& names, const QString& preferred, int otherwise) {
    const QSignalBlocker quiet(box);
    box.clear();
    box.addItems(ToQtList(names));
    const int index = box.findText(preferred);
    box.setCurrentIndex(index >= 0 ? index : std::min(otherwise, box.count() - 1));
}

} // namespace

CSceneManagerSide::CSceneManagerSide(const QString& title, const QString& name, const CSceneManager& manager,
                                     Use use, std::function<void()> onChange)
    : QGroupBox(title),
      m_manager(manager),
      m_onChange(std::move(onChange)),
      m_scenes(NewNameBox(name + "Scene", "Choose a scene")),
      m_folders(NewNameBox(name + "Folder", "No folder")),
      m_assets(new QListView),
      m_names(new QStringListModel(this)) {
    m_scenes->setAccessibleName(title);
    auto* label = new QLabel(use == Use::From ? "&Folders :" : "F&olders :");
    label->setBuddy(m_folders);
    m_assets->setObjectName(name + "Assets");
    m_assets->setAccessibleName(title + ": assets");
    m_assets->setUniformItemSizes(true);
    m_assets->setSpacing(1);
    m_assets->setEditTriggers(QListView::NoEditTriggers);
    m_assets->setSelectionMode(use == Use::From ? QListView::ExtendedSelection : QListView::NoSelection);
    m_assets->setModel(m_names);

    auto* column = new QVBoxLayout(this);
    column->addWidget(m_scenes);
    column->addSpacing(4);
    column->addWidget(label);
    column->addWidget(m_folders);
    column->addSpacing(4);
    column->addWidget(m_assets, 1);

    connect(m_scenes, &QComboBox::currentIndexChanged, this, [this] {
        RefreshFolders();
        m_onChange();
    });
    connect(m_folders, &QComboBox::currentIndexChanged, this, [this] {
        RefreshAssets();
        m_onChange();
    });
    connect(m_assets->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { m_onChange(); });
}

CSceneManager::CSide CSceneManagerSide::Chosen() const {
    return {FromQt(m_scenes->currentText()), FromQt(m_folders->currentText())};
}

std::vector<std::string> CSceneManagerSide::SelectedAssets() const {
    QModelIndexList rows = m_assets->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<std::string> names;
    for (const QModelIndex& row : rows)
        names.push_back(FromQt(row.data().toString()));
    return names;
}

void CSceneManagerSide::ShowKind(SourceMode kind) {
    m_kind = kind;
    m_folders->setEnabled(kind == SourceMode::Cels);
    RefreshAssets();
}

void CSceneManagerSide::RefreshScenes() {
    // No scene is chosen by itself: deleting one begins with choosing it.
    Refill(*m_scenes, m_manager.Scenes(), m_scenes->currentText(), -1);
    RefreshFolders();
}

void CSceneManagerSide::RefreshFolders() {
    Refill(*m_folders, m_manager.Folders(Chosen().scene), m_folders->currentText(), 0);
    RefreshAssets();
}

void CSceneManagerSide::RefreshAssets() {
    m_names->setStringList(ToQtList(m_manager.Assets(Chosen(), m_kind)));
}

} // namespace velmor
