#include "app/demo/DemoPrompter.h"

#include <utility>

namespace velmor::demo {

template<class Values>
std::optional<Values> CDemoPrompter::Take() {
    if (m_failed)
        return std::nullopt;
    if (m_answers.empty() || !std::holds_alternative<Values>(m_answers.front())) {
        ShowMessage("A dialog came that nobody expected.");
        return std::nullopt;
    }
    Values values = std::get<Values>(std::move(m_answers.front()));
    m_answers.pop_front();
    return values;
}

template<class Values>
std::optional<Values> CDemoPrompter::Take(const AcceptRule<Values>& accept) {
    std::optional<Values> values = Take<Values>();
    if (values && accept && !accept(*values)) {
        m_failed = true;
        return std::nullopt;
    }
    return values;
}

void CDemoPrompter::RequireAllAsked() {
    if (!m_failed && !m_answers.empty())
        ShowMessage("A dialog that was expected did not come.");
}

void CDemoPrompter::ShowMessage(const std::string& text) {
    if (!std::exchange(m_failed, true))
        m_out.ShowMessage(text);
}

std::optional<CSceneSettings> CDemoPrompter::AskSceneSettings(const CSceneSettingsRequest& request) {
    return Take(request.accept);
}

std::optional<std::string> CDemoPrompter::AskName(const CNameRequest& request) {
    return Take(request.accept);
}

std::optional<CNewCelValues> CDemoPrompter::AskNewCel(const CNewCelRequest& request) {
    return Take(request.accept);
}

std::optional<int> CDemoPrompter::AskLevel(const CLevelRequest&) {
    return Take<int>();
}

std::optional<CCellDataForm> CDemoPrompter::AskCellData(const CCellDataRequest& request) {
    return Take(request.accept);
}

std::optional<CBlurForm> CDemoPrompter::AskBlur(const CBlurRequest& request) {
    return Take(request.accept);
}

std::optional<double> CDemoPrompter::AskTransparency(const CTransparencyRequest& request) {
    return Take(request.accept);
}

std::optional<CCameraForm> CDemoPrompter::AskCameraData(const CCameraDataRequest&) {
    return Take<CCameraForm>();
}

CInbetweenAnswer CDemoPrompter::AskInbetween(const CInbetweenRequest&) {
    return Take<CInbetweenAnswer>().value_or(CInbetweenAnswer{});
}

std::optional<CColorValues> CDemoPrompter::AskColor(const CColorRequest& request) {
    return Take(request.accept);
}

} // namespace velmor::demo
