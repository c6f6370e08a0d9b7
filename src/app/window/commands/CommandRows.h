#pragma once

#include "app/window/CommandTable.h"
#include "app/window/MainFrame.h"
#include "scene/CelSelection.h"
#include "scene/PaintTools.h"
#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "views/cel/CelView.h"

// What the rows of several menus are made of.

namespace velmor::commands {

using Target = CCommandTarget;
using enum KeyReach;
using enum CommandGroup;
inline constexpr auto camera = StackedPane::Camera;
inline constexpr auto sheet = StackedPane::Xsheet;
inline constexpr auto celEditor = StackedPane::CelEditor;

inline bool Always(const Target&) {
    return true;
}
inline bool HasScene(const Target& target) {
    return target.doc.Model().sceneOpen;
}
inline bool HasFolder(const Target& target) {
    return target.doc.Model().HasFolder();
}
inline bool HasSelection(const Target& target) {
    return target.doc.Selection().HasSelection();
}

template<bool (*State)(const CSceneModel&)>
bool When(const Target& target) {
    return State(target.doc.Model());
}

// A command of one of the document's parts.
template<auto Part, auto Operation>
void Do(Target& target) {
    static_cast<void>(((target.doc.*Part)().*Operation)()); // it has said what went wrong
}
template<void (CMainFrame::*Operation)()>
void Frame(Target& target) {
    (target.frame.*Operation)();
}
template<auto Operation>
void Cel(Target& target) {
    (target.cel.*Operation)();
}

template<PaneBar Bar>
void ToggleBar(Target& target) {
    target.frame.TogglePaneBar(Bar);
}
template<PaneBar Bar>
bool HasBar(const Target& target) {
    return target.frame.IsPaneBarShown(Bar);
}

template<CelTool Tool>
bool CanUseTool(const Target& target) {
    return CanUse(Tool, target.doc.Model().celImg);
}
template<CelTool Tool>
bool IsTool(const Target& target) {
    return target.cel.Tool() == Tool;
}
template<CelTool Tool>
void SetTool(Target& target) {
    target.cel.SetTool(Tool);
}
template<CommandId Id, CelTool Tool>
constexpr CCommand ToolCommand() {
    constexpr const CPaintTool& tool = ToolOf(Tool);
    return {Id,           tool.text,     tool.icon, tool.key, tool.status, tool.toolTip, CanUseTool<Tool>,
            IsTool<Tool>, SetTool<Tool>, celEditor, Focused,  CelTools};
}

} // namespace velmor::commands
