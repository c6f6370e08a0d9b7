#include "views/dialogs/NewCelDialog.h"

#include "scene/NewCelSize.h"
#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/NumberEdit.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <limits>

namespace velmor {

namespace {

// A number with too many digits for an int is a size that is too large, not none.
int SideOf(const CNumberEdit& edit) {
    return edit.Whole().value_or(edit.Value().value_or(0) > 0 ? std::numeric_limits<int>::max() : 0);
}

} // namespace

CNewCelDialog::CNewCelDialog(QWidget* parent, const CNewCelRequest& request)
    : CDialog(parent, "New Cel ?"),
      m_request(request),
      m_name(new QLineEdit(ToQt(request.initial.name))),
      m_width(new CNumberEdit("width", NumberKind::Whole)),
      m_height(new CNumberEdit("height", NumberKind::Whole)) {
    m_name->setObjectName("name");
    m_width->SetValue(request.initial.size.width);
    m_width->setAccessibleName("Width in pixels");
    m_height->SetValue(request.initial.size.height);
    m_height->setAccessibleName("Height in pixels");
    auto* size = new QHBoxLayout;
    size->addWidget(m_width);
    size->addWidget(new QLabel("by"));
    size->addWidget(m_height);
    size->addWidget(new QLabel("pixels"));
    size->addStretch(1);
    auto* sizeLabel = new QLabel("&Size ?");
    sizeLabel->setBuddy(m_width);
    QFormLayout& form = AddForm();
    form.addRow("New Cel &No ?", m_name);
    form.addRow(sizeLabel, size);
    EnterAgain(*m_name);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

CNewCelValues CNewCelDialog::Values() const {
    return {FromQt(m_name->text()), {SideOf(*m_width), SideOf(*m_height)}};
}

bool CNewCelDialog::Accepts() {
    const CNewCelValues values = Values();
    if (IsAccepted(m_request.accept, values))
        return true;
    EnterAgain(values.size.width > largestCelSide    ? *m_width
               : values.size.height > largestCelSide ? *m_height
                                                     : *m_name);
    return false;
}

} // namespace velmor
