#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"
#include "views/dialogs/HistoryModel.h"

class QLabel;
class QLineEdit;

namespace velmor {

class CHistoryDelegate;
class CHistoryList;

/// "History": the steps of a scene, to be found, gone to, and of which deleted assets are brought back. The window
/// behind shows what is gone to.
class CHistoryDialog final : public CDialog {
public:
    CHistoryDialog(QWidget* parent, const CHistoryRequest& request);

    /// Keys that move in the list do so from the search field, too, and letters are searched for from the list.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* NewSearch();
    void CreateList();
    void CreateFoot();
    bool ListKey(QKeyEvent& event);
    bool SearchKey(QKeyEvent& event);
    bool StepKey(const QKeyEvent& event);

    /// Reads the entries again and chooses `id`, or what was chosen before where that is below 0.
    void Reload(std::int64_t id);
    void Find();
    void ShowFound();
    void Choose(std::int64_t id);
    /// What the chosen line allows and says.
    void ShowChoice();
    void Click(const QModelIndex& index, QPoint at);
    void GoTo(const QModelIndex& index);
    void GoTo(std::int64_t id);
    void BringBack(const QModelIndex& index);
    void ShowMenu(QPoint at);

    const CHistoryRequest& m_request;
    CHistoryModel* m_model;
    CHistoryDelegate* m_delegate;
    QLineEdit* m_search;
    QLabel* m_count;
    CHistoryList* m_list;
    QLabel* m_status;
    QPushButton* m_bringBack;
};

} // namespace velmor
