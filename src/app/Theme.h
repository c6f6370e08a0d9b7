#pragma once

namespace velmor {

class CProfile;

/// One look on every desktop, light or dark as the desktop prefers; the profile's "Theme" in section "Window" may
/// say "light" or "dark" instead.
void ApplyTheme(const CProfile& profile);

} // namespace velmor
