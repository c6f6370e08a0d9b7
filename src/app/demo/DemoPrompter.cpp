#include "app/demo/DemoPrompter.h"

#include <utility>

namespace velmor::demo {

void CDemoPrompter::RequireAllAsked() {
    if (!m_failed && !m_answers.empty())
        ShowMessage("A dialog that was expected did not come.");
}

void CDemoPrompter::ShowMessage(const std::string& text) {
    if (!std::exchange(m_failed, true))
        m_out.ShowMessage(text);
}

template<class Answer>
bool CDemoPrompter::Take(Answer& answer) {
    auto* next = m_answers.empty() ? nullptr : std::any_cast<Answer>(&m_answers.front());
    if (next == nullptr)
        return false;
    answer = std::move(*next);
    m_answers.pop_front();
    return true;
}

template<class Values>
bool CDemoPrompter::Take(std::optional<Values>& answer) {
    return Take(answer.emplace());
}

template<class Request>
void CDemoPrompter::Play(CDialogOf<Request>& asked) {
    if (m_failed)
        return;
    if (!Take(asked.answer)) {
        asked.answer = {};
        ShowMessage("A dialog came that nobody expected.");
        return;
    }
    if constexpr (requires { asked.request.accept(*asked.answer); }) {
        if (asked.request.accept && !asked.request.accept(*asked.answer)) {
            m_failed = true;
            asked.answer.reset();
        }
    }
}

void CDemoPrompter::ShowDialog(CAnyDialog dialog) {
    std::visit([this](auto* asked) { Play(*asked); }, dialog);
}

} // namespace velmor::demo
