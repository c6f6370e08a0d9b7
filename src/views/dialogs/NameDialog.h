#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QLineEdit;

namespace velmor {

/// Asks for the name of a folder, cel, picture, sound or level.
class CNameDialog final : public CDialog {
public:
    CNameDialog(QWidget* parent, const CNameRequest& request);

    std::string Values() const;

protected:
    bool Accepts() override;

private:
    const CNameRequest& m_request;
    QLineEdit* m_name;
};

} // namespace velmor
