#include "app/window/CommandActions.h"

#include "app/window/CommandText.h"
#include "app/window/MainFrame.h"
#include "app/window/MenuTable.h"
#include "scene/VelmorltDoc.h"
#include "scene/exposing/SheetTiming.h"
#include "views/Icons.h"

#include <QAction>
#include <QActionGroup>
#include <QKeySequence>
#include <QMenu>
#include <algorithm>

namespace velmor {

namespace {

QList<QKeySequence> KeysOf(const char* keys) {
    return *keys != '\0' ? QKeySequence::listFromString(keys) : QList<QKeySequence>();
}

QAction* MakeAction(const CCommand& command, QObject& owner) {
    auto* action = new QAction(command.text, &owner);
    action->setObjectName(QString::number(static_cast<int>(command.id)));
    if (*command.icon != '\0')
        action->setIcon(Icon(command.icon));
    action->setShortcuts(KeysOf(command.keys));
    action->setStatusTip(command.status);
    const QString tip = *command.toolTip != '\0' ? QString(command.toolTip) : PlainText(command.text);
    const QList<QKeySequence> keys = action->shortcuts() + KeysOf(command.focusedKeys);
    action->setToolTip(keys.isEmpty() ? tip : tip + " (" + keys.front().toString(QKeySequence::NativeText) + ")");
    action->setCheckable(command.isChecked != nullptr);
    return action;
}

// Of a view's own keys Qt asks whether that very widget has the focus; one that is out of sight never has it.
Qt::ShortcutContext ContextOf(const CCommand& command, const CCommandTarget& target) {
    const bool inWindow =
        command.reach == KeyReach::Everywhere ||
        (command.reach == KeyReach::Shown && command.pane && target.frame.Panes().IsOpen(*command.pane));
    return inWindow ? Qt::WindowShortcut : Qt::WidgetShortcut;
}

// The one that acts when a command is chosen.
const CCommand& ActingNow(const CCommand& command, const CCommandTarget& target) {
    const CommandId instead = command.insteadNow != nullptr ? command.insteadNow(target) : CommandId::Separator;
    return instead != CommandId::Separator ? CommandOf(instead) : command;
}

// "Undo" becomes "Undo Stroke on Fox 7" in menu, tool tip and status bar.
void SayWhatItWouldDo(QAction& action, const CCommand& command, const CCommandTarget& target) {
    const QString always = PlainText(command.text);
    const QString deed = QString::fromStdString(command.textNow(target));
    QString more = deed.mid(always.size());
    more.replace('&', "&&").replace('\t', ' ');
    const QString text = QString::fromUtf8(command.text);
    const QString now = text.section('\t', 0, 0) + more + '\t' + text.section('\t', 1);
    if (now == action.text())
        return;
    action.setText(now);
    action.setToolTip(deed + " (" + action.shortcut().toString(QKeySequence::NativeText) + ")");
    action.setStatusTip(more.isEmpty() ? QString(command.status) : deed);
}

} // namespace

CCommandActions::CCommandActions(QObject& owner) {
    std::map<CommandGroup, QActionGroup*> groups;
    for (const CCommand& command : Commands()) {
        QAction* action = MakeAction(command, owner);
        QObject::connect(action, &QAction::triggered, &owner, [this, &command] { Run(command); });
        m_actions.emplace(command.id, action);
        if (command.group == CommandGroup::None)
            continue;
        QActionGroup*& group = groups[command.group];
        if (group == nullptr)
            group = new QActionGroup(&owner);
        group->addAction(action);
    }
}

void CCommandActions::SetTarget(CCommandTarget target) {
    m_target.emplace(target);
    for (const CCommand& command : Commands()) {
        if (!command.pane)
            continue;
        QWidget& view = target.frame.Panes().View(*command.pane);
        view.addAction(Action(command.id));
        if (*command.focusedKeys != '\0')
            AddFocusedKeys(command, view);
    }
}

// An action has one context for all of its shortcuts.
void CCommandActions::AddFocusedKeys(const CCommand& command, QWidget& view) {
    auto* keys = new QAction(&view);
    keys->setShortcuts(KeysOf(command.focusedKeys));
    keys->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(keys, &QAction::triggered, &view, [this, &command] { Run(command); });
    view.addAction(keys);
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
    ShowOutcomesOf(menu, contents);
    const std::span<const CMenu> submenus = SubmenusOf(contents);
    if (!submenus.empty())
        menu.addSeparator();
    for (const CMenu& submenu : submenus)
        FillMenu(*menu.addMenu(submenu.title), submenu);
}

void CCommandActions::ShowOutcomesOf(QMenu& menu, const CMenu& contents) const {
    const auto hasOutcome = [](CommandId id) {
        return id != CommandId::Separator && CommandOf(id).outcome != nullptr;
    };
    if (std::ranges::none_of(contents.commands, hasOutcome))
        return;
    QObject::connect(&menu, &QMenu::hovered, &menu, [this](const QAction* action) { ShowOutcome(*action); });
    QObject::connect(&menu, &QMenu::aboutToHide, &menu, [this] { m_target->doc.Timing().HideOutcome(); });
}

void CCommandActions::ShowOutcome(const QAction& pointedAt) const {
    const auto row =
        std::ranges::find_if(Commands(), [&](const CCommand& command) { return Action(command.id) == &pointedAt; });
    const bool shows = row != Commands().end() && row->outcome != nullptr && row->isEnabled(*m_target);
    const std::optional<CSheetEdit> edit = shows ? row->outcome(*m_target) : std::nullopt;
    if (edit)
        m_target->doc.Timing().ShowOutcome(*edit);
    else
        m_target->doc.Timing().HideOutcome();
}

void CCommandActions::Update() {
    if (!m_target)
        return;
    for (const CCommand& command : Commands()) {
        QAction* action = Action(command.id);
        if (command.textNow != nullptr)
            SayWhatItWouldDo(*action, command, *m_target);
        action->setEnabled(command.isEnabled(*m_target) || ActingNow(command, *m_target).isEnabled(*m_target));
        action->setShortcutContext(ContextOf(command, *m_target));
        if (command.isChecked != nullptr)
            action->setChecked(command.isChecked(*m_target));
    }
}

void CCommandActions::Run(const CCommand& chosen) {
    if (!m_target)
        return;
    const CCommand& command = ActingNow(chosen, *m_target);
    // The state may have changed since the last update.
    if (command.isEnabled(*m_target)) {
        if (command.pane)
            m_target->frame.ShowPane(*command.pane);
        command.run(*m_target);
    }
    Update();
}

} // namespace velmor
