#pragma once

namespace velmor {

/// Whether somebody reads the error output on a terminal, so that a line on it may be drawn over.
bool ErrorOutputIsTerminal();

} // namespace velmor
