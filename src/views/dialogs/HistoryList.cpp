#include "views/dialogs/HistoryList.h"

#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace velmor {

CHistoryList::CHistoryList(CHistoryModel& model) : m_model(model), m_empty(new QLabel) {
    setModel(&model);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setContextMenuPolicy(Qt::CustomContextMenu);
    viewport()->setAttribute(Qt::WA_Hover);
    viewport()->setMouseTracking(true);
    m_empty->setObjectName("empty");
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setWordWrap(true);
    m_empty->setForegroundRole(QPalette::PlaceholderText);
    auto* over = new QVBoxLayout(viewport());
    over->addWidget(m_empty);
}

void CHistoryList::ChangeInPlace(const std::function<void()>& change) {
    const QModelIndex top = indexAt({1, 1});
    const bool hadTop = top.isValid();
    const std::int64_t id = hadTop ? m_model.IdOf(top) : 0;
    const int offset = hadTop ? visualRect(m_model.IndexOf(id)).top() : 0;
    change();
    if (const QModelIndex again = m_model.IndexOf(id); hadTop && again.isValid()) {
        doItemsLayout();
        verticalScrollBar()->setValue(verticalScrollBar()->value() + visualRect(again).top() - offset);
    }
}

void CHistoryList::SetEmptyText(const QString& text) {
    m_empty->setText(text);
    m_empty->setVisible(!text.isEmpty());
}

void CHistoryList::mousePressEvent(QMouseEvent* event) {
    QListView::mousePressEvent(event);
    m_pressed = indexAt(event->position().toPoint());
}

void CHistoryList::mouseReleaseEvent(QMouseEvent* event) {
    const QPoint at = event->position().toPoint();
    const bool isClick = event->button() == Qt::LeftButton && m_pressed.isValid() && indexAt(at) == m_pressed;
    QListView::mouseReleaseEvent(event);
    if (isClick && clickedAt)
        clickedAt(m_pressed, at);
}

} // namespace velmor
