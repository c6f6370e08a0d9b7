#include "views/dialogs/HistoryDelegate.h"

#include "views/Icons.h"
#include "views/Text.h"
#include "views/dialogs/HistoryPicture.h"
#include "views/dialogs/LocalTime.h"

#include <QPainter>
#include <algorithm>

namespace velmor {

namespace {

constexpr std::size_t mostPictures = 1000; // kept
constexpr int margin = 5;
constexpr int gutter = 26;
constexpr QSize pictureRoom(72, 54);
constexpr int iconSize = 24;
constexpr double pointRadius = 3.5;
constexpr double currentRadius = 6;
constexpr double dimmed = 0.45;
constexpr const char* backText = "Bring back";

QColor Faint(QColor color, int alpha) {
    color.setAlpha(alpha);
    return color;
}

const char* IconOf(HistoryEntryKind kind) {
    switch (kind) {
    case HistoryEntryKind::Saved:
        return "save-all";
    case HistoryEntryKind::Deletion:
        return "delete-asset";
    case HistoryEntryKind::Step:
    case HistoryEntryKind::Break:
        break;
    }
    return nullptr;
}

QRect RowWithin(const QRect& rect) {
    return rect.adjusted(margin, margin, -margin, -margin);
}

} // namespace

/// The colours of a line.
struct CHistoryDelegate::CLook {
    QPalette palette;
    QColor ink;
    QColor muted;
    QColor accent;
    QColor line;
    bool isCurrent = false;
    bool isDone = true;
    bool isInReach = true;
};

CHistoryDelegate::CHistoryDelegate(const CHistoryModel& model, PictureSource source, bool offersBack,
                                   QObject* parent)
    : QStyledItemDelegate(parent), m_model(model), m_source(std::move(source)), m_offersBack(offersBack) {}

CHistoryDelegate::CLook CHistoryDelegate::LookOf(const QStyleOptionViewItem& option,
                                                 const QModelIndex& index) const {
    CLook look;
    look.palette = option.palette;
    const bool isSelected = (option.state & QStyle::State_Selected) != 0;
    look.isCurrent = m_model.IdOf(index) == m_model.CurrentId();
    look.isDone = m_model.IsDone(index);
    look.isInReach = m_model.IsInReach(index);
    look.ink = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    const bool isDim = !look.isDone || !look.isInReach;
    look.muted = Faint(look.ink, isDim ? 105 : 150);
    if (isDim)
        look.ink = Faint(look.ink, 130);
    look.accent = option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    look.line = Faint(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text), 80);
    return look;
}

QSize CHistoryDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const int text = option.fontMetrics.height();
    switch (m_model.KindOf(index)) {
    case CHistoryModel::RowKind::Day:
        return {0, text + 3 * margin};
    case CHistoryModel::RowKind::Start:
        return {0, text + 4 * margin};
    case CHistoryModel::RowKind::Entry:
        break;
    }
    return {0, std::max(pictureRoom.height(), 2 * text) + 2 * margin};
}

QRect CHistoryDelegate::BackButton(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const CHistoryEntry* entry = m_model.EntryOf(index);
    if (!m_offersBack || entry == nullptr || !entry->canComeBack)
        return {};
    const QSize size(option.fontMetrics.horizontalAdvance(backText) + 4 * margin,
                     option.fontMetrics.height() + 2 * margin);
    const QRect room = RowWithin(option.rect);
    return {QPoint(room.right() - size.width() - margin, room.center().y() - size.height() / 2), size};
}

void CHistoryDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    if (m_model.KindOf(index) == CHistoryModel::RowKind::Day) {
        DrawDay(*painter, option, index);
        return;
    }
    painter->save();
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const CLook look = LookOf(option, index);
    const QColor highlight = option.palette.color(QPalette::Highlight);
    if ((option.state & QStyle::State_Selected) != 0)
        painter->fillRect(option.rect, highlight);
    else if ((option.state & QStyle::State_MouseOver) != 0)
        painter->fillRect(option.rect, Faint(highlight, 36));
    DrawTimeLine(*painter, option.rect, index, look);
    QRect room = RowWithin(option.rect);
    room.setLeft(room.left() + gutter);
    if (m_model.KindOf(index) == CHistoryModel::RowKind::Entry) {
        DrawPicture(*painter, QRect(room.topLeft(), QSize(pictureRoom.width(), room.height())), index, look);
        room.setLeft(room.left() + pictureRoom.width() + 2 * margin);
    }
    if (const QRect button = BackButton(option, index); !button.isEmpty()) {
        DrawBackButton(*painter, option, button, look);
        room.setRight(button.left() - margin);
    }
    DrawTexts(*painter, room, index, look);
    painter->restore();
}

void CHistoryDelegate::DrawDay(QPainter& painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    painter.save();
    const QRect room = option.rect.adjusted(2 * margin, margin, -2 * margin, 0);
    QFont bold = option.font;
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(option.palette.color(QPalette::Text));
    const QString text = index.data().toString();
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, text);
    const int left = room.left() + QFontMetrics(bold).horizontalAdvance(text) + 2 * margin;
    painter.fillRect(left, room.center().y(), room.right() - left, 1,
                     Faint(option.palette.color(QPalette::Text), 50));
    painter.restore();
}

