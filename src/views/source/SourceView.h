#pragma once

#include "platform/files/Files.h"
#include "scene/ScenePaths.h"
#include "scene/ViewList.h"
#include "views/source/RowThumbnails.h"

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMenu;
class QMimeData;
class QModelIndex;
class QPixmap;

namespace velmor {

class CAssetListModel;
class CAssetListView;
class CFolderList;
class CModeButtons;
class CVelmorltDoc;
class IPrompter;

/// The asset browser: cels of the current folder, pictures or sounds of the open scene. Assets are selected for the
/// asset commands, opened by a double click and dragged to the xsheet.
class CSourceView final : public QWidget, public IDocView {
public:
    /// The mime type of a drag of assets; the assets themselves are the document's source selection.
    static constexpr const char* dragType = "application/x-velmor-assets";
    /// A small picture of an image file; null when there is none.
    using ThumbnailSource = std::function<QPixmap(const Path& file)>;

    /// Document and prompter outlive the view, which takes itself off the document's list when it dies.
    CSourceView(CVelmorltDoc& doc, IPrompter& prompter, QWidget* parent = nullptr);
    ~CSourceView() override;

    /// Shown at a right click while a scene is open; belongs to the caller.
    void SetContextMenu(QMenu* menu);
    /// Where the pictures of drags and tooltips come from.
    void SetThumbnails(ThumbnailSource thumbnails) { m_thumbnails = std::move(thumbnails); }

    /// Whether the rows of cels and pictures show what is drawn on them.
    void ShowThumbnails(bool shown);
    bool ShowsThumbnails() const { return m_showsThumbnails; }

    /// What a drag of the selected assets carries, and how it looks. The picture is null when nothing is selected.
    std::unique_ptr<QMimeData> DragData() const;
    QPixmap DragPicture() const;

    void OnUpdate(UpdateHint hint) override;
    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    /// What is listed: another one shares no names with it.
    struct CListing {
        std::string scene;
        std::string folder;
        SourceMode kind = SourceMode::Cels;

        bool operator==(const CListing&) const = default;
    };

    void MakeAssetList();

    void Refresh();
    void RefreshAssets();
    /// Gives the list the pictures and the row height that go with what it shows.
    void ArrangeRows();
    std::vector<CListedAsset> Listed() const;

    void OnModeChosen(SourceMode mode);
    void OnFolderChosen(const std::string& folder);
    void OnSelectionChanged();
    void ShowSelection(const std::vector<std::string>& titles);
    std::vector<int> SelectedRows() const;
    std::vector<std::string> SelectedTitles() const;
    void StartDrag();
    Path FileOf(const std::string& title) const;
    QPixmap ThumbnailOf(const std::string& title) const;

    CVelmorltDoc& m_doc;
    ThumbnailSource m_thumbnails;
    QPointer<QMenu> m_contextMenu;

    CModeButtons* m_modes;
    CFolderList* m_folders;
    CAssetListModel* m_assets;
    CAssetListView* m_list;

    CRowThumbnails m_rowThumbnails;
    bool m_showsThumbnails = false;
    CListing m_listing;
    bool m_refreshing = false;
};

} // namespace velmor
