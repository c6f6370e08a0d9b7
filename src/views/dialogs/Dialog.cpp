#include "views/dialogs/Dialog.h"

#include "views/dialogs/DialogPlacement.h"
#include "views/widgets/WaitCursor.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>
#include <memory>

namespace velmor {

CDialog::CDialog(QWidget* parent, const QString& title)
    : QDialog(parent),
      m_body(new QVBoxLayout),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
    setWindowTitle(title);
    auto* all = new QVBoxLayout(this);
    m_body->setSpacing(10);
    all->addLayout(m_body, 1);
    all->addSpacing(6);
    all->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &CDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &CDialog::reject);
    OkButton().setDefault(true);
}

QPushButton& CDialog::OkButton() {
    return *m_buttons->button(QDialogButtonBox::Ok);
}

QPushButton& CDialog::CancelButton() {
    return *m_buttons->button(QDialogButtonBox::Cancel);
}

void CDialog::accept() {
    if (Accepts())
        QDialog::accept();
}

int CDialog::exec() {
    if (focusWidget() == nullptr)
        FocusFirstField();
    const CWaitPause pause;
    return QDialog::exec();
}

// Only now it has the size that it was left with, but not its frame yet: what is moved lies inside of that.
void CDialog::showEvent(QShowEvent* event) {
    if (m_beside && !testAttribute(Qt::WA_Moved)) {
        const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
        const QSize whole = size() + QSize(0, titleBar);
        move(PlacedBeside(*m_beside, whole, ScreenAreaAt(m_beside->center())) + QPoint(0, titleBar));
    }
    QDialog::showEvent(event);
}

// Otherwise a button would have it: the buttons were there before the fields.
void CDialog::FocusFirstField() {
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        const auto* radio = qobject_cast<QRadioButton*>(next);
        if (next->window() == this && next->isEnabledTo(this) && (next->focusPolicy() & Qt::TabFocus) != 0 &&
            !m_buttons->isAncestorOf(next) && (radio == nullptr || radio->isChecked())) {
            next->setFocus();
            return;
        }
    }
}

QFormLayout& CDialog::AddForm() {
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_body->addLayout(form);
    return *form;
}

void CDialog::AddHint(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    m_body->addWidget(label);
}

QPushButton& CDialog::AddButton(const QString& name, const QString& text, const QString& toolTip) {
    QPushButton& button = *m_buttons->addButton(text, QDialogButtonBox::ActionRole);
    button.setObjectName(name);
    button.setToolTip(toolTip);
    return button;
}

void CDialog::RemoveCancel() {
    // The box gives the button back.
    const std::unique_ptr<QPushButton> cancel(&CancelButton());
    m_buttons->removeButton(cancel.get());
}

void CDialog::SetReadOnly(QLineEdit& edit, bool readOnly) {
    edit.setReadOnly(readOnly);
    QPalette palette;
    if (readOnly)
        palette.setColor(QPalette::Base, palette.color(QPalette::Window));
    edit.setPalette(palette);
}

void CDialog::EnterAgain(QLineEdit& edit) {
    edit.setFocus();
    edit.selectAll();
}

} // namespace velmor
