#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

#include <string>
#include <vector>

class QLineEdit;
class QListView;
class QSortFilterProxyModel;

namespace velmor {

/// "Select Scene to Open": a list of scenes that typing narrows down.
class COpenSceneDialog final : public CDialog {
public:
    COpenSceneDialog(QWidget* parent, const COpenSceneRequest& request);

    /// The chosen scene; empty when none is.
    std::string Values() const;

    /// Keys that move in a list do so from the search field, too.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    bool Accepts() override { return !Values().empty(); }

private:
    void ShowMatches(const QString& text);

    QLineEdit* m_search;
    QListView* m_list;
    QSortFilterProxyModel* m_matches;
};

} // namespace velmor
