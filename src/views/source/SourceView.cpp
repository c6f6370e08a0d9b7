#include "views/source/SourceView.h"

#include "scene/AssetOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/AssetThumbnails.h"
#include "views/Text.h"
#include "views/source/AssetListModel.h"
#include "views/source/AssetListView.h"
#include "views/source/AssetPicture.h"
#include "views/source/FolderList.h"
#include "views/source/ModeButtons.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QMenu>
#include <QScrollBar>
#include <algorithm>
#include <memory>

namespace velmor {

namespace {

constexpr int buttonHeight = 20;
constexpr int folderTop = 21;
constexpr int listTop = 44;
constexpr int leastWidth = 80;

/// What can have changed the files or what is listed of them. The rest is left out because it comes with every
/// movement of the mouse in the other views.
constexpr UpdateHint listingHints = UpdateHint::EditedImage | UpdateHint::AssetLists | UpdateHint::Levels;

} // namespace

CSourceView::CSourceView(CVelmorltDoc& doc, IPrompter&, QWidget* parent)
    : QWidget(parent),
      m_doc(doc),
      m_thumbnails([kept = std::make_shared<CAssetThumbnails>(qApp->devicePixelRatio())](const Path& file) {
          return kept->Find(file);
      }),
      m_modes(new CModeButtons(this, [this](SourceMode mode) { OnModeChosen(mode); })),
      m_folders(new CFolderList(this)),
      m_rowThumbnails([this](const Path& file) { return m_thumbnails(file); },
                      [this] { m_list->viewport()->update(); }) {
    setObjectName("sourceView");
    setMinimumWidth(leastWidth);
    m_folders->setObjectName("folders");
    m_folders->SetChosen([this](const std::string& folder) { OnFolderChosen(folder); },
                         [this] {
                             m_doc.Assets().NewFolder();
                             Refresh(); // also when it was cancelled
                         });
    MakeAssetList();
    m_doc.Views().Add(*this);
    Refresh();
}

CSourceView::~CSourceView() {
    m_doc.Views().Remove(*this);
}

void CSourceView::MakeAssetList() {
    m_assets = new CAssetListModel(
        [this](const std::string& title) {
            return AssetToolTip(m_assets->Kind(), title, FileOf(title), ThumbnailOf(title));
        },
        this);
    m_list = new CAssetListView(this);
    m_list->setObjectName("assets");
    m_list->setToolTip("Drag and Drop pictures, cels and sounds to xsheet");
    m_list->setAccessibleName("Cels");
    m_list->setModel(m_assets);
    m_list->SetOpen(
        [this](const QModelIndex& index) { m_doc.Assets().EditCel(std::string(m_assets->At(index.row()).title)); });
    m_list->SetDelete([this] { m_doc.Assets().DeleteSelected(); });
    m_list->SetDrag([this] { StartDrag(); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { OnSelectionChanged(); });
    connect(m_list->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        m_rowThumbnails.ForgetWanted(); // those that are seen now ask again
        m_list->viewport()->update();
    });
}

void CSourceView::ShowThumbnails(bool shown) {
    m_showsThumbnails = shown;
    ArrangeRows();
}

void CSourceView::ArrangeRows() {
    if (m_showsThumbnails && m_assets->Kind() != SourceMode::Sounds) {
        m_assets->SetPictures([this](const std::string& title) { return m_rowThumbnails.Find(FileOf(title)); });
        m_list->SetPictureSize(CRowThumbnails::size);
    } else {
        m_assets->SetPictures({});
        m_list->SetPictureSize({});
    }
    m_list->viewport()->update(); // files may have changed
}

void CSourceView::SetContextMenu(QMenu* menu) {
    m_contextMenu = menu;
}

QSize CSourceView::sizeHint() const {
    return {leastWidth, listTop + 200};
}

void CSourceView::resizeEvent(QResizeEvent*) {
    m_modes->setGeometry(0, 0, width(), buttonHeight);
    m_folders->setGeometry(0, folderTop, width(), listTop - folderTop - 1);
    m_list->setGeometry(0, listTop, width(), std::max(0, height() - listTop));
}

// Files that came or went while another program was in front.
bool CSourceView::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        Refresh();
    return QWidget::event(event);
}

void CSourceView::OnUpdate(UpdateHint hint) {
    if (Holds(hint, listingHints))
        Refresh();
}

void CSourceView::Refresh() {
    const CSceneModel& model = m_doc.Model();
    m_modes->Show(model.sourceMode, model.sceneOpen);
    if (model.sceneOpen)
        m_folders->Show(ListCelFolders(model.Paths()), model.folderName);
    else
        m_folders->ShowNoScene();
    RefreshAssets();
}

