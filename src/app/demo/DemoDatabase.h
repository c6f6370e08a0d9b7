#pragma once

#include <string>

namespace velmor {
class IPrompter;
}

namespace velmor::demo {

/// Makes the demonstration scene in a database folder, which is made when it is missing. Refuses when there is one
/// already, and leaves nothing of one that fails. Progress and the message of a failure go to `prompter`.
[[nodiscard]] bool MakeDemoDatabase(const std::string& database, IPrompter& prompter);

} // namespace velmor::demo
