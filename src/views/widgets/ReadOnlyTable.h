#pragma once

#include <QTableWidget>

namespace velmor {

/// A table to be read: rows are chosen as a whole, and the Tab key leaves it.
class CReadOnlyTable final : public QTableWidget {
public:
    /// `name` is the object's.
    CReadOnlyTable(const QString& name, const QStringList& columns);

    /// The text of a cell, which is also seen when there is no room for all of it.
    void Show(int row, int column, const QString& text);
};

} // namespace velmor
