#include "views/prompter/MessageDialog.h"

#include "views/widgets/MessageBadge.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

CMessageDialog::CMessageDialog(QWidget* parent, const QString& text, Kind kind)
    : CDialog(parent, "Velmor Message!") {
    const bool isQuestion = kind != Kind::Message;
    auto* icon = new QLabel;
    icon->setPixmap(MessageBadge(*this, isQuestion ? '?' : 'i'));
    auto* message = new QLabel(text);
    message->setObjectName("text");
    message->setTextFormat(Qt::PlainText);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    message->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const int widest = fontMetrics().averageCharWidth() * 80;
    if (message->sizeHint().width() > widest) {
        message->setWordWrap(true);
        message->setMinimumWidth(widest);
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(icon, 0, Qt::AlignTop);
    row->addWidget(message, 1);
    Body().addLayout(row);
    if (!isQuestion)
        RemoveCancel();
    if (kind == Kind::GraveQuestion) {
        CancelButton().setDefault(true);
        CancelButton().setFocus(); // or the first button would have the focus, and be pressed by Return after all
    }
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace velmor
