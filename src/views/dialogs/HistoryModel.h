#pragma once

#include "scene/history/HistoryEntry.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <optional>

namespace velmor {

/// The lines of a history, oldest first, with a heading above each day's: those whose name or subjects hold the
/// words that are looked for. In front of all stands the state before the first step, unless something has put an
/// end to going back.
class CHistoryModel final : public QAbstractListModel {
public:
    enum class RowKind { Day, Start, Entry };

    explicit CHistoryModel(QObject* parent) : QAbstractListModel(parent) {}

    /// Days are told as seen from `now`.
    void SetEntries(std::vector<CHistoryEntry> entries, const QDateTime& now);
    /// Words, in any order and case.
    void Find(const QString& words);

    int EntryCount() const { return static_cast<int>(m_entries.size()); }
    int MatchCount() const { return m_matchCount; }

    RowKind KindOf(const QModelIndex& index) const { return RowOf(index).kind; }
    /// Null for a heading and for the start.
    const CHistoryEntry* EntryOf(const QModelIndex& index) const;
    /// 0 for the start. Of a heading that of the line below.
    std::int64_t IdOf(const QModelIndex& index) const { return RowOf(index).id; }
    /// The line of an entry, or of the start; not valid when it is not shown.
    QModelIndex IndexOf(std::int64_t id) const;
    bool IsDone(const QModelIndex& index) const;
    /// Whether it can be gone to.
    bool IsInReach(const QModelIndex& index) const;

    /// The last entry before what is undone; 0 when there is none.
    std::int64_t CurrentId() const;
    /// Where undo and redo lead; nothing at either end.
    std::optional<std::int64_t> PreviousId() const;
    std::optional<std::int64_t> NextId() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct CRow {
        RowKind kind = RowKind::Start;
        int entry = -1;
        std::int64_t id = 0;
    };

    const CRow& RowOf(const QModelIndex& index) const { return m_rows[static_cast<std::size_t>(index.row())]; }
    bool Matches(const QString& text) const;
    void MakeRows();
    QString ToolTipOf(const CHistoryEntry& entry) const;

    std::vector<CHistoryEntry> m_entries;
    std::vector<QString> m_texts; ///< of the entries, to be searched
    std::vector<CRow> m_rows;
    QStringList m_words;
    QDateTime m_now;
    int m_current = -1; ///< last entry before what is undone
    int m_barrier = -1; ///< last one behind which undo does not go
    int m_matchCount = 0;
};

} // namespace velmor
