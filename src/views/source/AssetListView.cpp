#include "views/source/AssetListView.h"

#include "views/Brightness.h"
#include "views/source/AssetListModel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>

namespace velmor {

namespace {

constexpr int leastRowHeight = 20;
constexpr int rowMargin = 4; // above and below a picture together
constexpr QSize usualIconSize(16, 16);

constexpr int ownKeys[] = {Qt::Key_Delete, Qt::Key_Return, Qt::Key_Enter,  Qt::Key_Up,       Qt::Key_Down,
                           Qt::Key_Home,   Qt::Key_End,    Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Space};

/// Keys that move in the list, search it by name, or act on what is selected there. Those of the window's commands
/// that no list uses, function keys for one, are left to it.
bool IsOwnKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::SelectAll))
        return true;
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    if (modifiers != Qt::NoModifier)
        return false;
    if (event.key() == Qt::Key_Delete) // with Shift it is another key for cutting
        return event.modifiers() == Qt::NoModifier || event.modifiers() == Qt::KeypadModifier;
    return std::ranges::find(ownKeys, event.key()) != std::end(ownKeys) ||
           (event.text().size() == 1 && event.text().front().isLetterOrNumber());
}

/// Rows high enough to be hit with ease.
class CRowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index)
            .expandedTo({0, std::max(leastRowHeight, option.decorationSize.height() + rowMargin)});
    }

protected:
    // The same room for every picture, so that the names stand below each other.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        const QSize room = option->decorationSize;
        QStyledItemDelegate::initStyleOption(option, index);
        option->decorationSize = room;
    }
};

} // namespace

CAssetListView::CAssetListView(QWidget* parent) : QListView(parent) {
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    setUniformItemSizes(true);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    SetPictureSize({});
    setItemDelegate(new CRowDelegate(this));
    ApplyColors();
}

// The list has a ground of its own; the theme's selection stays.
void CAssetListView::ApplyColors() {
    const CAssetColors assets = AssetColors(IsDark(palette()));
    if (testAttribute(Qt::WA_SetPalette) && palette().color(QPalette::Base) == assets.ground)
        return;
    QPalette colors;
    colors.setColor(QPalette::Base, assets.ground);
    colors.setColor(QPalette::AlternateBase, assets.ground);
    colors.setColor(QPalette::Text, assets.ink);
    colors.setColor(QPalette::Disabled, QPalette::Text, assets.disabledInk);
    setPalette(colors);
}

void CAssetListView::SetPictureSize(QSize size) {
    setIconSize(size.isEmpty() ? usualIconSize : size);
}

void CAssetListView::changeEvent(QEvent* event) {
    QListView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ApplyColors();
}

void CAssetListView::ChangeInPlace(const std::function<void()>& change) {
    const QPersistentModelIndex top = indexAt({viewport()->width() / 2, 0});
    const int offset = visualRect(top).top();
    change();
    doItemsLayout();
    if (top.isValid())
        verticalScrollBar()->setValue(verticalScrollBar()->value() + visualRect(top).top() - offset);
}

void CAssetListView::startDrag(Qt::DropActions) {
    if (m_drag)
        m_drag();
}

// Asked before the window's shortcuts are looked through.
bool CAssetListView::event(QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride || !IsOwnKey(*static_cast<QKeyEvent*>(event)))
        return QListView::event(event);
    event->accept();
    return true;
}

void CAssetListView::keyPressEvent(QKeyEvent* event) {
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (opens && currentIndex().isValid() && m_open)
        m_open(currentIndex());
    else if (event->key() == Qt::Key_Delete && IsOwnKey(*event) && m_delete)
        m_delete();
    else
        QListView::keyPressEvent(event);
}

void CAssetListView::mouseDoubleClickEvent(QMouseEvent* event) {
    QListView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && m_open)
        m_open(index);
}

} // namespace velmor
