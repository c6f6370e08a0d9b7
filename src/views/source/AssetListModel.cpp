#include "views/source/AssetListModel.h"

#include "views/Icons.h"
#include "views/Text.h"

#include <unordered_set>

namespace velmor {

QIcon AssetIcon(SourceMode kind) {
    const char* name = kind == SourceMode::Cels       ? "asset-cel"
                       : kind == SourceMode::Pictures ? "asset-picture"
                                                      : "asset-sound";
    return Icon(name, assetInk);
}

CAssetListModel::CAssetListModel(ToolTipSource toolTip, QObject* parent)
    : QAbstractListModel(parent), m_toolTip(std::move(toolTip)), m_icon(AssetIcon(m_kind)) {}

void CAssetListModel::Replace(SourceMode kind, std::vector<std::string> names) {
    beginResetModel();
    m_kind = kind;
    m_icon = AssetIcon(kind);
    m_names = std::move(names);
    endResetModel();
}

bool CAssetListModel::Refresh(std::vector<std::string> names) {
    if (names == m_names)
        return false;
    RemoveMissing(names);
    InsertNew(names);
    if (names != m_names) // a name that is there twice, or another order
        Replace(m_kind, std::move(names));
    return true;
}

void CAssetListModel::RemoveMissing(const std::vector<std::string>& names) {
    const std::unordered_set<std::string> wanted(names.begin(), names.end());
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (wanted.contains(NameAt(row)))
            continue;
        beginRemoveRows({}, row, row);
        m_names.erase(m_names.begin() + row);
        endRemoveRows();
    }
}

// Row by row, so that what stands there already is passed over.
void CAssetListModel::InsertNew(const std::vector<std::string>& names) {
    for (int row = 0; row < static_cast<int>(names.size()); ++row) {
        const std::string& name = names[static_cast<std::size_t>(row)];
        if (row < rowCount() && NameAt(row) == name)
            continue;
        beginInsertRows({}, row, row);
        m_names.insert(m_names.begin() + row, name);
        endInsertRows();
    }
}

int CAssetListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_names.size());
}

Qt::ItemFlags CAssetListModel::flags(const QModelIndex& index) const {
    return QAbstractListModel::flags(index) | Qt::ItemIsDragEnabled;
}

QVariant CAssetListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(NameAt(index.row()));
    case Qt::DecorationRole:
        return m_icon;
    case Qt::ToolTipRole:
        return m_toolTip(NameAt(index.row()));
    default:
        return {};
    }
}

} // namespace velmor
