#include "views/cel/ColorList.h"

#include "image/Palette.h"
#include "views/ColorSign.h"
#include "views/Text.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr int swatchSide = 20;
constexpr int swatchMargin = 3;
constexpr int usualWidth = 132;
constexpr int usualRows = 8;
constexpr int useRadius = 3;
constexpr int usedRole = Qt::UserRole + 1;
constexpr int tipRole = Qt::UserRole + 2; ///< the tooltip without what is known of the use
constexpr int rowHeight = swatchSide + 2 * swatchMargin;

// A full dot for a colour in use, an empty one for one that is not.
void DrawUse(QPainter& painter, QPoint centre, bool isUsed) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isUsed)
        painter.setBrush(painter.pen().color());
    else
        painter.setOpacity(0.55);
    painter.drawEllipse(QPointF(centre), useRadius, useRadius);
    painter.restore();
}

/// Draws the swatches itself: an icon would take on the tint of the selection.
class CColorDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {usualWidth / 2, rowHeight};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        item.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
        const QRect swatch(item.rect.left() + swatchMargin, item.rect.top() + swatchMargin, swatchSide, swatchSide);
        painter->fillRect(swatch, Qt::black);
        PaintColor(*painter, swatch.adjusted(1, 1, -1, -1), index.data(Qt::UserRole).value<QColor>());
        const bool isSelected = item.state.testFlag(QStyle::State_Selected);
        painter->setPen(item.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        QRect room = item.rect.adjusted(swatchSide + 3 * swatchMargin, 0, -swatchMargin, 0);
        if (const QVariant used = index.data(usedRole); used.isValid()) {
            DrawUse(*painter, QPoint(room.right() - useRadius, room.center().y()), used.toBool());
            room.setRight(room.right() - 3 * useRadius);
        }
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          item.fontMetrics.elidedText(item.text, Qt::ElideRight, room.width()));
    }
};

bool IsReturn(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// Alt with an arrow: by how many places an entry is moved.
int MoveOf(const QKeyEvent& event) {
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::AltModifier)
        return 0;
    return event.key() == Qt::Key_Up ? -1 : event.key() == Qt::Key_Down ? 1 : 0;
}

bool IsOwnKey(const QKeyEvent& event) {
    if (MoveOf(event) != 0)
        return true;
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == 0;
    return IsReturn(event) || (isPlain && (event.key() == Qt::Key_F2 || event.key() == Qt::Key_Delete));
}

QListWidgetItem* MakeItem(const CNamedColor& entry) {
    const CColor& color = entry.color;
    auto* item = new QListWidgetItem(ToQt(entry.name));
    item->setData(Qt::UserRole, QColor(color.red, color.green, color.blue, color.alpha));
    item->setData(tipRole, QString("%1<br>Red %2, green %3, blue %4, opacity %5<br>Click: foreground, right click: "
                                   "background, double click: edit, drag: move")
                               .arg(ToQt(entry.name).toHtmlEscaped())
                               .arg(color.red)
                               .arg(color.green)
                               .arg(color.blue)
                               .arg(color.alpha));
    item->setToolTip("<qt>" + item->data(tipRole).toString() + "</qt>");
    return item;
}

} // namespace

CColorList::CColorList(CActions actions, QWidget* parent) : QListWidget(parent), m_actions(std::move(actions)) {
    setObjectName("colorList");
    setAccessibleName("Colors");
    setFocusPolicy(Qt::TabFocus);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setItemDelegate(new CColorDelegate(this));
    setDragDropMode(InternalMove);
    connect(this, &QListWidget::clicked, this,
            [this](const QModelIndex& index) { m_actions.makeForeground(index.row()); });
}

QSize CColorList::sizeHint() const {
    return {usualWidth, usualRows * rowHeight};
}

QSize CColorList::minimumSizeHint() const {
    return {usualWidth, rowHeight};
}

