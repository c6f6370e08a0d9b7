#pragma once

namespace velmor {

class CProfile;
class IPrompter;

/// One look on every desktop, light or dark as the desktop prefers; the profile's "Theme" in section "Window" may
/// say "light" or "dark" instead.
void ApplyTheme(const CProfile& profile);

/// Lets the user choose between them, seeing each at once, and remembers the choice.
void ChooseTheme(IPrompter& prompter, CProfile& profile);

} // namespace velmor
