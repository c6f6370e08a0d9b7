#pragma once

#include "scene/PenSettings.h"

#include <functional>

namespace velmor {

class IPrompter;

/// The pen settings as they are chosen in the cel editor. They are remembered.
class CPenChoice {
public:
    /// `beforeChange` is called before other settings are in force. Profile and prompter outlive the object.
    CPenChoice(CProfile& profile, IPrompter& prompter, std::function<void()> beforeChange);

    const CPenSettings& Settings() const { return m_settings; }
    /// Asks for them.
    void Edit();
    /// See WithPressureToggled() and WithStabilizerToggled().
    void TogglePressure();
    void ToggleStabilizer();

private:
    void Set(const CPenSettings& settings);

    CProfile& m_profile;
    IPrompter& m_prompter;
    std::function<void()> m_beforeChange;
    CPenSettings m_settings;
};

} // namespace velmor
