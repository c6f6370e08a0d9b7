#pragma once

#include "app/cli/ConsoleProgress.h"
#include "scene/SilentPrompter.h"

namespace velmor {

/// Messages go to the standard error output; questions are answered with no, dialogs are cancelled.
class CConsolePrompter : public CSilentPrompter {
public:
    explicit CConsolePrompter(LogFormat log = LogFormat::Text) : m_log(log) {}
    void ShowMessage(const std::string& text) override;
    std::unique_ptr<IProgress> BeginProgress(const std::string& title) override;

private:
    LogFormat m_log;
};

} // namespace velmor
