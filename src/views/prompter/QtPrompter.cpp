#include "views/prompter/QtPrompter.h"

#include "views/Text.h"
#include "views/prompter/MessageDialog.h"
#include "views/prompter/ProgressDialog.h"
#include "views/widgets/MessageBadge.h"
#include "views/widgets/WaitCursor.h"

#include <QApplication>
#include <QMessageBox>

namespace velmor {

namespace {

QMessageBox::StandardButton ShowBox(QWidget* owner, QChar badge, const std::string& text,
                                    QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton defaultButton) {
    QMessageBox box(QMessageBox::NoIcon, QApplication::applicationDisplayName(), ToQt(text), buttons, owner);
    box.setIconPixmap(MessageBadge(box, badge));
    // Texts hold names and paths, which are never to be taken for markup.
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    box.setDefaultButton(defaultButton);
    const CWaitPause pause;
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

} // namespace

QWidget* CQtPrompter::Owner() const {
    if (QWidget* inFront = QApplication::activeModalWidget())
        return inFront;
    return m_parent != nullptr && m_parent->isVisible() ? m_parent : nullptr;
}

void CQtPrompter::ShowMessage(const std::string& text) {
    ShowBox(Owner(), 'i', text, QMessageBox::Ok, QMessageBox::Ok);
}

void CQtPrompter::ShowVelmorMessage(const std::string& text) {
    CMessageDialog(Owner(), ToQt(text), CMessageDialog::Kind::Message).exec();
}

bool CQtPrompter::Confirm(const std::string& text, Consequence consequence) {
    const auto kind =
        consequence == Consequence::Final ? CMessageDialog::Kind::GraveQuestion : CMessageDialog::Kind::Question;
    return CMessageDialog(Owner(), ToQt(text), kind).exec() == QDialog::Accepted;
}

bool CQtPrompter::AskYesNo(const std::string& text) {
    return ShowBox(Owner(), '?', text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

std::unique_ptr<IProgress> CQtPrompter::BeginProgress(const std::string& title) {
    return std::make_unique<CWindowProgress>(Owner(), ToQt(title));
}

std::shared_ptr<void> CQtPrompter::BeginWait() {
    return std::make_shared<CWaitCursor>();
}

} // namespace velmor
