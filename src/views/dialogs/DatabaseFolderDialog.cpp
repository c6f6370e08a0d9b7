#include "views/dialogs/DatabaseFolderDialog.h"

#include "views/Text.h"
#include "views/prompter/ChooseFolder.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

CDatabaseFolderDialog::CDatabaseFolderDialog(QWidget* parent, const CDatabaseFolderRequest& request)
    : CDialog(parent, "Global Settings"), m_folder(new QLineEdit) {
    setObjectName("GlobalSettings");
    m_folder->setObjectName("folder");
    m_folder->setMinimumWidth(fontMetrics().averageCharWidth() * 66);
    SetReadOnly(*m_folder, true);
    auto* label = new QLabel("&Database Directory :");
    label->setBuddy(m_folder);
    auto* set = new QPushButton("<< &Set");
    set->setObjectName("set");
    set->setToolTip("Chooses another folder");
    set->setAutoDefault(false);
    connect(set, &QPushButton::clicked, this, &CDatabaseFolderDialog::Choose);

    auto* row = new QHBoxLayout;
    row->addWidget(m_folder, 1);
    row->addWidget(set);
    Body().addWidget(label);
    Body().addLayout(row);
    Body().addStretch(1);
    Show(request.current);
    set->setFocus();
}

std::string CDatabaseFolderDialog::Values() const {
    return FromQt(m_folder->text());
}

void CDatabaseFolderDialog::Show(const std::string& folder) {
    m_folder->setText(ToQt(folder));
    m_folder->setToolTip(ToQt(folder));
    m_folder->setCursorPosition(0);
}

void CDatabaseFolderDialog::Choose() {
    const QString startIn = m_wasChosen ? m_folder->text() : QString();
    if (const std::optional<std::string> folder = CDChooseFolder(this).Ask(startIn)) {
        m_wasChosen = true;
        Show(*folder);
    }
}

} // namespace velmor
