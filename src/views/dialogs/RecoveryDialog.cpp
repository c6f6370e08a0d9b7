#include "views/dialogs/RecoveryDialog.h"

#include "views/Text.h"
#include "views/dialogs/HistoryPicture.h"
#include "views/dialogs/LocalTime.h"
#include "views/prompter/MessageDialog.h"
#include "views/widgets/MessageBadge.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int textColumns = 52;

QString ChangesText(int changes) {
    return changes == 1 ? QString("1 change") : QString("%1 changes").arg(changes);
}

QLabel* NewText(const QString& name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * textColumns);
    return label;
}

} // namespace

QString UnsavedText(const CRecoveryRequest& request, const QDateTime& now) {
    const QString first = MomentText(LocalTimeOf(request.firstTime), now);
    const QString last = MomentText(LocalTimeOf(request.lastTime), now);
    const QString when = first == last ? "at " + first : "from " + first + " to " + last;
    return QString("The scene %1 has %2 %3 that %4 not saved.")
        .arg(ToQt(request.scene), ChangesText(request.changes), when, request.changes == 1 ? "was" : "were");
}

CRecoveryDialog::CRecoveryDialog(QWidget* parent, const CRecoveryRequest& request)
    : CDialog(parent, "Recover Changes"), m_request(request) {
    Body().addWidget(NewQuestion());
    QPushButton& look =
        AddButton("look", "&Look first...", "Shows the changes one by one; nothing is touched by that");
    look.setEnabled(static_cast<bool>(request.look));
    connect(&look, &QPushButton::clicked, this, [this] { m_request.look(); });
    QPushButton& discard = AddButton("discard", "&Discard", "Throws the changes away for good");
    connect(&discard, &QPushButton::clicked, this, [this] { Discard(); });
    OkButton().setText("&Recover");
    OkButton().setToolTip("Makes the changes again; they can be undone one by one");
    OkButton().setEnabled(request.fits);
    CancelButton().setText("L&ater");
    CancelButton().setToolTip("Leaves everything as it is and asks again at the next start");
    QPushButton& first = request.fits ? OkButton() : look.isEnabled() ? look : CancelButton();
    first.setDefault(true);
    first.setFocus();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* CRecoveryDialog::NewQuestion() {
    auto* panel = new QWidget;
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins({});
    row->setSpacing(16);
    auto* picture = new QLabel;
    picture->setObjectName("picture");
    const QPixmap last = PixmapOf(m_request.picture);
    picture->setPixmap(last.isNull() ? MessageBadge(*this, '?') : last);
    if (!last.isNull()) {
        picture->setFrameShape(QFrame::Box);
        picture->setToolTip("The last change");
    }
    auto* texts = new QVBoxLayout;
    texts->addWidget(NewText("text", UnsavedText(m_request, QDateTime::currentDateTime())));
    const bool isOne = m_request.changes == 1;
    QString question = isOne ? "Do you want to recover it ?" : "Do you want to recover them ?";
    if (!m_request.fits)
        question =
            (isOne ? "It does not fit the scene as it is now.\n" : "They do not fit the scene as it is now.\n") +
            ToQt(m_request.reason);
    texts->addWidget(NewText("question", question));
    texts->addStretch(1);
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    return panel;
}

void CRecoveryDialog::Discard() {
    const QString question = QString("Are you sure you want to \ndiscard %1 of scene '%2' ? (NO UNDO!)")
                                 .arg(ChangesText(m_request.changes), ToQt(m_request.scene));
    if (CMessageDialog(this, question, CMessageDialog::Kind::GraveQuestion).exec() != QDialog::Accepted)
        return;
    m_answer = RecoveryAnswer::Discard;
    accept();
}

} // namespace velmor
