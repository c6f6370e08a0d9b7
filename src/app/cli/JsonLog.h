#pragma once

#include <nlohmann/json.hpp>

namespace velmor {

/// Writes an object as a line of the standard error output, flushed. Text that is no UTF-8 is replaced.
void LogJson(const nlohmann::ordered_json& line);

} // namespace velmor
