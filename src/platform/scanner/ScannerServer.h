#pragma once

namespace velmor {

/// The work of the scanner process: carries out with SANE what it is asked over the connection at standard input,
/// until that is closed. Returns the exit status.
int ServeScanners();

} // namespace velmor
