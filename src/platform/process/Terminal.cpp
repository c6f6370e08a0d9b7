#include "platform/process/Terminal.h"

#include <unistd.h>

namespace velmor {

bool ErrorOutputIsTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

} // namespace velmor
