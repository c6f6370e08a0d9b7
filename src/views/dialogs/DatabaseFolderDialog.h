#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

#include <string>

class QLineEdit;

namespace velmor {

/// "Global Settings": where the scene database stands.
class CDatabaseFolderDialog final : public CDialog {
public:
    CDatabaseFolderDialog(QWidget* parent, const CDatabaseFolderRequest& request);

    /// Ends with the separator when it was chosen here.
    std::string Values() const;

private:
    void Show(const std::string& folder);
    void Choose();

    QLineEdit* m_folder;
    bool m_wasChosen = false;
};

} // namespace velmor
