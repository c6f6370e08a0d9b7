#pragma once

#include "app/window/CommandTable.h"
#include "views/ActionList.h"

#include <map>
#include <optional>
#include <span>

class QAction;
class QMenu;
class QObject;
class QWidget;

namespace velmor {

struct CMenu;

/// The actions of the command table. They act on `target` once it is set; until then, and while commands are not
/// enabled, they do nothing.
class CCommandActions {
public:
    /// The actions become children of `owner`.
    explicit CCommandActions(QObject& owner);

    void SetTarget(CCommandTarget target);
    QAction* Action(CommandId id) const { return m_actions.at(id); }
    ActionList List(std::span<const CommandId> ids) const;
    void FillMenu(QMenu& menu, const CMenu& contents) const;
    /// Brings enabling, check marks and the reach of the keys up to date.
    void Update();

private:
    void AddFocusedKeys(const CCommand& command, QWidget& view);
    void Run(const CCommand& chosen);
    /// Has the sheet show what a command of a menu would do to it while it is pointed at.
    void ShowOutcomesOf(QMenu& menu, const CMenu& contents) const;
    void ShowOutcome(const QAction& pointedAt) const;

    std::map<CommandId, QAction*> m_actions;
    std::optional<CCommandTarget> m_target;
};

} // namespace velmor