void CColorList::PrepareColorBitmaps(const CPalette& palette, int foreground) {
    const int current = palette.Count() != count() && palette.Contains(foreground)
                            ? foreground
                            : std::clamp(currentRow(), 0, std::max(palette.Count() - 1, 0));
    setUpdatesEnabled(false);
    clear();
    for (int i = 0; i < palette.Count(); ++i)
        addItem(MakeItem(palette.At(i)));
    setCurrentRow(current);
    ApplyFilter();
    setUpdatesEnabled(true);
    scrollToItem(currentItem());
}

void CColorList::SetFilter(const QString& text) {
    m_filter = text.trimmed();
    ApplyFilter();
}

void CColorList::ApplyFilter() {
    for (int row = 0; row < count(); ++row) {
        const QListWidgetItem& entry = *item(row);
        const bool isFound =
            entry.text().contains(m_filter, Qt::CaseInsensitive) ||
            entry.data(Qt::UserRole).value<QColor>().name().contains(m_filter, Qt::CaseInsensitive);
        setRowHidden(row, !isFound);
    }
}

int CColorList::FirstShown() const {
    for (int row = 0; row < count(); ++row)
        if (!isRowHidden(row))
            return row;
    return -1;
}

void CColorList::SetUsed(const std::function<std::optional<bool>(CColor color)>& isUsed) {
    for (int row = 0; row < count(); ++row) {
        QListWidgetItem& entry = *item(row);
        const QColor color = entry.data(Qt::UserRole).value<QColor>();
        const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
        const std::optional<bool> used =
            isUsed({byte(color.blue()), byte(color.green()), byte(color.red()), byte(color.alpha())});
        entry.setData(usedRole, used ? QVariant(*used) : QVariant());
        const QString use = !used   ? QString()
                            : *used ? QString("<br>Cels of the folder are painted with it")
                                    : QString("<br>No cel of the folder is painted with it");
        entry.setToolTip("<qt>" + entry.data(tipRole).toString() + use + "</qt>");
    }
}

void CColorList::Move(int from, int to) {
    if (from < 0 || to < 0 || to >= count() || from == to)
        return;
    m_actions.move(from, to);
    setCurrentRow(to);
}

// Only told: the palette moves its entry, and the list follows it.
void CColorList::dropEvent(QDropEvent* event) {
    const QModelIndex over = indexAt(event->position().toPoint());
    const int from = currentRow();
    int to = over.isValid() ? over.row() : count();
    if (over.isValid() && event->position().y() > visualRect(over).center().y())
        ++to;
    if (to > from)
        --to;
    const bool isOurs = event->source() == this;
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    if (isOurs) // when the drag is over: it still holds the entry
        QMetaObject::invokeMethod(
            this, [this, from, to] { Move(from, to); }, Qt::QueuedConnection);
}

void CColorList::Light(int entry) {
    if (entry < 0)
        return;
    setCurrentRow(entry);
    scrollToItem(currentItem());
}

void CColorList::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::RightButton) {
        QListWidget::mousePressEvent(event);
        return;
    }
    if (const QModelIndex index = indexAt(event->pos()); index.isValid())
        m_actions.makeBackground(index.row());
}

void CColorList::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->pos());
    if (event->button() == Qt::RightButton)
        mousePressEvent(event);
    else if (event->button() == Qt::LeftButton && index.isValid())
        m_actions.edit(index.row());
}

bool CColorList::event(QEvent* event) {
    // Before the window's commands take them.
    if (event->type() == QEvent::ShortcutOverride && IsOwnKey(*static_cast<QKeyEvent*>(event)))
        event->accept();
    return QListWidget::event(event);
}

void CColorList::keyPressEvent(QKeyEvent* event) {
    if (IsReturn(*event) && Current() >= 0)
        (event->modifiers().testFlag(Qt::ShiftModifier) ? m_actions.makeBackground
                                                        : m_actions.makeForeground)(Current());
    else if (event->key() == Qt::Key_F2 && Current() >= 0)
        m_actions.edit(Current());
    else if (const int places = MoveOf(*event); places != 0)
        Move(Current(), Current() + places);
    else if (event->key() == Qt::Key_Delete)
        m_actions.remove(Current());
    else
        QListWidget::keyPressEvent(event);
}

} // namespace velmor
