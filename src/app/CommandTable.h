#pragma once

#include "app/CommandId.h"

#include <span>

namespace velmor {

class CCameraView;
class CCelView;
class CMainFrame;
class CVelmorltDoc;

/// What commands act on.
struct CCommandTarget {
    CVelmorltDoc& doc;
    CMainFrame& frame;
    CCameraView& camera;
    CCelView& cel;
};

/// A command as menus, toolbars, tooltips, the status bar and the keyboard know it.
struct CCommand {
    CommandId id = CommandId::Separator;
    const char* text = "";    ///< with mnemonic, and after a tab what the menu says of its keys
    const char* icon = "";    ///< see Icon()
    const char* keys = "";    ///< the shortcuts, with "; " between them
    const char* status = "";  ///< for the status bar
    const char* toolTip = ""; ///< the text without its mnemonic where there is none
    bool (*isEnabled)(const CCommandTarget&) = nullptr;
    bool (*isChecked)(const CCommandTarget&) = nullptr; ///< null for a command that is never checked
    void (*run)(CCommandTarget&) = nullptr;
};

/// All commands, menu by menu.
std::span<const CCommand> Commands();
/// Every id but Separator is in the table.
const CCommand& CommandOf(CommandId id);

} // namespace velmor
