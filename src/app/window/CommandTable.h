#pragma once

#include "app/window/CommandId.h"
#include "app/window/PaneHeights.h"
#include "xsheet/exposing/SheetEdit.h"

#include <optional>
#include <span>
#include <string>

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

/// Where the keys of a command act. Fields and lists that have the focus take what they know before.
enum class KeyReach {
    Everywhere, ///< in the whole window
    Shown,      ///< in the whole window while the command's view is open
    Focused,    ///< in the command's view alone, when it has the focus
};

/// Commands of which one is on at a time.
enum class CommandGroup { None, InputModes, Arrangements, CelTools, NewDrawingHolds, SelectionParts };

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
    /// The pane whose view it changes, which is opened first: nothing is changed out of sight. None for a command
    /// of the whole program.
    std::optional<StackedPane> pane{};
    KeyReach reach = KeyReach::Everywhere;
    CommandGroup group = CommandGroup::None;
    /// Further shortcuts, of the command's view alone when it has the focus, whatever the reach of the others.
    const char* focusedKeys = "";
    /// What it would do now, instead of the text's first part; null for a command that always does the same.
    std::string (*textNow)(const CCommandTarget&) = nullptr;
    /// The command that acts in its place now, Separator for none; null where none ever does. Of a menu's cut, copy
    /// and paste, which mean what has the focus.
    CommandId (*insteadNow)(const CCommandTarget&) = nullptr;
    /// What it would do to the sheet, shown there while the command is pointed at in a menu; null for nothing.
    std::optional<CSheetEdit> (*outcome)(const CCommandTarget&) = nullptr;
};

/// All commands, menu by menu. A new one is a row in the file of its menu, in commands/.
std::span<const CCommand> Commands();
/// Every id but Separator is in the table.
const CCommand& CommandOf(CommandId id);

} // namespace velmor
