#include "views/dialogs/DialogueDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int textWidth = 380;

CNumberEdit* NewFrame(const QString& name, int frame) {
    auto* edit = new CNumberEdit(name, NumberKind::Whole);
    edit->SetValue(frame + 1);
    return edit;
}

} // namespace

CDialogueDialog::CDialogueDialog(QWidget* parent, const CDialogueRequest& request)
    : CDialog(parent, "Dialogue"),
      m_request(request),
      m_text(new QLineEdit(ToQt(request.initial.text))),
      m_speaker(new QComboBox),
      m_first(NewFrame("first", request.initial.firstFrame)),
      m_last(NewFrame("last", request.initial.lastFrame)) {
    setObjectName("Dialogue");
    m_text->setObjectName("text");
    m_text->setMaxLength(static_cast<int>(CDialogue::mostText));
    m_text->setMinimumWidth(textWidth);
    m_text->setToolTip("What is spoken, as it is written or as it sounds; empty takes the line away");
    m_speaker->setObjectName("speaker");
    m_speaker->setEditable(true);
    m_speaker->setToolTip("Who says it; may be left empty");
    for (const std::string& speaker : request.speakers)
        m_speaker->addItem(ToQt(speaker));
    m_speaker->setCurrentText(ToQt(request.initial.speaker));
    m_speaker->lineEdit()->setMaxLength(static_cast<int>(CDialogue::mostText));
    QFormLayout& form = AddForm();
    form.addRow(LabelFor("&Text :", *m_text), m_text);
    form.addRow(LabelFor("&Speaker :", *m_speaker), m_speaker);
    form.addRow(LabelFor("&From frame :", *m_first), m_first);
    form.addRow(LabelFor("To fr&ame :", *m_last), m_last);
    AddHint("The text is spread evenly over its frames. A line for each word, or each sound, tells their time.");
    m_text->setFocus();
    m_text->selectAll();
}

CSpokenLine CDialogueDialog::Values() const {
    return {m_first->Whole().value_or(0) - 1, m_last->Whole().value_or(0) - 1,
            FromQt(m_speaker->currentText().trimmed()), FromQt(m_text->text().trimmed())};
}

bool CDialogueDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    RefuseUnreadable({m_first, m_last});
    return false;
}

} // namespace velmor
