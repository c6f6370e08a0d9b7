#include "app/cli/JsonLog.h"

#include <iostream>

namespace velmor {

void LogJson(const nlohmann::ordered_json& line) {
    std::cerr << line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << std::endl;
}

} // namespace velmor
