#include "views/dialogs/FrameCountDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/NumberEdit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace velmor {

CFrameCountDialog::CFrameCountDialog(QWidget* parent, const CFrameCountRequest& request)
    : CDialog(parent, ToQt(request.title)),
      m_request(request),
      m_count(new CNumberEdit("count", NumberKind::Whole)) {
    m_count->SetValue(request.initial);
    auto* prompt = new QLabel(ToQt(request.prompt));
    prompt->setObjectName("prompt");
    prompt->setBuddy(m_count);
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addWidget(prompt, 1);
    row->addWidget(m_count);
    Body().addLayout(row);
    EnterAgain(*m_count);
    if (request.show) {
        connect(m_count, &QLineEdit::textChanged, this, [this] { m_request.show(m_count->Whole()); });
        request.show(request.initial);
    }
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

int CFrameCountDialog::Values() const {
    return m_count->Whole().value_or(0);
}

bool CFrameCountDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    EnterAgain(*m_count);
    return false;
}

} // namespace velmor
