#include "views/cel/PenChoice.h"

#include "scene/DialogRequests.h"
#include "scene/Prompter.h"

#include <optional>
#include <string>
#include <utility>

namespace velmor {

CPenChoice::CPenChoice(CProfile& profile, IPrompter& prompter, std::function<void()> beforeChange)
    : m_profile(profile),
      m_prompter(prompter),
      m_beforeChange(std::move(beforeChange)),
      m_settings(ReadPenSettings(profile)) {}

void CPenChoice::Edit() {
    const auto accept = [this](const CPenSettings& settings) {
        const std::optional<std::string> fault = FaultOf(settings);
        if (fault)
            m_prompter.ShowMessage(*fault);
        return !fault;
    };
    if (const std::optional<CPenSettings> settings = m_prompter.Ask(CPenSettingsRequest{m_settings, accept}))
        Set(*settings);
}

void CPenChoice::TogglePressure() {
    Set(WithPressureToggled(m_settings));
}

void CPenChoice::ToggleStabilizer() {
    Set(WithStabilizerToggled(m_settings, m_profile));
}

void CPenChoice::Set(const CPenSettings& settings) {
    m_beforeChange();
    WritePenSettings(m_profile, settings);
    m_settings = settings;
}

} // namespace velmor
