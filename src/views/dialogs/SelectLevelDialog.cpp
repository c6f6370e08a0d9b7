#include "views/dialogs/SelectLevelDialog.h"

#include "views/Text.h"
#include "views/widgets/LevelListWidget.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

CSelectLevelDialog::CSelectLevelDialog(QWidget* parent, const CLevelRequest& request)
    : CDialog(parent, "Select Level"), m_levels(new CLevelListWidget(request.levelNames)) {
    setObjectName("SelectLevel");
    auto* prompt = new QLabel(ToQt(request.prompt));
    prompt->setObjectName("prompt");
    prompt->setBuddy(m_levels);
    Body().addWidget(prompt);
    Body().addWidget(m_levels, 1);
    connect(m_levels, &QListWidget::itemDoubleClicked, this, [this] { accept(); });
    m_levels->setCurrentRow(0);
    m_levels->setFocus();
    OkButton().setEnabled(m_levels->count() > 0);
    resize(300, 340);
}

int CSelectLevelDialog::Values() const {
    return m_levels->currentRow();
}

} // namespace velmor