void CSourceView::RefreshAssets() {
    const CSceneModel& model = m_doc.Model();
    CListing listing{model.sceneOpen ? model.databaseFolder + model.sceneName : std::string(), model.folderName,
                     model.sourceMode};
    const bool sameListing = listing == m_listing;
    m_listing = std::move(listing);
    std::vector<CListedAsset> assets = Listed();

    m_refreshing = true;
    if (sameListing && assets != m_assets->Assets())
        m_list->ChangeInPlace([&] { m_assets->Refresh(std::move(assets)); });
    else if (!sameListing)
        m_assets->Replace(m_doc.Model().sourceMode, std::move(assets));
    ArrangeRows();
    ShowSelection(sameListing ? model.sourceSelection : std::vector<std::string>());
    m_refreshing = false;
    OnSelectionChanged();
}

std::vector<CListedAsset> CSourceView::Listed() const {
    const CSceneModel& model = m_doc.Model();
    if (!model.sceneOpen || (model.sourceMode == SourceMode::Cels && model.folderName.empty()))
        return {};
    return ListAssets(model.Paths(), model.sourceMode, model.folderName);
}

void CSourceView::OnModeChosen(SourceMode mode) {
    if (mode != m_doc.Model().sourceMode)
        m_doc.Scenes().SetSourceMode(mode);
}

void CSourceView::OnFolderChosen(const std::string& folder) {
    if (folder != m_doc.Model().folderName) {
        m_doc.Scenes().SetSourceSelection({});
        m_doc.Scenes().SetFolderName(folder);
    }
    Refresh(); // also when the folder could not be left
}

void CSourceView::OnSelectionChanged() {
    if (!m_refreshing && SelectedTitles() != m_doc.Model().sourceSelection)
        m_doc.Scenes().SetSourceSelection(SelectedTitles());
}

// An operation may have chosen other assets, a renamed one for instance.
void CSourceView::ShowSelection(const std::vector<std::string>& titles) {
    if (titles == SelectedTitles())
        return;
    QItemSelection selection;
    QModelIndex first;
    for (int row = 0; row < m_assets->rowCount(); ++row) {
        if (std::find(titles.begin(), titles.end(), m_assets->At(row).title) == titles.end())
            continue;
        const QModelIndex index = m_assets->index(row);
        selection.select(index, index);
        if (!first.isValid())
            first = index;
    }
    m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (first.isValid() && !m_list->selectionModel()->isSelected(m_list->currentIndex())) {
        m_list->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
        m_list->scrollTo(first);
    }
}

std::vector<int> CSourceView::SelectedRows() const {
    std::vector<int> rows;
    for (int row = 0; row < m_assets->rowCount(); ++row)
        if (m_list->selectionModel()->isSelected(m_assets->index(row)))
            rows.push_back(row);
    return rows;
}

std::vector<std::string> CSourceView::SelectedTitles() const {
    std::vector<std::string> titles;
    for (const int row : SelectedRows())
        titles.push_back(m_assets->At(row).title);
    return titles;
}

Path CSourceView::FileOf(const std::string& title) const {
    const CSceneModel& model = m_doc.Model();
    return model.Paths().AssetFile(m_assets->Kind(), model.folderName, title);
}

QPixmap CSourceView::ThumbnailOf(const std::string& title) const {
    return m_assets->Kind() == SourceMode::Sounds ? QPixmap() : m_thumbnails(FileOf(title));
}

std::unique_ptr<QMimeData> CSourceView::DragData() const {
    return MakeDragData(SelectedTitles());
}

QPixmap CSourceView::DragPicture() const {
    const std::vector<int> rows = SelectedRows();
    std::vector<CAssetCard> cards;
    for (std::size_t i = 0; i < rows.size() && i < mostCards; ++i) {
        const CListedAsset& asset = m_assets->At(rows[i]);
        cards.push_back({ThumbnailOf(asset.title), AssetIcon(m_assets->Kind()), ToQt(asset.shown)});
    }
    return PaintDragPicture(cards, static_cast<int>(rows.size()), devicePixelRatioF());
}

void CSourceView::StartDrag() {
    if (SelectedRows().empty())
        return;
    auto* drag = new QDrag(m_list);
    drag->setMimeData(DragData().release());
    drag->setPixmap(DragPicture());
    drag->setHotSpot({0, 0});
    drag->exec(Qt::CopyAction);
}

void CSourceView::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_doc.Model().sceneOpen || m_contextMenu == nullptr)
        return;
    QPoint place = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard && m_list->hasFocus() && m_list->currentIndex().isValid())
        place = m_list->viewport()->mapToGlobal(m_list->visualRect(m_list->currentIndex()).center());
    const QModelIndex index = m_list->indexAt(m_list->viewport()->mapFromGlobal(place));
    if (m_list->geometry().contains(mapFromGlobal(place)) && index.isValid() &&
        !m_list->selectionModel()->isSelected(index))
        m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    m_contextMenu->popup(place);
}

} // namespace velmor
