#pragma once

namespace velmor {

class IPrompter;

/// Opens "manual.pdf" of the program's folder with the system's reader; shows the message with the reason's number
/// when there is none.
void OpenOnlineManual(IPrompter& prompter);

} // namespace velmor
