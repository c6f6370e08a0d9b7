#pragma once

#include "views/dialogs/HistoryModel.h"

#include <QPixmap>
#include <QStyledItemDelegate>
#include <functional>
#include <map>

namespace velmor {

/// Paints the lines of a history: along a line of time the picture of each step, or where it changed the sheet, its
/// name, and when it was.
class CHistoryDelegate final : public QStyledItemDelegate {
public:
    /// The picture of an entry that came without one.
    using PictureSource = std::function<CHistoryPicture(std::int64_t id)>;

    /// With `offersBack` the lines of what can be brought back have a button for it.
    CHistoryDelegate(const CHistoryModel& model, PictureSource source, bool offersBack, QObject* parent);

    /// Where the button of a line is; empty where it has none.
    QRect BackButton(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    struct CLook;

    CLook LookOf(const QStyleOptionViewItem& option, const QModelIndex& index) const;
    QPixmap PictureOf(const CHistoryEntry& entry) const;
    void DrawDay(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void DrawTimeLine(QPainter& painter, const QRect& row, const QModelIndex& index, const CLook& look) const;
    void DrawPicture(QPainter& painter, const QRect& room, const QModelIndex& index, const CLook& look) const;
    void DrawTexts(QPainter& painter, const QRect& room, const QModelIndex& index, const CLook& look) const;
    void DrawBackButton(QPainter& painter, const QStyleOptionViewItem& option, const QRect& button,
                        const CLook& look) const;

    const CHistoryModel& m_model;
    PictureSource m_source;
    bool m_offersBack;
    mutable std::map<std::int64_t, QPixmap> m_pictures; ///< of the lines seen last
};

} // namespace velmor
