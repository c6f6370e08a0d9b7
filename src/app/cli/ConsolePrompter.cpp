#include "app/cli/ConsolePrompter.h"

#include "app/cli/JsonLog.h"

#include <iostream>

namespace velmor {

void CConsolePrompter::ShowMessage(const std::string& text) {
    if (m_log == LogFormat::Json)
        LogJson({{"event", "message"}, {"text", text}});
    else
        std::cerr << text << std::endl;
}

std::unique_ptr<IProgress> CConsolePrompter::BeginProgress(const std::string&) {
    return MakeConsoleProgress(m_log);
}

} // namespace velmor
