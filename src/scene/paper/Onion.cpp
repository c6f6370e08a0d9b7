#include "scene/paper/Onion.h"

#include "scene/DialogRequests.h"

namespace velmor {

void COnion::Change(const COnionSettings& settings) {
    if (settings == m_settings)
        return;
    m_settings = settings;
    WriteOnionSettings(m_context.profile, m_settings);
    m_context.Update(UpdateHint::Paper);
}

void COnion::Toggle() {
    COnionSettings settings = m_settings;
    settings.shown = !settings.shown;
    Change(settings);
}

void COnion::ToggleInCamera() {
    COnionSettings settings = m_settings;
    settings.inCamera = !settings.inCamera;
    Change(settings);
}

void COnion::EditSettings() {
    const COnionSettings before = m_settings;
    const auto show = [this](const COnionSettings& settings) { Change(settings); };
    Change(m_context.prompter.Ask(COnionSkinRequest{before, show}).value_or(before));
}

} // namespace velmor