void CHistoryDelegate::DrawTimeLine(QPainter& painter, const QRect& row, const QModelIndex& index,
                                    const CLook& look) const {
    const QPointF centre(row.x() + margin + gutter / 2.0 - 2, row.center().y() + 0.5);
    const CHistoryEntry* entry = m_model.EntryOf(index);
    const bool isBreak = entry != nullptr && entry->kind == HistoryEntryKind::Break;
    QPen line(look.line, 1.5, Qt::SolidLine, Qt::FlatCap);
    if (!look.isDone || !look.isInReach)
        line.setDashPattern({2, 2});
    painter.setPen(line);
    const bool begins = m_model.KindOf(index) == CHistoryModel::RowKind::Start || isBreak;
    if (!begins)
        painter.drawLine(QPointF(centre.x(), row.top()), centre);
    painter.drawLine(centre, QPointF(centre.x(), row.bottom() + 1));
    if (isBreak) // nothing leads across
        painter.drawLine(centre - QPointF(7, 0), centre + QPointF(7, 0));
    if (!look.isInReach)
        return;
    painter.setPen(QPen(look.isCurrent ? look.accent : look.muted, 1.5));
    painter.setBrush(look.isCurrent ? look.accent : look.isDone ? look.muted : look.palette.color(QPalette::Base));
    const double radius = look.isCurrent ? currentRadius : pointRadius;
    painter.drawEllipse(centre, radius, radius);
}

QPixmap CHistoryDelegate::PictureOf(const CHistoryEntry& entry) const {
    if (const auto kept = m_pictures.find(entry.id); kept != m_pictures.end())
        return kept->second;
    if (m_pictures.size() >= mostPictures)
        m_pictures.clear();
    return m_pictures[entry.id] =
               PixmapOf(entry.picture.rgb.empty() && m_source ? m_source(entry.id) : entry.picture);
}

void CHistoryDelegate::DrawPicture(QPainter& painter, const QRect& room, const QModelIndex& index,
                                   const CLook& look) const {
    const CHistoryEntry& entry = *m_model.EntryOf(index);
    QRect place(QPoint(), pictureRoom);
    place.moveCenter(room.center());
    painter.setOpacity(look.isDone ? 1 : dimmed);
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (const QPixmap picture = PictureOf(entry); !picture.isNull()) {
        const QRect fitted = FittedInto(place, picture.size());
        painter.drawPixmap(fitted, picture);
        painter.setPen(look.line);
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(fitted.adjusted(0, 0, -1, -1));
    } else if (entry.cells) {
        painter.fillRect(place, look.palette.color(QPalette::Base));
        DrawMiniSheet(painter, place, entry, look.palette);
    } else if (const char* icon = IconOf(entry.kind)) {
        QRect middle(0, 0, iconSize, iconSize);
        middle.moveCenter(place.center());
        Icon(icon, look.ink).paint(&painter, middle);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(1);
}

void CHistoryDelegate::DrawTexts(QPainter& painter, const QRect& room, const QModelIndex& index,
                                 const CLook& look) const {
    const CHistoryEntry* entry = m_model.EntryOf(index);
    QFont font = painter.font();
    font.setBold(look.isCurrent);
    font.setItalic(entry != nullptr && entry->kind == HistoryEntryKind::Break);
    const QFontMetrics metrics(font);
    painter.setFont(font);
    painter.setPen(look.ink);
    const int height = entry != nullptr ? 2 * metrics.height() : metrics.height();
    QRect line(room.left(), room.center().y() - height / 2, room.width(), metrics.height());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(index.data().toString(), Qt::ElideRight, line.width()));
    if (entry == nullptr)
        return;
    font.setBold(false);
    font.setItalic(false);
    painter.setFont(font);
    painter.setPen(look.muted);
    QString text = ClockText(LocalTimeOf(entry->time));
    if (!entry->subjects.empty())
        text += "   " + ToQt(entry->subjects).split('\n', Qt::SkipEmptyParts).join(", ");
    line.translate(0, metrics.height());
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, line.width()));
}

void CHistoryDelegate::DrawBackButton(QPainter& painter, const QStyleOptionViewItem& option, const QRect& button,
                                      const CLook& look) const {
    const QWidget* viewport = option.widget;
    const bool isHot = (option.state & QStyle::State_MouseOver) != 0 && viewport != nullptr &&
                       button.contains(viewport->mapFromGlobal(QCursor::pos()));
    painter.setPen(QPen(isHot ? look.accent : look.line, 1));
    painter.setBrush(Faint(look.accent, isHot ? 60 : 20));
    painter.drawRoundedRect(QRectF(button).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    painter.setPen(Faint(look.ink, 255));
    painter.drawText(button, Qt::AlignCenter, backText);
}

} // namespace velmor
