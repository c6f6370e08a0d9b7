#pragma once

#include <QPrinter>

namespace velmor {

class IPrompter;
struct CSceneModel;

/// Prints the xsheet as an exposure sheet that a camera operator can shoot from. Landscape only: for another
/// orientation a message is shown and nothing printed; false then, and when there is no scene.
[[nodiscard]] bool PrintXSheet(const CSceneModel& model, IPrompter& prompter, QPrinter& printer);

} // namespace velmor
