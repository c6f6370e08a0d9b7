#pragma once

#include "platform/files/Files.h"
#include "scene/ScenePaths.h"

#include <QIcon>
#include <QMimeData>
#include <QPixmap>
#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace velmor {

/// An asset as the mouse carries it. The thumbnail may be null: the icon stands for it then.
struct CAssetCard {
    QPixmap thumbnail;
    QIcon icon;
    QString name;
};

/// No more than these of the dragged assets are seen.
inline constexpr int mostCards = 3;

/// A small stack of `cards` (the first in front, at most mostCards), with a badge that tells `count` when several
/// are dragged. Its top left corner is the point that the mouse holds. `scale` is the screen's.
QPixmap PaintDragPicture(const std::vector<CAssetCard>& cards, int count, double scale);

/// What a drag of assets carries: their titles, one a line, under CSourceView::dragType.
std::unique_ptr<QMimeData> MakeDragData(const std::vector<std::string>& titles);

/// Rich text for an asset's tooltip: its picture, its title, and its size in pixels or its duration as far as its
/// file can be read.
QString AssetToolTip(SourceMode kind, const std::string& title, const Path& file, const QPixmap& thumbnail);

} // namespace velmor
