#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QTreeWidget;

namespace velmor {

/// "Marks and Notes": all that is noted in the sheet, to go to one.
class CNoteListDialog final : public CDialog {
public:
    CNoteListDialog(QWidget* parent, const CNoteListRequest& request);

    /// The chosen row.
    std::size_t Values() const;

protected:
    bool Accepts() override;

private:
    QTreeWidget* m_list;
};

} // namespace velmor
