#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QLineEdit;

namespace velmor {

class CNumberEdit;

/// "New Cel ?": number and size of a new cel.
class CNewCelDialog final : public CDialog {
public:
    CNewCelDialog(QWidget* parent, const CNewCelRequest& request);

    CNewCelValues Values() const;

protected:
    bool Accepts() override;

private:
    const CNewCelRequest& m_request;
    QLineEdit* m_name;
    CNumberEdit* m_width;
    CNumberEdit* m_height;
};

} // namespace velmor
