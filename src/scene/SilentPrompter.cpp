#include "scene/SilentPrompter.h"

namespace velmor {

bool CSilentPrompter::Confirm(const std::string& text, Consequence) {
    ShowMessage(text);
    return false;
}

bool CSilentPrompter::AskYesNo(const std::string& text) {
    ShowMessage(text);
    return false;
}

std::unique_ptr<IProgress> CSilentPrompter::BeginProgress(const std::string&) {
    return std::make_unique<CNoProgress>();
}

} // namespace velmor
