#include "app/cli/ConsolePrompter.h"

#include "app/cli/ConsoleProgress.h"

#include <iostream>

namespace velmor {

void CConsolePrompter::ShowMessage(const std::string& text) {
    std::cerr << text << std::endl;
}

std::unique_ptr<IProgress> CConsolePrompter::BeginProgress(const std::string&) {
    return MakeConsoleProgress();
}

} // namespace velmor
