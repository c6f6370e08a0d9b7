#pragma once

#include "views/dialogs/HistoryModel.h"

#include <QListView>
#include <functional>

class QLabel;

namespace velmor {

/// The list of a history's lines. Says where in a line it was clicked, stays where it is when the lines are read
/// again, and shows a text where there are none.
class CHistoryList final : public QListView {
public:
    /// The model outlives the list.
    explicit CHistoryList(CHistoryModel& model);

    /// Called with the line and the place in the list at which the mouse was pressed and let go.
    std::function<void(const QModelIndex& index, QPoint at)> clickedAt;

    /// Runs what changes the lines; the one at the top stays there, if it is still shown.
    void ChangeInPlace(const std::function<void()>& change);
    /// Shown in place of lines; empty while there are some.
    void SetEmptyText(const QString& text);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    CHistoryModel& m_model;
    QLabel* m_empty;
    QPersistentModelIndex m_pressed;
};

} // namespace velmor
