#include "views/dialogs/MotionPathDialog.h"

#include "views/widgets/FormParts.h"
#include "views/widgets/RadioGroup.h"

#include <QGroupBox>
#include <QVBoxLayout>

namespace velmor {

CMotionPathDialog::CMotionPathDialog(QWidget* parent, const CMotionPathRequest& request)
    : CDialog(parent, "Motion Path Setup"),
      m_setup(new CRadioGroup({"&All levels", "&Movement selected levels", "&No Level (Hide Motion Paths)"},
                              request.current)) {
    Body().addWidget(GroupOf("Show Motion Paths for ", m_setup));
    m_setup->setObjectName("setup");
    m_setup->BeFirst();
}

int CMotionPathDialog::Values() const {
    return m_setup->Chosen();
}

} // namespace velmor
