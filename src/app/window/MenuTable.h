#pragma once

#include "app/window/CommandId.h"

#include <span>

namespace velmor {

/// A pull-down menu: its title with mnemonic, and its commands in order.
struct CMenu {
    const char* title;
    std::span<const CommandId> commands;
};

std::span<const CMenu> Menus();
/// The menus that open at its end; most have none.
std::span<const CMenu> SubmenusOf(const CMenu& menu);
/// The "&Assets" and "&Camera" menus, which also open under the right mouse button.
const CMenu& AssetsMenu();
const CMenu& CameraMenu();
/// What opens under the right mouse button on cells, level headers, the camera column and the sound column
/// of the xsheet.
std::span<const CMenu, 4> SheetMenus();

/// Opens under the right mouse button in the cel editor.
const CMenu& CelCanvasMenu();
/// Of the status bar's pane about typed exposures.
const CMenu& TypedExposuresMenu();

std::span<const CommandId> MainToolBar();
std::span<const CommandId> CameraToolBar();
std::span<const CommandId> XsheetToolBar();
std::span<const CommandId> CelToolBar();
/// Under the camera view.
std::span<const CommandId> TransportBar();

} // namespace velmor
