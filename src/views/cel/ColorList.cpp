#include "views/cel/ColorList.h"

#include "image/Palette.h"
#include "views/ColorSign.h"
#include "views/Text.h"

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
constexpr int rowHeight = swatchSide + 2 * swatchMargin;

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
        const QRect room = item.rect.adjusted(swatchSide + 3 * swatchMargin, 0, -swatchMargin, 0);
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          item.fontMetrics.elidedText(item.text, Qt::ElideRight, room.width()));
    }
};

bool IsReturn(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool IsOwnKey(const QKeyEvent& event) {
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == 0;
    return IsReturn(event) || (isPlain && (event.key() == Qt::Key_F2 || event.key() == Qt::Key_Delete));
}

QListWidgetItem* MakeItem(const CNamedColor& entry) {
    const CColor& color = entry.color;
    auto* item = new QListWidgetItem(ToQt(entry.name));
    item->setData(Qt::UserRole, QColor(color.red, color.green, color.blue, color.alpha));
    item->setToolTip(QString("<qt>%1<br>Red %2, green %3, blue %4, opacity %5<br>Click: foreground, right click: "
                             "background, double click: edit</qt>")
                         .arg(ToQt(entry.name).toHtmlEscaped())
                         .arg(color.red)
                         .arg(color.green)
                         .arg(color.blue)
                         .arg(color.alpha));
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
    setUpdatesEnabled(true);
    scrollToItem(currentItem());
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
    else if (event->key() == Qt::Key_Delete)
        m_actions.remove(Current());
    else
        QListWidget::keyPressEvent(event);
}

} // namespace velmor
