#include "views/dialogs/HistoryModel.h"

#include "views/Text.h"
#include "views/dialogs/LocalTime.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr const char* startName = "Before the first step";
constexpr int mostSubjectLines = 15; // of a tool tip

} // namespace

void CHistoryModel::SetEntries(std::vector<CHistoryEntry> entries, const QDateTime& now) {
    beginResetModel();
    m_entries = std::move(entries);
    m_now = now;
    m_texts.clear();
    m_barrier = -1;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const CHistoryEntry& entry = m_entries[i];
        m_texts.push_back(ToQt(entry.name + '\n' + entry.subjects));
        if (entry.kind == HistoryEntryKind::Break)
            m_barrier = static_cast<int>(i);
    }
    // What is no step, such as a deletion, stays done among those that are undone.
    const auto undone = std::ranges::find(m_entries, false, &CHistoryEntry::isDone);
    m_current = static_cast<int>(undone - m_entries.begin()) - 1;
    MakeRows();
    endResetModel();
}

void CHistoryModel::Find(const QString& words) {
    const QStringList parts = words.split(' ', Qt::SkipEmptyParts);
    if (parts == m_words)
        return;
    beginResetModel();
    m_words = parts;
    MakeRows();
    endResetModel();
}

bool CHistoryModel::Matches(const QString& text) const {
    return std::ranges::all_of(m_words,
                               [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

void CHistoryModel::MakeRows() {
    m_rows.clear();
    m_matchCount = 0;
    if (m_words.isEmpty() && m_barrier < 0 && !m_entries.empty())
        m_rows.push_back({});
    QDate day;
    for (int i = 0; i < EntryCount(); ++i) {
        const auto index = static_cast<std::size_t>(i);
        if (!Matches(m_texts[index]))
            continue;
        const CHistoryEntry& entry = m_entries[index];
        if (const QDate date = LocalTimeOf(entry.time).date(); date != day) {
            m_rows.push_back({RowKind::Day, i, entry.id});
            day = date;
        }
        m_rows.push_back({RowKind::Entry, i, entry.id});
        ++m_matchCount;
    }
}

const CHistoryEntry* CHistoryModel::EntryOf(const QModelIndex& index) const {
    const CRow& row = RowOf(index);
    return row.kind == RowKind::Entry ? &m_entries[static_cast<std::size_t>(row.entry)] : nullptr;
}

QModelIndex CHistoryModel::IndexOf(std::int64_t id) const {
    const auto row = std::ranges::find_if(
        m_rows, [id](const CRow& candidate) { return candidate.kind != RowKind::Day && candidate.id == id; });
    return row == m_rows.end() ? QModelIndex() : index(static_cast<int>(row - m_rows.begin()));
}

bool CHistoryModel::IsDone(const QModelIndex& index) const {
    const CHistoryEntry* entry = EntryOf(index);
    return entry == nullptr || entry->isDone;
}

bool CHistoryModel::IsInReach(const QModelIndex& index) const {
    const CRow& row = RowOf(index);
    return row.kind == RowKind::Start || (row.kind == RowKind::Entry && row.entry >= m_barrier);
}

std::int64_t CHistoryModel::CurrentId() const {
    return m_current < 0 ? 0 : m_entries[static_cast<std::size_t>(m_current)].id;
}

std::optional<std::int64_t> CHistoryModel::PreviousId() const {
    for (int i = m_current; i > m_barrier; --i)
        if (m_entries[static_cast<std::size_t>(i)].kind == HistoryEntryKind::Step)
            return i == 0 ? 0 : m_entries[static_cast<std::size_t>(i - 1)].id;
    return std::nullopt;
}

std::optional<std::int64_t> CHistoryModel::NextId() const {
    if (m_current + 1 >= EntryCount())
        return std::nullopt;
    return m_entries[static_cast<std::size_t>(m_current + 1)].id;
}

int CHistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QString CHistoryModel::ToolTipOf(const CHistoryEntry& entry) const {
    const QDateTime time = LocalTimeOf(entry.time);
    QStringList lines{ToQt(entry.name), DayText(time, m_now) + ", " + time.toString("HH:mm:ss")};
    const QStringList subjects = ToQt(entry.subjects).split('\n', Qt::SkipEmptyParts);
    lines += subjects.mid(0, mostSubjectLines);
    if (subjects.size() > mostSubjectLines)
        lines += QString("and %1 more").arg(subjects.size() - mostSubjectLines);
    // Names are never to be taken for markup.
    return "<p style='white-space:pre'>" + lines.join('\n').toHtmlEscaped() + "</p>";
}

QVariant CHistoryModel::data(const QModelIndex& index, int role) const {
    const CRow& row = RowOf(index);
    if (row.kind == RowKind::Start)
        return role == Qt::DisplayRole ? QVariant(startName) : QVariant();
    const CHistoryEntry& entry = m_entries[static_cast<std::size_t>(row.entry)];
    if (row.kind == RowKind::Day)
        return role == Qt::DisplayRole ? QVariant(DayText(LocalTimeOf(entry.time), m_now)) : QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(entry.name);
    case Qt::AccessibleTextRole:
        return ToQt(entry.name) + ", " + MomentText(LocalTimeOf(entry.time), m_now) +
               (entry.isDone ? "" : ", undone");
    case Qt::ToolTipRole:
        return ToolTipOf(entry);
    default:
        return {};
    }
}

Qt::ItemFlags CHistoryModel::flags(const QModelIndex& index) const {
    if (KindOf(index) == RowKind::Day)
        return Qt::ItemNeverHasChildren;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace velmor
