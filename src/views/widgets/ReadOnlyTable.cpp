#include "views/widgets/ReadOnlyTable.h"

#include <QHeaderView>

namespace velmor {

CReadOnlyTable::CReadOnlyTable(const QString& name, const QStringList& columns)
    : QTableWidget(0, static_cast<int>(columns.size())) {
    setObjectName(name);
    setHorizontalHeaderLabels(columns);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setMinimumHeight(fontMetrics().height() * 9);
}

void CReadOnlyTable::Show(int row, int column, const QString& text) {
    auto* cell = new QTableWidgetItem(text);
    cell->setToolTip(text);
    setItem(row, column, cell);
}

} // namespace velmor
