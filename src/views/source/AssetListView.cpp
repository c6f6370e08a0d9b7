#include "views/source/AssetListView.h"

#include "views/source/AssetListModel.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace velmor {

namespace {

constexpr int leastRowHeight = 20;

/// Rows high enough to be hit with ease.
class CRowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, leastRowHeight});
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
    setIconSize({16, 16});
    setItemDelegate(new CRowDelegate(this));
    ApplyColors();
}

// The ground is light whatever the theme, so the text on it is dark; the theme's own selection stays.
void CAssetListView::ApplyColors() {
    const QColor ground(200, 255, 200);
    QPalette colors;
    colors.setColor(QPalette::Base, ground);
    colors.setColor(QPalette::AlternateBase, ground);
    colors.setColor(QPalette::Text, assetInk);
    colors.setColor(QPalette::Disabled, QPalette::Text, QColor(110, 130, 110));
    setPalette(colors);
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

void CAssetListView::keyPressEvent(QKeyEvent* event) {
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!opens || !currentIndex().isValid() || !m_open)
        QListView::keyPressEvent(event);
    else
        m_open(currentIndex());
}

void CAssetListView::mouseDoubleClickEvent(QMouseEvent* event) {
    QListView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && m_open)
        m_open(index);
}

} // namespace velmor
