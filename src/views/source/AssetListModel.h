#pragma once

#include "scene/ScenePaths.h"

#include <QAbstractListModel>
#include <QColor>
#include <QIcon>
#include <functional>
#include <string>
#include <vector>

namespace velmor {

/// What the list is painted with: green, and dimmed where the desktop is dark.
struct CAssetColors {
    QColor ground;
    QColor ink;
    QColor disabledInk;
};
CAssetColors AssetColors(bool dark);

/// The drawing that stands for a kind of asset, on a dark ground or a light one.
QIcon AssetIcon(SourceMode kind, bool dark = false);

/// The assets that the source view lists. What stays in the list keeps its selection, as only the rows
/// that differ are removed and inserted.
class CAssetListModel final : public QAbstractListModel {
public:
    /// Text of an item's tooltip, asked for when it is shown.
    using ToolTipSource = std::function<QString(const std::string& title)>;

    /// The picture of an item, asked for whenever it is painted; null for the drawing of its kind.
    using PictureSource = std::function<QIcon(const std::string& title)>;

    explicit CAssetListModel(ToolTipSource toolTip, QObject* parent = nullptr);

    /// Without a source all items have the drawing of their kind.
    void SetPictures(PictureSource pictures) { m_pictures = std::move(pictures); }

    /// Another list altogether: nothing is kept.
    void Replace(SourceMode kind, std::vector<CListedAsset> assets);
    /// The same list as it stands now. False when nothing has changed.
    bool Refresh(std::vector<CListedAsset> assets);

    SourceMode Kind() const { return m_kind; }
    const std::vector<CListedAsset>& Assets() const { return m_assets; }
    const CListedAsset& At(int row) const { return m_assets[static_cast<std::size_t>(row)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    void TakeIcons();
    void RemoveMissing(const std::vector<CListedAsset>& assets);
    void InsertNew(const std::vector<CListedAsset>& assets);

    QIcon PictureOf(const CListedAsset& asset) const;

    ToolTipSource m_toolTip;
    PictureSource m_pictures;
    SourceMode m_kind = SourceMode::Cels;
    QIcon m_icon;
    QIcon m_iconOnDark;
    std::vector<CListedAsset> m_assets;
};

} // namespace velmor
