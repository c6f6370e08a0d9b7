#include "views/dialogs/NoteListDialog.h"

#include "views/Text.h"
#include "views/xsheet/NoteSigns.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace velmor {

CNoteListDialog::CNoteListDialog(QWidget* parent, const CNoteListRequest& request)
    : CDialog(parent, "Marks and Notes"), m_list(new QTreeWidget) {
    setObjectName("NoteList");
    m_list->setObjectName("notes");
    m_list->setAccessibleName("Notes");
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setHeaderLabels({"Place", "Mark", "Comment"});
    QList<QTreeWidgetItem*> rows;
    for (const CListedNote& listed : request.notes) {
        auto* row = new QTreeWidgetItem(
            {ToQt(listed.place), ToQt(TextOf(listed.note.mark)), ToQt(listed.note.comment).simplified()});
        row->setIcon(1, NoteIcon(listed.note, palette()));
        row->setToolTip(2, ToQt(listed.note.comment));
        rows.append(row);
    }
    m_list->addTopLevelItems(rows);
    for (const int column : {0, 1})
        m_list->resizeColumnToContents(column);
    m_list->setCurrentItem(m_list->topLevelItem(static_cast<int>(request.current)));
    Body().addWidget(m_list, 1);
    OkButton().setText("&Go There");
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { accept(); });
    m_list->setFocus(Qt::TabFocusReason);
    resize(520, 400);
}

std::size_t CNoteListDialog::Values() const {
    return static_cast<std::size_t>(std::max(m_list->indexOfTopLevelItem(m_list->currentItem()), 0));
}

bool CNoteListDialog::Accepts() {
    return m_list->currentItem() != nullptr;
}

} // namespace velmor
