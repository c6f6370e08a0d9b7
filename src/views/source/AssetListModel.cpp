#include "views/source/AssetListModel.h"

#include "views/Brightness.h"
#include "views/Icons.h"
#include "views/Text.h"

#include <QGuiApplication>
#include <unordered_set>

namespace velmor {

CAssetColors AssetColors(bool dark) {
    if (dark)
        return {QColor(35, 54, 38), QColor(222, 236, 222), QColor(122, 142, 124)};
    return {QColor(200, 255, 200), QColor(16, 32, 16), QColor(110, 130, 110)};
}

QIcon AssetIcon(SourceMode kind, bool dark) {
    const char* name = kind == SourceMode::Cels       ? "asset-cel"
                       : kind == SourceMode::Pictures ? "asset-picture"
                                                      : "asset-sound";
    return Icon(name, AssetColors(dark).ink);
}

CAssetListModel::CAssetListModel(ToolTipSource toolTip, QObject* parent)
    : QAbstractListModel(parent), m_toolTip(std::move(toolTip)) {
    TakeIcons();
}

void CAssetListModel::TakeIcons() {
    m_icon = AssetIcon(m_kind, false);
    m_iconOnDark = AssetIcon(m_kind, true);
}

void CAssetListModel::Replace(SourceMode kind, std::vector<CListedAsset> assets) {
    beginResetModel();
    m_kind = kind;
    TakeIcons();
    m_assets = std::move(assets);
    endResetModel();
}

bool CAssetListModel::Refresh(std::vector<CListedAsset> assets) {
    if (assets == m_assets)
        return false;
    RemoveMissing(assets);
    InsertNew(assets);
    if (assets != m_assets) // another order
        Replace(m_kind, std::move(assets));
    return true;
}

void CAssetListModel::RemoveMissing(const std::vector<CListedAsset>& assets) {
    std::unordered_set<std::string> wanted;
    for (const CListedAsset& asset : assets)
        wanted.insert(asset.title);
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (wanted.contains(At(row).title))
            continue;
        beginRemoveRows({}, row, row);
        m_assets.erase(m_assets.begin() + row);
        endRemoveRows();
    }
}

// Row by row, so that what stands there already is passed over.
void CAssetListModel::InsertNew(const std::vector<CListedAsset>& assets) {
    for (int row = 0; row < static_cast<int>(assets.size()); ++row) {
        const CListedAsset& asset = assets[static_cast<std::size_t>(row)];
        if (row < rowCount() && At(row) == asset)
            continue;
        beginInsertRows({}, row, row);
        m_assets.insert(m_assets.begin() + row, asset);
        endInsertRows();
    }
}

int CAssetListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_assets.size());
}

Qt::ItemFlags CAssetListModel::flags(const QModelIndex& index) const {
    return QAbstractListModel::flags(index) | Qt::ItemIsDragEnabled;
}

QIcon CAssetListModel::PictureOf(const CListedAsset& asset) const {
    const QIcon picture = m_pictures ? m_pictures(asset.title) : QIcon();
    if (!picture.isNull())
        return picture;
    return IsDark(QGuiApplication::palette()) ? m_iconOnDark : m_icon;
}

QVariant CAssetListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(At(index.row()).shown);
    case Qt::DecorationRole:
        return PictureOf(At(index.row()));
    case Qt::ToolTipRole:
        return m_toolTip(At(index.row()).title);
    default:
        return {};
    }
}

} // namespace velmor
