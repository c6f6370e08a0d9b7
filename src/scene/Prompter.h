#pragma once

#include "scene/Dialogs.h"
#include "scene/Messages.h"
#include "scene/Screens.h"

namespace velmor {

/// The document's way to the user. The window shows what comes through it, tests answer from a script, the command
/// line prints messages and cancels dialogs.
class IPrompter : public IMessages, public IDialogs, public IScreens {};

} // namespace velmor
