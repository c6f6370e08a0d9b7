#include "app/CommandActions.h"

#include "app/MenuTable.h"
#include "views/Icons.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>

namespace velmor {

namespace {

QString PlainText(const char* text) {
    QString plain = QString::fromUtf8(text).section('\t', 0, 0);
    plain.replace("&&", "\a").remove('&').replace('\a', '&');
    return plain;
}

QAction* MakeAction(const CCommand& command, QObject& owner) {
    auto* action = new QAction(command.text, &owner);
    action->setObjectName(QString::number(static_cast<int>(command.id)));
    if (*command.icon != '\0')
        action->setIcon(Icon(command.icon));
    const QList<QKeySequence> keys =
        *command.keys != '\0' ? QKeySequence::listFromString(command.keys) : QList<QKeySequence>();
    action->setShortcuts(keys);
    action->setStatusTip(command.status);
    const QString tip = *command.toolTip != '\0' ? QString(command.toolTip) : PlainText(command.text);
    action->setToolTip(keys.isEmpty() ? tip : tip + " (" + keys.front().toString(QKeySequence::NativeText) + ")");
    action->setCheckable(command.isChecked != nullptr);
    return action;
}

} // namespace

CCommandActions::CCommandActions(QObject& owner) {
    for (const CCommand& command : Commands()) {
        QAction* action = MakeAction(command, owner);
        QObject::connect(action, &QAction::triggered, &owner, [this, &command] { Run(command); });
        m_actions.emplace(command.id, action);
    }
}

ActionList CCommandActions::List(std::span<const CommandId> ids) const {
    ActionList list;
    for (const CommandId id : ids)
        list.push_back(id == CommandId::Separator ? nullptr : Action(id));
    return list;
}

void CCommandActions::FillMenu(QMenu& menu, const CMenu& contents) const {
    for (QAction* action : List(contents.commands)) {
        if (action == nullptr)
            menu.addSeparator();
        else
            menu.addAction(action);
    }
}

void CCommandActions::Update() {
    if (!m_target)
        return;
    for (const CCommand& command : Commands()) {
        QAction* action = Action(command.id);
        action->setEnabled(command.isEnabled(*m_target));
        if (command.isChecked != nullptr)
            action->setChecked(command.isChecked(*m_target));
    }
}

void CCommandActions::Run(const CCommand& command) {
    // The state may have changed since the last update.
    if (m_target && command.isEnabled(*m_target))
        command.run(*m_target);
    Update();
}

} // namespace velmor
