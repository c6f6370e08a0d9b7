#include "views/dialogs/NameDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"

#include <QFormLayout>
#include <QLineEdit>

namespace velmor {

namespace {

struct CTexts {
    const char* title;
    const char* label;
};

CTexts TextsOf(NameKind kind) {
    switch (kind) {
    case NameKind::Folder:
        return {"New Folder", "&Folder Name :"};
    case NameKind::Cel:
        return {"New Cel No?", "New Cel &No ?"};
    case NameKind::Picture:
        return {"New Picture Name?", "&Picture Name ?"};
    case NameKind::Sound:
        return {"New Sound Name?", "&Sound Name ?"};
    case NameKind::Level:
        break;
    }
    return {"Level Info", "&Level Name :"};
}

} // namespace

CNameDialog::CNameDialog(QWidget* parent, const CNameRequest& request)
    : CDialog(parent, TextsOf(request.kind).title),
      m_request(request),
      m_name(new QLineEdit(ToQt(request.initial))) {
    m_name->setObjectName("name");
    m_name->setMinimumWidth(fontMetrics().averageCharWidth() * 34);
    AddForm().addRow(TextsOf(request.kind).label, m_name);
    EnterAgain(*m_name);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

std::string CNameDialog::Values() const {
    return FromQt(m_name->text());
}

bool CNameDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    EnterAgain(*m_name);
    return false;
}

} // namespace velmor
