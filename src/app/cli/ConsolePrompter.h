#pragma once

#include "scene/SilentPrompter.h"

namespace velmor {

/// Messages go to the standard error output; questions are answered with no, dialogs are cancelled.
class CConsolePrompter : public CSilentPrompter {
public:
    void ShowMessage(const std::string& text) override;
    std::unique_ptr<IProgress> BeginProgress(const std::string& title) override;
};

} // namespace velmor
